#include "mp3/file_window.h"

namespace zor {

std::array<QString, 12> FileWindowValues(const Mp3FrameInfo& info) {
    const QString two = QStringLiteral("  ");
    return {
        QString::number(info.FileBytes) + two,
        info.DurationText + two,
        QString::number(info.FileBytes / kFileWindowFrameBytes) + two,
        info.BitRateText + QStringLiteral(" kb/s"),
        info.SampleRateText + two,
        info.VersionText + two,
        info.LayerText + two,
        info.ProtectionText + two,
        QStringLiteral("  Off"),
        info.CopyrightText + two,
        info.OriginalText + two,
        info.EmphasisText + two,
    };
}

}  // namespace zor
