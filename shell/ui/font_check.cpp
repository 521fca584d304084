#include "shell/ui/font_check.h"

#include <QFont>
#include <QFontInfo>

namespace zor {
namespace {

struct Twins {
    const char* family;
    const char* sameMetrics[2];
};

// The metric twins fontconfig's own aliases know for the old system's fonts.
const Twins kTwins[] = {
    {"Arial", {"Liberation Sans", "Arimo"}},
    {"Helvetica", {"Liberation Sans", "Arimo"}},
    {"Arial Narrow", {"Liberation Sans Narrow", nullptr}},
    {"Times New Roman", {"Liberation Serif", "Tinos"}},
    {"Times", {"Liberation Serif", "Tinos"}},
    {"Courier New", {"Liberation Mono", "Cousine"}},
    {"Courier", {"Liberation Mono", "Cousine"}},
};

}  // namespace

QString ResolvedFamily(const QString& family) { return QFontInfo(QFont(family)).family(); }

bool MetricCompatible(const QString& requested, const QString& resolved) {
    const QString wanted = requested.trimmed();
    if (resolved.compare(wanted, Qt::CaseInsensitive) == 0) return true;
    for (const Twins& t : kTwins) {
        if (wanted.compare(QLatin1String(t.family), Qt::CaseInsensitive) != 0) continue;
        for (const char* twin : t.sameMetrics)
            if (twin && resolved.compare(QLatin1String(twin), Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

QStringList FontMetricNotes(const QStringList& families) {
    QStringList notes;
    QStringList seen;
    for (const QString& family : families) {
        const QString name = family.trimmed();
        if (name.isEmpty() || seen.contains(name, Qt::CaseInsensitive)) continue;
        seen << name;
        const QString shown = ResolvedFamily(name);
        if (!MetricCompatible(name, shown))
            notes << QStringLiteral("ZORjuke: the font \"%1\" is shown as \"%2\", which has other metrics: the grids' "
                                    "column widths were made for \"%1\" and may cut headings. Install a font with its "
                                    "metrics (on Debian: fonts-liberation2).")
                         .arg(name, shown);
    }
    return notes;
}

}  // namespace zor
