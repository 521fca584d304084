// The real window-system services: message boxes answered as a user would,
// the dialog filter, the event pump's wait, the clock.
#include "platform/guard.h"
#include "platform/qt/qt_services.h"
#include "platform/system_services.h"
#include "platform/testing/fakes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

namespace zor {
namespace {

// Presses a button of the next modal box, or Esc when `button` is NoButton.
void AnswerNextBox(QMessageBox::StandardButton button, QString* seenText = nullptr) {
    QTimer::singleShot(0, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        if (seenText) *seenText = box->windowTitle() + u'|' + box->text();
        if (button == QMessageBox::NoButton) box->reject();
        else box->button(button)->click();
    });
}

TEST(QtMessageBoxes, ReturnsTheRuntimesAnswerNumbersAndEscapeMeansCancelWhereThereIsOne) {
    QtMessageBoxes boxes;
    QString seen;
    AnswerNextBox(QMessageBox::No, &seen);
    EXPECT_EQ(boxes.MsgBox(QStringLiteral("Delete?"), vbYesNo + vbQuestion + vbDefaultButton2, QStringLiteral("T")), vbNo);
    EXPECT_EQ(seen, QStringLiteral("T|Delete?"));
    AnswerNextBox(QMessageBox::Yes);
    EXPECT_EQ(boxes.MsgBox(QStringLiteral("?"), vbYesNoCancel, QStringLiteral("T")), vbYes);
    AnswerNextBox(QMessageBox::NoButton);
    EXPECT_EQ(boxes.MsgBox(QStringLiteral("?"), vbOKCancel, QStringLiteral("T")), vbCancel);
    AnswerNextBox(QMessageBox::NoButton);
    EXPECT_EQ(boxes.MsgBox(QStringLiteral("!"), vbOKOnly + vbCritical, QStringLiteral("T")), vbOK);
}

TEST(Guarded, ARuntimeErrorEndsTheOperationWithTheRuntimesBox) {
    testing::FakeMessageBoxes boxes;
    Guarded(boxes, [] { throw RuntimeError::Overflow(); });
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_EQ(boxes.shown[0].title + u'|' + boxes.shown[0].text, QStringLiteral("ZOR JUKEBOX|Run-time error '6':\n\nOverflow"));
    EXPECT_EQ(boxes.shown[0].flags, vbCritical);
}

TEST(QtCommonDialog, FilterOfTheRuntimeBecomesAQtFilter) {
    EXPECT_EQ(QtFilterFromVb(QStringLiteral("mdb databases (*.mdb)|*.mdb|All Files (*.*)|*.*")),
              QStringLiteral("mdb databases (*.mdb);;All Files (*)"));
    EXPECT_EQ(QtFilterFromVb(QStringLiteral("Music|*.mp3;*.wma")), QStringLiteral("Music (*.mp3 *.wma)"));
}

TEST(SystemServices, WaitLetsEventsThroughUntilItsTimeIsUpAndNowHasWholeSeconds) {
    // A timer due well inside the wait has fired when it returns.
    QtEventPump pump;
    bool fired = false;
    QTimer::singleShot(30, [&] { fired = true; });
    pump.Wait(60);
    EXPECT_TRUE(fired);

    SystemClock clock;
    EXPECT_EQ(clock.Now().time().msec(), 0);
    EXPECT_GE(clock.Timer(), 0.0);
    EXPECT_LT(clock.Timer(), 86400.0);
}

}  // namespace
}  // namespace zor
