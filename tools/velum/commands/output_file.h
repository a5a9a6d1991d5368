#pragma once

#include <filesystem>
#include <fstream>
#include <string_view>

namespace velum::commands {

/// A file that says on the standard error if it can't be written.
class OutputFile {
public:
    explicit OutputFile(std::filesystem::path path);

    bool write(std::string_view piece);
    bool close();

private:
    bool check();

    std::filesystem::path path_;
    std::ofstream out_;
    bool isGood_ = true;
};

} // namespace velum::commands
