#pragma once
// Whole files read and written in one call, for tests that check what lands
// on disk.
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

namespace zor::testing {

// The file's bytes; "<missing>" when it can't be read, so that a file that
// went never passes for an empty one.
inline QByteArray FileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// Writes `bytes` as the whole file, making its directory first.
inline bool WriteFileBytes(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

}  // namespace zor::testing
