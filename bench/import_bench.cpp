// Importing a music tree of 20,000 small MP3 files in 400 artist folders,
// against the floor of a plain walk that opens each file, reads what the
// import could need of it and inserts one row per file into SQLite.
#include "bench/bench.h"
#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/import_ops.h"
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"
#include "shell/ui/path_selector.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QPushButton>

#include <sqlite3.h>

namespace zor::bench {
namespace {

constexpr int kArtists = 400;
constexpr int kSongsPerArtist = 50;

QByteArray Padded(const QByteArray& text, int width) {
    QByteArray b = text.left(width);
    b.resize(width, '\0');
    return b;
}

// Three frames of MPEG-1 layer III at 128 kbit/s and 44.1 kHz, 417 bytes
// each; every 20th song without a tag, every 50th with junk before the
// first frame.
QByteArray SongFile(int artist, int song) {
    const int n = artist * kSongsPerArtist + song;
    QByteArray b;
    if (n % 50 == 7) b += QByteArray(700, 'J');
    for (int i = 0; i < 3; ++i) {
        QByteArray frame(417, '\0');
        frame[0] = char(0xFF);
        frame[1] = char(0xFB);
        frame[2] = char(0x90);
        frame[3] = char(0x00);
        b += frame;
    }
    if (n % 20 == 3) return b;
    return b + "TAG" + Padded("Song " + QByteArray::number(n), 30) + Padded("Artist " + QByteArray::number(artist), 30) +
           Padded("Album " + QByteArray::number(artist), 30) + "1999" + Padded("", 30) + char(n % 80);
}

void MakeTree(const QString& root) {
    for (int a = 0; a < kArtists; ++a) {
        const QString dir = root + QStringLiteral("/Artist %1").arg(a);
        QDir().mkpath(dir);
        for (int s = 0; s < kSongsPerArtist; ++s) {
            QFile f(dir + QStringLiteral("/Artist %1 - Song %2.mp3").arg(a).arg(s));
            f.open(QIODevice::WriteOnly);
            f.write(SongFile(a, s));
        }
    }
}

// The floor: every file opened, its first 3000 and last 128 bytes read, one
// row each inserted in one transaction.
void PlainWalk(const QString& root, const QString& database) {
    QFile::remove(database);
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(database).constData(), &db);
    sqlite3_exec(db, "CREATE TABLE t(path TEXT, head BLOB, tail BLOB)", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO t VALUES(?, ?, ?)", -1, &insert, nullptr);
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) continue;
        const QByteArray head = f.read(3000);
        f.seek(std::max<qint64>(f.size() - 128, 0));
        const QByteArray tail = f.read(128);
        const QByteArray p = path.toUtf8();
        sqlite3_bind_text(insert, 1, p.constData(), int(p.size()), SQLITE_TRANSIENT);
        sqlite3_bind_blob(insert, 2, head.constData(), int(head.size()), SQLITE_TRANSIENT);
        sqlite3_bind_blob(insert, 3, tail.constData(), int(tail.size()), SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

std::vector<Result> ImportTree() {
    testing::TestInstallation inst;
    const QString root = inst.home + QStringLiteral("/music");
    MakeTree(root);
    inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    const QString floorDatabase = inst.home + QStringLiteral("/floor.db");
    const auto t = Medians(5, {
        {nullptr, [&] { PlainWalk(root, floorDatabase); }},
        {[&] {
             ClearDatabase(f);
             f.Frame3->SetPath(root);
             f.j.scanner.AddSingleFile = 0;
         },
         [&] { ScanSelectedPath(f); }},
    });
    if (f.j.SongCount != kArtists * kSongsPerArtist) std::abort();
    return {{QStringLiteral("ScanSelectedPath, 20,000 files in 400 folders, to a filled grid"), t[1],
             QStringLiteral("walk, read head and tail, insert"), t[0], 1.5}};
}

const Register kImport("import", ImportTree);

}  // namespace
}  // namespace zor::bench
