#include "platform/paths.h"

namespace zor {

QString MapWindowsPath(const QString& path, const QString& home) {
    QString p = path;
    const bool drive = p.size() >= 2 && p[0].isLetter() && p[0].unicode() < 128 && p[1] == u':';
    if (drive) {
        p = p.mid(2);
        p.replace(u'\\', u'/');
        while (p.startsWith(u'/')) p.remove(0, 1);
        QString h = home;
        while (h.endsWith(u'/') && h.size() > 1) h.chop(1);
        if (p.isEmpty()) return h;
        return h.endsWith(u'/') ? h + p : h + u'/' + p;  // home "/" gives "/rest", not "//rest"
    }
    p.replace(u'\\', u'/');
    return p;
}

QStringList ProgramDirCandidates(const QString& home) {
    const char* places[] = {"C:\\Program Files\\ZOR JUKEBOX", "C:\\ZOR JUKEBOX", "D:\\Program Files\\ZOR JUKEBOX",
                            "D:\\ZOR JUKEBOX"};
    QStringList out;
    for (const char* p : places) out << MapWindowsPath(QString::fromLatin1(p), home);
    return out;
}

}  // namespace zor
