// One road through the catalogue: real MP3 files made by an encoder are
// imported, the catalogue is saved under another name, compacted, and
// opened anew through the program's own entries; the grid shows the same
// songs all the way.
#include "shell/ui/path_selector.h"
#include "tests/support/audio_tools.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// Each row's title, artist, ID3 mark and path, in the order of the titles.
QStringList Songs(const SongGrid& g) {
    QStringList out;
    for (int r = 1; r < g.Rows(); ++r)
        out << QStringList{g.TextMatrix(r, 1), g.TextMatrix(r, 2), g.TextMatrix(r, 7), g.TextMatrix(r, 6)}.join(u'|');
    out.sort();
    return out;
}

TEST(CatalogueRoad, ImportedSongsSurviveSaveAsCompactionAndAReopen) {
    const AudioTools tools;
    if (!tools.Usable()) GTEST_SKIP() << "sox or lame missing";
    FormHarness h;
    const QString music = h.inst.home + QStringLiteral("/music");
    QDir().mkpath(music + QStringLiteral("/rock"));
    const struct {
        const char* file;
        QStringList tags;
    } files[] = {
        {"rock/one.mp3", {"--tt", "First Light", "--ta", "The Encoders", "--ty", "2001"}},
        {"rock/two.mp3", {"--tt", "Second Wind", "--ta", "The Encoders", "--tg", "Rock"}},
        {"Lame Band - Untagged Tune.mp3", {}},
    };
    for (const auto& f : files) {
        const QString path = music + u'/' + QString::fromLatin1(f.file);
        ASSERT_TRUE(tools.Mp3(path, 0.5, f.tags.isEmpty() ? QStringList() : QStringList{"--id3v1-only"} + f.tags));
        QFile::remove(path + QStringLiteral(".wav"));
    }
    h.inst.EditSettings([](Settings& s) {
        s.SortAtStart = 1;
        s.SortAtStartName = QStringLiteral("Song");
        s.AddAllFileTypes = 0;
        s.AddMp3 = 1;
        s.ArtistSongSwap = 0;
    });
    ASSERT_TRUE(h.Start());

    h.Click("AddSongs");
    h.form().Frame3->SetPath(music);
    h.form().Frame3->Command16->click();
    const QStringList imported = Songs(h.form().MFGrid1);
    ASSERT_EQ(imported.size(), 3);
    EXPECT_TRUE(imported[0].startsWith(QStringLiteral("First Light"))) << imported.join(u'\n').toStdString();
    EXPECT_TRUE(imported[0].contains(QStringLiteral("| Y|") + music + QStringLiteral("/rock/one.mp3")));
    EXPECT_TRUE(imported[1].startsWith(QStringLiteral("Second Wind")));
    EXPECT_EQ(imported[2], QStringLiteral("Untagged Tune|Lame Band | N|") + music + QStringLiteral("/Lame Band - Untagged Tune.mp3"));

    const QString party = h.inst.home + QStringLiteral("/party.mdb");
    h.inst.tp.dialog.names = {party};
    h.Click("Save2");
    h.Click("Compact1");
    EXPECT_TRUE(h.form().Text1->text().startsWith(QStringLiteral("Database ") + party + QStringLiteral(" has been Compacted")));
    // Away to the default catalogue and back again.
    h.inst.tp.dialog.names = {h.inst.File(QStringLiteral("Mp3data1.mdb")), party};
    h.Click("Open1");
    h.form().MFGrid1.Clear();
    h.Click("Open1");
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(h.j().DatabaseFile, party);
    EXPECT_EQ(Songs(h.form().MFGrid1), imported);
    EXPECT_EQ(h.j().SongCount, 3);
    QStringList numbers = ColumnTexts(h.form().MFGrid1, 11);
    numbers.sort();
    EXPECT_EQ(numbers, QStringList({"1", "2", "3"}));
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("Number of songs is: 3  -  Assorted by: Song"));
}

}  // namespace
}  // namespace zor::testing
