#include "commands/report_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "html/diff_report.h"
#include "html/report.h"
#include "model/dictionary.h"

#include <algorithm>
#include <iostream>
#include <velum_arxml/writing/output_file.h>

namespace velum::commands {

namespace {

/// "2 files: a.arxml, b.arxml": what a page is about.
std::string namesOf(report::Input const& input) {
    constexpr std::size_t most = 8;
    const std::vector<std::string> files = input.files();
    std::string text = std::to_string(files.size()) + (files.size() == 1 ? " file: " : " files: ");
    for (std::size_t i = 0; i < std::min(files.size(), most); ++i) {
        text += (i == 0 ? "" : ", ") + files[i];
    }
    return text + (files.size() > most ? " and others" : "");
}

/// Files with their objects, and with what they say beside.
struct ReadRelease {
    explicit ReadRelease(std::vector<std::string> const& files) {
        arxml::Options options;
        options.sources = &sources;
        input = load(files, dictionary, options);
    }

    model::Dictionary dictionary;
    arxml::Sources sources;
    report::Input input;
};

} // namespace

void ReportCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "report", "Write a page for a browser: every object with its links, curves and maps");
    CLI::Option* const files = command->add_option("FILE", files_, whatFilesAre);
    command->add_option("-o,--output", output_, "The page to write; one that is there is replaced")
        ->type_name("FILE")
        ->required();
    CLI::Option* const isDiff = command->add_flag(
        "--diff", isDiff_, "Report what changed between two releases: --diff OLD NEW");
    CLI::Option* const older =
        command->add_option("--old", oldFiles_, "With --diff: the old release as a list of files")
            ->type_name("FILE")
            ->excludes(files);
    CLI::Option* const newer =
        command->add_option("--new", newFiles_, "With --diff: the new release as a list of files")
            ->type_name("FILE")
            ->excludes(files);
    older->needs(newer)->needs(isDiff);
    newer->needs(older)->needs(isDiff);
    failOn_.addTo(*command);
}

int ReportCommand::run() const {
    if (isDiff_) {
        return reportDiff();
    }
    if (files_.empty()) {
        std::cerr << "velum: There is nothing to report on: \"velum report FILE... -o PAGE\".\n";
        return wrongUsage;
    }
    return reportOne();
}

int ReportCommand::reportOne() const {
    ReadRelease const release(files_);
    arxml::OutputFile file(output_);
    html::writeReport(release.dictionary.model(),
                      release.sources,
                      html::findingsOf(release.dictionary.model(), release.input, release.sources),
                      namesOf(release.input),
                      sinkTo(file));
    file.commit();
    return tellFailure(release.input, failOn_.value()) ? inputAtFault : done;
}

int ReportCommand::reportDiff() const {
    if (oldFiles_.empty() && files_.size() != 2) {
        std::cerr << "velum: Two releases are needed: \"velum report --diff OLD NEW -o PAGE\", or "
                     "--old and --new.\n";
        return wrongUsage;
    }
    ReadRelease const older(oldFiles_.empty() ? std::vector{files_.front()} : oldFiles_);
    ReadRelease const newer(oldFiles_.empty() ? std::vector{files_.back()} : newFiles_);
    arxml::OutputFile file(output_);
    html::writeDiffReport({older.dictionary.model(), older.sources, namesOf(older.input)},
                          {newer.dictionary.model(), newer.sources, namesOf(newer.input)},
                          sinkTo(file));
    file.commit();
    bool const isOldAtFault = tellFailure(older.input, failOn_.value());
    return tellFailure(newer.input, failOn_.value()) || isOldAtFault ? inputAtFault : done;
}

} // namespace velum::commands
