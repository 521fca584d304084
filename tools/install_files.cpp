// Build-time tool: fills the program directory with the installation files
// that are missing. Existing files (a user's catalogue, settings, index, log)
// are never touched.
#include "shell/installation.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: zor_install_files PROGRAM_DIR [DOCS_DIR]\n";
        return 2;
    }
    const QStringList made = zor::InstallProgramFiles(args[1], args.size() > 2 ? args[2] : QString());
    for (const QString& f : made) QTextStream(stdout) << "installed " << f << '\n';
    return 0;
}
