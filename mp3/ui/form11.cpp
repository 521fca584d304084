#include "mp3/ui/form11.h"

#include "mp3/id3_tag.h"
#include "mp3/ui/tag_editor_ops.h"
#include "platform/guard.h"
#include "shell/ui/form1.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace zor {
namespace {

struct Caption {
    const char* name;
    const char* english;
    const char* dutch;  // nullptr: the English caption in both languages
};

// clang-format off
const Caption kCaptions[] = {
    {"Label1", "[Click on row in database grid to obtain entries]", "[Klik altijd eerst op een regel in het raster!]"},
    {"Caption41", "Song Title:", "Songtitel:"},
    {"Caption42", "Artist:", "Artiest:"},
    {"Caption43", "Album:", "Album:"},
    {"Caption45", "Year:", "Jaar:"},
    {"Caption44", "Comment:", "Comment:"},
    {"CaptionList5", "Style", "Muziek-stijl"},
    {"Option1", "ID3 Tag", "ID3 Tag"},
    {"CaptionScroll1", "Score:", "Score:"},
    {"CaptionScroll2", "Reach:", "Reach:"},
    {"Check8", "Special:", "Special:"},
    {"Command1", "Convert to Lower Case", "Converteer naar kleine letters"},
    {"Command2", "Convert to Upper Case", "Converteer naar hoofdletters"},
    {"Command3", "Start all words with Capitals", "Begin elk woord met een Hoofdletter"},
    {"Command4", "Swap Artist and Song title", "Verwissel Artiestnaam en Songtitel"},
    {"Command5", "Save this data into the database and ID3 Tag", "Bewaar deze gegevens in de Database en in de ID3 Tag"},
    {"Command6", "Check if picture of Lyrics is present", "Verifieer of Lyrics voor deze song aanwezig is"},
    {"Command7", "Check if picture of this artist is present", "Verifieer of een Plaatje van deze artiest aanwezig is"},
    {"Command8", "Determine the MP3 encoding rate", "Bepaal de codering van dit mp3 bestand (in kb/s)"},
    {"Command11", "Close this Window", "Sluit dit venster"},
    {"Command12", "Copy Filename to Song & Artist", "Neem de Filenaam over in de ID3 Tag"},
    {"Command13", "Auto-Correct All Database entries", "Auto-Corrigeer de gehele DataBase"},
    {"Command14", "Insert a '0' in empty Year field", "Voeg een '0' in voor alle ID3 Tag's zonder jaartal"},
    {"Check1", "Auto Lyric Check", nullptr},
    {"Check2", "Auto Pict. Check", nullptr},
    {"Check3", "kb/s Check", nullptr},
    {"Check4", "Auto-Save", "Auto-Bewaar"},
    {"Check5", "Auto-Correct", nullptr},
    {"Check6", "Auto-Album", nullptr},
    {"Check7", "Auto-Style", nullptr},
};
// clang-format on

template <typename T>
T* Named(QWidget* parent, const char* name) {
    auto* w = new T(parent);
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

QLineEdit* ResultBox(QWidget* parent, const char* name) {
    auto* t = Named<QLineEdit>(parent, name);
    t->setReadOnly(true);
    // One letter, or a rate such as "128 kb/s.".
    t->setMaximumWidth(t->fontMetrics().horizontalAdvance(QStringLiteral(" 128 kb/s. ")) + 12);
    return t;
}

}  // namespace

template <typename F>
void Form11::On(F&& operation) {
    Guarded(f.j.platform.messages, std::forward<F>(operation), f.j.HidePictureForms);
}

Form11::Form11(Form1& form) : QWidget(&form, Qt::Window), f(form) {
    setObjectName(QStringLiteral("Form11"));
    setWindowTitle(QStringLiteral("ZOR JUKEBOX - ID3 TAG INFORMATION & DATABASE EDITOR"));
    auto* layout = new QVBoxLayout(this);
    Label1 = Named<QLabel>(this, "Label1");
    Label1->setAlignment(Qt::AlignCenter);
    layout->addWidget(Label1);
    BuildFields();
    layout->addWidget(Frame1);
    BuildChecks();
    layout->addWidget(Frame3);
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(100);
    Connect();
    FillStyleList();
    SetCaptions();
    ShowMoreFunctions(false);
    Timer1->start();
}

void Form11::BuildFields() {
    Frame1 = Named<QGroupBox>(this, "Frame1");
    auto* g = new QGridLayout(Frame1);
    auto text = [&](QLineEdit*& box, const char* name, const char* caption, int row) {
        box = Named<QLineEdit>(Frame1, name);
        g->addWidget(Named<QLabel>(Frame1, caption), row, 0);
        g->addWidget(box, row, 1, 1, 3);
    };
    text(Text41, "Text41", "Caption41", 0);
    text(Text42, "Text42", "Caption42", 1);
    text(Text43, "Text43", "Caption43", 2);
    text(Text45, "Text45", "Caption45", 3);
    text(Text44, "Text44", "Caption44", 4);
    // Room for the tag's thirty characters.
    for (QLineEdit* t : {Text41, Text42, Text43, Text44})
        t->setMinimumWidth(t->fontMetrics().horizontalAdvance(QString(30, u'n')) + 12);
    // The year is four characters in the tag; the box is no wider than that needs.
    Text45->setMaximumWidth(Text45->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    g->removeWidget(Text45);
    g->addWidget(Text45, 3, 1);
    Option1 = Named<QRadioButton>(Frame1, "Option1");
    Option1->setAttribute(Qt::WA_TransparentForMouseEvents);  // it tells, it is not chosen
    Option1->setFocusPolicy(Qt::NoFocus);
    g->addWidget(Option1, 3, 2);

    auto scroll = [&](QScrollBar*& bar, QLabel*& value, const char* name, const char* valueName, const char* caption,
                      int min, int max, const char* tip, int row) {
        bar = new QScrollBar(Qt::Horizontal, Frame1);
        bar->setObjectName(QString::fromLatin1(name));
        bar->setRange(min, max);
        bar->setPageStep(1);
        bar->setToolTip(QString::fromLatin1(tip));
        value = Named<QLabel>(Frame1, valueName);
        value->setText(QString::number(bar->value()));
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("100")) + 4);
        g->addWidget(Named<QLabel>(Frame1, caption), row, 0);
        g->addWidget(bar, row, 1, 1, 2);
        g->addWidget(value, row, 3);
    };
    scroll(HScroll1, Label5, "HScroll1", "Label5", "CaptionScroll1", 1, 10, "Your score for this song (between 1 and 10)", 5);
    scroll(HScroll2, Label6, "HScroll2", "Label6", "CaptionScroll2", 0, 100, "Highest position reached in the (US) charts", 6);
    Check8 = Named<QCheckBox>(Frame1, "Check8");
    Check8->setLayoutDirection(Qt::RightToLeft);  // the caption stands before the box, as the other captions do
    g->addWidget(Check8, 7, 0, 1, 2, Qt::AlignLeft);

    g->addWidget(Named<QLabel>(Frame1, "CaptionList5"), 0, 4);
    List5 = Named<QListWidget>(Frame1, "List5");
    List5->setMinimumWidth(List5->fontMetrics().horizontalAdvance(QStringLiteral("Instrumental Rock")) + 32);
    g->addWidget(List5, 1, 4, 7, 1);

    // The buttons, each with its result box where it has one.
    auto* buttons = new QGridLayout;
    auto button = [&](QPushButton*& b, const char* name, int row, int col, int span = 1) {
        b = Named<QPushButton>(Frame1, name);
        buttons->addWidget(b, row, col, 1, span);
    };
    button(Command1, "Command1", 0, 0, 2);
    button(Command2, "Command2", 1, 0, 2);
    button(Command3, "Command3", 2, 0, 2);
    button(Command4, "Command4", 3, 0, 2);
    button(Command6, "Command6", 4, 0);
    Text1 = ResultBox(Frame1, "Text1");
    buttons->addWidget(Text1, 4, 1);
    button(Command7, "Command7", 5, 0);
    Text2 = ResultBox(Frame1, "Text2");
    buttons->addWidget(Text2, 5, 1);
    button(Command8, "Command8", 6, 0);
    Text3 = ResultBox(Frame1, "Text3");
    buttons->addWidget(Text3, 6, 1);
    button(Command5, "Command5", 7, 0, 2);
    QFont bold = Command5->font();
    bold.setBold(true);
    Command5->setFont(bold);
    buttons->setRowStretch(8, 1);
    g->addLayout(buttons, 0, 5, 8, 1);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);
}

void Form11::BuildChecks() {
    Frame3 = Named<QGroupBox>(this, "Frame3");
    auto* g = new QGridLayout(Frame3);
    for (int i = 0; i < 7; ++i) {
        Checks[size_t(i)] = Named<QCheckBox>(Frame3, QStringLiteral("Check%1").arg(i + 1).toLatin1().constData());
        g->addWidget(Checks[size_t(i)], i / 4, i % 4);
    }
    Command9 = Named<QPushButton>(Frame3, "Command9");
    Command11 = Named<QPushButton>(Frame3, "Command11");
    g->addWidget(Command9, 1, 3);
    g->addWidget(Command11, 2, 3);
    Command12 = Named<QPushButton>(Frame3, "Command12");
    Command13 = Named<QPushButton>(Frame3, "Command13");
    Command14 = Named<QPushButton>(Frame3, "Command14");
    g->addWidget(Command12, 3, 0, 1, 2);
    g->addWidget(Command13, 3, 2, 1, 2);
    g->addWidget(Command14, 4, 0, 1, 4);
}

void Form11::Connect() {
    const auto edited = [this] {
        // Every change counts, a program's too: the auto-save waits for the
        // last one of them.
        state.SongEdited = 1;
        state.AutoSaveTicks = 0;
    };
    for (QLineEdit* t : {Text41, Text42, Text43, Text44, Text45}) connect(t, &QLineEdit::textChanged, this, edited);
    connect(List5, &QListWidget::currentRowChanged, this, edited);
    const auto scrolled = [this](QScrollBar* bar, QLabel* value) {
        connect(bar, &QScrollBar::valueChanged, this, [this, bar, value] {
            value->setText(QString::number(bar->value()));
            On([&] { RebuildCommentBlock(*this); });
        });
    };
    scrolled(HScroll1, Label5);
    scrolled(HScroll2, Label6);
    connect(Check8, &QCheckBox::clicked, this, [this] { On([&] { RebuildCommentBlock(*this); }); });
    for (int i = 0; i < 7; ++i)
        connect(Checks[size_t(i)], &QCheckBox::toggled, this,
                [this, i](bool on) { f.j.settings.TagEditorChecks[size_t(i)] = on ? 1 : 0; });

    const auto rule = [this](QPushButton* b, void (*apply)(EditorFields&)) {
        connect(b, &QPushButton::clicked, this, [this, apply] {
            EditorFields fields = Fields();
            apply(fields);
            ShowFields(fields);
        });
    };
    rule(Command1, LowerCaseFields);
    rule(Command2, UpperCaseFields);
    rule(Command3, CapitaliseWords);
    rule(Command4, SwapTitleAndArtist);
    const auto op = [this](QPushButton* b, void (*operation)(Form11&)) {
        connect(b, &QPushButton::clicked, this, [this, operation] { On([&] { operation(*this); }); });
    };
    op(Command5, SaveSongEdit);
    op(Command6, VerifyLyrics);
    op(Command7, VerifyPicture);
    op(Command8, AnalyseEncoding);
    op(Command11, CloseTagEditor);
    op(Command13, AutoCorrectAll);
    op(Command14, FillEmptyYears);
    connect(Command12, &QPushButton::clicked, this, [this] {
        On([&] {
            EditorFields fields = Fields();
            TakeNamesFromFile(f.MFGrid1.TextMatrix(f.MFGrid1.Row(), 6), fields);
            ShowFields(fields);
        });
    });
    connect(Command9, &QPushButton::clicked, this, [this] { ShowMoreFunctions(!MoreShown); });
    connect(Timer1, &QTimer::timeout, this, [this] { On([&] { TagEditorTick(*this); }); });
}

EditorFields Form11::Fields() const {
    return {Text41->text(), Text42->text(), Text43->text(), Text44->text(), Text45->text(), List5->currentRow()};
}

void Form11::ShowFields(const EditorFields& fields) {
    // A text box's change event comes only for a new text; setting the same
    // one again would cost a pass over the catalogue dearly for nothing.
    const auto show = [](QLineEdit* box, const QString& text) {
        if (box->text() != text) box->setText(text);
    };
    show(Text41, fields.Title);
    show(Text42, fields.Artist);
    show(Text43, fields.Album);
    show(Text44, fields.Comment);
    show(Text45, fields.Year);
    if (List5->currentRow() != fields.Style) List5->setCurrentRow(fields.Style);
}

void Form11::ClearFields() {
    for (QLineEdit* t : {Text41, Text42, Text43, Text44, Text45}) t->clear();
}

void Form11::FillStyleList() {
    List5->clear();
    for (int s = 0; s <= kLastPublishedStyle; ++s) List5->addItem(StyleName(s));
}

bool Form11::Checked(int box) const { return Checks[size_t(box - 1)]->isChecked(); }

void Form11::SetCaptions() {
    const Jukebox& j = f.j;
    for (const Caption& c : kCaptions) {
        const QString text = j.Lang(c.english, c.dutch ? c.dutch : c.english);
        QWidget* w = findChild<QWidget*>(QString::fromLatin1(c.name));
        if (auto* label = qobject_cast<QLabel*>(w)) label->setText(text);
        else if (auto* button = qobject_cast<QAbstractButton*>(w)) button->setText(text);
    }
    ShowMoreFunctions(MoreShown);
}

void Form11::ShowMoreFunctions(bool more) {
    const Jukebox& j = f.j;
    // Until first used the button says what it is for; then where it goes.
    if (more != MoreShown) moreUsed_ = true;
    if (more) Command9->setText(j.Lang("Less", "Terug"));
    else if (moreUsed_) Command9->setText(j.Lang("More", "Meer"));
    else Command9->setText(j.Lang("More functions!", "Nog meer funkties!"));
    MoreShown = more;
    // The lower band grows by the row of the whole-catalogue functions.
    for (QPushButton* b : {Command12, Command13, Command14}) b->setVisible(more);
    adjustSize();
}

void Form11::closeEvent(QCloseEvent* e) {
    // Closing is hiding: the window is kept, and a pass stops.
    state.EditorStop = -1;
    e->ignore();
    hide();
}

}  // namespace zor
