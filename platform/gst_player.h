#pragma once
// The media player on GStreamer: a playbin whose audio sink is a bin of
// audioconvert ! audiopanorama method=simple ! sink, so the balance acts on
// what is heard at once (as playbin's audio filter it would lag a second
// behind the queue). The sink is autoaudiosink, or a synced fakesink when
// ZOR_AUDIO_SINK=fake (tests, machines without sound).
//
// Open waits for the file to preroll, so Duration and PlayerErrorFlag hold
// when it returns; the end of the file and later failures come through the
// bus watch, which Qt's GLib event dispatcher runs on the user-interface
// thread. The pipeline goes to NULL between files, and every bus message is
// tagged with the number of the file it belongs to: a late message of an
// earlier file is dropped, never taken for the new one's.
#include "platform/file_system.h"
#include "platform/services.h"

#include <atomic>
#include <functional>

typedef struct _GstElement GstElement;
typedef struct _GstBus GstBus;
typedef struct _GstMessage GstMessage;
typedef struct _GstPad GstPad;

namespace zor {

// Hundredths of a decibel to a linear gain: 0 is 1.0, -2000 is 0.1, -10000
// and below are silence.
double GainOfHundredthsDb(int hundredthsDb);
// A balance (-10000 .. 10000, the other channel's attenuation in hundredths
// of a decibel) to audiopanorama's simple panorama: -1 silences the right,
// 1 the left, and -0.5 halves the right.
double PanoramaOfBalance(int balance);

class GstPlayer : public MediaPlayer {
public:
    explicit GstPlayer(FileSystem& files);
    ~GstPlayer() override;
    GstPlayer(const GstPlayer&) = delete;
    GstPlayer& operator=(const GstPlayer&) = delete;

    void Open(const QString& path) override;
    void Stop() override;
    void Pause() override;
    void Play() override;
    int PlayState() const override { return state_; }
    double CurrentPosition() const override;
    void SetCurrentPosition(double seconds) override;
    double Duration() const override;
    int PlayerErrorFlag() const override { return error_; }
    QString FileName() const override { return fileName_; }
    void SetVolume(int hundredthsDb) override;
    int Volume() const override { return volume_; }
    void SetBalance(int balance) override;
    int Balance() const override { return balance_; }

    // What GStreamer said of the last failure, for diagnostics.
    QString ErrorText() const { return errorText_; }

    // For measuring the start of a song: `hook` runs when the first buffer
    // of each opened file reaches the sink element's pad (for a synced sink
    // that is the preroll, just before Open starts it playing). It runs on
    // GStreamer's streaming thread, so it must only note the moment. Set it
    // once, before an Open; until it is set there is no probe on the pad and
    // the player pays nothing for it.
    void SetFirstBufferHook(std::function<void()> hook);

private:
    struct Bus;  // the bus callbacks and the first-buffer probe
    void Unload();
    bool WaitForPreroll();
    void Fail(const QString& text);
    void HandleMessage(GstMessage* message);
    bool IsCurrent(GstMessage* message) const;
    void SeekTo(double seconds);
    void Change(int newState);

    FileSystem& files_;
    GstElement* pipeline_ = nullptr;
    GstElement* panorama_ = nullptr;
    GstBus* bus_ = nullptr;
    GstPad* sinkPad_ = nullptr;  // the sink element's, for the first-buffer hook
    std::function<void()> firstBufferHook_;
    std::atomic<unsigned> firstBufferGeneration_{0};  // the file whose first buffer was seen
    FileHold hold_;
    QString fileName_;
    std::atomic<unsigned> generation_{1};
    bool loaded_ = false;
    bool atEnd_ = false;
    int state_ = mpStopped;
    int error_ = 0;
    QString errorText_;
    mutable double duration_ = 0;
    mutable double lastPosition_ = 0;
    int volume_ = 0;
    int balance_ = 0;
};

class GstPlayerFactory : public MediaPlayerFactory {
public:
    explicit GstPlayerFactory(FileSystem& files) : files_(files) {}
    std::unique_ptr<MediaPlayer> MakePlayer() override { return std::make_unique<GstPlayer>(files_); }

private:
    FileSystem& files_;
};

}  // namespace zor
