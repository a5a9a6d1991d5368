#include "commands/load.h"

#include "commands/input_files.h"
#include "report/progress.h"

#include <filesystem>
#include <iostream>
#include <system_error>

namespace velum::commands {

namespace {

std::uint64_t sizeOf(std::vector<std::string> const& files) {
    std::uint64_t total = 0;
    for (std::string const& file : files) {
        std::error_code unknown;
        const std::uintmax_t size = std::filesystem::file_size(file, unknown);
        total += unknown ? 0 : size;
    }
    return total;
}

} // namespace

arxml::Report load(std::vector<std::string> const& arguments,
                   model::Dictionary const& dictionary,
                   arxml::Options options) {
    const std::vector<std::string> files = inputFiles(arguments);
    report::Progress progress(sizeOf(files));
    options.onProgress = [&progress](std::uint64_t bytes) { progress.show(bytes); };
    return arxml::read(files, dictionary.model(), options);
}

bool tellFailure(arxml::Report const& report, report::FailOn const& failOn) {
    const std::string first = failOn.firstFailure(report);
    if (first.empty()) {
        return false;
    }
    std::cerr << "velum: " << first << " \"velum import\" lists all that is wrong.\n";
    return true;
}

} // namespace velum::commands
