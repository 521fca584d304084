#include "platform/system_services.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QEventLoop>
#include <QTimer>
#include <QGuiApplication>
#include <QScreen>

namespace zor {

QString CommonDialog::SaveName() const {
    if (FileName.isEmpty() || !QFileInfo(FileName).suffix().isEmpty()) return FileName;
    const QStringList parts = Filter.split(u'|');
    const qsizetype at = 2 * qsizetype(FilterIndex - 1) + 1;
    if (FilterIndex < 1 || at >= parts.size()) return FileName;
    const QString pattern = parts[at].section(u';', 0, 0).trimmed();
    if (!pattern.startsWith(QStringLiteral("*.")) || pattern.indexOf(u'*', 1) >= 0 || pattern.contains(u'?')) return FileName;
    return FileName + pattern.mid(1);
}

QDateTime SystemClock::Now() {
    QDateTime now = QDateTime::currentDateTime();
    now.setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
    return now;
}

double SystemClock::Timer() { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; }

void QtEventPump::DoEvents() { QCoreApplication::processEvents(QEventLoop::AllEvents); }

void QtEventPump::Wait(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QString SystemEnvironment::ApplicationPath() { return QCoreApplication::applicationDirPath(); }
QString SystemEnvironment::CurrentDirectory() { return QDir::currentPath(); }
QString SystemEnvironment::HomeDirectory() { return QDir::homePath(); }

// Linux has no Windows directory; the nearest things are where the system keeps
// its settings and its shared libraries, which is what the Inspector shows.
QString SystemEnvironment::WindowsDirectory() { return QStringLiteral("/etc"); }
QString SystemEnvironment::SystemDirectory() { return QStringLiteral("/usr/lib"); }

QSize SystemEnvironment::ScreenSize() {
    auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (!app || !QGuiApplication::primaryScreen()) return {800, 600};
    return QGuiApplication::primaryScreen()->geometry().size();
}

}  // namespace zor
