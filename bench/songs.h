#pragma once
// A catalogue's worth of made-up songs for the benchmarks: artists, albums and
// years spread at random, so neighbouring rows share little.
#include "platform/testing/test_installation.h"

#include <vector>

namespace zor::bench {

std::vector<testing::SongFields> MakeSongs(int count);

}  // namespace zor::bench
