#pragma once
// Reading the play log ZORjuke.log page by page for the viewer Form24. The
// log is read as it lies on disk: a page is 23 records of 80 bytes from a
// multiple of 80, so a file cut in the middle of a line shows shifted text,
// and nothing here trusts the file to be whole.
#include <QByteArray>
#include <QString>

namespace zor {

class FileSystem;

inline constexpr int kLogPageLines = 23;
// The viewer's scroll bar holds a 16-bit value; a log this long or longer is
// too big to show.
inline constexpr qint64 kLogViewerLineLimit = 32000;

// The number of lines the viewer counts: the length over 80, rounded to the
// nearest, a half to the even neighbour (40 bytes: 0 lines, 120: 2).
qint64 LogLineCount(qint64 fileBytes);

// One page from `span`, the bytes the file holds from the page's first line
// on (up to 23 x 80). Each line's 80 bytes are read into `buffer`, which
// keeps them between reads: where the file ends, the bytes it lacks leave
// the buffer as it stood, so the last line read shows again. The result is
// 23 x 80 bytes. A buffer of the wrong size is first made 80 zero bytes.
QByteArray BuildLogPage(const QByteArray& span, QByteArray& buffer);

// A page as the text box shows it: Windows-1252 text whose CR LF pairs (and
// any lone CR or LF) end the lines, a zero byte shown as a blank, and no
// empty line after the last line's own line end.
QString LogPageText(const QByteArray& page);

// Reads the page whose first line is `topLine` (0-based) from the log at
// `path`. Raises RuntimeError when the file can't be opened (53 when it has
// gone).
QString ReadLogPage(FileSystem& fs, const QString& path, qint64 topLine, QByteArray& buffer);

}  // namespace zor
