// The tag editor's correction pass (AutoCorrectAll) over a catalogue of
// 100,000 songs, against the floor of reading and rewriting the same rows
// with plain SQLite statements in one transaction.
#include "bench/bench.h"
#include "bench/songs.h"
#include "mp3/id3_tag.h"
#include "mp3/ui/form11.h"
#include "mp3/ui/tag_editor_ops.h"
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"
#include "tests/support/disk_files.h"
#include "tests/support/song_bytes.h"

#include <QFile>
#include <QPushButton>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zor::bench {
namespace {

constexpr int kSongs = 100000;
// The rows share this many song files, each small enough for the page cache
// to hold them all: the pass's own work is measured, not the disk's.
constexpr int kFiles = 500;

// The floor: every row read with one SELECT and written back with one
// UPDATE of the fields the pass writes (title, artist, album, year, style,
// encoding), all in one transaction.
void ReadAndRewrite(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt *read = nullptr, *write = nullptr;
    sqlite3_prepare_v2(db, "SELECT rowid, Song, Artist, Album, Year, Style FROM MP3DATA ORDER BY rowid", -1, &read, nullptr);
    sqlite3_prepare_v2(db, "UPDATE MP3DATA SET Song = ?, Artist = ?, Album = ?, Year = ?, Style = ?, Execute = '' WHERE rowid = ?",
                       -1, &write, nullptr);
    int rows = 0;
    while (sqlite3_step(read) == SQLITE_ROW) {
        for (int c = 1; c <= 5; ++c)
            sqlite3_bind_text(write, c, reinterpret_cast<const char*>(sqlite3_column_text(read, c)), sqlite3_column_bytes(read, c),
                              SQLITE_TRANSIENT);
        sqlite3_bind_int64(write, 6, sqlite3_column_int64(read, 0));
        sqlite3_step(write);
        sqlite3_reset(write);
        ++rows;
    }
    sqlite3_finalize(read);
    sqlite3_finalize(write);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    if (rows != kSongs) std::abort();
}

// A second floor, to show what the song files cost: the same rewrite, and
// for each row the least a pass does with its song file: look it up, open
// it, read its head and its last 128 bytes, write them back, close it.
void ReadAndRewriteWithFiles(const QString& path, const std::vector<QByteArray>& files) {
    ReadAndRewrite(path);
    char head[3000], tag[128];
    for (int i = 0; i < kSongs; ++i) {
        const QByteArray& name = files[size_t(i % kFiles)];
        struct stat st {};
        if (stat(name.constData(), &st) != 0) std::abort();
        const int fd = open(name.constData(), O_RDWR);
        if (pread(fd, head, sizeof head, 0) <= 0 || pread(fd, tag, sizeof tag, st.st_size - 128) != 128 ||
            pwrite(fd, tag, sizeof tag, st.st_size - 128) != 128)
            std::abort();
        close(fd);
    }
}

std::vector<Result> CorrectionPass() {
    testing::TestInstallation inst;
    const QString catalogue = inst.File(QStringLiteral("Mp3data1.mdb"));
    // Songs in lower case with placeholder albums and the style Other, so
    // every rule has work; every tenth file without a tag.
    std::vector<testing::SongFields> songs = MakeSongs(kSongs);
    for (int i = 0; i < kFiles; ++i) {
        const QString path = inst.home + QStringLiteral("/music/artist %1 - song %1.mp3").arg(i);
        QByteArray bytes = testing::SilentSong96(1).left(4000);
        if (i % 10 != 0) {
            Id3TagRecord tag;
            tag.Tag = QStringLiteral("TAG");
            tag.Title = QStringLiteral("song %1").arg(i), tag.Artist = QStringLiteral("the artist %1").arg(i);
            tag.Album = QStringLiteral("album"), tag.Year = QString::number(1950 + i % 70), tag.Style = 12;
            bytes += EncodeId3Tag(tag);
        }
        testing::WriteFileBytes(path, bytes);
    }
    std::vector<QByteArray> files;
    for (int i = 0; i < kFiles; ++i)
        files.push_back(QFile::encodeName(inst.home + QStringLiteral("/music/artist %1 - song %1.mp3").arg(i)));
    for (int i = 0; i < kSongs; ++i)
        songs[size_t(i)][5] = inst.home + QStringLiteral("/music/artist %1 - song %1.mp3").arg(i % kFiles);
    testing::TestInstallation::AddSongs(catalogue, songs);
    inst.EditSettings([](Settings& s) {
        s.SortAtStart = 0;
        s.TagEditorChecks = {0, 0, 0, 1, 1, 1, 1};  // auto-save, -correct, -album, -style
    });
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    f.MFGrid1.SetRow(1);
    OpenTagEditor(f);
    Form11& w = *f.findChild<Form11*>(QStringLiteral("Form11"));
    const int beeps = inst.tp.beeper.beeps;
    const auto t = Medians(3, {
        {nullptr, [&] { ReadAndRewrite(catalogue); }},
        {nullptr, [&] { ReadAndRewriteWithFiles(catalogue, files); }},
        {nullptr, [&] { w.Command13->click(); }},
    });
    // Every pass ran to its end.
    if (inst.tp.beeper.beeps != beeps + 3 || !inst.tp.messages.shown.empty()) std::abort();
    const QString pass = QStringLiteral("AutoCorrectAll, 100,000 rows (500 song files), saved in one transaction");
    return {{pass, t[2], QStringLiteral("SELECT and UPDATE of every row in one transaction"), t[0], 0, 3},
            {pass, t[2], QStringLiteral("the same, and per row stat, open, two reads and a write of its file"), t[1], 0, 3}};
}

const Register kCorrect("tag_editor", CorrectionPass);

}  // namespace
}  // namespace zor::bench
