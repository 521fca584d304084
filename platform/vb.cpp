#include "platform/vb.h"

#include "platform/runtime_error.h"

#include <cmath>
#include <cstring>
#include <limits>

#include <locale.h>
#include <stdlib.h>

namespace zor::vb {

QString LTrim(const QString& s) {
    qsizetype i = 0;
    while (i < s.size() && s[i] == u' ') ++i;
    return s.mid(i);
}

QString RTrim(const QString& s) {
    qsizetype n = s.size();
    while (n > 0 && s[n - 1] == u' ') --n;
    return s.left(n);
}

QString Trim(const QString& s) { return LTrim(RTrim(s)); }

QStringView TrimmedView(QStringView s) {
    while (!s.isEmpty() && s.front() == u' ') s = s.sliced(1);
    while (!s.isEmpty() && s.back() == u' ') s.chop(1);
    return s;
}

namespace {

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

int DigitValue(QChar c, int base) {
    int d = -1;
    if (IsDigit(c)) d = c.unicode() - u'0';
    else if (c.toUpper() >= u'A' && c.toUpper() <= u'F') d = c.toUpper().unicode() - u'A' + 10;
    return d < base ? d : -1;
}

// Reads "&H1F" / "&O17" at s[i]; returns false when it is not such a literal.
// The value follows the runtime: up to four hex digits make a 16-bit Integer,
// so &HFFFF is -1.
bool ReadRadixLiteral(QStringView s, qsizetype& i, double& value) {
    if (i + 1 >= s.size() || s[i] != u'&') return false;
    const QChar kind = s[i + 1].toUpper();
    int base = 0;
    if (kind == u'H') base = 16;
    else if (kind == u'O') base = 8;
    else return false;
    qsizetype j = i + 2;
    uint64_t v = 0;
    int digits = 0;
    while (j < s.size()) {
        const int d = DigitValue(s[j], base);
        if (d < 0) break;
        v = v * base + d;
        if (v > 0xFFFFFFFFull) v &= 0xFFFFFFFFull;
        ++digits;
        ++j;
    }
    if (digits == 0) return false;
    if (v <= 0xFFFF) value = static_cast<int16_t>(static_cast<uint16_t>(v));
    else value = static_cast<int32_t>(static_cast<uint32_t>(v));
    i = j;
    return true;
}

// Scans a decimal number at s[i]: sign, digits, one ".", exponent with E or D.
// Returns the end of the longest well-formed prefix, or i when there is none.
qsizetype ScanDecimal(QStringView s, qsizetype i, QByteArray* out) {
    qsizetype j = i;
    QByteArray text;
    if (j < s.size() && (s[j] == u'+' || s[j] == u'-')) text += char(s[j++].unicode());
    int digits = 0;
    while (j < s.size() && IsDigit(s[j])) { text += char(s[j++].unicode()); ++digits; }
    if (j < s.size() && s[j] == u'.') {
        text += '.';
        ++j;
        while (j < s.size() && IsDigit(s[j])) { text += char(s[j++].unicode()); ++digits; }
    }
    if (digits == 0) return i;
    if (j < s.size() && (s[j].toUpper() == u'E' || s[j].toUpper() == u'D')) {
        qsizetype k = j + 1;
        QByteArray exp = "e";
        if (k < s.size() && (s[k] == u'+' || s[k] == u'-')) exp += char(s[k++].unicode());
        int expDigits = 0;
        while (k < s.size() && IsDigit(s[k])) { exp += char(s[k++].unicode()); ++expDigits; }
        if (expDigits > 0) {
            text += exp;
            j = k;
        }
    }
    if (out) *out = text;
    return j;
}

// strtod reads the decimal point of LC_NUMERIC, which the application takes
// from the user's environment (a comma for Dutch); "." is the only decimal
// point here, so the text is read in the C locale whatever the user's is.
double ParseDouble(const QByteArray& text) {
    static const locale_t c = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    return strtod_l(text.constData(), nullptr, c);
}

}  // namespace

bool IsNumeric(QStringView s) {
    const QStringView t = TrimmedView(s);
    if (t.isEmpty()) return false;
    qsizetype i = 0;
    double v = 0;
    if (ReadRadixLiteral(t, i, v)) return i == t.size();
    return ScanDecimal(t, 0, nullptr) == t.size();
}

double NumericValue(QStringView s) {
    const QStringView t = TrimmedView(s);
    qsizetype i = 0;
    double v = 0;
    if (ReadRadixLiteral(t, i, v)) return i == t.size() ? v : 0.0;
    QByteArray text;
    if (ScanDecimal(t, 0, &text) != t.size()) return 0.0;
    return ParseDouble(text);
}

double Val(const QString& s) {
    QString t;
    t.reserve(s.size());
    for (QChar c : s)
        if (c != u' ' && c != u'\t' && c != u'\n') t += c;
    qsizetype i = 0;
    double v = 0;
    if (ReadRadixLiteral(t, i, v)) return v;
    QByteArray text;
    if (ScanDecimal(t, 0, &text) == 0) return 0.0;
    return ParseDouble(text);
}

namespace {
template <typename T>
T RoundChecked(double v) {
    if (std::isnan(v)) throw RuntimeError::Overflow();
    const double r = std::nearbyint(v);  // the default mode rounds ties to even
    if (r < double(std::numeric_limits<T>::min()) || r > double(std::numeric_limits<T>::max()))
        throw RuntimeError::Overflow();
    return static_cast<T>(r);
}
}  // namespace

int16_t CInt(double v) { return RoundChecked<int16_t>(v); }
int32_t CLng(double v) { return RoundChecked<int32_t>(v); }

double Int(double v) { return std::floor(v); }

float Random::Rnd() {
    seed_ = (seed_ * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
    return RndRepeat();
}

void Random::Randomize(float timer) {
    uint32_t t;
    std::memcpy(&t, &timer, sizeof t);
    const uint32_t v = ((t & 0xFFFFu) ^ (t >> 16)) << 8;
    seed_ = (seed_ & 0xFF0000FFu) | (v & 0x00FFFF00u);
}

}  // namespace zor::vb
