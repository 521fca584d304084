#pragma once
// The fixture of the tests that drive the real main window, and the marks
// with which they make a playlist.
#include "tests/support/form_harness.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace zor::testing {

struct FormTest : ::testing::Test {
    FormHarness h;
    Form1& f() { return h.form(); }
    Jukebox& j() { return h.j(); }
};

// Marks catalogue rows for the playlist in this order, as the PLAY column's
// click writes the marks.
inline void MarkForPlaylist(Form1& f, std::initializer_list<int> rows) {
    for (int r : rows) {
        const QString mark = QString::number(f.j.PlaylistEnd++);
        f.MFGrid1.SetTextMatrix(r, 0, mark);
        f.MFGrid1.SetTextMatrix(r, 12, mark);
    }
}

}  // namespace zor::testing
