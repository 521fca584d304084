#pragma once
// The playlist's own state: the counters of the random order and the
// generator that draws it, the flag that the catalogue's marks read while a
// playlist is being built, and the playlist files'.
#include "platform/vb.h"
#include "playlists/random_history.h"
#include "playlists/zpl_record.h"

#include <QString>

namespace zor {

struct PlaylistState {
    RandomCounters random;
    vb::Random generator;
    // The transport buttons' enabled states before the playlist turned them.
    bool turned = false;
    bool backEnabled = true, repeatEnabled = true, nextEnabled = true;
    // While the playlist is shown, a mark in the catalogue also appends its
    // row to MFgrid2.
    int16_t PlaylistBuilding = 0;
    // The playlist files: the file chosen for reading, the file to be
    // written, and the one record buffer whose reserved fields a write
    // carries over from the last read.
    QString PlaylistOpenName;
    QString PlaylistSaveName;
    ZplRecord PlaylistRecord;
};

}  // namespace zor
