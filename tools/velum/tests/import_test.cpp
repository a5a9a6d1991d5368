#include "check/rules.h"
#include "model/dictionary.h"
#include "model/metaclasses.h"
#include "model/objects.h"
#include "report/fail_on.h"
#include "show/object_printer.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <numeric>
#include <string>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_types/types.h>

namespace velum {

namespace {

namespace types = Zorvane::metamodel::types;
using tests::document;
using tests::package;
using tests::TemporaryFiles;

std::vector<std::string> samples() {
    std::vector<std::string> files;
    for (auto const& entry : std::filesystem::directory_iterator(VELUM_SAMPLES)) {
        if (entry.path().extension() == ".arxml") {
            files.push_back(entry.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// Everything that has a path, as text.
std::string contentOf(model::Dictionary const& dictionary) {
    std::string text;
    for (QOB::ClassObject const& object : model::freeObjects(dictionary.model())) {
        text += model::pathOf(object).empty() ? std::string() : show::objectText(object);
    }
    return text;
}

std::uint64_t countOf(arxml::Report const& report) {
    return std::accumulate(
        report.classes.begin(),
        report.classes.end(),
        std::uint64_t{0},
        [](std::uint64_t sum, arxml::ClassCount const& row) { return sum + row.count; });
}

/// The objects of a model, contained ones too.
std::uint64_t objectsIn(model::Dictionary const& dictionary) {
    std::uint64_t count = 0;
    std::vector<QOB::ClassObject> pending = model::freeObjects(dictionary.model());
    while (!pending.empty()) {
        const QOB::ClassObject object = pending.back();
        pending.pop_back();
        ++count;
        for (QOB::ClassObject const& contained : model::containedIn(object)) {
            pending.push_back(contained);
        }
    }
    return count;
}

TEST(Import, IsOneStepThatUndoTakesBack) {
    auto all = samples();
    ASSERT_FALSE(all.empty());
    std::vector<std::vector<std::string>> runs = {all};
    for (std::string const& file : all) {
        runs.push_back({file});
    }
    for (auto const& files : runs) {
        SCOPED_TRACE(files.front());
        model::Dictionary dictionary;
        const arxml::Report report = arxml::read(files, dictionary.model());
        const std::string before = contentOf(dictionary);
        ASSERT_EQ(objectsIn(dictionary), countOf(report));
        EXPECT_TRUE(dictionary.model().undo());
        EXPECT_EQ(objectsIn(dictionary), 0U);
        EXPECT_TRUE(dictionary.model().getRootObjects().empty());
        EXPECT_FALSE(dictionary.model().undo());
        EXPECT_TRUE(dictionary.model().redo());
        EXPECT_EQ(contentOf(dictionary), before);
    }
}

TEST(Import, KeepsNothingOfAFaultyFileWhenStrict) {
    arxml::Options strict;
    strict.isAcceptable = [](arxml::Report const& report) {
        return !report::FailOn().fails(report);
    };
    model::Dictionary dictionary;
    const arxml::Report faulty = arxml::read(
        {std::string(VELUM_SAMPLES) + "/faulty_references.arxml"}, dictionary.model(), strict);
    EXPECT_FALSE(faulty.isKept());
    EXPECT_TRUE(faulty.classes.empty());
    EXPECT_EQ(objectsIn(dictionary), 0U);
    const arxml::Report good = arxml::read(
        {std::string(VELUM_SAMPLES) + "/integer_types.arxml"}, dictionary.model(), strict);
    EXPECT_TRUE(good.isKept());
    EXPECT_EQ(objectsIn(dictionary), countOf(good));
}

/// Elements that refer to each other across packages, forwards and backwards.
std::vector<std::string> scatteredPackages() {
    const auto props = [](std::string const& content) {
        return "<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>" +
               content +
               "</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>";
    };
    const auto named =
        [](std::string const& tag, std::string const& name, std::string const& rest) {
            return "<" + tag + "><SHORT-NAME>" + name + "</SHORT-NAME>" + rest + "</" + tag + ">";
        };
    return {
        package("B",
                named("SW-BASE-TYPE",
                      "u8",
                      "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
                      "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")),
        package("U",
                named("UNIT",
                      "bar",
                      "<FACTOR-SI-TO-UNIT>1.0E-5</FACTOR-SI-TO-UNIT>"
                      "<PHYSICAL-DIMENSION-REF>/D/p</PHYSICAL-DIMENSION-REF>")),
        package("U", named("UNIT", "pa", "<PHYSICAL-DIMENSION-REF>/D/p</PHYSICAL-DIMENSION-REF>")),
        package("D", named("PHYSICAL-DIMENSION", "p", "<TIME-EXP>-2</TIME-EXP>")),
        package("M",
                named("COMPU-METHOD",
                      "m",
                      "<CATEGORY>LINEAR</CATEGORY><UNIT-REF>/U/bar</UNIT-REF>"
                      "<COMPU-PHYS-TO-INTERNAL><COMPU-SCALES><COMPU-SCALE>"
                      "<COMPU-RATIONAL-COEFFS><COMPU-NUMERATOR><V>0</V><V>4</V>"
                      "</COMPU-NUMERATOR><COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>"
                      "</COMPU-RATIONAL-COEFFS></COMPU-SCALE></COMPU-SCALES>"
                      "</COMPU-PHYS-TO-INTERNAL>")),
        package(
            "T",
            named("IMPLEMENTATION-DATA-TYPE",
                  "byte",
                  "<CATEGORY>VALUE</CATEGORY>" + props("<BASE-TYPE-REF>/B/u8</BASE-TYPE-REF>"))),
        package("T",
                named("IMPLEMENTATION-DATA-TYPE",
                      "alias",
                      "<CATEGORY>TYPE_REFERENCE</CATEGORY>" +
                          props("<IMPLEMENTATION-DATA-TYPE-REF>/T/byte"
                                "</IMPLEMENTATION-DATA-TYPE-REF>"))),
        package("A",
                named("APPLICATION-PRIMITIVE-DATA-TYPE",
                      "pressure",
                      "<CATEGORY>VALUE</CATEGORY>" +
                          props("<COMPU-METHOD-REF>/M/m</COMPU-METHOD-REF>"))),
        package("A",
                named("APPLICATION-RECORD-DATA-TYPE",
                      "record",
                      "<ELEMENTS>" +
                          named("APPLICATION-RECORD-ELEMENT",
                                "field",
                                "<TYPE-TREF>/A/pressure</TYPE-TREF>") +
                          "</ELEMENTS>")),
        package("S",
                named("DATA-TYPE-MAPPING-SET",
                      "set",
                      "<DATA-TYPE-MAPS><DATA-TYPE-MAP><APPLICATION-DATA-TYPE-REF>/A/pressure"
                      "</APPLICATION-DATA-TYPE-REF><IMPLEMENTATION-DATA-TYPE-REF>/T/alias"
                      "</IMPLEMENTATION-DATA-TYPE-REF></DATA-TYPE-MAP></DATA-TYPE-MAPS>")),
        package("B",
                named("SW-BASE-TYPE",
                      "u8",
                      "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
                      "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>")),
    };
}

std::string importScattered(TemporaryFiles const& files,
                            std::vector<std::size_t> const& fileOfPackage) {
    const auto packages = scatteredPackages();
    std::map<std::size_t, std::string> contents;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        contents[fileOfPackage[i]] += packages[i];
    }
    std::vector<std::string> names;
    names.reserve(contents.size());
    for (auto const& [number, content] : contents) {
        names.push_back(files.write(std::to_string(number) + ".arxml", document(content)));
    }
    model::Dictionary dictionary;
    const arxml::Report report = arxml::read(names, dictionary.model());
    RC_ASSERT(!report::FailOn().fails(report));
    return contentOf(dictionary);
}

// Whatever file each element is in, and whichever is read first, the model is the same.
RC_GTEST_PROP(ImportProperty, TheOrderOfFilesChangesNothing, ()) {
    const TemporaryFiles files;
    const std::size_t count = scatteredPackages().size();
    const auto scattered = *rc::gen::container<std::vector<std::size_t>>(
        count, rc::gen::inRange<std::size_t>(0, count));
    RC_ASSERT(importScattered(files, scattered) ==
              importScattered(files, std::vector<std::size_t>(count, 0)));
}

TEST(Import, PutsTogetherWhatIsScatteredOverFiles) {
    const TemporaryFiles files;
    std::vector<std::size_t> each(scatteredPackages().size());
    std::iota(each.rbegin(), each.rend(), std::size_t{0});
    EXPECT_EQ(importScattered(files, each),
              "/A/pressure: unsigned 8-bit fixed point 0 + 0.25 x, unit bar, by m\n"
              "  refers to /T/alias\n"
              "/A/record: structure\n"
              "  field  pressure: unsigned 8-bit fixed point 0 + 0.25 x, unit bar, by m\n"
              "/B/u8: base type of 1 type\n"
              "/D/p: dimension T^-2\n"
              "/M/m: computation method, Linear, unit bar, internal = (4 p) / (1)\n"
              "/T/alias: unsigned 8-bit integer\n"
              "  refers to /T/byte\n"
              "/T/byte: unsigned 8-bit integer\n"
              "/U/bar: unit bar of p, pa = 0 + 99999.99999999999 x\n"
              "/U/pa: unit pa of p\n");
}

TEST(Metaclasses, AreThoseOfTheLibrarysTables) {
    std::size_t count = 0;
    std::size_t properties = 0;
    for (model::Metaclass const& metaclass : model::metaclasses()) {
        unsigned id = 0;
        for (QOB::MetaPropertyDescription const* property : model::propertiesOf(metaclass)) {
            ASSERT_EQ(property->id, ++id) << metaclass.name;
        }
        count += metaclass.isOfTypes ? 1 : 0;
        properties += metaclass.isOfTypes ? id : 0;
    }
    EXPECT_EQ(count, 35U);
    EXPECT_EQ(properties, 109U);
    const auto supers = model::supersOf(*model::findMetaclass("Zorvane.metamodel.types.Integer"));
    ASSERT_EQ(supers.size(), 1U);
    EXPECT_EQ(supers.front()->name, "Real");
}

std::vector<std::string> issuesOf(QOB::Model const& model) {
    std::vector<std::string> found;
    for (check::Issue const& issue : check::checkModel(model)) {
        found.push_back(issue.path + " " + std::string(word(issue.rule->severity)) + " " +
                        std::string(issue.rule->id));
    }
    return found;
}

TEST(CheckRules, TellWhatTheLibraryHoldsWithoutComplaint) {
    const model::Dictionary dictionary;
    QOB::Model const& model = dictionary.model();
    model.setUndoEnabled(false);
    const auto add = [](auto const& object, char const* path) {
        object.setExternalId(QOB::String(path));
        return object;
    };
    const auto range = add(types::Integer::create(model), "/range");
    range.setMinValue(QOB::Real(2.0));
    range.setMaxValue(QOB::Real(1.0));
    const auto point = add(types::Integer::create(model), "/point");
    point.setMinValue(QOB::Real(1.0));
    point.setMaxValue(QOB::Real(1.0));
    const auto closed = add(types::Boolean::create(model), "/sound");
    EXPECT_TRUE(closed.isValid());
    const auto enumeration = add(types::Enumeration::create(model), "/literals");
    for (const int value : {1, 2, 1}) {
        const auto literal = types::EnumerationLiteral::create(
            model, QOB::Integer(value), QOB::Integer(value), enumeration, QOB::String("l"));
        EXPECT_TRUE(literal.isValid());
    }
    add(types::Unit::create(model), "/unit").setConvFactor(QOB::Real(0.0));
    add(types::FixedPoint::create(model), "/slope").setFractionalSlope(QOB::Real(0.0));
    const auto method = add(types::CompuMethod::create(model), "/method");
    method.setDisplayFormat(QOB::String("%d"));
    method.setCategory(types::CompuMethodCategory(types::CompuMethodCategory::RatFunc));
    add(types::Matrix::create(model), "/matrix").getDimensionses().push_back(QOB::Integer(2));
    const auto values = add(types::ApplicationValueSpecification::create(model), "/values");
    values.getDimensionses().push_back(QOB::Integer(2));
    values.getDimensionses().push_back(QOB::Integer(3));
    values.getVs().push_back(QOB::String("1"));
    add(types::LookupTableType::create(model), "/table");

    EXPECT_EQ(issuesOf(model),
              (std::vector<std::string>{"/literals warning shared-value",
                                        "/matrix warning mandatory-property",
                                        "/method warning no-coefficients",
                                        "/point error empty-range",
                                        "/range error empty-range",
                                        "/slope error zero-factor",
                                        "/table warning mandatory-property",
                                        "/table warning mandatory-property",
                                        "/unit error zero-factor",
                                        "/values warning size-mismatch"}));
}

} // namespace

} // namespace velum
