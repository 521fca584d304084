// zorbench [case...]: runs the named benchmark cases (all by default) and
// prints one row per measurement, ready for docs/BENCHMARKS.md.
#include "bench/bench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace zor::bench {

std::vector<Case>& Cases() {
    static std::vector<Case> cases;
    return cases;
}

std::vector<double> Medians(int rounds, const std::vector<Timed>& items) {
    std::vector<std::vector<double>> times(items.size());
    for (int r = 0; r < rounds; ++r)
        for (size_t i = 0; i < items.size(); ++i) {
            if (items[i].prepare) items[i].prepare();
            QElapsedTimer t;
            t.start();
            items[i].work();
            times[i].push_back(t.nsecsElapsed() / 1e9);
        }
    std::vector<double> medians;
    for (auto& t : times) {
        std::sort(t.begin(), t.end());
        medians.push_back(t[t.size() / 2]);
    }
    return medians;
}

double ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return 0;
}

}  // namespace zor::bench

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList wanted = app.arguments().mid(1);
    QTextStream out(stdout);
    out << "| measurement | time (s) | floor | floor (s) | ratio | target |\n|---|---|---|---|---|---|\n";
    out.flush();
    for (const auto& c : zor::bench::Cases()) {
        if (!wanted.isEmpty() && !wanted.contains(QString::fromLatin1(c.name))) continue;
        for (const auto& r : c.run()) {
            const double ratio = r.floorSeconds > 0 ? r.seconds / r.floorSeconds : 0;
            const auto figure = [&](double v) {
                return r.percent ? QString::number(v, 'f', 2) + QStringLiteral(" %") : QString::number(v, 'f', 3);
            };
            out << "| " << r.name << " | " << figure(r.seconds) << " | " << r.floorName << " | "
                << figure(r.floorSeconds) << " | " << QString::number(ratio, 'f', 2) << " | "
                << (r.target > 0            ? QStringLiteral("≤ %1").arg(r.target)
                    : r.targetSeconds > 0 ? QStringLiteral("≤ %1 %2").arg(r.targetSeconds).arg(r.percent ? QStringLiteral("%") : QStringLiteral("s"))
                                          : QStringLiteral("-"))
                << " |\n";
            out.flush();
        }
    }
    return 0;
}
