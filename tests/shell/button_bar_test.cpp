// The button bar: its legend in each mode and language, the buttons standing
// over their words as the bar is really painted, the transport faces of the
// playlist, and the pictures.
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
#include <tuple>
#include <vector>

namespace zor::testing {
namespace {

const QString kPlaylistEnglish = QStringLiteral(
    "     OPEN             SAVE              BACK          REPEAT           NEXT           SETTINGS    DATABASE     RANDOM            EXIT       ");
const QString kPlaylistDutch = QStringLiteral(
    "     OPEN           BEWAAR         VORIG         HERHAAL    VOLGEND    INSTELLINGEN  DATABASE     WILLEK.            EINDE        ");
const QString kCatalogueEnglish = QStringLiteral(
    "     OPEN             SAVE               ADD              FIND              EDIT             SETTINGS     PLAYLIST       ARTIST               EXIT      ");
const QString kCatalogueDutch = QStringLiteral(
    "     OPEN           BEWAAR          ERBIJ            ZOEK           BEWERK     INSTELLINGEN  PLAYLIST     ARTIEST             EINDE        ");

const char* const kDutch = "0";
const char* const kEnglish = "1";

std::array<QPushButton*, 9> BarButtons(Form1& f) {
    return {f.Command3, f.Command4, f.Command1, f.Command8, f.Command9, f.Command2, f.Command7, f.Command6, f.Command5};
}

std::array<QPushButton*, 3> TransportButtons(Form1& f) {
    return {f.Command1, f.Command8, f.Command9};
}

// The started window as the bar is first shown, in the language.
Form1& Prepare(FormHarness& h, const char* language) {
    Form1& f = h.form();
    PaintButtonPictures(f);
    h.j().Language = QString::fromLatin1(language);
    return f;
}

// What the user sees of the legend: the columns with ink on the line under
// the buttons, gathered into words wherever a gap is wider than between two
// letters.
struct Span {
    int left, right;
    int Width() const { return right - left + 1; }
};

std::vector<Span> PaintedWords(Form1& f) {
    QGroupBox& box = *f.Frame2;
    const QImage image = box.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(image.size(), box.size());
    int top = 0;
    for (QPushButton* b : BarButtons(f)) top = std::max(top, b->geometry().bottom() + 1);
    // The frame's own lines lie within three pixels of its edges.
    const int bottom = image.height() - 4, left = 3, right = image.width() - 4;
    std::map<QRgb, int> seen;
    for (int y = top; y <= bottom; ++y)
        for (int x = left; x <= right; ++x) ++seen[image.pixel(x, y)];
    const QRgb back = std::max_element(seen.begin(), seen.end(), [](auto& a, auto& b) { return a.second < b.second; })->first;
    auto inked = [&](int x) {
        for (int y = top; y <= bottom; ++y) {
            const QRgb c = image.pixel(x, y);
            if (std::abs(qRed(c) - qRed(back)) + std::abs(qGreen(c) - qGreen(back)) + std::abs(qBlue(c) - qBlue(back)) > 150)
                return true;
        }
        return false;
    };
    std::vector<Span> words;
    for (int x = left; x <= right; ++x) {
        if (!inked(x)) continue;
        if (words.empty() || x - words.back().right > 3) words.push_back({x, x});
        words.back().right = x;
    }
    return words;
}

void ExpectButtonsOverTheirWords(Form1& f, const QString& legend) {
    SCOPED_TRACE(legend.simplified().toStdString());
    ASSERT_EQ(f.Frame2->title(), legend);
    const std::vector<Span> words = PaintedWords(f);
    const QStringList names = legend.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    ASSERT_EQ(words.size(), 9u);
    const QFontMetrics fm = f.Frame2->fontMetrics();
    const auto buttons = BarButtons(f);
    for (int i = 0; i < 9; ++i) {
        SCOPED_TRACE(names[i].toStdString());
        // The painted word is the word in the frame's font, not some other
        // text or font.
        EXPECT_NEAR(words[i].Width(), fm.tightBoundingRect(names[i]).width(), 2);
        const int centre = buttons[i]->geometry().center().x();
        EXPECT_GE(centre, words[i].left);
        EXPECT_LE(centre, words[i].right);
        EXPECT_TRUE(f.Frame2->rect().contains(buttons[i]->geometry()));
        if (i > 0) EXPECT_LT(buttons[i - 1]->geometry().right(), buttons[i]->geometry().left());
    }
}

TEST(ButtonBar, EachModeShowsItsLegendInTheLanguage) {
    for (const auto& [language, playlist, catalogue] :
         {std::tuple{kEnglish, kPlaylistEnglish, kCatalogueEnglish}, std::tuple{kDutch, kPlaylistDutch, kCatalogueDutch}}) {
        SCOPED_TRACE(language);
        FormHarness h;
        ASSERT_TRUE(h.Start());
        Form1& f = Prepare(h, language);
        ShowPlaylistBar(f);
        EXPECT_EQ(f.Frame2->title(), playlist);
        ShowCatalogueBar(f);
        EXPECT_EQ(f.Frame2->title(), catalogue);
        ShowPlaylistBar(f);
        EXPECT_EQ(f.Frame2->title(), playlist);
    }
}

TEST(ButtonBar, ButtonsStandOverTheirWordsOnEitherSkin) {
    for (const char* language : {kEnglish, kDutch}) {
        for (const bool black : {false, true}) {
            SCOPED_TRACE(std::string(language) + (black ? " black" : " normal"));
            FormHarness h;
            ASSERT_TRUE(h.Start());
            Form1& f = Prepare(h, language);
            if (black) {
                // As the artistic skin paints the window.
                QPalette p = f.palette();
                p.setColor(QPalette::Window, Qt::black);
                f.setPalette(p);
            }
            SetLanguageCaptions(f);
            LayOutButtonBar(f, QPoint(4, 2));
            ExpectButtonsOverTheirWords(f, f.Frame2->title());
            ShowPlaylistBar(f);
            ExpectButtonsOverTheirWords(f, language == kDutch ? kPlaylistDutch : kPlaylistEnglish);
            ShowCatalogueBar(f);
            ExpectButtonsOverTheirWords(f, language == kDutch ? kCatalogueDutch : kCatalogueEnglish);
        }
    }
}

TEST(ButtonBar, TheBarStaysWhereItIsPutAndClearOfThePlayer) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    Form1& f = Prepare(h, kDutch);
    const QSize size = LayOutButtonBar(f, QPoint(4, 2));
    EXPECT_EQ(f.Frame2->geometry(), QRect(QPoint(4, 2), size));
    ShowPlaylistBar(f);
    EXPECT_EQ(f.Frame2->pos(), QPoint(4, 2));
    // The internal player's frame stands at 616 px on the normal skin.
    for (auto show : {ShowPlaylistBar, ShowCatalogueBar}) {
        show(f);
        EXPECT_LT(f.Frame2->geometry().right(), 616);
    }
}

TEST(ButtonBar, ThePlaylistTurnsThreeButtonsIntoItsTransport) {
    for (const char* language : {kEnglish, kDutch}) {
        SCOPED_TRACE(language);
        FormHarness h;
        ASSERT_TRUE(h.Start());
        Form1& f = Prepare(h, language);
        for (int round = 0; round < 2; ++round) {
            ShowPlaylistBar(f);
            const auto transport = TransportButtons(f);
            const QString faces[] = {QStringLiteral("<<<"), QStringLiteral(" ||||||"), QStringLiteral(">>>")};
            for (int i = 0; i < 3; ++i) {
                SCOPED_TRACE(transport[i]->objectName().toStdString());
                EXPECT_EQ(transport[i]->text(), faces[i]);
                EXPECT_TRUE(transport[i]->icon().isNull());
                EXPECT_EQ(transport[i]->palette().color(QPalette::Button), QColor(0, 128, 128));
            }
            ShowCatalogueBar(f);
            for (QPushButton* b : transport) {
                SCOPED_TRACE(b->objectName().toStdString());
                EXPECT_EQ(b->text(), QString());
                EXPECT_EQ(b->palette().color(QPalette::Button), QColor(0, 0, 192));
            }
            for (QPushButton* b : BarButtons(f)) EXPECT_FALSE(b->icon().isNull()) << b->objectName().toStdString();
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
        EXPECT_EQ(qAlpha(normal.pixel(size.width() - 1, 0)), 0);
        // A disabled button's picture is told apart from an enabled one.
        EXPECT_NE(icon.pixmap(size, QIcon::Disabled).toImage().convertToFormat(QImage::Format_ARGB32), normal);
        for (const QImage& other : drawn) EXPECT_NE(other, normal);
        drawn.push_back(normal);
    }
}

}  // namespace
}  // namespace zor::testing
