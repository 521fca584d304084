// The play engine on the real main window with the fake player and the fake
// clock, so a song of a minute plays in an instant: the count-down, the
// player's corrections, the failure question, the stops, the events, the
// picture turns and a double click on top of a playing song. One test plays
// a real MP3 through GStreamer into the fake sink.
#include "platform/gst_player.h"
#include "platform/system_services.h"
#include "playback/play_engine.h"
#include "playback/ui/companion_forms.h"
#include "playback/ui/companions.h"
#include "playback/ui/play_ops.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_test.h"
#include "tests/support/song_bytes.h"

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// The edges no song played through the window reaches: where the artistic
// title's pulse turns, and a picture interval left unset, which must not
// become a timer that never rests.
TEST(PlayEngineEdges, TheTitlePulseTurnsAt20And12AndAnUnsetIntervalIsSixSeconds) {
    EXPECT_EQ(NextTitlePulse(20, 1), -1);
    EXPECT_EQ(NextTitlePulse(19.5, 1), 1);
    EXPECT_EQ(NextTitlePulse(12, -1), -1);
    EXPECT_EQ(NextTitlePulse(11.5, -1), 1);
    EXPECT_EQ(PictureIntervalMs(0), 6000);
}

struct PlayEngineTest : FormTest {
    QString song;
    QStringList lines;  // the message line at each let-through
    std::function<void(double second)> during;  // runs at each let-through, by the song's second
    double startTimer = 0;
    void Start(std::function<void(Settings&)> edit = {}) {
        song = h.inst.home + QStringLiteral("/Band - Tune.mp3");
        ASSERT_TRUE(WriteFileBytes(song, SilentSong96(65)));
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")),
                                   {{"Tune", "Band", "", "1999", "", song},
                                    {"Other", "Nobody", "", "", "", h.inst.home + QStringLiteral("/gone.mp3")}});
        h.inst.EditSettings([&](Settings& s) {
            s.SortAtStart = 0;
            s.PlayerChoice = 4;
            s.FastPc = 1;
            s.LogActivity = 1;
            s.ShowLyricsAtPlay = s.ShowPictureAtPlay = 0;
            if (edit) edit(s);
        });
        ASSERT_TRUE(h.Start());
        h.inst.tp.players.durations[song] = 65;
        h.inst.tp.events.onDoEvents = [this](int) {
            lines << f().Text1->text();
            if (during) during(Second());
        };
    }
    FakeMediaPlayer& player() { return h.inst.tp.players.Last(); }
    double Second() const { return h.inst.tp.clock.timer - startTimer; }
    void DoubleClick(int row) {
        f().MFGrid1.SetRow(row);
        startTimer = h.inst.tp.clock.timer;
        DoubleClickCatalogueGrid(f());
    }
    int LogLines(const char* title) {
        return int(FileBytes(h.inst.File(QStringLiteral("ZORjuke.log"))).count(QByteArray(title).leftJustified(30, ' ')));
    }
    bool Shown(const QString& text) const { return lines.contains(text); }
};

TEST_F(PlayEngineTest, ASongPlaysToItsEndCountingDownAndIsLoggedAndAMissingOneIsOnlyLogged) {
    Start();
    DoubleClick(1);
    EXPECT_NEAR(Second(), 65, 2);
    EXPECT_EQ(LogLines("Tune"), 1);
    EXPECT_EQ(player().calls.first(), QStringLiteral("Open ") + song);
    const QString line = QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05");
    EXPECT_TRUE(Shown(line + QStringLiteral(" , Remaining: 65 sec.")));
    // A second into the song the player is a little past its first second.
    EXPECT_TRUE(Shown(line + QStringLiteral(" , Remaining: 1:03")));
    EXPECT_TRUE(Shown(line + QStringLiteral(" , Remaining: 1:00")));  // a whole minute is no "0:60"
    // The end tidies up: the count line, the bar, the clock text, the timer.
    EXPECT_EQ(j().Mp3Info.DurationSeconds, 0);
    EXPECT_EQ(j().PlayStopped, 0);
    h.inst.tp.clock.Advance(1);  // the player's own end stops the catalogue
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(f().Lable1->text(), QStringLiteral("     Files:"));
    EXPECT_EQ(f().ProgressBar1->value(), 0);
    EXPECT_EQ(f().Text8->text(), QStringLiteral("00:00"));
    EXPECT_FALSE(f().Timer3->isActive());
    DoubleClick(2);
    EXPECT_EQ(LogLines("Other"), 1);
    EXPECT_TRUE(player().calls.filter(QStringLiteral("gone")).isEmpty());
    EXPECT_TRUE(f().MFGrid1.Redraw());
}

TEST_F(PlayEngineTest, APausePushesTheEndOutAndAnIntroOrACutShortSongEndsEarly) {
    Start();
    during = [this](double s) {
        if (s >= 10 && player().PlayState() == mpPlaying && player().calls.count(QStringLiteral("Pause")) == 0) player().Pause();
        if (s >= 20 && player().PlayState() == mpPaused) player().Play();
    };
    DoubleClick(1);
    EXPECT_NEAR(Second(), 75, 2);
    EXPECT_TRUE(Shown(QStringLiteral("Playing of song pauzed.")));
    // A small value written into DurationSeconds ends the song at the next
    // spin; the player is left playing for whatever comes next.
    during = [this](double s) {
        if (s >= 10) j().Mp3Info.DurationSeconds = 1;
    };
    DoubleClick(1);
    EXPECT_NEAR(Second(), 11, 1.5);
    EXPECT_EQ(player().PlayState(), mpPlaying);
    EXPECT_EQ(LogLines("Tune"), 2);
    during = nullptr;
    j().settings.IntroSeconds = 15;
    j().IntroOnly = 1;
    f().MFGrid1.SetRow(1);
    startTimer = h.inst.tp.clock.timer;
    PlayGridRow(f(), f().MFGrid1);
    EXPECT_NEAR(Second(), 15, 1.5);
    EXPECT_TRUE(Shown(QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05 INTRO'S, 15 sec.")));
}

TEST_F(PlayEngineTest, WithoutFastPcTheSongIsLeftToThePlayerAndTheDelayedStartPlaysAtItsSecondTick) {
    Start([](Settings& s) { s.FastPc = 0; });
    DoubleClick(1);
    EXPECT_EQ(Second(), 0);
    EXPECT_EQ(player().PlayState(), mpPlaying);
    EXPECT_EQ(f().Text1->text(), j().engine.SongInfoLine);
    EXPECT_EQ(j().PlayStopped, 0);
    // The player's end is then the song's end.
    h.inst.tp.clock.Advance(66);
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playing of song stopped."));
    player().calls.clear();
    j().engine.DelayTicks = 0;
    f().Timer4->start();
    Timer4Tick(f());
    EXPECT_TRUE(player().calls.isEmpty());
    Timer4Tick(f());
    EXPECT_EQ(player().calls.value(0), QStringLiteral("Open ") + song);
    for (int i = 0; i < 18; ++i) Timer4Tick(f());
    EXPECT_FALSE(f().Timer4->isActive());  // it stops at twenty
}

TEST_F(PlayEngineTest, APlayerErrorAsksWhetherToRepairAndYesTriesAgain) {
    Start();
    h.inst.tp.players.errors[song] = 1;
    DoubleClick(1);
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].text, QStringLiteral("The ZOR JUKEBOX cannot play this file. \n"
                                                      "Probable cause is that the MP3 file has a non-standard header.\n\n"
                                                      "Should the ZOR JUKEBOX try to correct this?  "));
    EXPECT_EQ(h.boxes().shown[0].flags, vbYesNo | vbExclamation | vbDefaultButton2);
    EXPECT_EQ(LogLines("Tune"), 1);  // No is the default: the song ends
    h.boxes().answers = {vbYes, vbNo};
    j().Language = QStringLiteral("0");
    DoubleClick(1);
    ASSERT_EQ(h.boxes().shown.size(), 3u);
    EXPECT_EQ(h.boxes().shown[1].title, QStringLiteral("ZOR JUKEBOX - Media-Player PROBLEEM"));
    EXPECT_EQ(LogLines("Tune"), 3);  // the second try logs again
    EXPECT_EQ(player().calls.count(QStringLiteral("Open ") + song), 3);
    // In the playlist the loop moves on without a question.
    j().PlaylistActive = 1;
    h.boxes().shown.clear();
    PlayGridRow(f(), f().MFGrid1);
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(j().Mp3Info.DurationSeconds, 0);
}

// Both stop the song and open the scratch file that frees it; the program
// lives on. Esc with no song playing ends it: LeavingTheProgram.
TEST_F(PlayEngineTest, HaltAndEscStopTheSongAndFreeItsFile) {
    Start();
    const QString zor3 = QStringLiteral("Open ") + j().ProgramFile(QStringLiteral("ZOR3.mp3"));
    for (const bool esc : {false, true}) {
        SCOPED_TRACE(esc ? "Esc" : "Halt1");
        during = [this, esc](double s) {
            if (s < 5 || j().PlayStopped != 0) return;
            if (esc) QTest::keyClick(&f(), Qt::Key_Escape);
            else h.Click("Halt1");
        };
        DoubleClick(1);
        EXPECT_NEAR(Second(), 6, 1.5);
        EXPECT_EQ(player().calls.mid(player().calls.size() - 2), QStringList({QStringLiteral("Stop"), zor3}));
    }
    EXPECT_EQ(h.inst.tp.process.ends, 0);
}

TEST_F(PlayEngineTest, PlayerEventsSayWhatHappenedInBothLanguagesAndTheListCountsOnAStop) {
    Start();
    j().engine.SongInfoLine = QStringLiteral("> line");
    j().Mp3Info.DurationSeconds = 40;
    j().PlayStopped = 0;
    j().PlaylistActive = 1;
    PlayerStateChanged(f(), mpStopped);
    EXPECT_EQ(j().PlayStopped, 0);
    EXPECT_EQ(j().Mp3Info.DurationSeconds, 40);
    PlayerStateChanged(f(), mpPlaying);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("> line"));
    j().PlaylistActive = 0;
    j().Language = QStringLiteral("0");
    PlayerStateChanged(f(), mpPaused);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Afspelen gepauzeerd"));
    PlayerStateChanged(f(), mpStopped);
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Afspelen gestopt."));
    EXPECT_EQ(j().PlayStopped, 1);
    EXPECT_EQ(j().Mp3Info.DurationSeconds, 0);
}

TEST_F(PlayEngineTest, PicturesTurnWhileTenSecondsRemainAndStopBelow) {
    Start([](Settings& s) {
        s.AlternatePictures = 1;
        s.PictureInterval = 4;
    });
    j().Mp3Info.DurationSeconds = 30;
    j().engine.PictureTurn = 0;
    f().Timer3->setInterval(7000);
    for (int turn : {1, 2, 0, 1}) {
        Timer3Tick(f());
        EXPECT_EQ(j().engine.PictureTurn, turn);
    }
    EXPECT_EQ(f().Timer3->interval(), 2000);
    f().Timer3->setInterval(7000);
    j().Mp3Info.DurationSeconds = 9;
    Timer3Tick(f());
    EXPECT_EQ(j().engine.PictureTurn, 1);
    EXPECT_EQ(f().Timer3->interval(), 7000);
}

TEST_F(PlayEngineTest, LyricsScrollWithTheSongOnlyWhenLongerThanTenLines) {
    Start([](Settings& s) {
        s.ShowLyricsAtPlay = 1;
        s.ScrollLyrics = 1;
        s.MaximizePicture = 0;
    });
    const QString lyrics = h.inst.home + QStringLiteral("/tune.txt");
    f().MFGrid1.SetTextMatrix(1, 8, lyrics);  // the Lyrics cell names the file
    for (int count : {11, 10}) {
        SCOPED_TRACE(count);
        ASSERT_TRUE(WriteFileBytes(lyrics, QByteArray("a line\r\n").repeated(count)));
        DoubleClick(1);
        const int line = f().companions->Form3().Face()->textCursor().blockNumber();
        if (count > 10)
            EXPECT_GT(line, 5);
        else
            EXPECT_EQ(line, 0);
    }
}

TEST_F(PlayEngineTest, ASkinChangeDuringASongEndsItAndTheOldWindowOutlivesItsOwnHandler) {
    Start();
    QPointer<Form1> old(&f());
    bool changed = false, outlived = false;
    during = [&](double second) {
        if (second < 3 || changed) return;
        changed = true;
        h.Click("Ascreen");
        // A real let-through carries out the deletions posted meanwhile.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        outlived = !old.isNull();
    };
    f().MFGrid1.SetRow(1);
    startTimer = h.inst.tp.clock.timer;
    old->Run(DoubleClickCatalogueGrid);
    ASSERT_TRUE(changed);
    EXPECT_TRUE(outlived);
    EXPECT_LT(Second(), 10);  // the song ended with its window
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(old.isNull());
    EXPECT_EQ(j().settings.ArtisticScreen, 1);
    EXPECT_TRUE(f().isVisible());
}

TEST_F(PlayEngineTest, ADoubleClickDuringASongPlaysOnTopAndBothEnd) {
    Start();
    int nested = 0;
    during = [&](double s) {
        if (s >= 5 && nested++ == 0) DoubleClickCatalogueGrid(f());
    };
    DoubleClick(1);
    EXPECT_GT(nested, 0);
    EXPECT_EQ(LogLines("Tune"), 2);
    EXPECT_NEAR(Second(), 5 + 65, 3);  // the second song, then the first sees it is over
    EXPECT_EQ(j().PlayStopped, 1);
}

TEST_F(PlayEngineTest, ADoubleClickEndsVoiceSteeringAndGoesToTheMixerWhenOpen) {
    Start();
    QStringList calls;
    j().HideFindWindow = [&] { calls << QStringLiteral("find hidden"); };
    j().LoadRowIntoMixer = [&](SongGrid& g) { calls << QStringLiteral("mixer row %1").arg(g.Row()); };
    j().engine.FreeSpeechEnabled = 1;
    j().engine.MixerOpen = 1;
    DoubleClick(1);
    EXPECT_EQ(calls, QStringList{QStringLiteral("mixer row 1")});
    EXPECT_EQ(j().engine.FreeSpeechEnabled, 0);
    EXPECT_EQ(LogLines("Tune"), 0);  // the mixer took it: nothing played
    calls.clear();
    j().engine.MixerOpen = 0;
    DoubleClick(1);
    EXPECT_EQ(calls, QStringList{QStringLiteral("find hidden")});
    EXPECT_EQ(LogLines("Tune"), 1);
}

TEST_F(PlayEngineTest, WithoutADesktopProgramPcDefaultPlaysTheSongOnTheInternalPlayerAndSaysSo) {
    // The first-use settings: PC Default, no count-down in the catalogue.
    Start([](Settings& s) {
        s.PlayerChoice = 0;
        s.FastPc = 0;
    });
    h.inst.tp.desktop.succeed = false;
    const struct {
        const char* language;
        QString line;
    } cases[] = {
        {"1", QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05 - No PC Default player for this file: played by the "
                             "ZOR player.")},
        {"0", QStringLiteral("> Tune - Band,  96 kb/s.; Duur: 1:05 - Geen PC Default speler voor dit bestand: gespeeld "
                             "door de ZOR player.")},
    };
    for (const auto& c : cases) {
        j().Language = QString::fromLatin1(c.language);
        DoubleClick(1);
        EXPECT_EQ(h.inst.tp.desktop.opened.last(), song);
        EXPECT_EQ(player().calls.last(), QStringLiteral("Open ") + song);
        EXPECT_EQ(player().PlayState(), mpPlaying);
        EXPECT_EQ(Second(), 0);  // no settle wait: the engine sees this player
        EXPECT_EQ(f().Text1->text(), c.line);
    }
    // The player's frame comes up in its own place, not over the bar.
    EXPECT_TRUE(f().Frame8->isVisible());
    EXPECT_EQ(f().Frame8->pos(), QPoint(616, 8));
    // A desktop that takes the song gets it after the settle second and
    // leaves the internal player silent and the fallback unsaid; the
    // count-down, when on, runs by the clock.
    h.inst.tp.desktop.succeed = true;
    player().calls.clear();
    j().Language = QStringLiteral("1");
    j().settings.FastPc = 1;
    during = [this](double) { h.Tick(1); };
    h.inst.tp.events.processRealEvents = false;
    DoubleClick(1);
    EXPECT_EQ(h.inst.tp.desktop.opened.last(), song);
    EXPECT_NEAR(Second(), 1 + 65, 3);
    EXPECT_EQ(player().calls.filter(QStringLiteral("Open")), QStringList());
    EXPECT_NE(player().PlayState(), mpPlaying);
    EXPECT_FALSE(f().Frame8->isVisible());
    EXPECT_TRUE(Shown(QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05 , Remaining: 65 sec.")));
}

TEST_F(PlayEngineTest, ASongWhoseLengthThePlayerCannotTellPlaysForTheAnalysersLength) {
    Start();
    h.inst.tp.players.durations.erase(song);  // Duration stays 0
    DoubleClick(1);
    EXPECT_NEAR(Second(), 65, 2);
    EXPECT_TRUE(Shown(QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05 , Remaining: 0:30")));
}

TEST_F(PlayEngineTest, ATagsZeroBytesEndItsTextsOnScreenInTheLogAndWhereTheyBecomeFileNames) {
    Start([](Settings& s) { s.ArtisticScreen = 1; });
    const QString pictures = h.inst.home;
    ASSERT_TRUE(QImage(8, 6, QImage::Format_RGB32).save(pictures + QStringLiteral("/Band.jpg"), "JPG"));
    j().settings.PicturesPath = pictures;
    j().settings.ShowPictureAtPlay = 1;
    // A title and an artist as a tag pads them, and a path that ends in zeros.
    const QString zeros(5, QChar(0));
    f().MFGrid1.SetTextMatrix(1, 1, QStringLiteral("Tune") + zeros);
    f().MFGrid1.SetTextMatrix(1, 2, QStringLiteral("Band") + zeros + QStringLiteral("junk"));
    f().MFGrid1.SetTextMatrix(1, 6, song + zeros);
    static QStringList warnings;
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) { warnings << message; });
    DoubleClick(1);
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings.filter(QStringLiteral("Broken filename")).size(), 0);
    EXPECT_EQ(player().calls.first(), QStringLiteral("Open ") + song);
    EXPECT_TRUE(Shown(QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05 , Remaining: 65 sec.")));
    EXPECT_EQ(f().Text6->text(), QStringLiteral("Band"));
    EXPECT_EQ(f().Text7->text(), QStringLiteral("Tune"));
    // The picture was found by the artist's name alone, at the first look.
    EXPECT_EQ(j().companion.PictureNumber, 1);
    const QByteArray log = FileBytes(h.inst.File(QStringLiteral("ZORjuke.log")));
    EXPECT_FALSE(log.contains('\0'));
    EXPECT_TRUE(log.contains(QByteArray("Tune").leftJustified(30, ' ') + QByteArray("Band").leftJustified(20, ' ')));
}

// A real song through GStreamer into the fake sink, by the real clock.
TEST(PlayEngineRealPlayer, ASongPlaysThroughToItsEnd) {
    const AudioTools tools;
    if (!tools.Usable()) GTEST_SKIP() << "sox and lame are needed to make the song; not found";
    TestInstallation inst;
    const QString mp3 = inst.home + QStringLiteral("/Tone.mp3");
    ASSERT_TRUE(tools.Mp3(mp3, 3, {"-b", "128"}));
    TestInstallation::AddSongs(inst.File(QStringLiteral("Mp3data1.mdb")), {{"Tone", "Sine", "", "", "", mp3}});
    inst.EditSettings([](Settings& st) {
        st.SortAtStart = 0;
        st.PlayerChoice = 4;
        st.FastPc = 1;
        st.ShowLyricsAtPlay = st.ShowPictureAtPlay = 0;
    });
    SystemClock clock;
    QtEventPump events;
    GstPlayerFactory players(inst.tp.files);
    TestPlatform& tp = inst.tp;
    Platform platform{tp.messages, tp.dialog, clock, events, tp.beeper, tp.environment, tp.process, tp.files, tp.desktop, players};
    {
        App app(platform);
        ASSERT_TRUE(app.Start());
        Form1& f = *app.MainWindow();
        f.MFGrid1.SetRow(1);
        PlayDatabaseRow(f);
        // The count-down ran with the song, not past it at once.
        EXPECT_GE(f.MediaPlayer1->CurrentPosition(), 2.0);
        EXPECT_EQ(f.MediaPlayer1->PlayerErrorFlag(), 0);
        // The count-down ends at the last whole second; the player's end
        // follows and stops the catalogue.
        for (int i = 0; i < 300 && f.MediaPlayer1->PlayState() != mpStopped; ++i) events.Wait(100);
        EXPECT_EQ(f.Text1->text(), QStringLiteral("Playing of song stopped."));
        EXPECT_EQ(app.j.PlayStopped, 1);
        EXPECT_TRUE(tp.messages.shown.empty());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace
}  // namespace zor::testing
