#include "platform/qt/qt_services.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace zor {
namespace {

struct ButtonSpec {
    QMessageBox::StandardButton button;
    int answer;
};

std::vector<ButtonSpec> ButtonsOf(int flags) {
    switch (flags & 7) {
    case vbOKCancel: return {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
    case vbAbortRetryIgnore:
        return {{QMessageBox::Abort, vbAbort}, {QMessageBox::Retry, vbRetry}, {QMessageBox::Ignore, vbIgnore}};
    case vbYesNoCancel: return {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
    case vbYesNo: return {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
    case vbRetryCancel: return {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}};
    default: return {{QMessageBox::Ok, vbOK}};
    }
}

QMessageBox::Icon IconOf(int flags) {
    switch (flags & 0x70) {
    case vbCritical: return QMessageBox::Critical;
    case vbQuestion: return QMessageBox::Question;
    case vbExclamation: return QMessageBox::Warning;
    case vbInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

}  // namespace

int QtMessageBoxes::MsgBox(const QString& prompt, int flags, const QString& title) {
    QMessageBox box(IconOf(flags), title, prompt, QMessageBox::NoButton, QApplication::activeWindow());
    const std::vector<ButtonSpec> buttons = ButtonsOf(flags);
    for (const ButtonSpec& b : buttons) box.addButton(b.button);
    const size_t defaultIndex = std::min<size_t>((flags >> 8) & 3, buttons.size() - 1);
    box.setDefaultButton(buttons[defaultIndex].button);
    box.exec();
    const auto clicked = box.standardButton(box.clickedButton());
    for (const ButtonSpec& b : buttons)
        if (b.button == clicked) return b.answer;
    // Esc or the close box: Cancel where there is one, else the only button.
    for (const ButtonSpec& b : buttons)
        if (b.answer == vbCancel) return vbCancel;
    return buttons.front().answer;
}

QString QtFilterFromVb(const QString& vbFilter) {
    const QStringList parts = vbFilter.split(u'|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString pattern = parts[i + 1];
        pattern.replace(u';', u' ');
        if (pattern == QStringLiteral("*.*")) pattern = QStringLiteral("*");
        // Qt reads the patterns from the last parentheses; a description that
        // already shows them gives way to the real ones.
        QString description = parts[i].trimmed();
        if (description.endsWith(u')') && description.contains(u'('))
            description = description.left(description.lastIndexOf(u'(')).trimmed();
        filters << description + QStringLiteral(" (") + pattern + u')';
    }
    return filters.join(QStringLiteral(";;"));
}

namespace {

// Qt's dialogs take the filter shown first and report the chosen one by its
// text; the common dialog numbers them from 1.
struct FilterChoice {
    QStringList filters;
    QString selected;
    explicit FilterChoice(const CommonDialog& d) : filters(QtFilterFromVb(d.Filter).split(QStringLiteral(";;"))) {
        if (d.FilterIndex >= 1 && d.FilterIndex <= filters.size()) selected = filters[d.FilterIndex - 1];
    }
    int Index() const { return selected.isEmpty() ? 1 : int(filters.indexOf(selected)) + 1; }
};

}  // namespace

void QtCommonDialog::ShowOpen() {
    FilterChoice choice(*this);
    FileName = QFileDialog::getOpenFileName(QApplication::activeWindow(), DialogTitle, InitDir,
                                            choice.filters.join(QStringLiteral(";;")), &choice.selected);
    FilterIndex = std::max(choice.Index(), 1);
}

void QtCommonDialog::ShowSave() {
    FilterChoice choice(*this);
    FileName = QFileDialog::getSaveFileName(QApplication::activeWindow(), DialogTitle, InitDir,
                                            choice.filters.join(QStringLiteral(";;")), &choice.selected);
    FilterIndex = std::max(choice.Index(), 1);
}

void QtBeeper::Beep() { QApplication::beep(); }

bool QtDesktop::Open(const QString& documentOrUrl) {
    // A path is a local document; anything with a scheme is an address.
    const QUrl url = documentOrUrl.startsWith(u'/') ? QUrl::fromLocalFile(documentOrUrl) : QUrl(documentOrUrl);
    return QDesktopServices::openUrl(url);
}

void QtProcessControl::End() {
    // Leaves every event loop of the thread; main() returns without waiting
    // for other windows.
    ended_ = true;
    QCoreApplication::exit(0);
}

}  // namespace zor
