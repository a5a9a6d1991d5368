#include "comparison.h"

#include <cstdio>
#include <map>
#include <string_view>
#include <vector>

namespace comparison {

namespace {

struct Row {
    std::string name;
    double target;
};

std::vector<Row>& rows() {
    static std::vector<Row> instance;
    return instance;
}

constexpr std::string_view plainSuffix = " (plain)";

/// Passes everything on to the console and keeps the medians.
class MedianKeeper : public benchmark::ConsoleReporter {
public:
    void ReportRuns(std::vector<Run> const& reports) override {
        for (Run const& run : reports) {
            bool const isMedian = run.aggregate_name == "median";
            if (isMedian || (run.repetitions == 1 && run.run_type == Run::RT_Iteration)) {
                medians_[run.run_name.function_name +
                         (run.run_name.args.empty() ? "" : "/" + run.run_name.args)] =
                    run.GetAdjustedRealTime();
            }
        }
        ConsoleReporter::ReportRuns(reports);
    }

    void printRatios() const {
        std::printf(
            "\n%-58s %12s %12s %7s %7s\n", "row", "library ns", "plain ns", "ratio", "target");
        for (Row const& row : rows()) {
            auto const library = medians_.find(row.name);
            auto const plain = medians_.find(row.name + std::string(plainSuffix));
            if (library == medians_.end() || plain == medians_.end()) {
                continue;
            }
            double const ratio = library->second / plain->second;
            std::printf("%-58s %12.1f %12.1f %6.2fx",
                        row.name.c_str(),
                        library->second,
                        plain->second,
                        ratio);
            if (row.target > 0) {
                std::printf(" %6.2fx%s", row.target, ratio > row.target ? "  above" : "");
            }
            std::printf("\n");
        }
    }

private:
    std::map<std::string, double> medians_;
};

} // namespace

void add(std::string const& row,
         Function const& library,
         Function const& plain,
         double target,
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

int run(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    MedianKeeper reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}

} // namespace comparison
