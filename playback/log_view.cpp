#include "playback/log_view.h"

#include "platform/binary_file.h"
#include "platform/cp1252.h"
#include "playback/play_log.h"

#include <algorithm>

namespace zor {

qint64 LogLineCount(qint64 fileBytes) {
    if (fileBytes <= 0) return 0;
    const qint64 whole = fileBytes / kLogLineBytes;
    const qint64 rest = fileBytes % kLogLineBytes;
    const qint64 half = kLogLineBytes / 2;
    if (rest > half || (rest == half && whole % 2 == 1)) return whole + 1;
    return whole;
}

QByteArray BuildLogPage(const QByteArray& span, QByteArray& buffer) {
    if (buffer.size() != kLogLineBytes) buffer = QByteArray(kLogLineBytes, '\0');
    QByteArray page;
    page.reserve(kLogPageLines * kLogLineBytes);
    for (int k = 0; k < kLogPageLines; ++k) {
        const qsizetype at = qsizetype(k) * kLogLineBytes;
        if (at < span.size()) {
            const qsizetype n = std::min<qsizetype>(kLogLineBytes, span.size() - at);
            std::copy_n(span.constData() + at, n, buffer.data());
        }
        page += buffer;
    }
    return page;
}

QString LogPageText(const QByteArray& page) {
    QString text = cp1252::Decode(page);
    text.replace(QChar(u'\0'), QChar(u' '));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    if (text.endsWith(u'\n')) text.chop(1);
    return text;
}

QString ReadLogPage(FileSystem& fs, const QString& path, qint64 topLine, QByteArray& buffer) {
    QByteArray span;
    {
        BinaryFile file(fs, path, BinaryFile::ReadOnly);
        span = file.Get(topLine * kLogLineBytes + 1, qint64(kLogPageLines) * kLogLineBytes);
    }
    return LogPageText(BuildLogPage(span, buffer));
}

}  // namespace zor
