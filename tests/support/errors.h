#pragma once
// The number of the run-time error a call raises, or 0 when it raises none.
#include "platform/runtime_error.h"

namespace zor::testing {

template <typename F>
int ErrorOf(F&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.Number();
    }
    return 0;
}

}  // namespace zor::testing
