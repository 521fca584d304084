#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/button_bar.h"
#include "shell/ui/form1.h"
#include "shell/ui/menus.h"
#include "shell/ui/path_selector.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

namespace zor {
namespace {



struct Tip {
    QPushButton* Form1::*button;
    const char* english;
    const char* dutch;
};

const Tip kButtonTips[] = {
    {&Form1::Command3, "Open Database", "Open een Database"},
    {&Form1::Command4, "Save the current Database As", "Bewaar de huidige Database Als"},
    {&Form1::Command1, "ADD songs to the Database", "Wis Database en voeg Songs toe"},
    {&Form1::Command8, "Find a text in the database", "Zoek een tekst in de database"},
    {&Form1::Command9, "EDIT database entries and ID3",
     "Blader om bestandsnamen te zoeken; bijzonder handig voor invoegen van Lyrics, Plaatjes en Executables"},
    {&Form1::Command2, "Change the way the ZOR JUKEBOX works", "Verander de instellingen naar eigen wens"},
    {&Form1::Command7, "Make or close PLAYLIST",
     "Selecteer eerst de te spelen songs door in de linker kolom te klikken en druk dan hierop"},
    {&Form1::Command6, "Put all the songs by the selected artist in the Playlist",
     "Maak een Playlist met alle songs van de geselecteerde Artiest"},
    {&Form1::Command5, "Exit the ZOR JUKEBOX", "Beeindig het ZOR JUKEBOX programma"},
};

const char* const kLegendEnglish =
    "     OPEN             SAVE               ADD              FIND              EDIT             SETTINGS     "
    "PLAYLIST       ARTIST               EXIT       ";
const char* const kLegendDutch =
    "     OPEN           BEWAAR          ERBIJ            ZOEK           BEWERK     INSTELLINGEN  PLAYLIST     "
    "ARTIEST             EINDE        ";

}  // namespace

void SetLanguageCaptions(Form1& f) {
    const bool dutch = f.j.Language == QStringLiteral("0");
    SetMenuCaptions(f, dutch);
    f.setWindowTitle(dutch ? QStringLiteral("ZOR JUKEBOX door ZOR electronics") : QStringLiteral("ZOR JUKEBOX"));
    f.Frame2->setTitle(QString::fromLatin1(dutch ? kLegendDutch : kLegendEnglish));
    LayOutButtonBar(f, f.Frame2->pos());
    for (const Tip& t : kButtonTips)
        (f.*t.button)->setToolTip(f.j.shell.DirectHelp ? QString::fromLatin1(dutch ? t.dutch : t.english) : QString());
}

void LayOutForm1(Form1& f) {
    const Jukebox& j = f.j;
    const int width = j.shell.ScreenWidthPx;
    const int height = j.shell.ScreenHeightPx;
    f.setGeometry(0, 0, width, height);
    const int barHeight = LayOutButtonBar(f, QPoint(4, 2)).height();
    const int gridWidth = width - 15;
    const int lineHeight = 26;
    const int menuHeight = f.menuBar()->sizeHint().height();
    const int bottom = height - menuHeight - 2 * lineHeight - 12;
    const int gridTop = barHeight + 8;
    const int artisticTop = j.settings.ArtisticScreen == 1 ? (height - menuHeight) / 2 : gridTop;
    for (SongGridView* v : {f.MFGrid1View, f.MFgrid2View}) v->setGeometry(0, artisticTop, gridWidth, bottom - artisticTop);
    const int countWidth = 220;
    f.Text1->setGeometry(0, bottom + 4, gridWidth - countWidth - 4, lineHeight);
    f.Lable1->setGeometry(gridWidth - countWidth, bottom + 4, 110, lineHeight);
    f.Text2->setGeometry(gridWidth - countWidth + 110, bottom + 4, countWidth - 110, lineHeight);
    f.ProgressBar1->setGeometry(0, bottom + lineHeight + 8, gridWidth, 14);
    f.Frame4->setGeometry(f.Frame4->x(), 2, 260, barHeight);
    // Beside the bar the frame holds only the lyrics preview; the song's
    // other lines belong to the artistic skin's panel.
    f.Text4->setGeometry(6, (barHeight - 26) / 2, 248, 26);
    for (QLineEdit* line : {f.Text6, f.Text7, f.Text8, f.Text9}) line->hide();
    // The path selector opens over the top left of the grid.
    f.Frame3->setGeometry(8, gridTop + 24, std::min(640, gridWidth - 16), 320);
    // The artistic skin's place of the player's frame lies under the bar,
    // which has grown over it: there it stands right of the bar.
    if (j.settings.ArtisticScreen == 1)
        f.Frame8->move(f.Frame2->geometry().right() + 8, 2 + (barHeight - f.Frame8->height()) / 2);
}

void LayOutArtisticPanels(Form1& f) {
    const int width = f.j.shell.ScreenWidthPx - 15;
    const int top = f.Frame2->geometry().bottom() + 8;
    const int bottom = f.MFGrid1View->y() - 8;
    const int height = std::max(bottom - top, 60);
    // Light on black, as the rest of the skin.
    QPalette dark = f.palette();
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::WindowText, QColor(0, 250, 250));
    dark.setColor(QPalette::Text, Qt::white);
    const int infoWidth = width * 45 / 100;
    const int pictureWidth = width * 40 / 100;
    f.Frame4->setGeometry(0, top, infoWidth, height);
    f.Frame5->setGeometry(infoWidth + 8, top, pictureWidth, height);
    f.Frame7->setGeometry(infoWidth + pictureWidth + 16, top, width - infoWidth - pictureWidth - 16, height);
    for (QFrame* frame : {f.Frame4, f.Frame5, f.Frame7}) {
        frame->setPalette(dark);
        frame->setAutoFillBackground(true);
    }
    QLineEdit* lines[] = {f.Text4, f.Text6, f.Text7, f.Text8, f.Text9};
    const int lineHeight = std::min(height / 5, 40);
    QFont big = f.font();
    big.setPointSize(lineHeight > 30 ? 16 : 11);
    big.setBold(true);
    for (int i = 0; i < 5; ++i) {
        lines[i]->setFont(i == 0 ? big : f.font());
        lines[i]->setGeometry(8, 4 + i * lineHeight, infoWidth - 16, lineHeight - 4);
        lines[i]->show();
    }
    const int side = std::min((pictureWidth - 32) / 3, height - 16);
    QLabel* pictures[] = {f.Picture3, f.Picture4, f.Picture5};
    for (int i = 0; i < 3; ++i) {
        pictures[i]->setGeometry(8 + i * (side + 8), 8, side, side);
        pictures[i]->setScaledContents(false);
        pictures[i]->setAlignment(Qt::AlignCenter);
    }
    f.Picture6->setGeometry(8, 8, f.Frame7->width() - 16, 32);
}

}  // namespace zor
