#include "comparison.h"

#include <algorithm>
#include <cstdio>
#include <malloc.h>
#include <map>
#include <string_view>
#include <vector>

namespace comparison {

namespace {

struct Row {
    std::string name;
    Target target;
};
struct BytesRow {
    std::string name;
    MakeObjects library;
    MakeObjects plain;
    double target;
    std::int64_t count;
};

std::vector<Row>& rows() {
    static std::vector<Row> instance;
    return instance;
}
std::vector<BytesRow>& bytesRows() {
    static std::vector<BytesRow> instance;
    return instance;
}

constexpr std::string_view plainSuffix = " (plain)";

/// The times of one benchmark, one for each repetition.
class Times {
public:
    void add(double time) { times_.insert(std::ranges::upper_bound(times_, time), time); }
    double median() const {
        std::size_t const half = times_.size() / 2;
        return times_.size() % 2 == 1 ? times_[half] : (times_[half - 1] + times_[half]) / 2;
    }
    double spread() const { return (times_.back() - times_.front()) / median(); }

private:
    std::vector<double> times_;
};

/// Passes everything on to the console and keeps the times.
class TimeKeeper : public benchmark::ConsoleReporter {
public:
    void ReportRuns(std::vector<Run> const& reports) override {
        for (Run const& run : reports) {
            if (run.run_type == Run::RT_Iteration) {
                times_[run.run_name.function_name +
                       (run.run_name.args.empty() ? "" : "/" + run.run_name.args)]
                    .add(run.GetAdjustedRealTime());
            }
        }
        ConsoleReporter::ReportRuns(reports);
    }

    void printRatios() const {
        std::printf("\n%-50s %12s %6s %12s %6s %7s %8s\n",
                    "row",
                    "library ns",
                    "+-",
                    "plain ns",
                    "+-",
                    "ratio",
                    "target");
        for (Row const& row : rows()) {
            auto const library = times_.find(row.name);
            auto const plain = times_.find(row.name + std::string(plainSuffix));
            if (library == times_.end() || plain == times_.end()) {
                continue;
            }
            double const time = library->second.median();
            double const ratio = time / plain->second.median();
            std::printf("%-50s %12.1f %5.0f%% %12.1f %5.0f%% %6.2fx",
                        row.name.c_str(),
                        time,
                        100 * library->second.spread(),
                        plain->second.median(),
                        100 * plain->second.spread(),
                        ratio);
            if (row.target.ratio > 0) {
                std::printf(
                    " %7.2fx%s", row.target.ratio, ratio > row.target.ratio ? "  above" : "");
            } else if (row.target.nanoseconds > 0) {
                std::printf(" %5.0f ns%s",
                            row.target.nanoseconds,
                            time > row.target.nanoseconds ? "  above" : "");
            }
            std::printf("\n");
        }
    }

private:
    std::map<std::string, Times> times_;
};

double bytesInUse() {
    struct mallinfo2 const info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double bytesPerObject(MakeObjects const& make, std::int64_t count) {
    double const before = bytesInUse();
    std::function<void()> const free = make(count);
    double const used = bytesInUse() - before;
    free();
    return used / static_cast<double>(count);
}

void printBytes() {
    for (BytesRow const& row : bytesRows()) {
        double const library = bytesPerObject(row.library, row.count);
        std::printf("%-50s %10.0f B %6s %10.0f B %6s %7s %6.0f B%s\n",
                    row.name.c_str(),
                    library,
                    "",
                    bytesPerObject(row.plain, row.count),
                    "",
                    "",
                    row.target,
                    library > row.target ? "  above" : "");
    }
}

} // namespace

void add(std::string const& row,
         Function const& library,
         Function const& plain,
         Target target,
         std::vector<std::int64_t> const& arguments) {
    auto const enter = [&](std::string const& name, std::int64_t argument) {
        rows().push_back({name, target});
        for (bool const isPlain : {false, true}) {
            Function const function = isPlain ? plain : library;
            benchmark::RegisterBenchmark(
                (name + std::string(isPlain ? plainSuffix : "")).c_str(),
                [function, argument](benchmark::State& state) { function(state, argument); });
        }
    };
    if (arguments.empty()) {
        enter(row, 0);
    }
    for (std::int64_t const argument : arguments) {
        enter(row + ", " + std::to_string(argument), argument);
    }
}

void addBytes(std::string const& row,
              MakeObjects const& library,
              MakeObjects const& plain,
              double target,
              std::int64_t count) {
    bytesRows().push_back({row, library, plain, target, count});
}

int run(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    TimeKeeper reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    printBytes();
    return 0;
}

} // namespace comparison
