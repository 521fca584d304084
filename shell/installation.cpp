#include "shell/installation.h"

#include "catalogue/schema.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zor {

QStringList InstallProgramFiles(const QString& programDir, const QString& docsDir) {
    QStringList made;
    QDir().mkpath(programDir);
    const auto path = [&](const char* name) { return programDir + u'/' + QString::fromLatin1(name); };

    if (!QFileInfo::exists(path("ZORjuke.ini"))) {
        Settings s;
        ApplyFirstUseDefaults(s);
        QFile f(path("ZORjuke.ini"));
        if (f.open(QIODevice::WriteOnly) && f.write(EncodeSettings(s)) > 0) made << f.fileName();
    }
    // Start-up tests for first use under the name "ZORjuke.INI", every other
    // look-up uses "ZORjuke.ini". On a disk that keeps case those would be two
    // files and each start would take the first-use defaults over the user's
    // settings; the link makes them one file again, as on the old system.
    if (!QFileInfo(path("ZORjuke.INI")).exists() && !QFileInfo(path("ZORjuke.INI")).isSymLink() &&
        QFile::link(QStringLiteral("ZORjuke.ini"), path("ZORjuke.INI")))
        made << path("ZORjuke.INI");

    for (const char* name : {"Mp3data0.mdb", "Mp3data1.mdb"})
        if (!QFileInfo::exists(path(name)) && MakeEmptyCatalogue(path(name))) made << path(name);
    for (const char* name : {"Mp3find0.mdb", "Mp3find1.mdb"})
        if (!QFileInfo::exists(path(name)) && MakeEmptyWordIndex(path(name))) made << path(name);

    if (!docsDir.isEmpty())
        for (const char* name : {"ZORjukeUK.HTM", "ZORjukeNL.HTM"})
            if (!QFileInfo::exists(path(name)) && QFile::copy(docsDir + u'/' + QString::fromLatin1(name), path(name)))
                made << path(name);
    return made;
}

}  // namespace zor
