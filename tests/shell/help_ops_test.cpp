// The Help menu's Inspector against a reload of the main window.
#include "tests/support/form_harness.h"

#include <QLineEdit>
#include <QPointer>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// A skin change during one of the Inspector's pauses waits for the
// Inspector, which stops at the end of that pause; its window goes only
// then, and nothing more of the report is painted, in the old window or the
// new one.
TEST(Inspector, StopsWhenASkinChangeTakesItsWindowAway) {
    FormHarness h;
    ASSERT_TRUE(h.Start());
    Form1* first = &h.form();
    QPointer<QLineEdit> oldLine = first->Text1;
    QString atReload;
    h.inst.tp.events.onWait = [&](int ms) {
        h.inst.tp.clock.Advance(ms / 1000.0);
        if (&h.form() != first || !atReload.isNull()) return;
        atReload = first->Text1->text();
        h.Click("Ascreen");
        EXPECT_EQ(&h.form(), first);
    };
    h.Click("Inspect1");
    ASSERT_NE(&h.form(), first);
    EXPECT_EQ(atReload, QStringLiteral("Starting Directory is:  ") + h.inst.programDir);
    ASSERT_TRUE(oldLine);
    EXPECT_EQ(oldLine->text(), atReload);
    EXPECT_NE(h.form().Text1->text(), QStringLiteral("The Inspector has completed its task"));
    EXPECT_TRUE(h.boxes().shown.empty());
}

}  // namespace
}  // namespace zor::testing
