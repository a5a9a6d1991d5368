#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Each figure stands beside a plain baseline that is measured in the same run, interleaved with
/// it, and is judged as a ratio: nanoseconds of another day or machine mean nothing.
namespace comparison {

/// Gets the row's argument, a size mostly, beside the benchmark's state.
using Function = std::function<void(benchmark::State&, std::int64_t argument)>;

/// Registers a row: what the library takes, what the plain baseline takes for the same work, and
/// the ratio that we mean to keep (0: none is set). A row with several arguments is measured for
/// each.
void add(std::string const& row,
         Function const& library,
         Function const& plain,
         double target,
         std::vector<std::int64_t> const& arguments = {});

/// Runs all rows and prints the table of ratios behind Google Benchmark's own report.
int run(int argc, char** argv);

} // namespace comparison
