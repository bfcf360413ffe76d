// `sorvane runs` on a thousand engagements of 1,500 samples: time against reading and parsing them alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <QTemporaryDir>

#include "commandline.h"
#include "longtrajectory.h"
#include "survey.h"
#include "trajectoryfile.h"

using namespace sorvane;

namespace {
constexpr int kFiles = 1000;
constexpr int kLines = 12 + 1500 * (3 + 4); // header, samples with four flares each

// Names of one file.
class Set {
public:
    Set() {
        std::ifstream whole(longTrajectory().toStdString());
        const std::string first = pathOf(0);
        std::ofstream cut(first);
        std::string line;
        for (int i = 0; i < kLines && std::getline(whole, line); ++i)
            cut << line << '\n';
        cut.close();
        for (std::size_t i = 1; i < kFiles; ++i)
            std::filesystem::create_hard_link(first, pathOf(i));
    }

    std::string folder() const { return folder_.path().toStdString(); }
    std::string pathOf(std::size_t number) const { return folder() + "/ETXYZ.OUT." + std::to_string(number); }

private:
    QTemporaryDir folder_;
};

const Set& set() {
    static const Set made;
    return made;
}

void runs(benchmark::State& state) {
    const std::string output = set().folder() + "/set.sqlite";
    for (auto _ : state) {
        std::ostringstream out;
        std::ostringstream err;
        Streams streams{out, err, false};
        if (runCommandLine({"runs", set().folder(), "-o", output}, streams) != ExitStatus::Success)
            state.SkipWithError(err.str().c_str());
        state.PauseTiming();
        std::filesystem::remove(output);
        state.ResumeTiming();
    }
}

void parsing(benchmark::State& state) {
    for (auto _ : state)
        survey(
            kFiles, std::max(std::thread::hardware_concurrency(), 1U),
            [](std::size_t number) {
                const TrajectoryInput input = openTrajectoryAt(set().pathOf(number));
                readTrajectoryHeader(input.device.get(), false);
                std::int64_t samples = 0;
                readEachRecord(input.device.get(), false, [&](const Sample&, const std::vector<Flare>&) { ++samples; });
                return RunRow{{}, {samples, 0}, {}};
            },
            [](const RunRow& row) { return row.stamp.bytes == 1500; });
}
} // namespace

BENCHMARK(runs)->Name("runs of 1,000 engagements/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(parsing)->Name("runs of 1,000 engagements/parsing alone")->Unit(benchmark::kMillisecond)->UseRealTime();
