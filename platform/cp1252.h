#pragma once
// Single-byte text of the record files (settings, playlists, log, car player):
// Windows-1252, left-justified, blank-padded, never NUL-terminated.
#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace zor::cp1252 {

QString Decode(QByteArrayView bytes);
// Characters with no Windows-1252 byte become "?", as the ANSI conversion did.
QByteArray Encode(const QString& text);
// Exactly `width` bytes: the text cut or padded with blanks.
QByteArray Field(const QString& text, int width);
// A text as a VB "String * n" holds it: cut or padded with blanks to n characters.
QString Fixed(const QString& text, int width);

}  // namespace zor::cp1252
