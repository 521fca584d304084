#include "platform/gst_player.h"

#include "platform/nul_text.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QUrl>

#include <gst/gst.h>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace zor {

namespace {

// playbin's flags: audio only, with its own volume element.
constexpr guint kPlayFlagAudio = 0x2;
constexpr guint kPlayFlagSoftVolume = 0x10;
// Long enough for the slowest first file on a busy machine; a file that has
// not prerolled by then goes on loading and reports through the bus.
constexpr int kPrerollLimitMs = 10000;

bool InitGstreamer() {
    static std::once_flag once;
    static bool ok = false;
    std::call_once(once, [] { ok = gst_init_check(nullptr, nullptr, nullptr); });
    return ok;
}

GQuark GenerationQuark() {
    static const GQuark q = g_quark_from_static_string("zor-player-generation");
    return q;
}

double Seconds(gint64 nanoseconds) { return double(nanoseconds) / double(GST_SECOND); }

QString SinkDescription() {
    const bool fake = qgetenv("ZOR_AUDIO_SINK") == "fake";
    return QStringLiteral("audioconvert ! audiopanorama method=simple name=balance ! %1 name=out")
        .arg(fake ? QStringLiteral("fakesink sync=true") : QStringLiteral("autoaudiosink"));
}

QString ErrorOf(GstMessage* message) {
    GError* error = nullptr;
    gchar* debug = nullptr;
    gst_message_parse_error(message, &error, &debug);
    const QString text = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown error");
    if (error) g_error_free(error);
    g_free(debug);
    return text;
}

}  // namespace

double GainOfHundredthsDb(int hundredthsDb) {
    if (hundredthsDb <= -10000) return 0;
    return std::pow(10.0, std::min(hundredthsDb, 0) / 2000.0);
}

double PanoramaOfBalance(int balance) {
    const double quieter = 1 - GainOfHundredthsDb(-std::abs(balance));
    return balance < 0 ? -quieter : quieter;
}

struct GstPlayer::Bus {
    // Runs in the thread that posts: marks the message with the file it
    // belongs to before it is queued.
    static GstBusSyncReply Tag(GstBus*, GstMessage* message, gpointer self) {
        const unsigned generation = static_cast<GstPlayer*>(self)->generation_.load();
        gst_mini_object_set_qdata(GST_MINI_OBJECT_CAST(message), GenerationQuark(), GUINT_TO_POINTER(generation),
                                  nullptr);
        return GST_BUS_PASS;
    }
    static gboolean Watch(GstBus*, GstMessage* message, gpointer self) {
        static_cast<GstPlayer*>(self)->HandleMessage(message);
        return G_SOURCE_CONTINUE;
    }
    // Runs in the streaming thread for every buffer at the sink; the hook
    // only for the first of each file.
    static GstPadProbeReturn FirstBuffer(GstPad*, GstPadProbeInfo*, gpointer self) {
        auto* player = static_cast<GstPlayer*>(self);
        const unsigned generation = player->generation_.load();
        if (player->firstBufferGeneration_.exchange(generation) != generation) player->firstBufferHook_();
        return GST_PAD_PROBE_OK;
    }
};

GstPlayer::GstPlayer(FileSystem& files) : files_(files) {
    if (!InitGstreamer()) return;
    pipeline_ = gst_element_factory_make("playbin", nullptr);
    if (!pipeline_) return;
    gst_object_ref_sink(pipeline_);
    GError* error = nullptr;
    GstElement* sink = gst_parse_bin_from_description(SinkDescription().toUtf8().constData(), TRUE, &error);
    if (error) g_error_free(error);
    if (!sink) {
        gst_object_unref(pipeline_);
        pipeline_ = nullptr;
        return;
    }
    panorama_ = gst_bin_get_by_name(GST_BIN(sink), "balance");
    if (GstElement* out = gst_bin_get_by_name(GST_BIN(sink), "out")) {
        sinkPad_ = gst_element_get_static_pad(out, "sink");
        gst_object_unref(out);
    }
    g_object_set(pipeline_, "audio-sink", sink, "flags", kPlayFlagAudio | kPlayFlagSoftVolume, nullptr);
    bus_ = gst_element_get_bus(pipeline_);
    gst_bus_set_sync_handler(bus_, &Bus::Tag, this, nullptr);
    gst_bus_add_watch(bus_, &Bus::Watch, this);
}

GstPlayer::~GstPlayer() {
    if (!pipeline_) return;
    gst_bus_remove_watch(bus_);
    gst_element_set_state(pipeline_, GST_STATE_NULL);
    gst_bus_set_sync_handler(bus_, nullptr, nullptr, nullptr);
    gst_object_unref(bus_);
    if (panorama_) gst_object_unref(panorama_);
    if (sinkPad_) gst_object_unref(sinkPad_);
    gst_object_unref(pipeline_);
}

void GstPlayer::SetFirstBufferHook(std::function<void()> hook) {
    if (!sinkPad_ || !hook || firstBufferHook_) return;
    firstBufferHook_ = std::move(hook);
    gst_pad_add_probe(sinkPad_, GST_PAD_PROBE_TYPE_BUFFER, &Bus::FirstBuffer, this, nullptr);
}

// Back to NULL, which closes the file; whatever the old file still has on
// the bus belongs to an earlier generation from here on.
void GstPlayer::Unload() {
    if (pipeline_) gst_element_set_state(pipeline_, GST_STATE_NULL);
    ++generation_;
    hold_.Reset();
    loaded_ = false;
    atEnd_ = false;
    duration_ = 0;
    lastPosition_ = 0;
}

void GstPlayer::Open(const QString& path) {
    Unload();
    fileName_ = path;
    state_ = mpStopped;  // a new file starts from stopped; the change to playing is reported
    error_ = 0;
    errorText_.clear();
    if (!pipeline_) return Fail(QStringLiteral("GStreamer's playbin is not available"));
    // A zero ends the name, as it did for every file function of old.
    const QString name = TextBeforeNul(path);
    hold_ = FileHold(files_, name);
    const QByteArray uri = QUrl::fromLocalFile(QFileInfo(name).absoluteFilePath()).toEncoded();
    g_object_set(pipeline_, "uri", uri.constData(), nullptr);
    const GstStateChangeReturn loading = gst_element_set_state(pipeline_, GST_STATE_PAUSED);
    if (loading == GST_STATE_CHANGE_FAILURE) return Fail(QStringLiteral("Could not open the file."));
    if (loading == GST_STATE_CHANGE_ASYNC && !WaitForPreroll()) return;
    loaded_ = true;
    Duration();
    if (gst_element_set_state(pipeline_, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        return Fail(QStringLiteral("Could not start playing."));
    Change(mpPlaying);
}

// Takes the bus's messages until the file is ready to play or has failed.
// Nothing else on the bus matters before the first sound.
bool GstPlayer::WaitForPreroll() {
    const QDeadlineTimer deadline(kPrerollLimitMs);
    for (;;) {
        const qint64 left = deadline.remainingTime();
        if (left <= 0) return true;
        GstMessage* message = gst_bus_timed_pop_filtered(
            bus_, GstClockTime(left) * GST_MSECOND, GstMessageType(GST_MESSAGE_ERROR | GST_MESSAGE_ASYNC_DONE));
        if (!message) return true;
        const bool current = IsCurrent(message);
        const bool failed = current && GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR;
        const bool ready = current && GST_MESSAGE_TYPE(message) == GST_MESSAGE_ASYNC_DONE &&
                           GST_MESSAGE_SRC(message) == GST_OBJECT_CAST(pipeline_);
        const QString text = failed ? ErrorOf(message) : QString();
        gst_message_unref(message);
        if (failed) {
            Fail(text);
            return false;
        }
        if (ready) return true;
    }
}

// The file cannot be played: it is let go at once, so that a repair may
// rewrite it, and the flag stays up until the next Open.
void GstPlayer::Fail(const QString& text) {
    Unload();
    error_ = 1;
    errorText_ = text;
    Change(mpStopped);
}

bool GstPlayer::IsCurrent(GstMessage* message) const {
    const auto tag = GPOINTER_TO_UINT(gst_mini_object_get_qdata(GST_MINI_OBJECT_CAST(message), GenerationQuark()));
    return tag == generation_.load();
}

void GstPlayer::HandleMessage(GstMessage* message) {
    if (!IsCurrent(message)) return;
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ERROR:
        Fail(ErrorOf(message));
        break;
    case GST_MESSAGE_EOS:
        if (!loaded_) break;
        Duration();
        atEnd_ = true;
        lastPosition_ = duration_;
        gst_element_set_state(pipeline_, GST_STATE_PAUSED);
        Change(mpStopped);
        break;
    case GST_MESSAGE_DURATION_CHANGED:
        duration_ = 0;  // asked again at the next Duration
        break;
    default:
        break;
    }
}

void GstPlayer::SeekTo(double seconds) {
    gst_element_seek_simple(pipeline_, GST_FORMAT_TIME, GstSeekFlags(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                            gint64(seconds * GST_SECOND));
    atEnd_ = false;
    lastPosition_ = seconds;
}

void GstPlayer::Stop() {
    if (loaded_) {
        gst_element_set_state(pipeline_, GST_STATE_PAUSED);
        SeekTo(0);
    }
    Change(mpStopped);
}

void GstPlayer::Pause() {
    if (!loaded_ || state_ != mpPlaying) return;
    lastPosition_ = CurrentPosition();
    gst_element_set_state(pipeline_, GST_STATE_PAUSED);
    Change(mpPaused);
}

void GstPlayer::Play() {
    if (!loaded_ || state_ == mpPlaying) return;
    if (atEnd_) SeekTo(0);
    if (gst_element_set_state(pipeline_, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        return Fail(QStringLiteral("Could not start playing."));
    Change(mpPlaying);
}

double GstPlayer::CurrentPosition() const {
    if (!loaded_) return 0;
    if (atEnd_) return duration_;
    gint64 position = 0;
    if (state_ == mpPlaying && gst_element_query_position(pipeline_, GST_FORMAT_TIME, &position) && position >= 0)
        lastPosition_ = Seconds(position);
    const double d = Duration();
    return d > 0 ? std::min(lastPosition_, d) : lastPosition_;
}

void GstPlayer::SetCurrentPosition(double seconds) {
    if (!loaded_) return;
    const double d = Duration();
    seconds = std::max(seconds, 0.0);
    SeekTo(d > 0 ? std::min(seconds, d) : seconds);
}

double GstPlayer::Duration() const {
    gint64 length = 0;
    if (loaded_ && duration_ <= 0 && gst_element_query_duration(pipeline_, GST_FORMAT_TIME, &length) && length > 0)
        duration_ = Seconds(length);
    return duration_;
}

void GstPlayer::SetVolume(int hundredthsDb) {
    volume_ = std::clamp(hundredthsDb, -10000, 0);
    if (pipeline_) g_object_set(pipeline_, "volume", GainOfHundredthsDb(volume_), nullptr);
}

void GstPlayer::SetBalance(int balance) {
    balance_ = std::clamp(balance, -10000, 10000);
    // The property is a float; through the variable arguments it travels as a double.
    if (panorama_) g_object_set(panorama_, "panorama", PanoramaOfBalance(balance_), nullptr);
}

void GstPlayer::Change(int newState) {
    if (newState == state_) return;
    const int old = state_;
    state_ = newState;
    // A copy: the handler may let this player go.
    if (const auto handler = PlayStateChange) handler(old, newState);
}

}  // namespace zor
