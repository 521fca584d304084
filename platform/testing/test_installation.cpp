#include "platform/testing/test_installation.h"

#include "platform/paths.h"
#include "shell/installation.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

#include <stdexcept>

namespace zor::testing {

TestInstallation::TestInstallation() {
    programDir = dir_.path() + QStringLiteral("/ZORjuke");
    home = dir_.path() + QStringLiteral("/home");
    QDir().mkpath(home);
    InstallProgramFiles(programDir, QString());
    QFile program(File(QString::fromLatin1(kProgramFileName)));
    program.open(QIODevice::WriteOnly);
    tp.environment.applicationPath = programDir;
    tp.environment.currentDirectory = programDir;
    tp.environment.homeDirectory = home;
}

Settings TestInstallation::ReadSettings() const {
    QFile f(File(QStringLiteral("ZORjuke.ini")));
    Settings s;
    if (f.open(QIODevice::ReadOnly)) DecodeSettings(f.readAll(), s);
    return s;
}

void TestInstallation::WriteSettings(const Settings& s) const {
    QFile f(File(QStringLiteral("ZORjuke.ini")));
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) throw std::runtime_error("cannot write settings");
    f.write(EncodeSettings(s));
}

namespace {

struct Db {
    sqlite3* db = nullptr;
    explicit Db(const QString& path) {
        if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
            throw std::runtime_error("cannot open catalogue");
    }
    ~Db() { sqlite3_close(db); }
};

}  // namespace

void TestInstallation::AddSongs(const QString& catalogue, const std::vector<SongFields>& songs) {
    Db d(catalogue);
    sqlite3_exec(d.db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* count = nullptr;
    sqlite3_prepare_v2(d.db, "SELECT COUNT(*) FROM MP3DATA", -1, &count, nullptr);
    sqlite3_step(count);
    int next = sqlite3_column_int(count, 0) + 1;
    sqlite3_finalize(count);
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(d.db, "INSERT INTO MP3DATA VALUES (?,?,?,?,?,?,?,?,?,?,?)", -1, &s, nullptr);
    for (const SongFields& song : songs) {
        for (int f = 0; f < 10; ++f) {
            const QByteArray v = song[f].toUtf8();
            sqlite3_bind_text(s, f + 1, v.constData(), int(v.size()), SQLITE_TRANSIENT);
        }
        sqlite3_bind_int(s, 11, next++);
        sqlite3_step(s);
        sqlite3_reset(s);
    }
    sqlite3_finalize(s);
    sqlite3_exec(d.db, "COMMIT", nullptr, nullptr, nullptr);
}

std::vector<std::array<QString, 11>> TestInstallation::ReadSongs(const QString& catalogue) {
    Db d(catalogue);
    std::vector<std::array<QString, 11>> out;
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(d.db, "SELECT * FROM MP3DATA ORDER BY rowid", -1, &s, nullptr);
    while (sqlite3_step(s) == SQLITE_ROW) {
        auto& row = out.emplace_back();
        for (int f = 0; f < 11; ++f)
            row[f] = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, f)), sqlite3_column_bytes(s, f));
    }
    sqlite3_finalize(s);
    return out;
}

}  // namespace zor::testing
