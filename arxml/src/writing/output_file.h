#pragma once

#include <filesystem>
#include <string_view>

namespace velum::arxml {

/// A file that takes its name only when it is whole: the bytes go to a temporary file beside it,
/// which is renamed by `commit`. Without that, the file is as it was.
class OutputFile {
public:
    /// Raises OutputError if no file can be made there.
    explicit OutputFile(std::filesystem::path target);
    ~OutputFile();
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    OutputFile(OutputFile&&) = delete;
    OutputFile& operator=(OutputFile&&) = delete;

    void write(std::string_view piece);
    void commit();

private:
    [[noreturn]] void fail(char const* action) const;

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    int descriptor_ = -1;
};

} // namespace velum::arxml
