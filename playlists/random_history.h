#pragma once
// The random order of the playlist. Each run of the playlist loop keeps a
// history of the rows it drew, so that a row comes round again only after
// the others have had their turn; the count of drawn rows outlives the run.
#include <array>
#include <cstdint>
#include <functional>

namespace zor {

inline constexpr int kRandomHistorySize = 1001;

// A fixed array of 1001 row numbers, indices 0 to 1000. An index outside
// them is run-time error 9, as the array it stands for gives; nothing else
// bounds the history, so a long random run ends there.
class RandomHistory {
public:
    int16_t At(int index) const;
    void Set(int index, int32_t row);
    // Every index but 0: a new round after all rows were drawn.
    void ClearAfterFirst();

private:
    static void Check(int index);
    std::array<int16_t, kRandomHistorySize> rows_{};
};

// What lives on between runs of the loop.
struct RandomCounters {
    int16_t played = 0;  // RandomPlayedCount
    int16_t scan = 0;    // RandomScanIndex
};

// Draws the next row of a playlist whose PlaylistEnd is `end` (rows 1 to
// end - 1). `draw` seeds afresh and returns a candidate row in that range.
// A candidate already in the history is drawn again; after 1000 comparisons
// the last candidate is taken as it stands.
int32_t PickRandomRow(RandomHistory& history, RandomCounters& counters, int32_t end,
                      const std::function<int32_t()>& draw);

}  // namespace zor
