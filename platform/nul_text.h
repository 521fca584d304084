#pragma once
// A text as a control shows it or a file function takes it as a name: up to
// its first zero character. Tags pad their fields with zero bytes and the
// catalogue keeps them; the runtime always handed its texts on as C strings,
// so a zero ended a name or a shown text there and nowhere else.
#include <QString>
#include <QStringView>

#include "platform/vb.h"

namespace zor {

inline QStringView TextBeforeNul(QStringView s) {
    const qsizetype end = s.indexOf(QChar(u'\0'));
    return end < 0 ? s : s.first(end);
}

inline QString TextBeforeNul(const QString& s) { return TextBeforeNul(QStringView(s)).toString(); }

// A cell's text where it becomes a name or a line: up to its first zero,
// then trimmed of blanks (a .zpl field or a tag comes padded with either).
inline QString TrimmedBeforeNul(QStringView s) { return vb::TrimmedView(TextBeforeNul(s)).toString(); }

}  // namespace zor
