#pragma once
// A song file the frame analyser can reckon without a real encoder: one
// MPEG-1 layer III frame header (96 kbit/s, 44.1 kHz, stereo) and zeros up to
// the size that bit rate gives for `seconds`.
#include <QByteArray>

namespace zor::testing {

inline QByteArray SilentSong96(int seconds) {
    QByteArray b = QByteArray::fromHex("fffb7000");
    b.append(seconds * 12000 - b.size(), '\0');
    return b;
}

}  // namespace zor::testing
