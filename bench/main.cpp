// Main of the benchmark programs: runs the benchmarks and prints, for each WHAT that has a WHAT/ours, the ratio of
// every other variant's median time to ours.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred || run.run_type != Run::RT_Aggregate || run.aggregate_name != "median")
                continue;
            const std::string name = run.run_name.function_name;
            const std::size_t slash = name.rfind('/');
            if (slash != std::string::npos)
                seconds_[name.substr(0, slash)][name.substr(slash + 1)] =
                    run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }

    void printRatios() const {
        std::printf("\n%-44s %-24s %12s %12s %14s\n", "what", "against", "ours (ms)", "its (ms)", "its / ours");
        for (const auto& [what, variants] : seconds_) {
            const auto ours = variants.find("ours");
            if (ours == variants.end())
                continue;
            for (const auto& [variant, time] : variants)
                if (variant != "ours")
                    std::printf(
                        "%-44s %-24s %12.4f %12.4f %14.2f\n", what.c_str(), variant.c_str(), ours->second * 1e3,
                        time * 1e3, time / ours->second);
        }
    }

private:
    std::map<std::string, std::map<std::string, double>> seconds_; // WHAT, variant
};
} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}
