#include "commands/input_files.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>

namespace velum::commands {

namespace {

namespace fs = std::filesystem;

bool hasArxmlName(fs::path const& file) {
    std::string name = file.filename().string();
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    const auto endsWith = [&name](std::string_view end) {
        return name.size() > end.size() && name.substr(name.size() - end.size()) == end;
    };
    return endsWith(".arxml") || endsWith(".arxml.gz");
}

std::vector<std::string> filesIn(std::string const& folder) {
    std::vector<std::string> files;
    std::error_code fault;
    fs::recursive_directory_iterator entry(folder, fault);
    while (!fault && entry != fs::recursive_directory_iterator()) {
        std::error_code unknown;
        const bool isFile = !entry->is_directory(unknown) && !entry->is_other(unknown);
        if (isFile && hasArxmlName(entry->path())) {
            files.push_back(entry->path().string());
        }
        entry.increment(fault);
    }
    if (fault) {
        throw arxml::InputError(folder, "The folder cannot be read (" + fault.message() + ").");
    }
    if (files.empty()) {
        throw arxml::InputError(folder, "There is no .arxml or .arxml.gz file in this folder.");
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// The same for all names of one file.
std::string identityOf(std::string const& file) {
    std::error_code unknown;
    const fs::path canonical = fs::weakly_canonical(file, unknown);
    return unknown || file == arxml::standardInput ? file : canonical.string();
}

} // namespace

std::vector<std::string> inputFiles(std::vector<std::string> const& arguments) {
    std::vector<std::string> files;
    std::unordered_set<std::string> known;
    const auto add = [&](std::string const& file) {
        if (known.insert(identityOf(file)).second) {
            files.push_back(file);
        }
    };
    for (std::string const& argument : arguments) {
        std::error_code unknown;
        if (fs::is_directory(argument, unknown)) {
            for (std::string const& file : filesIn(argument)) {
                add(file);
            }
        } else {
            add(argument);
        }
    }
    return files;
}

bool isInput(std::string const& argument) {
    std::error_code unknown;
    return argument == arxml::standardInput || hasArxmlName(argument) ||
           fs::exists(argument, unknown);
}

} // namespace velum::commands
