#include "mp3/tag_editor.h"

#include "mp3/id3_tag.h"
#include "platform/cp1252.h"
#include "platform/file_system.h"
#include "platform/vb.h"

#include <algorithm>
#include <cmath>

namespace zor {
namespace {

constexpr int kBlockChars = 5;
// What the comment keeps behind the block: the tag's 30 less the block.
constexpr int kCommentAfterBlock = 25;

constexpr int kStyleOldies = 11;
constexpr int kStylePop = 13;

bool StartsWithBlock(const QString& comment) { return comment.startsWith(u'#'); }

bool IsSeparator(QChar c) { return c == u'/' || c == u'\\'; }

// Searches back from the 1-based position `from` while it is above 1 for
// `found`; returns where the search stopped (1 when nothing was found, or
// `from` itself when it is 1 or below).
qsizetype SearchBack(const QString& s, qsizetype from, auto found) {
    qsizetype p = from;
    while (p > 1 && !(p <= s.size() && found(s[p - 1]))) --p;
    return p;
}

// Mid(s, start, length), 1-based, never past either end.
QString Mid(const QString& s, qsizetype start, qsizetype length) {
    if (start < 1 || start > s.size() || length <= 0) return {};
    return s.mid(start - 1, length);
}

// A file in `dir` named `name` with any extension.
bool HasFileNamed(FileSystem& fs, const QString& dir, const QString& name) {
    return !name.isEmpty() && !fs.DirList(dir + u'/' + name + QStringLiteral(".*")).isEmpty();
}

}  // namespace

QString CapitaliseWord(const QString& text, bool commentBlock) {
    QString s = commentBlock && StartsWithBlock(text)
                    ? text.left(kBlockChars) + text.mid(kBlockChars, kCommentAfterBlock).toLower()
                    : text.toLower();
    if (s.size() <= 1) return s;
    s[0] = s[0].toUpper();
    // A "_" turned into a blank here is behind the loop already, so it raises
    // nothing; the last character is never looked at, so a "_" there stays.
    for (qsizetype i = 0; i + 1 < s.size(); ++i) {
        if (s[i] == u' ' || s[i] == u'(') s[i + 1] = s[i + 1].toUpper();
        if (s[i] == u'_') s[i] = u' ';
    }
    return s;
}

void CapitaliseWords(EditorFields& f) {
    f.Title = CapitaliseWord(f.Title);
    f.Artist = CapitaliseWord(f.Artist);
    f.Album = CapitaliseWord(f.Album);
    f.Comment = CapitaliseWord(f.Comment, true);
    // Encoders sign the comment with "Made with ..."; nine letters alone may
    // be the user's own words.
    if (f.Comment.size() > 9 && f.Comment.startsWith(QStringLiteral("made with"), Qt::CaseInsensitive)) f.Comment.clear();
}

void LowerCaseFields(EditorFields& f) {
    for (QString* s : {&f.Title, &f.Artist, &f.Album, &f.Comment}) *s = s->toLower();
}

void UpperCaseFields(EditorFields& f) {
    for (QString* s : {&f.Title, &f.Artist, &f.Album, &f.Comment}) *s = s->toUpper();
}

void SwapTitleAndArtist(EditorFields& f) { std::swap(f.Title, f.Artist); }

void TakeNamesFromFile(const QString& cell, EditorFields& f) {
    const QString path = vb::Trim(cell);
    if (path.size() < 5) return;
    // Positions are 1-based, as the rule was written: q is the extension's ".".
    const qsizetype q = path.size() - 3;
    const qsizetype dash = SearchBack(path, q, [](QChar c) { return c == u'-'; });
    const qsizetype p = dash + 1;
    if (q - p > 0) f.Title = vb::Trim(Mid(path, p, q - p));
    const qsizetype slash = SearchBack(path, p - 2, IsSeparator);
    const qsizetype p2 = slash + 1;
    if ((p - 2) - p2 > 0) f.Artist = vb::Trim(Mid(path, p2, (p - 2) - p2));
}

double EditorYear(const QString& year) { return std::nearbyint(vb::Val(year)); }

QString DecadeAlbum(double y) {
    static const char* const kDecades[] = {"The Tens",     "The Twenties", "The Thirties", "The Fourties", "The Fifties",
                                           "The Sixties",  "The Seventies", "The Eighties", "The Nineties"};
    if (y >= 1910 && y <= 1999) return QString::fromLatin1(kDecades[int(y - 1910) / 10]);
    if (y >= 2000 && y <= 2019) return QStringLiteral("Millennium");
    return {};
}

void AutoAlbum(EditorFields& f) {
    static const char* const kPlaceholders[] = {
        "oldies",      "title",       "album",         "the tens",     "the twenties", "the thirties",    "the fourties",
        "the fifties", "the sixties", "the seventies", "the eighties", "the nineties", "millennium"};
    const QString album = vb::Trim(f.Album).toLower();
    bool replaceable = album.size() < 3;
    for (const char* p : kPlaceholders) replaceable = replaceable || album == QLatin1String(p);
    if (replaceable) {
        const QString decade = DecadeAlbum(EditorYear(f.Year));
        if (!decade.isEmpty()) f.Album = decade;
    }
    if (vb::Trim(f.Album).isEmpty()) f.Album = QStringLiteral("Album");
}

void AutoStyle(EditorFields& f) {
    const double y = EditorYear(f.Year);
    const int s = f.Style;
    if ((s == kStyleUnknown || s == kStylePop || s == kStyleOther) && y >= 1910 && y <= 1969) f.Style = kStyleOldies;
    if ((f.Style == kStyleUnknown || f.Style == kStyleOldies || f.Style == kStyleOther) && y >= 1970) f.Style = kStylePop;
}

int StyleToSave(int listIndex) { return listIndex < 1 ? kStyleOther : listIndex; }

QString CommentBlock(int score, int reach, bool special) {
    // Chr$ of the ANSI code page: above 127 the characters are Windows-1252's.
    QByteArray b("#");
    b += char(48 + score);
    b += char(48 + reach);
    b += special ? 'B' : 'A';
    b += ' ';
    return cp1252::Decode(b);
}

bool ReadCommentBlock(const QString& comment, CommentScore& out) {
    if (!StartsWithBlock(comment) || comment.size() < 4) return false;
    const QByteArray b = cp1252::Encode(comment.left(4));
    out.score = std::clamp(uint8_t(b[1]) - 48, 1, 10);
    out.reach = std::clamp(uint8_t(b[2]) - 48, 0, 100);
    out.special = b[3] == 'B';
    return true;
}

QString WithCommentBlock(const QString& comment, const QString& block) {
    return block + (StartsWithBlock(comment) ? comment.mid(kBlockChars, kCommentAfterBlock) : comment.left(kCommentAfterBlock));
}

QString LyricsLookupName(const QString& path) {
    qsizetype start = path.size();
    while (start > 0 && !IsSeparator(path[start - 1]) && path[start - 1] != u':') --start;
    const QString name = path.mid(start);
    return name.left(name.size() - 4);
}

QString VerifyLyricsLetter(FileSystem& fs, const QString& dir, const QString& path) {
    const QString name = LyricsLookupName(path);
    if (HasFileNamed(fs, dir, name)) return QStringLiteral("Y");
    QString squeezed = name;
    squeezed.remove(u' ');
    if (!squeezed.isEmpty() && fs.FileExists(dir + u'/' + squeezed + QStringLiteral(".sng"))) return QStringLiteral("D");
    return QStringLiteral("N");
}

QString VerifyPictureLetter(FileSystem& fs, const QString& dir, const QString& artist) {
    return HasFileNamed(fs, dir, artist) ? QStringLiteral("Y") : QStringLiteral("N");
}

}  // namespace zor
