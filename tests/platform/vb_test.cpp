// The VB runtime rules the rest of the jukebox takes for granted: what a
// number in a text is, how it rounds, and the generator behind every shuffle.
#include "tests/support/errors.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace zor::vb {
namespace {

using testing::ErrorOf;

TEST(VbText, TrimmingTakesBlanksOnly) {
    EXPECT_EQ(Trim(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(LTrim(QStringLiteral("  a  ")), QStringLiteral("a  "));
    EXPECT_EQ(RTrim(QStringLiteral("  a  ")), QStringLiteral("  a"));
    // Tabs, line ends, NUL and no-break spaces are part of the text.
    EXPECT_EQ(Trim(QStringLiteral(" \ta\r\n ")), QStringLiteral("\ta\r\n"));
    const QString nul = QString(QChar(0)) + QStringLiteral(" \u00A0x ") + QChar(0);
    EXPECT_EQ(Trim(nul), nul);
}

TEST(VbNumbers, IsNumericWantsTheWholeTextToBeANumber) {
    for (const char* yes : {"1", " 12 ", "-.5", "+5", "5.", "1e5", "1E+5", "1d3", "&H1F", "&h1f", "&O17"})
        EXPECT_TRUE(IsNumeric(QString::fromLatin1(yes))) << yes;
    for (const char* no : {"", " ", "-", ".", "1.2.3", "12abc", "1,000", "$5", "&H", "&H1G", "&O8", "1e", "1 2", "0x1F", "\t7"})
        EXPECT_FALSE(IsNumeric(QString::fromLatin1(no))) << no;
    EXPECT_DOUBLE_EQ(NumericValue(QStringLiteral(" 1e3 ")), 1000.0);
    // Up to four hex digits make a 16-bit Integer, as the runtime reads them.
    EXPECT_DOUBLE_EQ(NumericValue(QStringLiteral("&HFFFF")), -1.0);
    EXPECT_DOUBLE_EQ(NumericValue(QStringLiteral("&H8000")), -32768.0);
    EXPECT_DOUBLE_EQ(NumericValue(QStringLiteral("&H10000")), 65536.0);
}

TEST(VbNumbers, ValReadsAsFarAsANumberGoesAndNeverFails) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"  12abc", 12}, {"&H1F", 31}, {"1 2 3", 123}, {"", 0},     {"24 and 57", 24}, {"1,000", 1}, {"$5", 0},
        {"&HFFFF", -1},  {"1e3", 1000}, {"1e", 1},     {"-.5", -0.5}, {"1.2.3", 1.2},  {"\t-\n4", -4}, {"&H", 0},
        {"12.", 12},     {"- 7", -7},   {"1D2x", 100},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(QString::fromLatin1(c.text)), c.value) << '"' << c.text << '"';
}

// Qt takes the C library's locale from the environment when the application
// starts, so a Dutch or German user runs with "," as the C library's decimal
// point. The runtime's "." must not depend on it.
TEST(VbNumbers, DecimalPointIsADotWhateverTheUsersLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    bool comma = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "nl_NL.UTF-8", "nl_NL.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
        if (std::setlocale(LC_NUMERIC, name) && std::localeconv()->decimal_point[0] == ',') {
            comma = true;
            break;
        }
    const double val = Val(QStringLiteral("2.75")), numeric = NumericValue(QStringLiteral("-1.5e1"));
    std::setlocale(LC_NUMERIC, before.c_str());
    if (!comma) GTEST_SKIP() << "no locale with a decimal comma installed";
    EXPECT_DOUBLE_EQ(val, 2.75);
    EXPECT_DOUBLE_EQ(numeric, -15.0);
}

TEST(VbNumbers, RoundingIsToEvenWithOverflowAsError6AndIntFloors) {
    const double ties[][2] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.5000001, 3}, {32766.5, 32766}};
    for (const auto& t : ties) EXPECT_EQ(CInt(t[0]), t[1]) << t[0];
    EXPECT_EQ(CInt(-32768.5), -32768);  // the even end is still in range
    for (double x : {32767.5, -32768.6, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(ErrorOf([x] { CInt(x); }), 6) << x;
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(CLng(-40001.5), -40002);
    for (double x : {2147483647.5, -2147483649.0}) EXPECT_EQ(ErrorOf([x] { CLng(x); }), 6) << x;
    for (const auto& [x, floor] : {std::pair(-1.5, -2.0), std::pair(-8.4, -9.0), std::pair(99.8, 99.0)}) EXPECT_EQ(Int(x), floor);
}

TEST(VbRandom, GeneratorGivesTheRuntimesValuesAndRandomizeMixesTheTimerIn) {
    Random r;
    // Rnd(0) is the seed as a draw: before any Rnd that is 327680 / 2^24.
    EXPECT_FLOAT_EQ(r.RndRepeat(), 0.01953125f);
    for (float expected : {0.7055475f, 0.533424f, 0.5795186f, 0.2895625f, 0.301948f}) {
        const float v = r.Rnd();
        EXPECT_FLOAT_EQ(v, expected);
        EXPECT_EQ(r.RndRepeat(), v);
    }
    r.SetSeed(0xFFFFFFFF);
    EXPECT_EQ(r.Seed(), 0xFFFFFFu);
    EXPECT_LT(r.RndRepeat(), 1.0f);  // the largest seed still draws below 1

    // Randomize replaces the middle of the seed only. Timer 20:15:00.5 as a
    // Single; the low byte of the start seed is 0.
    r = Random();
    r.Randomize(72900.5f);
    EXPECT_EQ(r.Seed(), 0x25CE00u);
    EXPECT_EQ(r.Rnd(), 668867.0f / 16777216.0f);
    // The same timer again does not repeat the sequence: the low byte now
    // comes from the draw in between.
    r.Randomize(72900.5f);
    EXPECT_EQ(r.Seed(), 0x25CEC3u);
    r.SetSeed(0xABCDEF);
    r.Randomize(1.0f);
    EXPECT_EQ(r.Seed(), 0x3F80EFu);
}

}  // namespace
}  // namespace zor::vb
