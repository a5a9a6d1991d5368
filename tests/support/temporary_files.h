#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace velum::tests {

/// A folder for the files of one test, gone with it.
class TemporaryFiles {
public:
    TemporaryFiles()
        : folder_(testing::TempDir() + "velum_" +
                  testing::UnitTest::GetInstance()->current_test_info()->test_suite_name() + "_" +
                  testing::UnitTest::GetInstance()->current_test_info()->name()) {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~TemporaryFiles() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TemporaryFiles(TemporaryFiles const&) = delete;
    TemporaryFiles& operator=(TemporaryFiles const&) = delete;

    /// Writes a file and gives its path.
    std::string write(std::string const& name, std::string const& bytes) const {
        std::string path = folder_ + "/" + name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    std::string folder_;
};

/// A document with the given packages.
inline std::string document(std::string const& packages) {
    return "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\"><AR-PACKAGES>" + packages +
           "</AR-PACKAGES></AUTOSAR>";
}

/// A package with the given elements.
inline std::string package(std::string const& name, std::string const& elements) {
    return "<AR-PACKAGE><SHORT-NAME>" + name + "</SHORT-NAME><ELEMENTS>" + elements +
           "</ELEMENTS></AR-PACKAGE>";
}

} // namespace velum::tests
