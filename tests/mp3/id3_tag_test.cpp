// The tag at the end of a song file: what a read takes from the last 128
// bytes, where a write puts the record for each kind of caller, and the
// style table's two ways of reading a style the published list lacks.
#include "mp3/id3_tag.h"
#include "platform/file_system.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>

// Failures show texts as text.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace zor {
namespace {

using testing::ErrorOf;
using testing::FileBytes;
using testing::WriteFileBytes;

QByteArray TagBytes(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                    const QByteArray& year, const QByteArray& comment, uint8_t style, char pad = ' ') {
    const auto field = [pad](const QByteArray& text, int width) { return text.left(width).leftJustified(width, pad); };
    return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field(year, 4) + field(comment, 30) +
           char(style);
}

// Stands for the audio before a tag: every byte differs from its neighbour.
QByteArray Audio(int size) {
    QByteArray b;
    for (int i = 0; i < size; ++i) b += char(i * 7 + 1);
    return b;
}

struct TagTest : ::testing::Test {
    FileSystem fs;
    QTemporaryDir dir;
    Id3TagRecord tag;

    QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("song.mp3")) {
        const QString path = dir.path() + u'/' + name;
        EXPECT_TRUE(WriteFileBytes(path, bytes));
        return path;
    }
};

TEST_F(TagTest, AMarkedTagIsReadTrimmedWithZerosKept) {
    const QByteArray tail = TagBytes("  Caf\xE9 \x80 Song ", "Artist", " Album", "1999", "Score", 17);
    ASSERT_TRUE(ReadId3Tag(fs, Write(Audio(5000) + tail), tag));
    // Windows-1252 text; leading blanks go, the field is padded again.
    EXPECT_EQ(tag.Title.Text(), QString::fromUtf8("Café € Song").leftJustified(30, u' '));
    EXPECT_EQ(tag.Style, 17);

    // Another tagger's zero padding survives the trim; the field is padded
    // again with one blank at the end.
    ASSERT_TRUE(ReadId3Tag(fs, Write(TagBytes(" Zeros", "A", "B", "0", "", 255, '\0')), tag));
    EXPECT_EQ(tag.Title.Text(), QStringLiteral("Zeros") + QString(24, QChar(0)) + u' ');
    EXPECT_EQ(tag.Year.Text(), QStringLiteral("0") + QString(3, QChar(0)));
}

// (A file shorter than a tag: the tag record's fuzz target.)
TEST_F(TagTest, MissingOrOddlyNamedFilesAreNeitherReadNorWritten) {
    ASSERT_TRUE(ReadId3Tag(fs, Write(TagBytes("Earlier", "Someone", "", "1990", "", 1), "earlier.mp3"), tag));
    const Id3TagRecord earlier = tag;
    const QByteArray tagged = TagBytes("New", "New", "", "", "", 2);
    QDir(dir.path()).mkdir(QStringLiteral("folder.mp3"));
    const QString folder = dir.path() + QStringLiteral("/folder.mp3"), gone = dir.path() + QStringLiteral("/gone.mp3");
    EXPECT_FALSE(ReadId3Tag(fs, gone, tag));
    EXPECT_FALSE(ReadId3Tag(fs, Write(tagged, QStringLiteral("song.flac")), tag));  // no "." fourth from the end
    EXPECT_FALSE(ReadId3Tag(fs, folder, tag));
    EXPECT_EQ(tag, earlier);
    EXPECT_FALSE(WriteId3Tag(fs, gone, tag, Id3NewTag::AtLastByte) || QFile::exists(gone));
    EXPECT_FALSE(WriteId3Tag(fs, folder, tag, Id3NewTag::Append));
}

TEST_F(TagTest, ANewTagGoesOverTheLastByteForTheEditorAndBehindTheEndForTheBatch) {
    tag.Title = QStringLiteral("Fresh"), tag.Year = QStringLiteral("0"), tag.Style = 79;
    for (int size : {1000, 128}) {
        const QByteArray audio = Audio(size);
        const std::pair<Id3NewTag, QByteArray> cases[] = {{Id3NewTag::AtLastByte, audio.chopped(1)},
                                                          {Id3NewTag::Append, audio}};
        for (const auto& [where, before] : cases) {
            SCOPED_TRACE(::testing::Message() << size << ' ' << int(where));
            Id3TagRecord t = tag;
            const QString path = Write(audio);
            ASSERT_TRUE(WriteId3Tag(fs, path, t, where));
            EXPECT_EQ(FileBytes(path), before + TagBytes("Fresh", "", "", "0", "", 79));
        }
    }
}

TEST_F(TagTest, ARecordWithTheMarkerIsWrittenOverTheOldTagWhateverTheCallersChoice) {
    const QByteArray audio = Audio(2000);
    for (Id3NewTag where : {Id3NewTag::AtLastByte, Id3NewTag::Append}) {
        const QString path = Write(audio + TagBytes("Old", "Old", "Old", "1970", "", 3));
        ASSERT_TRUE(ReadId3Tag(fs, path, tag));
        tag.Artist = QStringLiteral("New artist");
        ASSERT_TRUE(WriteId3Tag(fs, path, tag, where));
        EXPECT_EQ(FileBytes(path), audio + TagBytes("Old", "New artist", "Old", "1970", "", 3));
    }
    // A marker left from another song counts too: those 128 bytes are taken.
    const QString untagged = Write(audio);
    ASSERT_TRUE(WriteId3Tag(fs, untagged, tag, Id3NewTag::Append));
    EXPECT_EQ(FileBytes(untagged), audio.left(2000 - 128) + TagBytes("Old", "New artist", "Old", "1970", "", 3));
}

// A write cut short by the file size limit, as by a full disk, leaves the
// song as it was: no half tag at its end.
TEST_F(TagTest, ATagWriteCutShortLeavesTheSongAsItWas) {
    const QByteArray audio = Audio(1000);
    const QString path = Write(audio);
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit cut{1000 + 60, old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &cut), 0);
    tag.Title = QStringLiteral("Half");
    const bool written = WriteId3Tag(fs, path, tag, Id3NewTag::AtLastByte);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);
    EXPECT_FALSE(written);
    EXPECT_EQ(FileBytes(path), audio);
}

TEST_F(TagTest, FieldsAreCutOrPaddedToTheirWidthAndHoldOnlyWindows1252) {
    tag.Title = QStringLiteral("1234567890123456789012345678901");  // 31
    tag.Comment = QStringLiteral("abcdefghijklmnopqrstuvwxyz1234");  // 30: bytes 125 and 126 are comment
    tag.Artist = QString::fromUtf8("Dvořák – ♫");
    tag.Year = QStringLiteral("19999");
    const QString path = Write(Audio(200));
    ASSERT_TRUE(WriteId3Tag(fs, path, tag, Id3NewTag::Append));
    EXPECT_EQ(FileBytes(path).mid(200), TagBytes("123456789012345678901234567890", "Dvo?\xE1k \x96 ?", "", "1999",
                                            "abcdefghijklmnopqrstuvwxyz1234", 0));
}

TEST(StyleTable, NamesEveryIndexAndReadsStylesPastThePublishedListTwoWays) {
    EXPECT_EQ(StyleName(0) + StyleName(67) + StyleName(79) + StyleName(80), u"BluesPsychadelicHard RockUnknown");
    EXPECT_EQ(ErrorOf([] { StyleName(81); }), 9);
    EXPECT_EQ(ErrorOf([] { StyleName(-1); }), 9);
    // A tag's style above 79: "Other" on the tag screens, "Unknown" in the catalogue.
    EXPECT_EQ(StyleName(StyleOnTagScreens(80)) + StyleName(StyleForCatalogue(255)), u"OtherUnknown");
    EXPECT_EQ(StyleOnTagScreens(79) + StyleForCatalogue(79), 158);
}

}  // namespace
}  // namespace zor
