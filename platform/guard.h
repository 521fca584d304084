#pragma once
// Every event that starts an operation runs through Guarded: a RuntimeError
// ends that operation with the runtime's box, and the process lives on.
#include "platform/runtime_error.h"
#include "platform/services.h"

#include <exception>
#include <new>

namespace zor {

inline constexpr const char* kTitle = "ZOR JUKEBOX";

template <typename F>
void Guarded(MessageBoxes& boxes, F&& operation) {
    try {
        operation();
    } catch (const RuntimeError& e) {
        boxes.MsgBox(e.BoxText(), vbCritical, QString::fromLatin1(kTitle));
    } catch (const std::bad_alloc&) {
        boxes.MsgBox(RuntimeError(7, QStringLiteral("Out of memory")).BoxText(), vbCritical, QString::fromLatin1(kTitle));
    }
}

}  // namespace zor
