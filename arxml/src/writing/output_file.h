#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

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
    /// Where the bytes are as long as the file hasn't its name.
    std::filesystem::path const& temporary() const { return temporary_; }

private:
    friend class OutputFiles;

    void close();
    void keepOld();
    void takeName();
    void putBack() noexcept;
    [[noreturn]] void fail(char const* action) const;

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::filesystem::path old_; ///< What had the name before, as long as it may be needed.
    int descriptor_ = -1;
    bool hasName_ = false;
};

/// Files that take their names together: if one can't, those before it get back what they had.
class OutputFiles {
public:
    /// Ends the one before.
    OutputFile& add(std::filesystem::path const& target);
    void commit();

private:
    std::vector<std::unique_ptr<OutputFile>> files_;
};

} // namespace velum::arxml
