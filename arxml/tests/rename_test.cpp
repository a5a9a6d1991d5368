#include "scratch.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_arxml/update.h>

namespace {

/// Which of the next files that take a name can't; 0 if all can.
int failingRename = 0;

} // namespace

/// Stands before the one of the C library, so that the disk can be seen to fail.
extern "C" int renameOrFail(char const* from, char const* to) noexcept __asm__("rename");
extern "C" int renameOrFail(char const* from, char const* to) noexcept {
    if (failingRename > 0 && --failingRename == 0) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;
using scratch::contentOf;
using scratch::Folder;
using scratch::Model;
using scratch::objectAt;

const std::string sampleFolder = VELUM_SAMPLES;

std::vector<std::string> copiesIn(Folder const& folder) {
    std::vector<std::string> files = {folder / "gearbox.arxml", folder / "platform.arxml"};
    for (std::string const& file : files) {
        fs::copy_file(sampleFolder + "/" + fs::path(file).filename().string(), file);
    }
    return files;
}

void expectAsBefore(Folder const& folder, std::vector<std::string> const& files) {
    for (std::string const& file : files) {
        EXPECT_EQ(contentOf(file),
                  contentOf(sampleFolder + "/" + fs::path(file).filename().string()));
    }
    const auto all = fs::directory_iterator(folder / ".");
    EXPECT_EQ(std::distance(fs::begin(all), fs::end(all)), 2) << "temporary files are left";
}

} // namespace

TEST(Rename, ChangesTheNameAndAllReferencesInAllFiles) {
    const Folder folder;
    const std::vector<std::string> files = copiesIn(folder);
    const auto refusalOf = [&](char const* path, char const* name) {
        return rename(files, path, name).refusal;
    };
    EXPECT_EQ(refusalOf("/Platform/Units/None", "Any"),
              "There is no element at /Platform/Units/None.");
    EXPECT_EQ(refusalOf("/Platform/Units/Percent", "DegreeCelsius"),
              "There is an element at /Platform/Units/DegreeCelsius already.");
    const UpdateReport report = rename(files, "/Platform/Units", "Measures");
    EXPECT_FALSE(report.isRefused());
    const Model model;
    for (FileReport const& each : read(files, model).files) {
        for (Finding const& finding : each.findings) {
            EXPECT_FALSE(finding.reason == Reason::dangling && finding.isFault) << finding.text;
        }
    }
    EXPECT_TRUE(objectAt(model, "/Platform/Measures/Percent").isValid());
    EXPECT_GT(report.edits, 2U);
    EXPECT_FALSE(rename(files, "/Platform/Measures", "Units").isRefused());
    expectAsBefore(folder, files);
}

/// The first file has its new content already when the second one fails.
TEST(Rename, PutsBackWhatWasRenamedIfAFileCannotTakeItsName) {
    for (int const failing : {1, 2}) {
        const Folder folder;
        const std::vector<std::string> files = copiesIn(folder);
        failingRename = failing;
        EXPECT_THROW(rename(files, "/Platform/Units", "Measures"), OutputError);
        EXPECT_EQ(failingRename, 0) << "the fault didn't occur";
        expectAsBefore(folder, files);
    }
}

TEST(Rename, NamesTheFileThatIsNotWellFormed) {
    const Folder folder;
    const std::vector<std::string> files = copiesIn(folder);
    std::ofstream(files[1], std::ios::app) << "<";
    try {
        rename(files, "/Platform/Units", "Measures");
        FAIL();
    } catch (InputError const& error) {
        EXPECT_NE(std::string(error.what()).find(files[1]), std::string::npos) << error.what();
    }
    EXPECT_EQ(contentOf(files[0]), contentOf(sampleFolder + "/gearbox.arxml"));
}

} // namespace velum::arxml
