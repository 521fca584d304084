// Texts as any bytes, read both ways they reach the program: Windows-1252
// from record files and tags, UTF-8 from the catalogue. The number rules
// (Val, IsNumeric, NumericValue, the rounding conversions) must never crash
// or hang and must agree with each other, and the grid's sort built on them
// must order the lines of the input as its rules say.
#include "fuzz/fuzz_support.h"
#include "catalogue/song_grid.h"
#include "platform/cp1252.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"

#include <QStringList>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace zor::fuzzing;

using namespace zor;

bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

void CheckRounding(double v) {
    try {
        const int32_t l = vb::CLng(v);
        Require(std::fabs(double(l) - v) <= 0.5, "CLng is off by more than a half");
    } catch (const RuntimeError& e) {
        Require(e.Number() == 6, "CLng raised something other than Overflow");
    }
    try {
        vb::CInt(v);
    } catch (const RuntimeError& e) {
        Require(e.Number() == 6, "CInt raised something other than Overflow");
    }
}

void CheckText(const QString& s) {
    const QString t = vb::Trim(s);
    Require(vb::Trim(t) == t && !t.startsWith(u' ') && !t.endsWith(u' '), "Trim left a blank at an end");
    Require(vb::LTrim(vb::RTrim(s)) == t, "LTrim and RTrim disagree with Trim");

    const double val = vb::Val(s);
    const double value = vb::NumericValue(s);
    Require(!std::isnan(val) && !std::isnan(value), "a number read as NaN");
    if (vb::IsNumeric(s)) {
        // A text that is wholly a number reads the same by either rule.
        Require(Same(value, val), "NumericValue and Val disagree on a numeric text");
    } else {
        Require(value == 0.0, "NumericValue of a text that is no number is not 0");
    }
    CheckRounding(val);
}

// The grid's sort rule written out plainly: empty < number (by value) <
// text (by folded text).
int Compare(const QString& a, const QString& b) {
    auto kind = [](const QString& s) { return s.isEmpty() ? 0 : vb::IsNumeric(s) ? 1 : 2; };
    const int ka = kind(a), kb = kind(b);
    if (ka != kb) return ka < kb ? -1 : 1;
    if (ka == 1) {
        const double x = vb::NumericValue(a), y = vb::NumericValue(b);
        return x < y ? -1 : (y < x ? 1 : 0);
    }
    if (ka == 2) {
        const int c = a.toCaseFolded().compare(b.toCaseFolded());
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    }
    return 0;
}

void CheckSort(const QString& text, int order) {
    const QStringList lines = text.split(u'\n');
    if (lines.size() < 2 || lines.size() > 200) return;
    std::vector<GridRow> rows(1);
    for (int i = 0; i < lines.size(); ++i) {
        GridRow& r = rows.emplace_back();
        r.Set(1, lines[i]);
        r.Set(11, QString::number(i));
    }
    SongGrid g;
    g.SetAllRows(std::move(rows));
    g.SetRow(1);
    g.SetCol(1);
    g.Sort(order);
    Require(g.Rows() == lines.size() + 1, "the sort lost or made rows");
    for (int r = 2; r < g.Rows(); ++r) {
        int c = Compare(g.TextMatrix(r - 1, 1), g.TextMatrix(r, 1));
        if (order == 2) c = -c;
        Require(c <= 0, "the sort left two rows out of order");
        if (c == 0)
            Require(g.TextMatrix(r - 1, 11).toInt() < g.TextMatrix(r, 11).toInt(), "the sort is not stable");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes = Input(data, size);

    const QString ansi = cp1252::Decode(bytes);
    Require(ansi.size() == bytes.size(), "Windows-1252 is one character a byte");
    Require(cp1252::Encode(ansi) == bytes, "Windows-1252 bytes do not come back as themselves");
    for (int width : {0, 3, 50}) {
        Require(cp1252::Field(ansi, width).size() == width, "a record field is not its width");
        Require(cp1252::Fixed(ansi, width).size() == width, "a fixed text is not its width");
    }

    const QString utf8 = QString::fromUtf8(bytes);
    Require(cp1252::Encode(utf8).size() == utf8.size(), "Encode is not one byte a character");
    for (const QString& s : {ansi, utf8}) {
        CheckText(s);
        CheckSort(s, 1);
        CheckSort(s, 2);
    }
    return 0;
}
