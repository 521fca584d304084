#include "shell/ui/form1.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "catalogue/ui/import_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "mp3/ui/tag_editor_ops.h"
#include "platform/guard.h"
#include "playback/ui/companions.h"
#include "playback/ui/play_ops.h"
#include "playback/ui/player_panel.h"
#include "playlists/ui/playlist_files.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/button_bar.h"
#include "shell/ui/menus.h"
#include "shell/ui/path_selector.h"
#include "shell/ui/startup.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace zor {

template <typename F>
void Form1::On(F&& operation) {
    struct Running {
        Form1& f;
        explicit Running(Form1& form) : f(form) { ++f.handlersRunning_; }
        ~Running() {
            if (--f.handlersRunning_ == 0 && f.retired_) f.deleteLater();
        }
    } running(*this);
    Guarded(j.platform.messages, std::forward<F>(operation), j.HidePictureForms);
}

Form1::Form1(Jukebox& jukebox) : j(jukebox), Data1(jukebox.platform.files) {
    setObjectName(QStringLiteral("Form1"));
    setWindowTitle(QStringLiteral("ZOR JUKEBOX"));
    auto* central = new QWidget(this);
    setCentralWidget(central);
    setAutoFillBackground(true);

    BuildMenus();
    BuildButtonBar();
    PaintButtonPictures(*this);

    Text1 = new QLineEdit(central);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setReadOnly(true);
    Text1->setAutoFillBackground(true);
    Text2 = new QLineEdit(central);
    Text2->setObjectName(QStringLiteral("Text2"));
    Text2->setReadOnly(true);
    Lable1 = new QLabel(QStringLiteral("     Files:"), central);
    Lable1->setObjectName(QStringLiteral("Lable1"));
    ProgressBar1 = new QProgressBar(central);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setRange(0, 1);
    ProgressBar1->setValue(0);

    MFGrid1View = new SongGridView(MFGrid1, QStringLiteral("MFGrid1"), central);
    MFgrid2View = new SongGridView(MFgrid2, QStringLiteral("MFgrid2"), central);
    connect(MFGrid1View, &SongGridView::MouseDown, this, [this](Qt::MouseButton b) {
        const int button = b == Qt::RightButton ? kRightButton : b == Qt::MiddleButton ? kMiddleButton : kLeftButton;
        On([&] { GridMouseDown(*this, button); });
    });
    connect(MFGrid1View, &SongGridView::Click, this, [this] {
        On([&] {
            ClickGrid(*this);
            ReloadTagEditorOnClick(*this);
        });
    });
    connect(MFGrid1View, &SongGridView::DblClick, this, [this] { On([&] { DoubleClickCatalogueGrid(*this); }); });
    connect(MFgrid2View, &SongGridView::Click, this, [this] { On([&] { ClickPlaylistGrid(*this); }); });
    connect(MFgrid2View, &SongGridView::DblClick, this, [this] { On([&] { DoubleClickPlaylistGrid(*this); }); });

    BuildPanels();

    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(100);
    connect(Timer1, &QTimer::timeout, this, [this] { On([&] { Timer1Tick(*this); }); });
    Timer3 = new QTimer(this);
    Timer3->setObjectName(QStringLiteral("Timer3"));
    Timer3->setInterval(7000);
    connect(Timer3, &QTimer::timeout, this, [this] { On([&] { Timer3Tick(*this); }); });
    Timer4 = new QTimer(this);
    Timer4->setObjectName(QStringLiteral("Timer4"));
    Timer4->setInterval(100);
    connect(Timer4, &QTimer::timeout, this, [this] { On([&] { Timer4Tick(*this); }); });
    companions = std::make_unique<Companions>(*this);
    AttachMediaPlayer(*this);
}

Form1::~Form1() {
    DetachMediaPlayer(*this);
    // The views read the grids, which are members and die before the child
    // widgets would.
    delete MFGrid1View;
    delete MFgrid2View;
}

void Form1::BuildMenus() {
    BuildMenuBar(*this);
    File = findChild<QMenu*>(QStringLiteral("File"));
    ZOR0 = findChild<QMenu*>(QStringLiteral("ZOR0"));
    Exit1 = findChild<QAction*>(QStringLiteral("Exit1"));
    DHelp1 = findChild<QAction*>(QStringLiteral("DHelp1"));
    DHelp1->setCheckable(true);
}

void Form1::Run(void (*operation)(Form1&)) {
    On([&] { operation(*this); });
}

void Form1::BuildButtonBar() {
    Frame2 = new QGroupBox(centralWidget());
    Frame2->setObjectName(QStringLiteral("Frame2"));
    struct Button {
        QPushButton** member;
        const char* name;
        void (*operation)(Form1&);
        // What the button does in the playlist mode, where it differs.
        void (*inPlaylist)(Form1&) = nullptr;
    };
    const Button buttons[] = {
        {&Command3, "Command3", OpenDatabaseDialog, OpenPlaylistFile},
        {&Command4, "Command4", SaveDatabaseAs, SavePlaylistAs},
        {&Command1, "Command1", AddSongsNoClear, PlaylistBack},
        {&Command8, "Command8", nullptr, PlaylistRepeat},
        {&Command9, "Command9", OpenTagEditor, PlaylistNext},
        {&Command2, "Command2", nullptr},
        {&Command7, "Command7", TogglePlaylistMode},
        {&Command6, "Command6", SelectAllByArtist},
        {&Command5, "Command5", [](Form1& f) { ExitProgram(f, true); }},
    };
    for (const Button& b : buttons) {
        auto* button = new QPushButton(Frame2);
        button->setObjectName(QString::fromLatin1(b.name));
        *b.member = button;
        if (b.operation || b.inPlaylist) {
            auto operation = b.operation;
            auto inPlaylist = b.inPlaylist;
            connect(button, &QPushButton::clicked, this, [this, operation, inPlaylist] {
                On([&] {
                    if (auto chosen = j.PlaylistActive == 1 && inPlaylist ? inPlaylist : operation) chosen(*this);
                });
            });
        }
        if (!b.operation) {
            // Its operation arrives with its own window.
            button->setEnabled(false);
        }
    }
}

void Form1::BuildPanels() {
    auto frame = [this](const char* name) {
        auto* f = new QFrame(centralWidget());
        f->setObjectName(QString::fromLatin1(name));
        f->setFrameShape(QFrame::Box);
        f->hide();
        return f;
    };
    Frame3 = new PathSelector(j.platform.files, centralWidget());
    Frame3->hide();
    connect(Frame3->Command15, &QPushButton::clicked, this, [this] { Run(InsertChosenPath); });
    connect(Frame3->Command16, &QPushButton::clicked, this, [this] { Run(ScanSelectedPath); });
    Frame4 = frame("Frame4");
    Frame5 = frame("Frame5");
    Frame7 = frame("Frame7");
    Frame8 = frame("Frame8");
    auto picture = [](const char* name, QWidget* parent) {
        auto* p = new QLabel(parent);
        p->setObjectName(QString::fromLatin1(name));
        return p;
    };
    Picture1 = picture("Picture1", centralWidget());
    Picture2 = picture("Picture2", centralWidget());
    // The artistic skin's song information: texts in Frame4, pictures of
    // the artist and the album in Frame5; the play engine fills them.
    auto text = [](const char* name, QWidget* parent) {
        auto* t = new QLineEdit(parent);
        t->setObjectName(QString::fromLatin1(name));
        t->setReadOnly(true);
        t->setFrame(false);
        return t;
    };
    Text4 = text("Text4", Frame4);
    Text6 = text("Text6", Frame4);
    Text7 = text("Text7", Frame4);
    Text8 = text("Text8", Frame4);
    Text9 = text("Text9", Frame4);
    Picture3 = picture("Picture3", Frame5);
    Picture4 = picture("Picture4", Frame5);
    Picture5 = picture("Picture5", Frame5);
    Picture6 = picture("Picture6", Frame7);
    Picture6->setText(QStringLiteral("Normal Skin"));
    Picture6->setAlignment(Qt::AlignCenter);
    Picture6->setFrameShape(QFrame::Box);
    Picture6->setCursor(Qt::PointingHandCursor);
    Picture6->installEventFilter(this);
    Command17 = new QPushButton(centralWidget());
    Command17->setObjectName(QStringLiteral("Command17"));
}

bool Form1::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Picture6 && event->type() == QEvent::MouseButtonRelease) {
        On([&] { ChangeSkin(*this, false); });
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void Form1::ShowMessage(const QColor& background, const QString& text) {
    // Dark text on the light colours, white on the reds.
    const double luma = 0.299 * background.red() + 0.587 * background.green() + 0.114 * background.blue();
    PaintMessageLine(background, luma < 140 ? Qt::white : Qt::black, text);
}

void Form1::ShowSongLine(const QString& text) { PaintMessageLine(Qt::black, kSongLineGreen, text); }

void Form1::PaintMessageLine(const QColor& background, const QColor& foreground, const QString& text) {
    QPalette p = Text1->palette();
    p.setColor(QPalette::Base, background);
    p.setColor(QPalette::Text, foreground);
    Text1->setPalette(p);
    Text1->setText(text);
    Text1->setCursorPosition(0);
}

void Form1::ShowWorking(const QColor& background, const QString& text) {
    ShowMessage(background, text);
    j.platform.events.DoEvents();
}

void Form1::StartProgress(int n) {
    // A range of 0..0 would turn the bar into a busy indicator.
    ProgressBar1->setRange(0, std::max(n, 1));
    ProgressBar1->setValue(0);
}

void Form1::SetProgress(int value) {
    const int step = std::max((ProgressBar1->maximum() - ProgressBar1->minimum()) / 100, 1);
    const int shown = ProgressBar1->value();
    if (value == ProgressBar1->minimum() || value >= ProgressBar1->maximum() || std::abs(value - shown) >= step)
        ProgressBar1->setValue(value);
}

QColor Form1::MessageColour() const { return Text1->palette().color(QPalette::Base); }

void Form1::ShowCount(const QString& label, qint64 count) {
    Lable1->setText(label);
    Text2->setText(QString::number(count));
}

void Form1::ShowTotal(qint64 count) {
    ShowCount(j.Lang(QStringLiteral("     Total:"), QStringLiteral("     Totaal:")), count);
}

void Form1::ShowRecordNumber(qint64 row) {
    ShowCount(j.Lang(QStringLiteral("     Record:"), QStringLiteral("     Regel:")), row);
}

void Form1::Retire() {
    retired_ = true;
    hide();
    if (handlersRunning_ == 0) deleteLater();
}

void Form1::Unload() {
    if (unloading_ || unloaded_) return;
    unloading_ = true;
    close();
}

void Form1::closeEvent(QCloseEvent* e) {
    // The system's close box takes the same way out, with the picture
    // windows hidden first.
    if (!unloading_ && j.HidePictureForms) j.HidePictureForms();
    unloading_ = false;
    if (unloaded_) {
        e->accept();
        return;
    }
    unloaded_ = true;
    Timer1->stop();
    Timer3->stop();
    Timer4->stop();
    e->accept();
    Form1Unload(*this);
}

void Form1::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        On([&] { EscapeKey(*this); });
        return;
    }
    QMainWindow::keyPressEvent(e);
}

}  // namespace zor
