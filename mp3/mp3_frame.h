#pragma once
// What the jukebox learns of a song file from its first frame header: the
// display texts of its encoding, a stereo or mono mark, its size and an
// estimated playing time. The estimate is deliberately crude: at most 3000
// bytes are looked at, the first byte above 200 is taken for the header, and
// the time is the file's size over one fixed bit-rate table, whatever the
// MPEG version or layer. The catalogue's stored lengths and encodings, the
// player's countdown and the inventories are all made with these numbers, so
// they must come out the same, oddities included.
#include <QString>

#include <cstdint>

namespace zor {

class FileSystem;
struct Jukebox;

// One analysis's results. The jukebox keeps one of these and hands it to
// every analysis: a file without a readable header changes only the eight
// header texts (to "???") and FileBytes, so EncodingText, ChannelMark and the
// duration stay those of the song analysed before it.
struct Mp3FrameInfo {
    QString BitRateText;     // " 32" … "320", "VBR", "free", "bad"
    QString VersionText;     // "Version 1.0", "Version 2.0", "Version 2.5", "Reserved"
    QString LayerText;       // "Layer I" … "Layer III", "Reserved"
    QString ProtectionText;  // "by CRC", "None"
    QString SampleRateText;  // "44100", …, "Reser."
    QString CopyrightText;   // "None", "Yes"
    QString OriginalText;    // "Copy", "Original"
    QString EmphasisText;    // "None", "50/15 ms", "Reserved", "CCIT J17"
    // The bit-rate label again: the copy the catalogue and inventories store.
    QString EncodingText;
    QString ChannelMark;  // "S:" or "M:"; set by the two grid analysers only
    int32_t DurationSeconds = 0;
    QString DurationText;  // "3:05"; minutes unpadded, may pass 59
    int32_t FileBytes = 0;
};

// The four places that analyse a song. They share the scan and the
// arithmetic and differ in where the path comes from, how a missing file is
// told, and whether ChannelMark is set.
enum class Mp3Caller {
    GridSong,      // play engine, inventories and playlist tools, on MFGrid1
    PlaylistSong,  // play engine on the playlist grid MFgrid2
    FileWindow,    // the file information window
    Editor,        // the tag and record editor
};

struct Mp3AnalysisOptions {
    Mp3Caller caller = Mp3Caller::GridSong;
    // The grid analysers analyse this path; "XXX" means the grid's current
    // cell. The file window and the editor always take the current cell.
    QString SongPathOverride = QStringLiteral("XXX");
    // The text of the grid's current cell (the path column), which the caller
    // has made current before the call.
    QString CurrentCell;
    // The caller writes the song line into the message line afterwards
    // (a song starting in the player). Only the grid analysers honour it.
    bool ShowSongInfoLine = false;
    // An inventory pass: a missing file is not told; its encoding is "???".
    bool InventoryRun = false;
};

enum class Mp3Outcome {
    Analysed,  // the record describes this file's first frame
    NoFrame,   // 3000 bytes or less, or no header byte in reach: texts "???"
    Missing,   // no such file (a directory counts as missing)
};

struct Mp3Analysis {
    Mp3Outcome outcome = Mp3Outcome::Missing;
    // The caller passes over this song. Not set when an inventory meets a
    // missing file: the inventory goes on and stores "???" as its encoding.
    bool SongFileMissing = false;
    // Write SongInfoLine() into the message line now, in pure green.
    bool ShowSongInfoLine = false;
    // The header's channel bits read as mono (the file window's Mono box);
    // ChannelMark says the same for the grid analysers.
    bool Mono = false;
    QString path;  // the path that was analysed
};

// The whole analysis as each caller needs it. A missing file is told by the
// jukebox's state: while a playlist runs (j.PlaylistActive) it is only
// flagged; during an inventory it is neither told nor flagged; otherwise the
// picture windows are hidden and a box says so (exclamation for the grid
// analysers, critical for the file window and the editor, which tells it
// even in a playlist or an inventory).
//
// Raises RuntimeError when the file can't be opened (70 unreadable, 53 when
// it went between the look-up and the open), and Overflow (6) for a duration
// above 32767 seconds, by which time DurationSeconds and BitRateText hold the
// new values and the rest of the record the old ones. A file too large for
// FileBytes also raises Overflow.
Mp3Analysis AnalyseMp3File(Jukebox& j, Mp3FrameInfo& info, const Mp3AnalysisOptions& options);

// The scan and the arithmetic alone, on a path known to exist: outcome,
// Mono and path of the result are set. A path of blanks only is not opened:
// it is worked out as a zero header and a length of 0. Raises as
// AnalyseMp3File does.
Mp3Analysis ScanMp3File(FileSystem& fs, const QString& path, Mp3FrameInfo& info, bool setChannelMark);

// The song line shown in the message line when a song starts:
// "> Title - Artist, 128 kb/s.; Length: 3:05" (Language "0": "Duur: ").
// Title and artist are trimmed of blanks; the bit-rate label keeps its
// leading blank, so " 96" gives two blanks behind the comma.
QString SongInfoLine(const QString& title, const QString& artist, const Mp3FrameInfo& info,
                     const QString& language);

}  // namespace zor
