// The trimming window Form9 and the file information window Form10, opened
// from the main window's menus on a grid row, with the fake player.
#include "mp3/ui/form10.h"
#include "mp3/ui/form9.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// A frame header (128 kbit/s, stereo), filler without another frame start,
// a tag at the end.
QByteArray TaggedSong(qint64 n, const char* header = "\xFF\xFB\x90\x44") {
    QByteArray b(header, 4);
    for (qint64 i = 4; i < n; ++i) b += char('a' + i % 26);
    if (n >= 128) b.replace(n - 128, 128, QByteArray("TAGWaterloo").leftJustified(128, ' '));
    return b.left(n);
}

struct TrimWindowTest : ::testing::Test {
    FormHarness h;
    QTemporaryDir music;
    const QString song = music.filePath(QStringLiteral("song.mp3"));
    const QByteArray bytes = TaggedSong(200000);
    FakeMediaPlayer* player = nullptr;

    void SetUp() override {
        ASSERT_TRUE(WriteFileBytes(song, bytes));
        SongFields s;
        s[0] = QStringLiteral("Waterloo");
        s[5] = song;
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")), {s});
        ASSERT_TRUE(h.Start());
        h.form().MFGrid1.SetRow(1);
    }
    QString Program(const char* name) { return h.inst.File(QString::fromLatin1(name)); }
    Form9* OpenTrim() {
        h.Click("Short1");
        player = &h.inst.tp.players.Last();
        return h.form().findChild<Form9*>(QStringLiteral("Form9"));
    }
    Form10* OpenInfo() {
        h.Click("Tag2");
        return h.form().findChild<Form10*>(QStringLiteral("Form10"));
    }
    static QString Value(Form10* w, const char* name) { return w->findChild<QLabel*>(QString::fromLatin1(name))->text(); }
};

TEST_F(TrimWindowTest, TryPlaysTheCutSaveTrimsTheSongAndTheInformationShowsItsNewSize) {
    Form9* w = OpenTrim();
    ASSERT_TRUE(w && w->isVisible());
    EXPECT_EQ(w->windowTitle(), QStringLiteral("ZOR JUKEBOX - MP3 FILE EDITOR"));
    EXPECT_EQ(w->Text2->text(), QStringLiteral("Shortening of the BEGINNING of file: ") + song);
    // The first trial, made at load: five blocks from the first byte.
    EXPECT_EQ(FileBytes(Program("ZOR1.mp3")), bytes.left(150000));

    w->HScroll1->setValue(1000);
    EXPECT_EQ(w->Text1->text(), QStringLiteral("1000"));
    w->Option2->click();
    EXPECT_EQ(w->Text2->text(), QStringLiteral("Shortening of the END of file: ") + song);
    player->calls.clear();
    w->Command1->click();
    // 20000 bytes cut: from 70000 three blocks and 30000 bytes.
    EXPECT_EQ(player->calls.mid(player->calls.size() - 2),
              QStringList({QStringLiteral("Open ") + Program("ZOR1.mp3"), QStringLiteral("Play")}));
    EXPECT_EQ(FileBytes(Program("ZOR1.mp3")), bytes.mid(69999, 120000));
    EXPECT_EQ(FileBytes(song), bytes);

    w->Command2->click();
    // Five blocks, then 200000 - 150001 - 10000 bytes; the tag behind them.
    EXPECT_EQ(FileBytes(song), bytes.left(189999) + bytes.right(128));
    EXPECT_FALSE(QFile::exists(Program("ZOR2.mp3")));
    EXPECT_FALSE(h.inst.tp.files.IsHeldOpen(Program("ZOR1.mp3")));
    w->Command3->click();
    EXPECT_FALSE(w->isVisible());

    Form10* info = OpenInfo();
    ASSERT_TRUE(info);
    EXPECT_EQ(Value(info, "Label60"), QStringLiteral("190127  "));
    EXPECT_EQ(Value(info, "Label62"), QStringLiteral("455  "));
    EXPECT_EQ(Value(info, "Label63"), QStringLiteral("128 kb/s"));
    EXPECT_TRUE(info->Check13->isChecked());
    EXPECT_FALSE(info->Check12->isChecked());
    EXPECT_EQ(h.form().MFGrid1.Col(), 1);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(TrimWindowTest, Text1AndTheSliderFollowEachOtherAndABadValueBeeps) {
    Form9* w = OpenTrim();
    EXPECT_EQ(w->Text1->text(), QStringLiteral("0000"));
    int& beeps = h.inst.tp.beeper.beeps;
    const struct {
        const char* typed;
        int slider;
        int beeps;
    } cases[] = {{"1500", 1500, 0}, {"2001", 1500, 1}, {"abc", 1500, 1}, {"", 1500, 1}, {"12.5", 12, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        const int before = beeps;
        w->Text1->setText(QString::fromLatin1(c.typed));
        EXPECT_EQ(w->HScroll1->value(), c.slider);
        EXPECT_EQ(beeps - before, c.beeps);
    }
    w->HScroll1->setValue(50);
    EXPECT_EQ(w->Text1->text(), QStringLiteral("50"));
}

TEST_F(TrimWindowTest, TheCatalogueAndTheWindowsOwnScratchFilesAreNeverTrimmed) {
    const QString catalogue = h.inst.File(QStringLiteral("Mp3data1.mdb"));
    const QByteArray catalogueBytes = FileBytes(catalogue);
    for (const QString& path : {catalogue, Program("ZOR2.mp3"), Program("ZOR1.mp3")}) {
        SCOPED_TRACE(path.toStdString());
        if (path != catalogue) ASSERT_TRUE(WriteFileBytes(path, bytes));
        const QByteArray before = FileBytes(path);
        h.form().MFGrid1.SetTextMatrix(1, 6, path);
        Form9* w = OpenTrim();
        w->HScroll1->setValue(2000);
        w->Command1->click();
        w->Command2->click();
        EXPECT_EQ(FileBytes(path), before);
    }
    EXPECT_EQ(FileBytes(catalogue), catalogueBytes);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(TrimWindowTest, TheInformationShowsTheAnalysisOrWhatTheRecordStillHolds) {
    const QString mono = music.filePath(QStringLiteral("mono.mp3")), tiny = music.filePath(QStringLiteral("tiny.mp3"));
    ASSERT_TRUE(WriteFileBytes(mono, TaggedSong(4170, "\xFF\xFB\x90\xC4")));
    ASSERT_TRUE(WriteFileBytes(tiny, TaggedSong(416)));
    const struct {
        QString path;
        const char* size;
        const char* frames;
        const char* mpeg;
        bool monoTicked;
        size_t boxes;
    } cases[] = {
        {mono, "4170  ", "10  ", "Version 1.0  ", true, 0},
        {tiny, "416  ", "0  ", "???  ", true, 0},  // the boxes stay as they were
        {music.filePath(QStringLiteral("gone.mp3")), "416  ", "0  ", "???  ", true, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        h.form().MFGrid1.SetTextMatrix(1, 6, c.path);
        Form10* w = OpenInfo();
        EXPECT_EQ(Value(w, "Label60"), QString::fromLatin1(c.size));
        EXPECT_EQ(Value(w, "Label62"), QString::fromLatin1(c.frames));
        EXPECT_EQ(Value(w, "Label66"), QString::fromLatin1(c.mpeg));
        EXPECT_EQ(Value(w, "Label69"), QStringLiteral("  Off"));
        EXPECT_EQ(w->Check12->isChecked(), c.monoTicked);
        EXPECT_NE(w->Check13->isChecked(), c.monoTicked);
        EXPECT_EQ(h.boxes().shown.size(), c.boxes);
    }
    EXPECT_EQ(h.boxes().shown.back().flags & vbCritical, vbCritical);

    h.j().Language = QStringLiteral("0");
    Form10* w = OpenInfo();
    EXPECT_EQ(w->windowTitle(), QStringLiteral(" ZOR JUKEBOX - MP3 BESTANDSINFORMATIE"));
    EXPECT_EQ(Value(w, "Label50"), QStringLiteral("Bytes:"));
}

}  // namespace
}  // namespace zor::testing
