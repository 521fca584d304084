#include "platform/cp1252.h"

#include <array>

namespace zor::cp1252 {
namespace {

// 0x80..0x9F; 0 marks the five bytes the code page leaves undefined, which
// map to the C1 control of the same number (as Windows' own conversion does).
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char16_t ToUnicode(unsigned char b) {
    if (b >= 0x80 && b <= 0x9F) {
        const char16_t u = kHigh[b - 0x80];
        return u ? u : char16_t(b);
    }
    return char16_t(b);
}

char FromUnicode(char16_t u) {
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) return char(u);
    for (int i = 0; i < 32; ++i)
        if (kHigh[i] == u || (kHigh[i] == 0 && u == 0x80 + i)) return char(0x80 + i);
    return '?';
}

}  // namespace

QString Decode(QByteArrayView bytes) {
    // Through raw pointers: indexing a QString checks for sharing each time,
    // and pages of the log and whole records go through here.
    QString out(bytes.size(), Qt::Uninitialized);
    QChar* to = out.data();
    for (const char c : bytes) *to++ = QChar(ToUnicode(static_cast<unsigned char>(c)));
    return out;
}

QByteArray Encode(const QString& text) {
    QByteArray out(text.size(), Qt::Uninitialized);
    char* to = out.data();
    for (const QChar c : text) *to++ = FromUnicode(c.unicode());
    return out;
}

QByteArray Field(const QString& text, int width) {
    QByteArray out = Encode(text.left(width));
    if (out.size() < width) out.append(width - out.size(), ' ');
    return out;
}

QString Fixed(const QString& text, int width) {
    QString out = text.left(width);
    if (out.size() < width) out.append(QString(width - out.size(), u' '));
    return out;
}

}  // namespace zor::cp1252
