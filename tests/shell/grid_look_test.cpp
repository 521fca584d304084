// How the window looks: the font names resolve to families with the old
// fonts' metrics, every heading is whole at both screen sizes in both skins,
// in the catalogue and in the playlist, and the geometry follows the screen
// width and the skin.
#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/font_check.h"
#include "tests/support/form_test.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QStyle>

#include <gtest/gtest.h>

#include <map>

namespace zor::testing {
namespace {

TEST(Fonts, TheSettingsFontsResolveToFamiliesWithTheirMetrics) {
    EXPECT_TRUE(MetricCompatible("Arial", "Liberation Sans"));
    EXPECT_TRUE(MetricCompatible("arial ", "Arimo"));
    EXPECT_FALSE(MetricCompatible("Arial", "Liberation Serif"));

    // The installation brings a twin of Arial (tools/setup.sh).
    EXPECT_TRUE(MetricCompatible("Arial", ResolvedFamily("Arial"))) << ResolvedFamily("Arial").toStdString();
    EXPECT_TRUE(FontMetricNotes({"Arial", "Arial", ""}).isEmpty());
    const QStringList notes = FontMetricNotes({"Arial", "Zz No Such Family", "zz no such family"});
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(notes[0].contains("\"Zz No Such Family\" is shown as")) << notes[0].toStdString();
}

// Every heading of a shown column fits between the style's margins.
void ExpectWholeHeadings(SongGridView& view) {
    const QHeaderView* header = view.horizontalHeader();
    const int margin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    const QFontMetrics fm = header->fontMetrics();
    for (int c = 0; c < view.model()->columnCount(); ++c) {
        if (view.isColumnHidden(c)) continue;
        const QString heading = view.model()->headerData(c, Qt::Horizontal).toString();
        EXPECT_GE(header->sectionSize(c), fm.horizontalAdvance(heading) + 2 * margin)
            << view.objectName().toStdString() << " column " << c << " \"" << heading.toStdString() << "\"";
    }
}

// Below 1024 pixels the message line gives way, the player's frame keeps to
// the right edge and the panel beside the bar stays away; the artistic skin
// keeps its menus and count label readable on black.
TEST(GridLook, EveryHeadingIsWholeAndTheGeometryFollowsTheScreenWidthAndTheSkin) {
    std::map<int, int> messageWidth;  // on the normal skin, by screen width
    for (const QSize screen : {QSize(1280, 800), QSize(800, 600)}) {
        for (const int skin : {0, 1}) {
            for (const int userLayout : {0, 1}) {
                SCOPED_TRACE(::testing::Message() << screen.width() << (skin ? " artistic" : " normal")
                                                  << (userLayout ? " saved widths" : " default widths"));
                FormHarness h;
                h.inst.tp.environment.screen = screen;
                std::vector<SongFields> songs;
                for (int i = 1; i <= 30; ++i)
                    songs.push_back({QStringLiteral("Song title number %1").arg(i), "The Artist", "An Album", "1999", "Pop",
                                     "/music/song.mp3", "Y", " N", " N", ""});
                TestInstallation::AddSongs(h.inst.File("Mp3data1.mdb"), songs);
                h.inst.EditSettings([&](Settings& s) {
                    s.ArtisticScreen = skin;
                    s.GridLayoutUser = userLayout;
                    s.PlayerChoice = 4;
                });
                ASSERT_TRUE(h.Start());
                Form1& f = h.form();
                const bool narrow = screen.width() < 1024;
                if (!skin) {
                    messageWidth[screen.width()] = f.Text1->width();
                    EXPECT_EQ(f.Frame4->isVisible(), !narrow);
                }
                if (narrow && !skin) {
                    EXPECT_EQ(f.MFGrid1View->width(), 800 - 15);
                    EXPECT_EQ(f.Frame8->x(), 9240 / 15);
                    EXPECT_GE(f.Frame8->x(), f.Frame2->geometry().right() - 4);
                }
                if (narrow && skin) {
                    const QPalette menus = f.menuBar()->palette();
                    EXPECT_NE(menus.color(QPalette::Window), menus.color(QPalette::ButtonText));
                    EXPECT_NE(menus.color(QPalette::Window), QColor(Qt::black));
                    EXPECT_NE(f.Lable1->palette().color(QPalette::WindowText), f.palette().color(QPalette::Window));
                    EXPECT_GT(f.MFGrid1View->y(), 600 / 3);
                }
                ExpectWholeHeadings(*f.MFGrid1View);
                // The year is never elided in its column.
                const QFontMetrics cells = f.MFGrid1View->fontMetrics();
                const int textMargin = f.MFGrid1View->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, f.MFGrid1View) + 1;
                EXPECT_GE(f.MFGrid1View->columnWidth(4), cells.horizontalAdvance("1999") + 2 * textMargin);

                MarkForPlaylist(f, {3, 1, 2});
                h.Click("Playlist2");
                ASSERT_EQ(h.j().PlaylistActive, 1);
                ExpectWholeHeadings(*f.MFgrid2View);
            }
        }
    }
    EXPECT_LT(messageWidth[800], messageWidth[1280]);
}

}  // namespace
}  // namespace zor::testing
