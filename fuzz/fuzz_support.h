#pragma once
// What every fuzz target needs: a failed expectation stops the run, so that
// libFuzzer keeps the input; the input as bytes; a folder for the run's
// files, and files written and read back whole.
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace zor::fuzzing {

inline void Require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "fuzz: %s\n", what);
    std::abort();
}

inline QByteArray Input(const uint8_t* data, size_t size) {
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

// The run's own folder, made at the first call and gone with the run.
inline QString ScratchDir() {
    static QTemporaryDir dir;
    Require(dir.isValid(), "no temporary directory");
    return dir.path();
}

inline QString ScratchFile(const QString& name) { return ScratchDir() + u'/' + name; }

inline void WriteAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    Require(f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size(), "cannot write");
}

inline QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

}  // namespace zor::fuzzing
