// Process start to first painted frame: the viewer with the demonstration's files against an empty window.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "makedemonstration.h"

using namespace sorvane;

extern char** environ;

namespace {
int run(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    if (::posix_spawn(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0 ||
        ::waitpid(child, &status, 0) != child)
        return -1;
    return status;
}

std::vector<std::string> demonstrationFiles() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "sorvane_bench_demonstration";
    if (const auto failure = sorvane::makeDemonstration(folder)) {
        std::fprintf(stderr, "%s\n", failure->c_str());
        return {};
    }
    ::setenv("PELSAR_DATA", (folder / "data/").c_str(), 1);
    std::vector<std::string> files;
    for (const char* const name : {"ETXYZ.OUT.turn", "ETXYZ.OUT.vague", "ETXYZ.OUT.weave.Z"})
        files.push_back(folder / name);
    return files;
}

void measure(benchmark::State& state, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), SORVANE_STARTUP_PROBE);
    for ([[maybe_unused]] auto _ : state)
        if (run(arguments) != 0) {
            state.SkipWithError("the probe failed; is there a display?");
            break;
        }
}

void viewer(benchmark::State& state) {
    std::vector<std::string> arguments = demonstrationFiles();
    arguments.insert(arguments.begin(), "viewer");
    measure(state, std::move(arguments));
}
void emptyWindow(benchmark::State& state) {
    measure(state, {"empty"});
}
BENCHMARK(viewer)->Name("start to first frame/ours")->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(emptyWindow)
    ->Name("start to first frame/empty window")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
} // namespace
