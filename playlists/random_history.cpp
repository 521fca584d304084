#include "playlists/random_history.h"

#include "platform/runtime_error.h"
#include "platform/vb.h"

namespace zor {

void RandomHistory::Check(int index) {
    if (index < 0 || index >= kRandomHistorySize) throw RuntimeError::SubscriptOutOfRange();
}

int16_t RandomHistory::At(int index) const {
    Check(index);
    return rows_[size_t(index)];
}

void RandomHistory::Set(int index, int32_t row) {
    Check(index);
    // A 16-bit element: a row number beyond it overflows.
    rows_[size_t(index)] = vb::CInt(row);
}

void RandomHistory::ClearAfterFirst() {
    for (size_t i = 1; i < rows_.size(); ++i) rows_[i] = 0;
}

int32_t PickRandomRow(RandomHistory& history, RandomCounters& counters, int32_t end,
                      const std::function<int32_t()>& draw) {
    int32_t candidate = draw();
    // Row 1 counts as played at the start of a round; the first pick
    // overwrites it.
    if (counters.played == 0) history.Set(0, 1);
    counters.scan = 0;
    // The search looks one place beyond the last entry as well.
    for (int comparisons = 0; counters.scan <= counters.played;) {
        if (++comparisons > 1000) break;
        if (history.At(counters.scan) != candidate) {
            ++counters.scan;
        } else {
            candidate = draw();
            counters.scan = 0;
        }
    }
    if (counters.played >= end) {
        counters.played = 0;
        history.ClearAfterFirst();
    }
    history.Set(counters.played, candidate);
    ++counters.played;
    return candidate;
}

}  // namespace zor
