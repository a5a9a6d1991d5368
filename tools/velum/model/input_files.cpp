#include "model/input_files.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>

namespace velum::model {

namespace {

namespace fs = std::filesystem;

bool hasName(fs::path const& file, std::initializer_list<std::string_view> endings) {
    std::string name = file.filename().string();
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return std::any_of(endings.begin(), endings.end(), [&name](std::string_view ending) {
        return name.size() > ending.size() && name.ends_with(ending);
    });
}

bool hasInputName(fs::path const& file) {
    return hasName(file, {".arxml", ".arxml.gz", ".velum"});
}

std::vector<std::string> filesIn(std::string const& folder) {
    std::vector<std::string> files;
    std::error_code fault;
    fs::recursive_directory_iterator entry(folder, fault);
    while (!fault && entry != fs::recursive_directory_iterator()) {
        std::error_code unknown;
        const bool isFile = !entry->is_directory(unknown) && !entry->is_other(unknown);
        if (isFile && hasInputName(entry->path())) {
            files.push_back(entry->path().string());
        }
        entry.increment(fault);
    }
    if (fault) {
        throw arxml::InputError(folder, "The folder cannot be read (" + fault.message() + ").");
    }
    if (files.empty()) {
        throw arxml::InputError(folder,
                                "There is no .arxml, .arxml.gz or .velum file in this folder.");
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

/// Whether a file in a folder is the one that is left out, or in the folder that is.
bool isLeftOut(std::string const& file, std::string const& folder, std::string const& leftOut) {
    if (leftOut.empty()) {
        return false;
    }
    const auto within = [](std::string const& inner, std::string const& outer) {
        return inner.starts_with(outer.ends_with('/') ? outer : outer + "/");
    };
    const std::string out = identityOf(leftOut);
    const std::string name = identityOf(file);
    return name == out || (within(out, identityOf(folder)) && within(name, out));
}

/// The first bytes of every SQLite file.
bool hasStoreHeader(std::string const& file) {
    constexpr std::string_view header("SQLite format 3\0", 16);
    std::error_code unknown;
    if (!fs::is_regular_file(file, unknown)) {
        return false; // reading from a pipe would take the bytes out of it
    }
    std::array<char, header.size()> bytes{};
    std::ifstream(file, std::ios::binary).read(bytes.data(), bytes.size());
    return std::string_view(bytes.data(), bytes.size()) == header;
}

} // namespace

bool isStore(std::string const& file) {
    return hasName(file, {".velum"}) || hasStoreHeader(file);
}

InputFiles inputFiles(std::vector<std::string> const& arguments, std::string const& leftOut) {
    InputFiles files;
    std::unordered_set<std::string> known;
    const auto add = [&](std::string const& file) {
        if (known.insert(identityOf(file)).second) {
            (isStore(file) ? files.stores : files.documents).push_back(file);
        }
    };
    for (std::string const& argument : arguments) {
        std::error_code unknown;
        if (fs::is_directory(argument, unknown)) {
            for (std::string const& file : filesIn(argument)) {
                if (!isLeftOut(file, argument, leftOut)) {
                    add(file);
                }
            }
        } else {
            add(argument);
        }
    }
    std::sort(files.stores.begin(), files.stores.end());
    return files;
}

bool isInput(std::string const& argument) {
    std::error_code unknown;
    return argument == arxml::standardInput || hasInputName(argument) ||
           fs::exists(argument, unknown);
}

} // namespace velum::model
