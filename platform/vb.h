#pragma once
// The handful of VB runtime rules that the jukebox's behaviour leans on:
// blank-only trimming, the numeric test, Val, banker's rounding with overflow,
// Int, and the runtime's own random generator.
#include <QString>
#include <cstdint>

namespace zor::vb {

// Trim, LTrim, RTrim: blanks (U+0020) only; tabs, NUL bytes and the like stay.
QString Trim(const QString& s);
QString LTrim(const QString& s);
QString RTrim(const QString& s);
// Trim for a text that is only read: the same blanks go, nothing is copied.
QStringView TrimmedView(QStringView s);

// True when the whole text is a number: optional blanks, sign, digits with at
// most one ".", optional exponent (E or D), optional blanks; or &H / &O literals.
bool IsNumeric(QStringView s);

// The numeric value of a text that IsNumeric accepts (0 otherwise).
double NumericValue(QStringView s);

// Val: drops blanks, tabs and line feeds, then reads a number up to the first
// character that can't belong to it. Never fails.
double Val(const QString& s);

// Rounding to an integer type: nearest, ties to even; error 6 outside the range.
int16_t CInt(double v);
int32_t CLng(double v);

// Int: the largest whole number not above v.
double Int(double v);

// The VB generator: a 24-bit LCG. Rnd() steps it; Randomize mixes a Timer
// value into the middle bytes of the seed, as the runtime does.
class Random {
public:
    float Rnd();
    // Rnd(0): the current seed as a draw, which is the last draw, or what
    // Randomize or SetSeed left.
    float RndRepeat() const { return float(seed_) / 16777216.0f; }
    void Randomize(float timer);
    uint32_t Seed() const { return seed_; }
    void SetSeed(uint32_t seed) { seed_ = seed & 0xFFFFFF; }

private:
    uint32_t seed_ = 327680;
};

}  // namespace zor::vb
