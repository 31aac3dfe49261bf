#include "Ratios.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace {

constexpr int Repetitions = 7;

/// Collects the real times of every repetition beside the ordinary console output.
class CollectingReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            m_failed = m_failed || run.error_occurred;
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                m_times[run.run_name.function_name].push_back(run.real_accumulated_time / double(run.iterations) * 1e3);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// Milliseconds; negative when the benchmark did not run.
    double median(const std::string& name) const
    {
        const auto found = m_times.find(name);
        if (found == m_times.end() || found->second.empty())
            return -1;
        std::vector<double> times = found->second;
        std::nth_element(times.begin(), times.begin() + long(times.size() / 2), times.end());
        return times[times.size() / 2];
    }

    bool failed() const { return m_failed; }

private:
    std::map<std::string, std::vector<double>> m_times;
    bool m_failed = false;
};

void printClaim(const std::string& text, double value, double floor, const char* unit, double atMost)
{
    const double ratio = value / floor;
    std::printf("ratio %6.2f (at most %.2f)%s  %s  [%.3f %s / %.3f %s]\n", ratio, atMost, ratio > atMost ? " OVER" : "",
                text.c_str(), value, unit, floor, unit);
}

void printRatio(const RatioClaim& claim, const CollectingReporter& reporter)
{
    const double value = reporter.median(claim.numerator);
    const double floor = claim.denominator.empty() ? claim.denominatorMs : reporter.median(claim.denominator);
    if (value >= 0 && floor > 0)
        printClaim(claim.text, value, floor, "ms", claim.atMost);
    else
        std::printf("ratio   n/a  %s: not measured\n", claim.text.c_str());
}

}  // namespace

int runBenchmarks(int argc, char** argv, const std::vector<RatioClaim>& claims,
                  const std::vector<CountedClaim>& counted)
{
    std::vector<std::string> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, {"--benchmark_repetitions=" + std::to_string(Repetitions),
                                             "--benchmark_enable_random_interleaving=true"});
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    int count = int(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data()))
        return 1;

    CollectingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const RatioClaim& claim : claims)
        printRatio(claim, reporter);
    for (const CountedClaim& claim : counted)
        printClaim(claim.text, claim.value, claim.floor, "", claim.atMost);
    return reporter.failed() ? 1 : 0;
}
