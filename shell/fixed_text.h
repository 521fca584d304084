#pragma once
// A VB "String * N": always exactly N characters, cut or padded with blanks
// on assignment. Record fields of this kind keep their trailing blanks; the
// users of a field trim it.
#include "platform/cp1252.h"
#include "platform/vb.h"

#include <QString>

namespace zor {

template <int N>
class FixedText {
public:
    static constexpr int kWidth = N;
    FixedText() : text_(N, u' ') {}
    FixedText(const QString& s) : text_(cp1252::Fixed(s, N)) {}  // NOLINT: assignment from text is the point
    FixedText& operator=(const QString& s) {
        text_ = cp1252::Fixed(s, N);
        return *this;
    }
    const QString& Text() const { return text_; }
    QString Trimmed() const { return vb::RTrim(text_); }
    bool operator==(const FixedText& o) const = default;

private:
    QString text_;
};

}  // namespace zor
