#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_types/types.h>

namespace velum::arxml {

namespace {

namespace types = Zorvane::metamodel::types;
using tests::document;
using tests::package;
using tests::TemporaryFiles;

/// A model with undo, and files with 40 units and a reference into nowhere.
class Read : public testing::Test {
public:
    Read(Read const&) = delete;
    Read& operator=(Read const&) = delete;

protected:
    Read() {
        types::initialize();
        model = types::NSInterface::FactoryIntf::createNewModel();
        model.setUndoEnabled(true);
        for (int file = 0; file < 2; ++file) {
            std::string units;
            for (int unit = 0; unit < 20; ++unit) {
                units += "<UNIT><SHORT-NAME>u" + std::to_string(unit) +
                         "</SHORT-NAME><DISPLAY-NAME>m</DISPLAY-NAME></UNIT>";
            }
            units += "<UNIT><SHORT-NAME>lost</SHORT-NAME><PHYSICAL-DIMENSION-REF "
                     "DEST=\"PHYSICAL-DIMENSION\">/No/Where</PHYSICAL-DIMENSION-REF></UNIT>";
            const std::string name = std::to_string(file);
            names.push_back(files.write(name + ".arxml", document(package("P" + name, units))));
        }
    }
    ~Read() override { model.destroy(); }

    void expectAsBefore() {
        EXPECT_TRUE(model.getRootObjects().empty());
        EXPECT_FALSE(model.undo());
    }

    TemporaryFiles files;
    std::vector<std::string> names;
    QOB::Model model;
};

TEST_F(Read, GivesAReportOfTextsAndOneStepOfUndo) {
    const Report report = read({names[1], names[0], names[1]}, model);
    EXPECT_EQ(report.outcome, Outcome::kept);
    ASSERT_EQ(report.classes.size(), 1U);
    EXPECT_EQ(report.classes.front().metaclass, "Unit");
    EXPECT_EQ(report.classes.front().count, 42U);
    ASSERT_EQ(report.files.size(), 2U);
    for (std::size_t i = 0; i < names.size(); ++i) {
        FileReport const& file = report.files[i];
        EXPECT_EQ(file.file, names[i]);
        EXPECT_EQ(file.consumedCount + file.skippedCount, file.elementCount);
        ASSERT_EQ(file.skipped.size(), 1U);
        EXPECT_EQ(file.skipped.front().element, "PHYSICAL-DIMENSION-REF");
        ASSERT_EQ(file.findings.size(), 1U);
        EXPECT_EQ(file.findings.front().reason, Reason::dangling);
        EXPECT_EQ(file.findings.front().target, "/No/Where");
        EXPECT_EQ(file.findings.front().places.front().path, "/P" + std::to_string(i) + "/lost");
    }
    EXPECT_TRUE(model.undo());
    expectAsBefore();
}

TEST_F(Read, TellsTheBytesReadSoFar) {
    std::vector<std::uint64_t> told;
    Options options;
    options.onProgress = [&told](std::uint64_t bytes) { told.push_back(bytes); };
    read(names, model, options);
    ASSERT_FALSE(told.empty());
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    std::uint64_t size = 0;
    for (std::string const& name : names) {
        size += std::filesystem::file_size(name);
    }
    EXPECT_EQ(told.back(), size);
}

// Whether it is asked before, while the files are read, or with the last of their bytes, so that it
// is met when objects are made.
TEST_F(Read, StopsWhereverItIsAskedTo) {
    for (const bool isLate : {false, true}) {
        SCOPED_TRACE(isLate);
        std::stop_source stop;
        Options options;
        options.stop = stop.get_token();
        int portions = 0;
        if (isLate) {
            int all = 0;
            Options counting;
            counting.onProgress = [&all](std::uint64_t /*bytes*/) { ++all; };
            read(names, model, counting);
            model.undo();
            options.onProgress = [&, all](std::uint64_t /*bytes*/) {
                if (++portions == all) {
                    stop.request_stop();
                }
            };
        } else {
            stop.request_stop();
        }
        const Report report = read(names, model, options);
        EXPECT_EQ(report.outcome, Outcome::stopped);
        EXPECT_FALSE(report.isKept());
        EXPECT_TRUE(report.files.empty());
        EXPECT_TRUE(report.classes.empty());
        EXPECT_TRUE(model.getRootObjects().empty());
    }
}

TEST_F(Read, KeepsNothingThatIsRefusedOrRaisedAt) {
    Options options;
    options.isAcceptable = [](Report const& report) {
        EXPECT_EQ(report.files.size(), 2U);
        EXPECT_EQ(report.files.front().skippedCount, 1U);
        return report.files.front().findings.empty();
    };
    const Report refused = read(names, model, options);
    EXPECT_EQ(refused.outcome, Outcome::refused);
    EXPECT_TRUE(refused.classes.empty());
    EXPECT_EQ(refused.files.size(), 2U);
    expectAsBefore();

    options.isAcceptable = [](Report const&) -> bool { throw std::runtime_error("no"); };
    EXPECT_THROW(read(names, model, options), std::runtime_error);
    expectAsBefore();

    // Raised in the midst of the parser.
    options.onProgress = [](std::uint64_t /*bytes*/) { throw std::runtime_error("no"); };
    EXPECT_THROW(read(names, model, options), std::runtime_error);
    expectAsBefore();

    names.push_back(files.write("broken.arxml", "<AUTOSAR>"));
    EXPECT_THROW(read(names, model), InputError);
    expectAsBefore();
}

TEST_F(Read, HandsOutTheElementsThatObjectsCameFrom) {
    Sources sources;
    EXPECT_FALSE(sources.elementAt("/P0/u3"));
    {
        Options options;
        options.sources = &sources;
        read(names, model, options);
    }
    const SourceElement unit = sources.elementAt("/P1/u3");
    ASSERT_TRUE(unit);
    EXPECT_TRUE(unit.is("UNIT"));
    EXPECT_EQ(unit.path(), "/P1/u3");
    EXPECT_EQ(unit.origin().file, names[1]);
    EXPECT_EQ(unit.child("DISPLAY-NAME").text(), "m");
    EXPECT_EQ(unit.children().size(), 2U);
    EXPECT_FALSE(unit.child("NO-SUCH-NAME").child("DISPLAY-NAME"));
    EXPECT_FALSE(sources.elementAt("/P1/u30"));
    EXPECT_EQ(sources.elementsNamed({"UNIT", "NO-SUCH-NAME"}).size(), 42U);
    const SourceElement lost = sources.elementAt("/P0/lost");
    EXPECT_FALSE(sources.targetOf(lost.child("PHYSICAL-DIMENSION-REF")));
}

} // namespace

} // namespace velum::arxml
