#include "mp3/ui/form10.h"

#include "mp3/file_window.h"
#include "mp3/ui/song_analysis.h"
#include "shell/ui/form1.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

namespace zor {
namespace {

struct Row {
    const char* caption;
    const char* english;
    const char* dutch;
    const char* value;
};
// clang-format off
constexpr Row kRows[] = {
    {"Label50", "Size (bytes):",  "Bytes:",         "Label60"},
    {"Label51", "Duration:",      "Duur:",          "Label61"},
    {"Label54", "Frames:",        "Frames:",        "Label62"},
    {"Label53", "Coded at:",      "Codering:",      "Label63"},
    // Above the sample rate, as the window has always had it.
    {"Label55", "Bitrate (b/s):", "Bitrate (b/s):", "Label65"},
    {"Label56", "MPEG:",          "MPEG:",          "Label66"},
    {"Label57", "Description:",   "Beschrijving:",  "Label67"},
    {"Label58", "Protection:",    "Bescherming:",   "Label68"},
    {"Label59", "Mode Ext.:",     "Mode Ext.:",     "Label69"},
    {"Label75", "Copyright:",     "Copie-recht:",   "Label70"},
    {"Label12", "Original:",      "Origineel:",     "Label71"},
    {"Label13", "Emphasis:",      "Emphasis:",      "Label72"},
};
// clang-format on

QLabel* NamedLabel(QWidget* parent, const char* name) {
    auto* l = new QLabel(parent);
    l->setObjectName(QString::fromLatin1(name));
    return l;
}

QCheckBox* ShowOnlyBox(QWidget* parent, const char* name) {
    auto* c = new QCheckBox(parent);
    c->setObjectName(QString::fromLatin1(name));
    // It tells, it isn't asked: the user's click changes nothing.
    c->setAttribute(Qt::WA_TransparentForMouseEvents);
    c->setFocusPolicy(Qt::NoFocus);
    return c;
}

}  // namespace

Form10::Form10(Form1& form) : QWidget(&form, Qt::Window), f(form) {
    setObjectName(QStringLiteral("Form10"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(4);
    grid->setColumnMinimumWidth(1, fontMetrics().horizontalAdvance(QStringLiteral("CCIT J17  ")) + 40);
    // Room for the caption in the title bar.
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral(" ZOR JUKEBOX - MP3 BESTANDSINFORMATIE")) + 80);
    int r = 0;
    for (const Row& row : kRows) {
        captions[r] = NamedLabel(this, row.caption);
        values[r] = NamedLabel(this, row.value);
        grid->addWidget(captions[r], r, 0, Qt::AlignRight);
        grid->addWidget(values[r], r, 1);
        ++r;
    }
    Label73 = NamedLabel(this, "Label73");
    Label74 = NamedLabel(this, "Label74");
    Check12 = ShowOnlyBox(this, "Check12");
    Check13 = ShowOnlyBox(this, "Check13");
    grid->addWidget(Label73, r, 0, Qt::AlignRight);
    grid->addWidget(Check12, r++, 1);
    grid->addWidget(Label74, r, 0, Qt::AlignRight);
    grid->addWidget(Check13, r, 1);
}

void Form10::Load() {
    const Jukebox& j = f.j;
    setWindowTitle(j.Lang("ZOR JUKEBOX - MP3 FILE INFORMATION", " ZOR JUKEBOX - MP3 BESTANDSINFORMATIE"));
    for (std::size_t i = 0; i < captions.size(); ++i) captions[i]->setText(j.Lang(kRows[i].english, kRows[i].dutch));
    Label73->setText(QStringLiteral("Mono:"));
    Label74->setText(QStringLiteral("Stereo:"));
    f.MFGrid1.SetCol(kPathColumn);
    struct BackToColumn1 {
        Form1& f;
        ~BackToColumn1() { f.MFGrid1.SetCol(1); }
    } back{f};
    const Mp3Analysis a = AnalyseForFileWindow(f);
    if (a.outcome == Mp3Outcome::Analysed) {
        Check12->setChecked(a.Mono);
        Check13->setChecked(!a.Mono);
    }
    const std::array<QString, 12> texts = FileWindowValues(j.Mp3Info);
    for (std::size_t i = 0; i < values.size(); ++i) values[i]->setText(texts[i]);
}

void ShowFileInformation(Form1& f) {
    // An open window is loaded again: it shows the row of this moment.
    auto* w = f.findChild<Form10*>(QStringLiteral("Form10"), Qt::FindDirectChildrenOnly);
    if (w) {
        w->raise();
        w->activateWindow();
    } else {
        w = new Form10(f);
    }
    // A run-time error in Load reaches the menu's guard; the window shows
    // what it had by then, as a form whose Load stopped does.
    w->show();
    w->Load();
}

}  // namespace zor
