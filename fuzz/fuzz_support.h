#pragma once
// What every fuzz target needs: a failed expectation stops the run, so that
// libFuzzer keeps the input, and files are read back whole.
#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdio>
#include <cstdlib>

namespace zor::fuzzing {

inline void Require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "fuzz: %s\n", what);
    std::abort();
}

inline QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

}  // namespace zor::fuzzing
