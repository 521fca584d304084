#pragma once
// Every event that starts an operation runs through Guarded: a RuntimeError
// ends that operation with the runtime's box, and the process lives on.
#include "platform/runtime_error.h"
#include "platform/services.h"

#include <exception>
#include <functional>
#include <new>

namespace zor {

inline constexpr const char* kTitle = "ZOR JUKEBOX";

// `beforeBox` runs just before the box shows: the picture windows stay on top
// of everything and would hide it, so the main window passes their hiding.
template <typename F>
void Guarded(MessageBoxes& boxes, F&& operation, const std::function<void()>& beforeBox = {}) {
    const auto show = [&](const RuntimeError& e) {
        if (beforeBox) beforeBox();
        boxes.MsgBox(e.BoxText(), vbCritical, QString::fromLatin1(kTitle));
    };
    try {
        operation();
    } catch (const RuntimeError& e) {
        show(e);
    } catch (const std::bad_alloc&) {
        show(RuntimeError(7, QStringLiteral("Out of memory")));
    }
}

}  // namespace zor
