#pragma once
// The values of the file information window Form10, from the analyser's
// record. The frame count is not counted from the file: it is the size over
// the 417 bytes of one 128 kbit/s, 44100 Hz frame, whatever the song's real
// rate, as the window has always shown it.
#include "mp3/mp3_frame.h"

#include <QString>

#include <array>

namespace zor {

inline constexpr int kFileWindowFrameBytes = 417;

// The value labels Label60 to Label72 in the window's order: size,
// duration, frames, "kb/s" rate, sample rate, MPEG version, layer,
// protection, mode extension (always "  Off"), copyright, original,
// emphasis. Most stand with two blanks behind them.
std::array<QString, 12> FileWindowValues(const Mp3FrameInfo& info);

}  // namespace zor
