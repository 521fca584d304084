#pragma once
// The benchmark program: each case times an operation of the jukebox and a
// floor measured in the same run, and reports their ratio. Timings are the
// median of several interleaved runs.
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
    double targetSeconds = 0;  // the largest acceptable time, 0 for none
    // The measurement is processor time: seconds, floorSeconds and
    // targetSeconds hold percentages of one core instead of seconds.
    bool percent = false;
};

struct Timed {
    std::function<void()> prepare;  // runs untimed before each call of work; may be empty
    std::function<void()> work;
};

// The median wall time of each item over `rounds` rounds. A round runs every
// item once, in turn, so a floor and the operations measured against it see
// the same spells of a busy machine.
std::vector<double> Medians(int rounds, const std::vector<Timed>& items);

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
