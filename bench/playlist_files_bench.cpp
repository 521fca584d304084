// Opening a .zpl playlist of 10,000 records into MFgrid2: OpenPlaylistFile
// with the dialog answered, from the read of the file to the window turned
// to the playlist, against a plain read of the same 6,000,000 bytes.
#include "bench/bench.h"
#include "playlists/ui/playlist_files.h"
#include "playlists/zpl_record.h"
#include "platform/testing/test_installation.h"
#include "shell/ui/app.h"
#include "shell/ui/form1.h"

#include <QApplication>
#include <QFile>

#include <cstdlib>

namespace zor::bench {
namespace {

constexpr int kRecords = 10000;

QByteArray PlaylistBytes() {
    QByteArray out;
    out.reserve(qsizetype(kRecords) * kZplRecordBytes);
    ZplRecord record;
    GridRow row;
    for (int i = 1; i <= kRecords; ++i) {
        row.Set(1, QStringLiteral("Song title number %1").arg(i));
        row.Set(2, QStringLiteral("Artist %1").arg(i % 700));
        row.Set(3, QStringLiteral("Album %1").arg(i % 900));
        row.Set(4, QString::number(1950 + i % 70));
        row.Set(5, QStringLiteral("Pop"));
        row.Set(6, QStringLiteral("/home/user/music/Artist %1/Artist %1 - Song title number %2.mp3").arg(i % 700).arg(i));
        row.Set(7, QStringLiteral("ID3"));
        record.Fill(row);
        out += record.Bytes();
    }
    return out;
}

std::vector<Result> OpenPlaylist() {
    testing::TestInstallation inst;
    inst.EditSettings([](Settings& s) { s.AutoLoad = 0; });
    const QString path = inst.File(QStringLiteral("big.zpl"));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(PlaylistBytes()) != qint64(kRecords) * kZplRecordBytes) std::abort();
    }
    App app(inst.tp.platform);
    app.Start();
    Form1& f = *app.MainWindow();
    f.show();
    QApplication::processEvents();

    qint64 floorBytes = 0;
    const auto t = Medians(9, {
        {nullptr,
         [&] {
             QFile file(path);
             if (file.open(QIODevice::ReadOnly)) floorBytes = file.readAll().size();
         }},
        {[&] {
             // From the catalogue's window each time, with an empty list.
             f.MFgrid2.SetRows(1);
             inst.tp.dialog.names = {path};
         },
         [&] { OpenPlaylistFile(f); }},
    });
    if (floorBytes != qint64(kRecords) * kZplRecordBytes || f.j.PlaylistEnd != kRecords + 1) std::abort();
    return {
        {QStringLiteral("OpenPlaylistFile, .zpl of 10,000 records"), t[1],
         QStringLiteral("QFile::readAll of its 6,000,000 bytes"), t[0], 0, 0.3},
    };
}

const Register kPlaylistFiles("playlist_files", OpenPlaylist);

}  // namespace
}  // namespace zor::bench
