// A song played from MFGrid1 with the real GStreamer player, the real clock
// and the real event loop: the processor time of the whole program while the
// count-down runs with the lyrics scrolling, and the time from the double
// click to the first buffer at the sink. The floors are the same file in a
// bare player with no window, and a bare playbin started from NULL.
#include "bench/bench.h"
#include "platform/gst_player.h"
#include "platform/system_services.h"
#include "platform/testing/test_installation.h"
#include "playback/ui/play_ops.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <gst/gst.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>

namespace zor::bench {
namespace {

constexpr double kSongSeconds = 20;
// The processor time is taken over this much of the song, from a moment
// after its start, when the lyrics and the count-down are under way.
constexpr int kSettleMs = 2000;
constexpr int kMeasureMs = 10000;
constexpr int kLaterSongs = 7;

using SteadyClock = std::chrono::steady_clock;

double SecondsBetween(SteadyClock::time_point from, SteadyClock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// Process time over wall time while the events run, as a percentage of
// one core; `begin` and `end` mark the span.
class CpuSpan {
public:
    void Begin() {
        cpu_ = CpuSeconds();
        wall_.start();
    }
    void End() { percent_ = 100.0 * (CpuSeconds() - cpu_) / (double(wall_.nsecsElapsed()) / 1e9); }
    double Percent() const { return percent_; }

private:
    double cpu_ = 0;
    QElapsedTimer wall_;
    double percent_ = -1;
};

void Fail(const char* what) {
    std::fprintf(stderr, "play: %s\n", what);
    std::abort();
}

// A 20-second stereo tone, as lame makes MP3s of it: the analyser reckons the
// song's length from the file's size and bit rate.
bool MakeSong(const QString& path) {
    const QString sox = QStandardPaths::findExecutable(QStringLiteral("sox"));
    const QString lame = QStandardPaths::findExecutable(QStringLiteral("lame"));
    if (sox.isEmpty() || lame.isEmpty()) return false;
    const QString wav = path + QStringLiteral(".wav");
    const QStringList tone = {QStringLiteral("-n"), QStringLiteral("-r"), QStringLiteral("44100"),
                              QStringLiteral("-c"), QStringLiteral("2"),  wav,
                              QStringLiteral("synth"), QString::number(kSongSeconds), QStringLiteral("sine"),
                              QStringLiteral("440")};
    const bool made = QProcess::execute(sox, tone) == 0 &&
                      QProcess::execute(lame, {QStringLiteral("--quiet"), wav, path}) == 0;
    QFile::remove(wav);
    return made;
}

// Sixty lines: well over the ten below which the lyrics stand still.
void WriteLyrics(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly)) Fail("cannot write the lyrics file");
    for (int i = 1; i <= 60; ++i) f.write(QStringLiteral("Line %1 of the song that goes on and on\r\n").arg(i).toLatin1());
}

// The first line of the lyrics on show, or -1 when the window is not up.
int LyricsCaretLine() {
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (!w->isVisible() || w->windowTitle() != QStringLiteral("ZOR JUKEBOX LYRICS")) continue;
        for (const QPlainTextEdit* text : w->findChildren<QPlainTextEdit*>())
            if (text->isVisible()) return text->textCursor().blockNumber();
    }
    return -1;
}

void RunEventsFor(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// A first buffer seen on GStreamer's streaming thread, against a moment on
// the user-interface thread.
struct FirstBuffer {
    std::atomic<SteadyClock::rep> at{0};
    void Note() {
        SteadyClock::rep none = 0;
        at.compare_exchange_strong(none, SteadyClock::now().time_since_epoch().count());
    }
    bool Seen() const { return at.load() != 0; }
    double SecondsSince(SteadyClock::time_point start) const {
        return SecondsBetween(start, SteadyClock::time_point(SteadyClock::duration(at.load())));
    }
};

// The floor of the start: a playbin of its own, NULL to PLAYING, into the
// same synced fake sink, until the first buffer reaches the sink's pad.
double BarePlaybinStart(const QString& song) {
    if (!gst_init_check(nullptr, nullptr, nullptr)) Fail("GStreamer does not start");
    GstElement* playbin = gst_element_factory_make("playbin", nullptr);
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    if (!playbin || !sink) Fail("GStreamer's playbin or fakesink is missing");
    g_object_set(sink, "sync", TRUE, nullptr);
    const QByteArray uri = QUrl::fromLocalFile(QFileInfo(song).absoluteFilePath()).toEncoded();
    g_object_set(playbin, "uri", uri.constData(), "audio-sink", sink, nullptr);
    struct Probe {
        std::promise<SteadyClock::time_point> first;
        std::atomic<bool> seen{false};
        static GstPadProbeReturn Buffer(GstPad*, GstPadProbeInfo*, gpointer data) {
            auto* probe = static_cast<Probe*>(data);
            if (!probe->seen.exchange(true)) probe->first.set_value(SteadyClock::now());
            return GST_PAD_PROBE_OK;
        }
    } probe;
    GstPad* pad = gst_element_get_static_pad(sink, "sink");
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, &Probe::Buffer, &probe, nullptr);
    gst_object_unref(pad);
    auto arrived = probe.first.get_future();
    const auto start = SteadyClock::now();
    gst_element_set_state(playbin, GST_STATE_PLAYING);
    if (arrived.wait_for(std::chrono::seconds(10)) != std::future_status::ready) Fail("the bare playbin never played");
    const double seconds = SecondsBetween(start, arrived.get());
    gst_element_set_state(playbin, GST_STATE_NULL);
    gst_object_unref(playbin);
    return seconds;
}

// The first start in a process loads GStreamer's plugins, which later starts
// find loaded. The floor of the first song is therefore a bare playbin's
// first start in a fresh process: this program again, told by this variable
// to time that alone and print it.
constexpr char kColdStartVariable[] = "ZOR_BENCH_COLD_PLAYBIN";

double ColdBarePlaybinStart(const QString& song) {
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QString::fromLatin1(kColdStartVariable), song);
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("play")});
    if (!child.waitForFinished(60000) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        Fail("the child process timing a bare playbin's first start failed");
    bool ok = false;
    const double seconds = child.readAllStandardOutput().trimmed().split('\n').last().toDouble(&ok);
    if (!ok) Fail("the child process timing a bare playbin's first start printed no figure");
    return seconds;
}

// The floor of the processor time: the same file in a player with no window
// and no count-down, its bus watch run by the same event loop.
double BarePlayerCpu(const QString& song) {
    FileSystem files;
    GstPlayer player(files);
    player.Open(song);
    if (player.PlayState() != mpPlaying) Fail("the bare player did not play the song");
    RunEventsFor(kSettleMs);
    CpuSpan span;
    span.Begin();
    RunEventsFor(kMeasureMs);
    span.End();
    if (player.PlayState() != mpPlaying) Fail("the bare player stopped before the measurement ended");
    player.Stop();
    return span.Percent();
}

struct Figures {
    double firstStart = 0;
    double laterStart = 0;
    double cpuPercent = 0;
};

// The window with the real clock, event loop and player; the rest of the
// outside world stays the test doubles (no boxes, no dialogs).
Figures PlayInWindow(testing::TestInstallation& inst) {
    SystemClock clock;
    QtEventPump events;
    GstPlayerFactory players(inst.tp.files);
    testing::TestPlatform& tp = inst.tp;
    Platform platform{tp.messages, tp.dialog, clock, events, tp.beeper, tp.environment, tp.process, tp.files,
                      tp.desktop, players};
    App app(platform);
    if (!app.Start()) Fail("the main window did not start");
    Form1& f = *app.MainWindow();
    f.show();
    QApplication::processEvents();
    if (f.MFGrid1.Rows() < 2) Fail("the catalogue did not load");
    auto* player = dynamic_cast<GstPlayer*>(f.MediaPlayer1.get());
    if (!player) Fail("MediaPlayer1 is not the GStreamer player");
    FirstBuffer first;
    player->SetFirstBufferHook([&first] { first.Note(); });

    // Each start: the double click, the song stopped as soon as its first
    // buffer is out, so the count-down it waits in comes back.
    QTimer stopWhenHeard;
    stopWhenHeard.setInterval(10);
    QObject::connect(&stopWhenHeard, &QTimer::timeout, [&] {
        if (!first.Seen()) return;
        stopWhenHeard.stop();
        StopPlay(f);
    });
    const auto start = [&] {
        first.at = 0;
        f.MFGrid1.SetRow(1);
        stopWhenHeard.start();
        const auto clicked = SteadyClock::now();
        DoubleClickCatalogueGrid(f);
        if (!first.Seen()) Fail("no buffer reached the sink");
        return first.SecondsSince(clicked);
    };
    Figures out;
    out.firstStart = start();
    std::vector<double> later;
    for (int i = 0; i < kLaterSongs; ++i) later.push_back(start());
    out.laterStart = Median(later);

    // The song through its count-down, the processor time taken from the
    // settled start to ten seconds later, then stopped.
    CpuSpan span;
    int caretAtStart = -1, caretAtEnd = -1;
    bool playing = false;
    QTimer::singleShot(kSettleMs, [&] {
        caretAtStart = LyricsCaretLine();
        span.Begin();
    });
    QTimer::singleShot(kSettleMs + kMeasureMs, [&] {
        span.End();
        caretAtEnd = LyricsCaretLine();
        playing = f.MediaPlayer1->PlayState() == mpPlaying && f.j.Mp3Info.DurationSeconds > 0;
        StopPlay(f);
    });
    f.MFGrid1.SetRow(1);
    DoubleClickCatalogueGrid(f);
    if (!playing) Fail("the song was not playing in its count-down when the measurement ended");
    if (caretAtStart < 0 || caretAtEnd <= caretAtStart) Fail("the lyrics were not showing and scrolling");
    out.cpuPercent = span.Percent();
    return out;
}

std::vector<Result> Play() {
    if (const QString cold = qEnvironmentVariable(kColdStartVariable); !cold.isEmpty()) {
        std::printf("%.6f\n", BarePlaybinStart(cold));
        std::fflush(stdout);
        std::exit(0);
    }
    // A synced fake sink plays in real time like a sound card, on any machine.
    if (qEnvironmentVariableIsEmpty("ZOR_AUDIO_SINK")) qputenv("ZOR_AUDIO_SINK", "fake");
    testing::TestInstallation inst;
    const QString music = inst.home + QStringLiteral("/music");
    const QString lyrics = inst.home + QStringLiteral("/lyrics");
    QDir().mkpath(music);
    QDir().mkpath(lyrics);
    const QString song = music + QStringLiteral("/Band - Long Road Home.mp3");
    if (!MakeSong(song)) {
        std::fprintf(stderr, "play: sox and lame are needed to make the song (tools/setup.sh installs them)\n");
        return {};
    }
    WriteLyrics(lyrics + QStringLiteral("/LongRoad.sng"));  // the title's first eight letters
    testing::SongFields fields;
    fields[0] = QStringLiteral("Long Road Home"), fields[1] = QStringLiteral("Band"), fields[5] = song;
    testing::TestInstallation::AddSongs(inst.File(QStringLiteral("Mp3data1.mdb")), {fields});
    inst.EditSettings([&](Settings& s) {
        s.AutoLoad = 1;
        s.SortAtStart = 0;
        s.PlayerChoice = 4;
        s.FastPc = 1;
        s.ShowLyricsAtPlay = 1;
        s.ScrollLyrics = 1;
        s.MaximizePicture = 0;
        s.ShowPictureAtPlay = 0;
        s.LyricsPath = lyrics;
    });

    const Figures window = PlayInWindow(inst);
    // The floors run once the window is gone, so its timers cost them nothing.
    QApplication::processEvents();
    std::vector<double> bare;
    for (int i = 0; i < kLaterSongs; ++i) bare.push_back(BarePlaybinStart(song));
    const double bareStart = Median(bare);
    std::vector<double> cold;
    for (int i = 0; i < 3; ++i) cold.push_back(ColdBarePlaybinStart(song));
    const double coldStart = Median(cold);
    const double bareCpu = BarePlayerCpu(song);

    const QString bareName = QStringLiteral("bare playbin, NULL to PLAYING, to its first buffer");
    const QString coldName = QStringLiteral("bare playbin's first start in a fresh process (median of 3)");
    Result cpu{QStringLiteral("CPU of the program while a song plays: internal player, FastPc, lyrics scrolling"),
               window.cpuPercent, QStringLiteral("the same file in a bare GstPlayer"), bareCpu, 0, 2};
    cpu.percent = true;
    return {
        cpu,
        {QStringLiteral("Double click to the first buffer at the sink, first song after start"), window.firstStart,
         coldName, coldStart, 0, 0.25},
        {QStringLiteral("Double click to the first buffer at the sink, later songs (median of 7)"), window.laterStart,
         bareName, bareStart, 0, 0.05},
    };
}

const Register kPlay("play", Play);

}  // namespace
}  // namespace zor::bench
