// What the tag editor and the trimming window make of outside data: tag
// texts and file names as any bytes, and any song length with any slider
// setting. The case rules, the names from a file, the decade and style rules
// and the score block must never crash or hang; a name taken from a path is
// a piece of that path; a score block read back holds what was put in; and
// every copy the trimming window plans stays inside the song.
#include "fuzz/fuzz_support.h"
#include "mp3/tag_editor.h"
#include "mp3/trim.h"
#include "platform/cp1252.h"
#include "platform/vb.h"

#include <cstdint>
#include <cstring>

namespace {

using namespace zor;
using namespace zor::fuzzing;

void CheckCopyInside(const std::optional<BlockCopy>& copy, qint64 length) {
    if (!copy) return;
    Require(copy->from >= 1 && copy->blocks >= 0 && copy->restBytes >= 0, "a copy that runs backwards");
    if (copy->Bytes() > 0) Require(copy->from - 1 + copy->Bytes() <= length, "a copy that reads past the song");
}

void CheckTrim(qint64 length, int ms) {
    const qint64 cut = TrimCut(ms);
    CheckCopyInside(TrialCopy(length, cut, TrimEnd::Beginning), length);
    CheckCopyInside(TrialCopy(length, cut, TrimEnd::End), length);
    CheckCopyInside(EndTrimCopy(length, cut), length);
}

void CheckTexts(const QString& text) {
    EditorFields fields{text, text.right(40), text.left(30), text, text.left(4), 80};
    CapitaliseWords(fields);
    SwapTitleAndArtist(fields);
    AutoAlbum(fields);
    AutoStyle(fields);
    Require(StyleToSave(fields.Style) >= 1, "a style a save may not store");

    EditorFields named;
    TakeNamesFromFile(text, named);
    const QString trimmed = vb::Trim(text);
    Require(trimmed.contains(named.Title) && trimmed.contains(named.Artist), "a name that is not in the path");

    const QString commented = WithCommentBlock(text, CommentBlock(10, 100, true));
    Require(commented.size() <= 30, "a comment longer than the tag holds");
    CommentScore score;
    Require(ReadCommentBlock(commented, score), "a block written is not read back");
    Require(score.score == 10 && score.reach == 100 && score.special, "a block reads back otherwise");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size >= 6) {
        uint32_t length = 0;
        uint16_t ms = 0;
        std::memcpy(&length, data, 4);
        std::memcpy(&ms, data + 4, 2);
        CheckTrim(qint64(length), ms % (kTrimMaxMs + 1));
    }
    const QByteArray bytes = Input(data, size);
    CheckTexts(cp1252::Decode(bytes));
    CheckTexts(QString::fromUtf8(bytes));
    return 0;
}
