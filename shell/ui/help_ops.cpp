#include "shell/ui/help_ops.h"

#include "catalogue/ui/catalogue_task.h"
#include "platform/paths.h"
#include "shell/ui/form1.h"
#include "shell/ui/startup.h"


namespace zor {
namespace {

// What the shipper of this build puts in the boxes.
constexpr const char* kMaker = "ZOR electronics";
constexpr const char* kMakerEmail = "jukebox@example.org";
constexpr const char* kLinks[] = {
    "https://www.qt.io",
    "https://gstreamer.freedesktop.org",
    "https://github.com/espeak-ng/espeak-ng",
    "https://www.sqlite.org",
};

}  // namespace

void ShowAbout(Form1& f) {
    Jukebox& j = f.j;
    j.StartMessage(QStringLiteral("ZOR JUKEBOX"));
    j.AddMessageLine(j.Lang(QStringLiteral("Version 7.0"), QStringLiteral("Versie 7.0")));
    j.AddMessageLine(QString());
    j.AddMessageLine(QString::fromLatin1(kMaker));
    j.AddMessageLine(QString::fromLatin1(kMakerEmail));
    j.ShowMessageBuffer(vbInformation);
}

void OpenUserGuide(Form1& f) {
    Jukebox& j = f.j;
    const QString guide = j.ProgramFile(j.Lang(QStringLiteral("ZORjukeUK.HTM"), QStringLiteral("ZORjukeNL.HTM")));
    if (j.platform.files.FileExists(guide) && j.platform.desktop.Open(guide)) return;
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    j.AddMessageLine(j.Lang(QStringLiteral("The user guide could not be opened:"),
                            QStringLiteral("De gebruiksaanwijzing kon niet worden geopend:")));
    j.AddMessageLine(guide);
    j.ShowMessageBuffer(vbExclamation);
}

void RunInspector(Form1& f) {
    Jukebox& j = f.j;
    FileSystem& files = j.platform.files;
    auto found = [&](bool yes, const char* what) {
        return QString::fromLatin1(what) + (yes ? QStringLiteral(" found in ") : QStringLiteral(" NOT found in ")) + j.ProgramDir;
    };
    const QString lines[] = {
        QStringLiteral("Starting Directory is:  ") + j.ProgramDir,
        QStringLiteral("Current Directory is:  ") + j.platform.environment.CurrentDirectory(),
        found(files.FileExists(j.ProgramFile(QString::fromLatin1(kProgramFileName))), "Program ZORjuke.exe"),
        found(!files.Dir(j.ProgramFile(QStringLiteral("ZORjuke.ini"))).isEmpty(), "Initialisation file ZORjuke.ini"),
        found(!files.Dir(j.ProgramFile(QStringLiteral("Mp3data1.mdb"))).isEmpty(), "Default Database MP3data1.mdb"),
        QStringLiteral("The Windows directory is: ") + j.shell.WindowsDir,
        QStringLiteral("The Windows System directory is: ") + j.shell.SystemDir,
    };
    // A skin or language change during a pause would take this window away
    // while its menu's click is still on the stack below the report. The
    // reload waits, the report ends at the end of the pause, and the reload
    // comes as the Inspector returns; the new window's message line has
    // nothing of the Inspector's in it.
    ReloadHold hold(j);
    for (const QString& line : lines) {
        f.ShowMessage(kWhite, line);
        PauseWithEvents(j, 3);
        if (hold.Asked() || f.Unloaded()) return;
    }
    f.ShowMessage(kWhite, QStringLiteral("The Inspector has completed its task"));
}

void ShowLinks(Form1& f) {
    Jukebox& j = f.j;
    j.StartMessage(j.Lang(QStringLiteral("The parts this jukebox is made of:"),
                          QStringLiteral("De onderdelen waarmee deze jukebox is gemaakt:")));
    for (const char* link : kLinks) j.AddMessageLine(QString::fromLatin1(link));
    j.ShowMessageBuffer(vbInformation);
}

void ShowEmail(Form1& f) {
    Jukebox& j = f.j;
    const QString address = QString::fromLatin1(kMakerEmail);
    j.StartMessage(QString::fromLatin1(kMaker));
    j.AddMessageLine(j.Lang(QStringLiteral("Write to us at: "), QStringLiteral("Schrijf ons op: ")) + address);
    j.AddMessageLine(QString());
    j.AddMessageLine(j.Lang(QStringLiteral("Open your e-mail program now?"), QStringLiteral("Nu uw e-mailprogramma openen?")));
    if (j.ShowMessageBuffer(vbYesNo + vbQuestion) == vbYes) j.platform.desktop.Open(QStringLiteral("mailto:") + address);
}

}  // namespace zor
