#include "playback/ui/form24.h"

#include "platform/binary_file.h"
#include "platform/guard.h"
#include "playback/log_view.h"
#include "playback/play_log.h"
#include "shell/ui/form1.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QWheelEvent>

namespace zor {

Form24::Form24(Form1& form) : QWidget(&form, Qt::Window), f(form) {
    setObjectName(QStringLiteral("Form24"));
    setWindowTitle(QStringLiteral("ZOR JUKEBOX - LOGFILE"));
    setAttribute(Qt::WA_DeleteOnClose);

    Text1 = new QPlainTextEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setReadOnly(true);
    // The log stands in fixed columns; only a fixed-pitch font keeps them.
    Text1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Text1->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    // VScroll1 is the only way through the log; the box shows one page.
    Text1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Text1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Text1->viewport()->installEventFilter(this);

    VScroll1 = new QScrollBar(Qt::Vertical, this);
    VScroll1->setObjectName(QStringLiteral("VScroll1"));
    VScroll1->setRange(0, 0);
    VScroll1->setSingleStep(1);
    VScroll1->setPageStep(kLogPageLines);
    connect(VScroll1, &QScrollBar::valueChanged, this, [this] {
        Guarded(f.j.platform.messages, [this] { ShowPage(); }, f.j.HidePictureForms);
    });

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(2);
    layout->addWidget(Text1);
    layout->addWidget(VScroll1);

    // Room for a whole line and a whole page.
    const QFontMetrics fm(Text1->font());
    const int frame = 2 * Text1->frameWidth() + 2 * int(Text1->document()->documentMargin()) + 4;
    Text1->setMinimumSize(fm.horizontalAdvance(QString(kLogLineBytes, u'M')) + frame,
                          fm.lineSpacing() * kLogPageLines + frame);
}

QString Form24::LogPath() const { return f.j.ProgramFile(QStringLiteral("ZORjuke.log")); }

void Form24::Load() {
    Jukebox& j = f.j;
    const QString path = LogPath();
    if (!j.platform.files.FileExists(path)) {
        Text1->setPlainText(j.Lang(QStringLiteral("LOG file not found"), QStringLiteral("LOG bestand niet gevonden")));
        return;
    }
    qint64 lines = 0;
    {
        BinaryFile file(j.platform.files, path, BinaryFile::ReadOnly);
        lines = LogLineCount(file.Length());
    }
    if (lines >= kLogViewerLineLimit) {
        j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
        j.AddMessageLine(j.Lang(QStringLiteral("The LOG file is full!  "), QStringLiteral("Het LOG-bestand is vol!  ")));
        j.AddMessageLine(QString());
        j.AddMessageLine(j.Lang(QStringLiteral("Please move or delete the ZORjuke.log file  "),
                                QStringLiteral("Verplaats of wis ZORjuke.log zodat    ")));
        j.AddMessageLine(j.Lang(QStringLiteral("in order for the ZOR JUKEBOX to create a new log file.  "),
                                QStringLiteral("een nieuw log bestand wordt gemaakt. ")));
        j.ShowMessageBuffer(vbCritical + vbOKOnly);
        return;
    }
    // One past the last line's start, so the last line can be read at the top.
    const QSignalBlocker quiet(VScroll1);
    VScroll1->setMaximum(int(lines) + 1);
    ShowPage();
}

void Form24::ShowPage() {
    Text1->setPlainText(ReadLogPage(f.j.platform.files, LogPath(), VScroll1->value(), buffer_));
}

bool Form24::eventFilter(QObject* watched, QEvent* event) {
    // The wheel over the text turns the page scroll bar, as the box itself
    // has nothing to scroll.
    if (watched == Text1->viewport() && event->type() == QEvent::Wheel) {
        QCoreApplication::sendEvent(VScroll1, event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ShowLogFile(Form1& f) {
    if (auto* open = f.findChild<Form24*>(QStringLiteral("Form24"), Qt::FindDirectChildrenOnly)) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto* viewer = new Form24(f);
    // A run-time error in Load reaches the menu's guard; the window shows
    // what it had by then, as a form whose Load stopped does.
    viewer->show();
    viewer->Load();
}

}  // namespace zor
