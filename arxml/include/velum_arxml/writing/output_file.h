#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// A file that takes its name only when it is whole: the bytes go to a temporary file beside it,
/// which is renamed by `commit`. Without that, the file is as it was. What is no plain file, as a
/// device or a pipe, is written as it is. Raises `OutputError` for whatever fails.
class VELUM_ARXML_EXPORT OutputFile {
public:
    explicit OutputFile(std::filesystem::path target);
    ~OutputFile();
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    OutputFile(OutputFile&&) = delete;
    OutputFile& operator=(OutputFile&&) = delete;

    void write(std::string_view piece);
    /// Ends the writing; the file takes its name with `commit`.
    void close();
    void commit();
    /// Where the bytes are between `close` and `commit`; empty for what is written as it is.
    std::filesystem::path const& temporary() const { return temporary_; }

private:
    friend class OutputFiles;

    void openTemporary();
    void writeOut(std::string_view piece) const;
    void keepOld();
    void takeName();
    void putBack() noexcept;
    [[noreturn]] void fail() const;

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::filesystem::path old_; ///< What had the name before, as long as it may be needed.
    std::string buffer_;
    int descriptor_ = -1;
    bool hasName_ = false;
};

/// Files that take their names together: if one can't, those before it get back what they had.
class VELUM_ARXML_EXPORT OutputFiles {
public:
    OutputFile& add(std::filesystem::path const& target);
    void commit();

private:
    std::vector<std::unique_ptr<OutputFile>> files_;
};

/// Makes a folder for files, unless it is there. Raises `OutputError`.
VELUM_ARXML_EXPORT void makeOutputFolder(std::filesystem::path const& folder);

} // namespace velum::arxml
