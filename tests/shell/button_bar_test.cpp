// The button bar: its legend in each mode and language with the buttons
// standing over their words as the bar is really painted, the transport
// faces of the playlist and back, and the pictures.
#include "shell/ui/button_bar.h"
#include "tests/support/form_harness.h"

#include <QGroupBox>
#include <QImage>
#include <QPixmap>
#include <QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <vector>

namespace zor::testing {
namespace {

// Each bar by a word of its own in each language; one legend whole.
struct Legends {
    const char* language;
    QString playlist, catalogue;
};
const Legends kLegends[] = {{"1", "REPEAT", "FIND"}, {"0", "HERHAAL", "ZOEK"}};
const QString kEnglishCatalogue = "     OPEN             SAVE               ADD              FIND              EDIT  "
                                  "           SETTINGS     PLAYLIST       ARTIST               EXIT      ";

std::array<QPushButton*, 9> BarButtons(Form1& f) {
    return {f.Command3, f.Command4, f.Command1, f.Command8, f.Command9, f.Command2, f.Command7, f.Command6, f.Command5};
}

// What the user sees of the legend: the columns with ink on the line under
// the buttons, gathered into words wherever a gap is wider than between two
// letters. Returns [left, right] per word.
std::vector<std::pair<int, int>> PaintedWords(Form1& f) {
    const QImage image = f.Frame2->grab().toImage().convertToFormat(QImage::Format_RGB32);
    int top = 0;
    for (QPushButton* b : BarButtons(f)) top = std::max(top, b->geometry().bottom() + 1);
    // The frame's own lines lie within three pixels of its edges.
    const int bottom = image.height() - 4, right = image.width() - 4;
    std::map<QRgb, int> seen;
    for (int y = top; y <= bottom; ++y)
        for (int x = 3; x <= right; ++x) ++seen[image.pixel(x, y)];
    const QRgb back = std::max_element(seen.begin(), seen.end(), [](auto& a, auto& b) { return a.second < b.second; })->first;
    auto inked = [&](int x) {
        for (int y = top; y <= bottom; ++y) {
            const QRgb c = image.pixel(x, y);
            if (std::abs(qRed(c) - qRed(back)) + std::abs(qGreen(c) - qGreen(back)) + std::abs(qBlue(c) - qBlue(back)) > 150)
                return true;
        }
        return false;
    };
    std::vector<std::pair<int, int>> words;
    for (int x = 3; x <= right; ++x) {
        if (!inked(x)) continue;
        if (words.empty() || x - words.back().second > 3) words.push_back({x, x});
        words.back().second = x;
    }
    return words;
}

void ExpectButtonsOverTheirWords(Form1& f, const QString& word) {
    const QString legend = f.Frame2->title();
    SCOPED_TRACE(legend.simplified().toStdString());
    ASSERT_TRUE(legend.contains(word));
    const auto words = PaintedWords(f);
    const QStringList names = legend.split(u' ', Qt::SkipEmptyParts);
    ASSERT_EQ(words.size(), 9u);
    const auto buttons = BarButtons(f);
    for (int i = 0; i < 9; ++i) {
        SCOPED_TRACE(names[i].toStdString());
        // The painted word is the word in the frame's font, not some other text or font.
        EXPECT_NEAR(words[i].second - words[i].first + 1, f.Frame2->fontMetrics().tightBoundingRect(names[i]).width(), 2);
        const int centre = buttons[i]->geometry().center().x();
        EXPECT_GE(centre, words[i].first);
        EXPECT_LE(centre, words[i].second);
        EXPECT_TRUE(f.Frame2->rect().contains(buttons[i]->geometry()));
        if (i > 0) EXPECT_LT(buttons[i - 1]->geometry().right(), buttons[i]->geometry().left());
    }
}

// The playlist turns add, find and edit into back, pause and next, with
// text faces on its own colour; the catalogue's bar gives back the pictures.
void ExpectTransportFaces(Form1& f, bool playlist) {
    const std::array<QPushButton*, 3> transport{f.Command1, f.Command8, f.Command9};
    const QString faces[] = {"<<<", " ||||||", ">>>"};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(transport[i]->objectName().toStdString());
        EXPECT_EQ(transport[i]->text(), playlist ? faces[i] : QString());
        EXPECT_EQ(transport[i]->icon().isNull(), playlist);
    }
    if (!playlist)
        for (QPushButton* b : BarButtons(f)) EXPECT_FALSE(b->icon().isNull()) << b->objectName().toStdString();
}

TEST(ButtonBar, EachModeShowsItsLegendAndFacesWithTheButtonsOverTheWordsOnEitherSkin) {
    for (const Legends& l : kLegends) {
        for (const bool black : {false, true}) {
            SCOPED_TRACE(std::string(l.language) + (black ? " black" : " normal"));
            FormHarness h;
            ASSERT_TRUE(h.Start());
            Form1& f = h.form();
            PaintButtonPictures(f);
            h.j().Language = QString::fromLatin1(l.language);
            if (black) {  // as the artistic skin paints the window
                QPalette p = f.palette();
                p.setColor(QPalette::Window, Qt::black);
                f.setPalette(p);
            }
            SetLanguageCaptions(f);
            const QSize size = LayOutButtonBar(f, QPoint(4, 2));
            EXPECT_EQ(f.Frame2->geometry(), QRect(QPoint(4, 2), size));
            ExpectButtonsOverTheirWords(f, l.catalogue);  // the window's own caption, a blank longer
            ShowPlaylistBar(f);
            ExpectButtonsOverTheirWords(f, l.playlist);
            ExpectTransportFaces(f, true);
            ShowCatalogueBar(f);
            ExpectButtonsOverTheirWords(f, l.catalogue);
            ExpectTransportFaces(f, false);
            if (l.language == std::string("1")) EXPECT_EQ(f.Frame2->title(), kEnglishCatalogue);
            // The internal player's frame stands at 616 px on the normal skin.
            if (l.language == std::string("0")) EXPECT_LT(f.Frame2->geometry().right(), 616);
        }
    }
}

TEST(ButtonBar, PicturesAreDrawnAndEachIsItsOwn) {
    const QSize size(40, 28);
    std::vector<QImage> drawn;
    for (int i = 0; i <= static_cast<int>(ButtonPicture::Exit); ++i) {
        SCOPED_TRACE(i);
        const QIcon icon = ButtonPictureIcon(static_cast<ButtonPicture>(i));
        const QImage normal = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_EQ(normal.size(), size);
        int opaque = 0;
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x) opaque += qAlpha(normal.pixel(x, y)) > 200;
        // A pictogram, on a clear ground that lets the button show through.
        EXPECT_GT(opaque, size.width() * size.height() / 8);
        EXPECT_LT(opaque, size.width() * size.height() * 3 / 4);
        EXPECT_EQ(qAlpha(normal.pixel(0, 0)), 0);
        // A disabled button's picture is told apart from an enabled one.
        EXPECT_NE(icon.pixmap(size, QIcon::Disabled).toImage().convertToFormat(QImage::Format_ARGB32), normal);
        for (const QImage& other : drawn) EXPECT_NE(other, normal);
        drawn.push_back(normal);
    }
}

}  // namespace
}  // namespace zor::testing
