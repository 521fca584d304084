// The tag at the end of a song file: what a read takes from the last 128
// bytes, where a write puts the record for each kind of caller, and the
// style table's two ways of reading a style the published list lacks.
#include "mp3/id3_tag.h"
#include "platform/file_system.h"
#include "tests/support/errors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// Failures show texts as text.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace zor {
namespace {

using testing::ErrorOf;

QByteArray Field(const QByteArray& text, int width, char pad = ' ') {
    QByteArray b = text.left(width);
    b.append(width - b.size(), pad);
    return b;
}

QByteArray TagBytes(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                    const QByteArray& year, const QByteArray& comment, uint8_t style, char pad = ' ') {
    return "TAG" + Field(title, 30, pad) + Field(artist, 30, pad) + Field(album, 30, pad) + Field(year, 4, pad) +
           Field(comment, 30, pad) + char(style);
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
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
        return path;
    }
    static QByteArray Read(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    // A record read from a tagged file, to show what a later read keeps.
    void ReadEarlierTag() {
        ASSERT_TRUE(ReadId3Tag(fs, Write(TagBytes("Earlier", "Someone", "", "1990", "", 1), "earlier.mp3"), tag));
    }
};

TEST_F(TagTest, AMarkedTagIsReadFromTheLast128BytesWithBlanksTrimmedAndZerosKept) {
    const QByteArray tail = TagBytes("  Caf\xE9 \x80 Song ", "Artist", " Album", "1999", "Score", 17);
    ASSERT_TRUE(ReadId3Tag(fs, Write(Audio(5000) + tail), tag));
    EXPECT_EQ(tag.Tag.Text(), u"TAG");
    // Windows-1252 text; leading blanks go, the field is padded again.
    EXPECT_EQ(tag.Title.Text(), QString::fromUtf8("Café € Song").leftJustified(30, u' '));
    EXPECT_EQ(tag.Album.Text(), QStringLiteral("Album").leftJustified(30, u' '));
    EXPECT_EQ(tag.Year.Text(), u"1999");
    EXPECT_EQ(tag.Comment.Text(), QStringLiteral("Score").leftJustified(30, u' '));
    EXPECT_EQ(tag.Style, 17);

    // Another tagger's zero padding survives the trim.
    ASSERT_TRUE(ReadId3Tag(fs, Write(TagBytes(" Zeros", "A", "B", "0", "", 255, '\0')), tag));
    // The leading blank goes; the field is padded again with one at the end.
    EXPECT_EQ(tag.Title.Text(), QStringLiteral("Zeros") + QString(24, QChar(0)) + u' ');
    EXPECT_EQ(tag.Year.Text(), QStringLiteral("0") + QString(3, QChar(0)));

    // A file that is nothing but a tag is read as one.
    ASSERT_TRUE(ReadId3Tag(fs, Write(TagBytes("Only", "", "", "", "", 0)), tag));
    EXPECT_EQ(tag.Title.Text().trimmed(), u"Only");
}

TEST_F(TagTest, WithoutTheMarkerTheLast128BytesAreTakenAsTheyAre) {
    const QByteArray tail = "TAB  " + Audio(123);
    EXPECT_FALSE(ReadId3Tag(fs, Write(Audio(300) + tail), tag));
    EXPECT_FALSE(tag.HasMarker());
    EXPECT_EQ(EncodeId3Tag(tag), tail);
}

TEST_F(TagTest, NothingIsReadFromShortMissingOrOddlyNamedFilesAndTheRecordStays) {
    ReadEarlierTag();
    const Id3TagRecord earlier = tag;
    const QByteArray tagged = TagBytes("New", "New", "", "", "", 2);
    EXPECT_FALSE(ReadId3Tag(fs, Write(tagged.left(127)), tag));
    EXPECT_FALSE(ReadId3Tag(fs, dir.path() + QStringLiteral("/gone.mp3"), tag));
    EXPECT_FALSE(ReadId3Tag(fs, Write(tagged, QStringLiteral("song.flac")), tag));  // no "." fourth from the end
    EXPECT_FALSE(ReadId3Tag(fs, Write(tagged, QStringLiteral("mp3")), tag));
    QDir(dir.path()).mkdir(QStringLiteral("folder.mp3"));
    EXPECT_FALSE(ReadId3Tag(fs, dir.path() + QStringLiteral("/folder.mp3"), tag));
    EXPECT_EQ(tag, earlier);
    EXPECT_TRUE(ReadId3Tag(fs, Write(tagged, QStringLiteral("x.mp3")), tag));
}

TEST_F(TagTest, ANewTagGoesOverTheLastByteForTheEditorAndBehindTheEndForTheBatch) {
    const QByteArray audio = Audio(1000);
    ReadEarlierTag();
    Id3TagRecord fresh;
    fresh.Title = QStringLiteral("Fresh");
    fresh.Year = QStringLiteral("0");
    fresh.Style = 79;
    struct Case {
        Id3NewTag where;
        QByteArray before;
    };
    for (const Case& c : {Case{Id3NewTag::AtLastByte, audio.left(999)}, Case{Id3NewTag::Append, audio}}) {
        SCOPED_TRACE(int(c.where));
        Id3TagRecord t = fresh;
        const QString path = Write(audio);
        ASSERT_TRUE(WriteId3Tag(fs, path, t, c.where));
        EXPECT_TRUE(t.HasMarker());
        const QByteArray after = Read(path);
        EXPECT_EQ(after, c.before + TagBytes("Fresh", "", "", "0", "", 79));
        Id3TagRecord back;
        ASSERT_TRUE(ReadId3Tag(fs, path, back));
        EXPECT_EQ(back, t);
    }
}

TEST_F(TagTest, ARecordWithTheMarkerIsWrittenOverTheOldTagWhateverTheCallersChoice) {
    const QByteArray audio = Audio(2000);
    for (Id3NewTag where : {Id3NewTag::AtLastByte, Id3NewTag::Append}) {
        const QString path = Write(audio + TagBytes("Old", "Old", "Old", "1970", "", 3));
        ASSERT_TRUE(ReadId3Tag(fs, path, tag));
        tag.Artist = QStringLiteral("New artist");
        ASSERT_TRUE(WriteId3Tag(fs, path, tag, where));
        EXPECT_EQ(Read(path), audio + TagBytes("Old", "New artist", "Old", "1970", "", 3));
    }
    // A marker left from another song counts too: those 128 bytes are taken.
    const QString untagged = Write(audio);
    ASSERT_TRUE(WriteId3Tag(fs, untagged, tag, Id3NewTag::Append));
    EXPECT_EQ(Read(untagged), audio.left(2000 - 128) + TagBytes("Old", "New artist", "Old", "1970", "", 3));
}

TEST_F(TagTest, FieldsAreCutOrPaddedToTheirWidthAndHoldOnlyWindows1252) {
    tag.Title = QStringLiteral("1234567890123456789012345678901");  // 31
    tag.Comment = QStringLiteral("abcdefghijklmnopqrstuvwxyz1234");  // 30: bytes 125 and 126 are comment
    tag.Artist = QString::fromUtf8("Dvořák – ♫");
    tag.Year = QStringLiteral("19999");
    const QString path = Write(Audio(200));
    ASSERT_TRUE(WriteId3Tag(fs, path, tag, Id3NewTag::Append));
    const QByteArray written = Read(path).mid(200);
    EXPECT_EQ(written, TagBytes("123456789012345678901234567890", "Dvo?\xE1k \x96 ?", "", "1999",
                                "abcdefghijklmnopqrstuvwxyz1234", 0));
}

TEST_F(TagTest, OnlyAnExistingFileOf128BytesOrMoreIsWritten) {
    const QString small = Write(Audio(127));
    EXPECT_FALSE(WriteId3Tag(fs, small, tag, Id3NewTag::Append));
    EXPECT_EQ(Read(small), Audio(127));
    EXPECT_FALSE(tag.HasMarker());
    const QString gone = dir.path() + QStringLiteral("/gone.mp3");
    EXPECT_FALSE(WriteId3Tag(fs, gone, tag, Id3NewTag::AtLastByte));
    EXPECT_FALSE(QFile::exists(gone));
    QDir(dir.path()).mkdir(QStringLiteral("folder.mp3"));
    EXPECT_FALSE(WriteId3Tag(fs, dir.path() + QStringLiteral("/folder.mp3"), tag, Id3NewTag::Append));
    // 128 bytes of audio, edited: the last byte goes under the tag.
    const QString exact = Write(Audio(128));
    EXPECT_TRUE(WriteId3Tag(fs, exact, tag, Id3NewTag::AtLastByte));
    EXPECT_EQ(Read(exact).size(), 255);
}

TEST(StyleTable, NamesEveryIndexAndReadsStylesPastThePublishedListTwoWays) {
    EXPECT_EQ(StyleName(0), u"Blues");
    EXPECT_EQ(StyleName(kStyleOther), u"Other");
    EXPECT_EQ(StyleName(67), u"Psychadelic");
    EXPECT_EQ(StyleName(kLastPublishedStyle), u"Hard Rock");
    EXPECT_EQ(StyleName(kStyleUnknown), u"Unknown");
    EXPECT_EQ(ErrorOf([] { StyleName(81); }), 9);
    EXPECT_EQ(ErrorOf([] { StyleName(-1); }), 9);
    // A tag's style 255: "Other" on the tag screens, "Unknown" in the catalogue.
    EXPECT_EQ(StyleName(StyleOnTagScreens(255)), u"Other");
    EXPECT_EQ(StyleName(StyleForCatalogue(255)), u"Unknown");
    EXPECT_EQ(StyleName(StyleOnTagScreens(80)), u"Other");
    EXPECT_EQ(StyleName(StyleForCatalogue(79)), u"Hard Rock");
    EXPECT_EQ(StyleOnTagScreens(79), 79);
}

}  // namespace
}  // namespace zor
