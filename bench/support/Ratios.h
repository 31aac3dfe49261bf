#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

/// What a benchmark program claims: the median time of one benchmark over that of another, measured alternately in the
/// same run. Times alone say nothing on a shared machine.
struct RatioClaim {
    std::string text;         ///< what is compared with what, for a person
    std::string numerator;    ///< benchmark name
    std::string denominator;  ///< benchmark name, or empty to compare with `frameMs` milliseconds
    double atMost = 1;
    double denominatorMs = 0;
};

/// A claim about something that is counted once, such as bytes: `value` over `floor`.
struct CountedClaim {
    std::string text;
    double value = 0;
    double floor = 1;
    double atMost = 1;
};

/// Runs all registered benchmarks, several repetitions in random order, prints their medians, then one line a claim:
/// the ratio, the limit, and "over" where it is exceeded. Exit status 0 unless a benchmark failed: a shared machine is
/// no judge. `counted` is called afterwards. Needs a QApplication where widgets are measured.
int runBenchmarks(int argc, char** argv, const std::vector<RatioClaim>& claims,
                  const std::vector<CountedClaim>& counted = {});
