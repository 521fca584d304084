// ZORjuke.ini as any bytes: a damaged, foreign or cut-off file. The record is
// read from memory and through the file as start-up reads it, then saved
// back. Nothing may crash, and what a read delivers must write back as the
// bytes it came from.
#include "fuzz/fuzz_support.h"
#include "platform/file_system.h"
#include "platform/services.h"
#include "shell/jukebox.h"
#include "shell/settings.h"
#include "shell/settings_file.h"

#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace zor::fuzzing;

using namespace zor;

// The services the settings file never calls; they only complete the Platform.
struct NoMessages : MessageBoxes {
    int MsgBox(const QString&, int, const QString&) override { return vbOK; }
};
struct NoDialog : CommonDialog {
    void ShowOpen() override {}
    void ShowSave() override {}
};
struct NoClock : Clock {
    QDateTime Now() override { return {}; }
    double Timer() override { return 0; }
};
struct NoEvents : EventPump {
    void DoEvents() override {}
    void Wait(int) override {}
};
struct NoBeeper : Beeper {
    void Beep() override {}
};
struct NoEnvironment : Environment {
    QString ApplicationPath() override { return {}; }
    QString CurrentDirectory() override { return {}; }
    QString HomeDirectory() override { return {}; }
    QString WindowsDirectory() override { return {}; }
    QString SystemDirectory() override { return {}; }
    QSize ScreenSize() override { return {}; }
};
struct NoProcess : ProcessControl {
    void End() override {}
    bool Ended() const override { return false; }
};
struct NoDesktop : Desktop {
    bool Open(const QString&) override { return false; }
};
struct NoPlayers : MediaPlayerFactory {
    std::unique_ptr<MediaPlayer> MakePlayer() override { return nullptr; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static NoMessages messages;
    static NoDialog dialog;
    static NoClock clock;
    static NoEvents events;
    static NoBeeper beeper;
    static NoEnvironment environment;
    static NoProcess process;
    static FileSystem files;
    static NoDesktop desktop;
    static NoPlayers players;
    static Platform platform{messages, dialog, clock, events, beeper, environment, process, files, desktop, players};

    const QByteArray bytes = Input(data, size);

    Settings read;
    const bool complete = DecodeSettings(bytes, read);
    const QByteArray record = EncodeSettings(read);
    if (complete) Require(bytes.startsWith(record), "a whole record does not write back as the bytes it came from");
    // Whatever was read is a record that reads back whole and the same.
    Settings again;
    Require(DecodeSettings(record, again), "an encoded record reads back incomplete");
    Require(EncodeSettings(again) == record, "an encoded record reads back different");

    // The same bytes as the file in the program directory.
    Jukebox j(platform);
    j.ProgramDir = ScratchDir();
    const QString ini = j.ProgramFile(QStringLiteral("ZORjuke.ini"));
    WriteAll(ini, bytes);
    Require(LoadSettings(j), "the settings file was not found");
    Require(EncodeSettings(j.settings) == record, "the file reads otherwise than the same bytes in memory");

    // A save writes the record from byte 0 and leaves any longer tail alone.
    SaveSettings(j);
    const QByteArray saved = ReadAll(ini);
    Require(saved == record + bytes.mid(record.size()), "a save did not overwrite in place");
    Settings reloaded;
    Require(DecodeSettings(saved, reloaded) && EncodeSettings(reloaded) == record, "a saved record reads back different");
    return 0;
}
