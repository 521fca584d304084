#pragma once
// The benchmark program: each case times an operation of the jukebox and a
// floor measured in the same run, and reports their ratio. Timings are the
// median of several runs.
#include <QString>

#include <functional>
#include <vector>

namespace zor::bench {

struct Result {
    QString name;
    double seconds;
    QString floorName;
    double floorSeconds;
    double target;  // the largest acceptable ratio, 0 for none
};

// Median wall time of `runs` calls of `work`; `prepare` runs untimed before each.
double Median(int runs, const std::function<void()>& prepare, const std::function<void()>& work);

// Resident memory of this process, in megabytes.
double ResidentMegabytes();

struct Case {
    const char* name;
    std::function<std::vector<Result>()> run;
};

std::vector<Case>& Cases();
struct Register {
    Register(const char* name, std::function<std::vector<Result>()> run) { Cases().push_back({name, std::move(run)}); }
};

}  // namespace zor::bench
