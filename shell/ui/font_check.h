#pragma once
// The grids' column widths are twips measured for the fonts the settings
// name ("Arial"). This system has none of those; fontconfig gives a stand-in,
// and only one made with the same metrics (Liberation Sans for Arial) keeps
// headings and cells inside those widths.
#include <QString>
#include <QStringList>

namespace zor {

// The family the font system shows for `family`.
QString ResolvedFamily(const QString& family);
// Whether `resolved` is `requested` itself or a family made with its metrics.
bool MetricCompatible(const QString& requested, const QString& resolved);
// A line for each name whose stand-in has other metrics; empty when all fit.
QStringList FontMetricNotes(const QStringList& families);

}  // namespace zor
