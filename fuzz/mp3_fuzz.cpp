// A song file as any bytes: damaged, cut short, foreign, or all lead-in. The
// frame scan reads it through the file layer as the analyser does. Nothing
// may crash or read past the file, and the record must say what the 3000-byte
// rule says: a header only where a byte above 200 stands early enough, and
// the earlier song's encoding and time kept where there is none.
#include "fuzz/fuzz_support.h"
#include "mp3/mp3_frame.h"
#include "platform/file_system.h"

#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace zor::fuzzing;

using namespace zor;

// Whether one of the first 2998 bytes is above 200: where the scan finds a header.
bool HasHeaderByte(const uint8_t* data, size_t size) {
    for (size_t i = 0; i < size && i < 2998; ++i)
        if (data[i] > 200) return true;
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FileSystem files;
    const QString path = ScratchFile(QStringLiteral("song.mp3"));
    WriteAll(path, Input(data, size));

    // What an earlier song left; the marks show whether this one overwrote it.
    Mp3FrameInfo info;
    info.EncodingText = info.DurationText = info.ChannelMark = QStringLiteral("earlier");
    info.DurationSeconds = -1;
    // Files this small can never overflow, so any run-time error is a fault
    // and is left to escape.
    const Mp3Analysis a = ScanMp3File(files, path, info, true);

    Require(info.FileBytes == int32_t(size), "FileBytes is not the file's length");
    const bool expectFrame = size > 3000 && HasHeaderByte(data, size);
    Require((a.outcome == Mp3Outcome::Analysed) == expectFrame, "the scan disagrees with the 3000-byte rule");
    if (a.outcome == Mp3Outcome::Analysed) {
        Require(info.EncodingText == info.BitRateText && info.BitRateText.size() >= 3, "no bit-rate label");
        Require(info.ChannelMark == (a.Mono ? u"M:" : u"S:"), "channel mark and mono disagree");
        Require(info.DurationSeconds >= 0 && info.DurationSeconds <= int32_t(size / 4000 + 1), "time out of reach");
        const QString time = QString::number(info.DurationSeconds / 60) + u':' +
                             QString::number(info.DurationSeconds % 60).rightJustified(2, u'0');
        Require(info.DurationText == time, "duration text disagrees with the seconds");
        for (const QString* t : {&info.VersionText, &info.LayerText, &info.ProtectionText, &info.SampleRateText,
                                 &info.CopyrightText, &info.OriginalText, &info.EmphasisText})
            Require(!t->isEmpty() && *t != u"???", "a header text is missing");
    } else {
        Require(a.outcome == Mp3Outcome::NoFrame, "an existing file counted as missing");
        Require(info.BitRateText == u"???" && info.EmphasisText == u"???", "a failed analysis left a header text");
        Require(info.EncodingText == u"earlier" && info.DurationText == u"earlier" && info.ChannelMark == u"earlier" &&
                    info.DurationSeconds == -1,
                "a failed analysis overwrote the earlier song's results");
    }
    return 0;
}
