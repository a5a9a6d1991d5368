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

/// What we mean to keep: a ratio, or a time where the baseline has no counterpart of the same
/// order. 0 sets none.
struct Target {
    Target(double largestRatio) : ratio(largestRatio) {} // NOLINT(*-explicit-constructor): mostly
    double ratio = 0;
    double nanoseconds = 0;
};
inline Target within(double nanoseconds) {
    Target target(0);
    target.nanoseconds = nanoseconds;
    return target;
}

/// Registers a row: what the library takes, what the plain baseline takes for the same work, and
/// the target. A row with several arguments is measured for each.
void add(std::string const& row,
         Function const& library,
         Function const& plain,
         Target target,
         std::vector<std::int64_t> const& arguments = {});

/// Registers a row of bytes for each of the objects that the functions make, and free.
using MakeObjects = std::function<std::function<void()>(std::int64_t count)>;
void addBytes(std::string const& row,
              MakeObjects const& library,
              MakeObjects const& plain,
              double target,
              std::int64_t count);

/// Runs all rows and prints the table of medians, their spread and ratios behind Google Benchmark's
/// own report. The spread is how far the repetitions lie apart, as a share of the median.
int run(int argc, char** argv);

} // namespace comparison
