#pragma once

#include <filesystem>
#include <fstream>
#include <string_view>

namespace velum::commands {

/// A file that takes its name only when it is whole, as the files of `velum_arxml` do: it is
/// written beside its place and renamed by `commit`. Says on the standard error if it can't be
/// written. What is no plain file, as a device or a pipe, is written as it is.
class OutputFile {
public:
    explicit OutputFile(std::filesystem::path target);
    /// Leaves nothing of a file that wasn't committed.
    ~OutputFile();
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    OutputFile(OutputFile&&) = delete;
    OutputFile& operator=(OutputFile&&) = delete;

    bool write(std::string_view piece);
    /// Whether all of it is written. Several files are closed before the first one is committed.
    bool close();
    bool commit();

private:
    void open(std::filesystem::path const& path);
    void makeTemporary(std::filesystem::file_status const& known);
    bool check(bool isDone);

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::ofstream out_;
    bool isGood_ = true;
};

} // namespace velum::commands
