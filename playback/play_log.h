#pragma once
// The play log ZORjuke.log: lines of 80 bytes (time 12, date 10, song 30,
// artist 20, year 6, CR LF), appended one at a time; the file is opened and
// closed for each line, so a crash costs nothing.
#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace zor {

class SongGrid;
struct Jukebox;

inline constexpr int kLogLineBytes = 80;

struct LogRecord {
    QString Time, Date, Song, Artist, Year;
};

// The 80 bytes of one line.
QByteArray EncodeLogRecord(const LogRecord& r);
// The machine's short time and date texts, or "20:15" and "22-11-2026" where
// those don't fit their 12 and 10 columns in Windows-1252.
QString FitLogColumn(const QString& text, int width, const QString& plain);
QString LogTimeText(const QDateTime& now);
QString LogDateText(const QDateTime& now);

// The writers; each does nothing while LogActivity is off.
void LogProgramStart(Jukebox& j);
void LogSongStart(Jukebox& j, SongGrid& grid);
void LogProgramStop(Jukebox& j);

}  // namespace zor
