// The viewer's load of a trajectory as a benchmark, shared by what is measured against it.
#pragma once

#include <QString>

#include <benchmark/benchmark.h>

// So that every iteration asks the system for its memory, as a program does with its first file.
void giveMemoryBack();

// Times etxyz::LoadETXYZ of one of longTrajectory's files.
void benchmarkLoad(benchmark::State& state, const QString& path);
