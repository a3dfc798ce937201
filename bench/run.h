// What the programs of benchmarks have in common: how they begin, and the table that each of them is.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

/// A benchmark. \c name is what bench/table finds it by; a repetition has so many \c iterations and no
/// others, because a stroke costs the more the longer it is.
struct Benchmark
{
    std::string name;
    int iterations = 1;
    std::function<void(benchmark::State &)> work;
    bool manualTime = false; // what counts is the time that the work sets
};

/// Makes an application, on the offscreen platform if the environment names no other, and runs
/// \a benchmarks with the options of Google Benchmark in \a argv. Where the screen has finer pixels than
/// usual, their names end in "@" and the scale. Returns the program's exit code.
int runBenchmarks(int argc, char *argv[], const std::vector<Benchmark> &benchmarks);

/// Whether the run is to be over soon, as PLUMARA_BENCH_QUICK in the environment says.
bool isQuick();
