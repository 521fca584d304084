#include "playback/play_engine.h"

#include "shell/jukebox.h"

#include <algorithm>
#include <cmath>

namespace zor {

QString CountdownText(int remainingSeconds) {
    int minutes = 0;
    int seconds = remainingSeconds;
    while (seconds >= 60) {
        seconds -= 60;
        ++minutes;
    }
    const QString secondsText = seconds < 10 ? u'0' + QString::number(seconds) : QString::number(seconds);
    return QString::number(minutes) + u':' + secondsText;
}

SongFileParts SplitSongPath(const QString& path) {
    const qsizetype cut = path.lastIndexOf(u'/');
    if (cut < 0) return {QString(), path};
    return {path.left(cut + 1), path.mid(cut + 1)};
}

int PictureIntervalMs(int16_t pictureInterval) { return pictureInterval > 0 ? pictureInterval * 500 : 6000; }

double LyricsScrollTarget(int ticks, int barMax, int lineCount) {
    if (barMax <= 0) return 0;
    return double(ticks) / barMax * 1.3 * lineCount + 1;
}

int16_t NextTitlePulse(double fontSize, int16_t pulse) {
    if (fontSize >= 20) return -1;
    if (fontSize < 12) return 1;
    return pulse;
}

int MsToNextSecond(double timer) {
    const double fraction = timer - std::floor(timer);
    const int ms = int(std::ceil((1.0 - fraction) * 1000));
    return std::clamp(ms, 1, 1000) + 5;
}

QString RemainingText(const Jukebox& j, int durationSeconds) {
    return j.Lang(QStringLiteral(" , Remaining: "), QStringLiteral(" , Resterend: ")) + QString::number(durationSeconds) +
           QStringLiteral(" sec.");
}

QString CountdownLine(const Jukebox& j, const QString& songLine, int remainingSeconds) {
    return songLine + j.Lang(QStringLiteral(" , Remaining: "), QStringLiteral(" , Resterend: ")) +
           CountdownText(remainingSeconds);
}

QString IntroLine(const Jukebox& j, const QString& songLine) {
    return songLine + QStringLiteral(" INTRO'S, ") + QString::number(j.settings.IntroSeconds) + QStringLiteral(" sec.");
}

QString PlayerProblemTitle(const Jukebox& j) {
    return j.Lang(QStringLiteral("ZOR JUKEBOX - Media-Player PROBLEM"), QStringLiteral("ZOR JUKEBOX - Media-Player PROBLEEM"));
}

QString PlayerProblemText(const Jukebox& j) {
    const QString first = j.Lang(QStringLiteral("The ZOR JUKEBOX cannot play this file. "),
                                 QStringLiteral("De ZOR JUKEBOX kan dit bestand niet afspelen."));
    const QString second = j.Lang(QStringLiteral("Probable cause is that the MP3 file has a non-standard header."),
                                  QStringLiteral("Vermoedelijke oorzaak is een niet-standaard header in het MP3 bestand.  "));
    const QString third = j.Lang(QStringLiteral("Should the ZOR JUKEBOX try to correct this?  "),
                                 QStringLiteral("Moet de ZOR JUKEBOX trachten deze fout te herstellen?  "));
    return first + u'\n' + second + u'\n' + u'\n' + third;
}

}  // namespace zor
