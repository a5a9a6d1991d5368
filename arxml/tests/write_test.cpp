#include "scratch.h"

#include <gtest/gtest.h>

#include <set>
#include <stop_token>
#include <string>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_arxml/write.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;
namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using scratch::contentOf;
using scratch::differences;
using scratch::filesIn;
using scratch::Folder;
using scratch::inText;
using scratch::Model;
using scratch::objectAt;

const std::vector<std::string> dictionary = {VELUM_SAMPLES "/platform.arxml",
                                             VELUM_SAMPLES "/gearbox.arxml"};

template <class Handle>
Handle make(QOB::Model const& model, std::string const& path) {
    auto object = Handle::create(model);
    object.setName(QOB::String(path.substr(path.rfind('/') + 1)));
    object.setExternalId(QOB::String(path));
    return object;
}

types::Integer makeInteger(QOB::Model const& model, std::string const& path) {
    auto type = make<types::Integer>(model, path);
    type.setSwBaseType(make<types::SwBaseType>(model, path + "Base"));
    return type;
}

/// Makes one object, or some, of which something can't be written as it is.
struct FindingsCase {
    char const* name;
    void (*fill)(QOB::Model const& model);
    std::vector<std::string> findings; ///< The beginnings of all lines, in order.
};

const FindingsCase findingsCases[] = {
    {"a name that is no identifier",
     [](QOB::Model const& model) { make<types::Unit>(model, "/P/1st unit"); },
     {"bad-name: /P/1st unit: The name \"1st unit\" is no identifier."}},
    {"one name twice",
     [](QOB::Model const& model) {
         make<types::Unit>(model, "/P/A");
         make<types::CompuMethod>(model, "/P/A");
     },
     {"new-path: /P/A_2: Another object has the path \"/P/A\"."}},
    {"no path",
     [](QOB::Model const& model) { types::Unit::create(model).setName(QOB::String("Bar")); },
     {"new-path: /Model/Bar: "}},
    {"a text that XML can't hold",
     [](QOB::Model const& model) {
         make<types::Unit>(model, "/P/A").setSymbol(QOB::String("\x01"));
         make<types::Unit>(model, "/P/B").setSymbol(QOB::String("\xED\xA0\x80"));
     },
     {"bad-text: /P/A: ", "bad-text: /P/B: "}},
    {"a reference into nowhere",
     [](QOB::Model const& model) {
         const auto type = makeInteger(model, "/P/A");
         const auto part = types::Integer::create(model);
         const auto member = types::StructElement::create(model);
         member.setName(QOB::String("m"));
         member.setStructure(make<types::Structure>(model, "/P/S"));
         member.setInlineType(part);
         type.setReference(part);
     },
     {"dangling: /P/A: The target "}},
    {"a constant that refers to itself",
     [](QOB::Model const& model) {
         std::vector<types::ConstantSpecification> constants;
         for (char const* const path : {"/P/A", "/P/B"}) {
             constants.push_back(make<types::ConstantSpecification>(model, path));
         }
         for (std::size_t i = 0; i < 2; ++i) {
             const auto reference = types::ConstantReference::create(model);
             constants[i].setConstantValue(reference);
             reference.setValue(constants[1 - i]);
         }
     },
     {"circle: /P/A: It refers to itself: /P/A, /P/B, and back."}},
    {"types that refer to each other",
     [](QOB::Model const& model) {
         const auto first = make<types::Integer>(model, "/P/A");
         const auto second = make<types::Integer>(model, "/P/B");
         first.setReference(second);
         second.setReference(first);
     },
     {"circle: /P/A: It refers to itself: /P/A, /P/B, and back."}},
    {"a structure in itself",
     [](QOB::Model const& model) {
         const auto structure = make<types::Structure>(model, "/P/S");
         const auto member = types::StructElement::create(model);
         member.setName(QOB::String("m"));
         member.setStructure(structure);
         member.setType(structure);
     },
     {"circle: /P/S: It refers to itself: /P/S, and back."}},
    {"what every object has and no element",
     [](QOB::Model const& model) {
         const auto unit = make<types::Unit>(model, "/P/A");
         unit.setVisibility(foundation::VisibilityKind::PrivateVisibility);
         const auto comment = foundation::Comment::create(model);
         unit.getOwnedComments().push_back(comment);
         unit.setExternalToolInfo({QOB::String("Owner"), QOB::String("me")});
         unit.getClientDependencies().push_back(foundation::Dependency::create(model));
     },
     {"no-place: : The format has no element for the Dependency",
      "no-place: /P/A: The format has no place for the note \"Owner\".",
      "no-place: /P/A: The format has no place for the visibility.",
      "no-place: /P/A: The format has no place for the comments.",
      "no-place: /P/A: The format has no place for the dependencies."}},
};

} // namespace

TEST(Write, ReportsWhatCannotBeWrittenAsItIs) {
    for (FindingsCase const& each : findingsCases) {
        SCOPED_TRACE(each.name);
        const Folder folder;
        const Model model;
        each.fill(model);
        const std::string findings =
            inText(write(model, folder / "a.arxml", {.isReadBack = false}));
        std::size_t at = 0;
        for (std::string const& line : each.findings) {
            EXPECT_EQ(findings.compare(at, line.size(), line), 0) << findings << "not " << line;
            at = std::min(findings.find('\n', at), findings.size() - 1) + 1;
        }
        EXPECT_EQ(at, findings.size()) << findings;
        const Model again;
        EXPECT_NO_THROW(read({folder / "a.arxml"}, again));
    }
}

/// What the writer itself doesn't know of is found by reading: in one file, in a file for each
/// package, and for the chosen objects only.
TEST(Write, ReportsWhatAReaderDoesNotGet) {
    const Model model;
    const auto lost = makeInteger(model, "/P/Lost");
    lost.setLength(types::DataSize(QOB::Integer(2), types::DataSizeUnitKind::byte));
    const std::vector<QOB::ClassObject> one{lost};
    const std::vector<QOB::ClassObject> other{makeInteger(model, "/Q/Kept")};
    const std::string line = "changed: /P/Lost: A reader gets something else: Integer #1 \"Lost\": "
                             "Length: 2|byte -> 16|bit\n";
    const Folder folder;
    EXPECT_EQ(inText(write(model, folder / "a.arxml")), line);
    EXPECT_EQ(inText(write(model, folder / "a", {.layout = Layout::filePerPackage})), line);
    EXPECT_EQ(inText(write(one, folder / "a.arxml")), line);
    EXPECT_EQ(inText(write(other, folder / "a.arxml")), "");
    EXPECT_EQ(inText(write(model, folder / "a.arxml", {.isReadBack = false})), "");
    WriteReport ofText;
    static_cast<void>(toText(model, ofText));
    EXPECT_EQ(inText(ofText), line);
    EXPECT_EQ(filesIn(folder / ".").size(), 3U) << "the file that was read back is left";
}

TEST(Write, GivesTheSameTextAndFileAndTellsItsNumbers) {
    const Folder folder;
    const Model model;
    read(dictionary, model);
    WriteReport ofText;
    const std::string text = toText(model, ofText);
    const WriteReport ofFile = write(model, folder / "a.arxml");
    EXPECT_EQ(text, contentOf(folder / "a.arxml"));
    EXPECT_EQ(inText(ofText), inText(ofFile));
    EXPECT_TRUE(ofText.files.empty());
    EXPECT_EQ(ofFile.files, std::vector<std::string>{folder / "a.arxml"});
    for (WriteReport const& report : {ofText, ofFile}) {
        EXPECT_EQ(report.bytes, text.size());
        EXPECT_GT(report.objects, 50U);
        EXPECT_FALSE(report.isStopped);
    }
}

TEST(Write, StopsWhereItIsAskedToAndLeavesWhatWasThere) {
    for (Layout const layout : {Layout::oneFile, Layout::filePerPackage}) {
        const Folder folder;
        const Model model;
        read(dictionary, model);
        std::ofstream(folder / "a.arxml") << "before";
        std::stop_source stop;
        std::vector<std::uint64_t> told;
        WriteOptions options{.layout = layout, .onProgress = [&](std::uint64_t objects) {
                                 told.push_back(objects);
                                 stop.request_stop();
                             }};
        options.stop = stop.get_token();
        const bool isFile = layout == Layout::oneFile;
        const WriteReport report = write(model, folder / (isFile ? "a.arxml" : "."), options);
        EXPECT_TRUE(report.isStopped);
        EXPECT_TRUE(report.files.empty());
        EXPECT_EQ(told, std::vector<std::uint64_t>{0});
        EXPECT_EQ(contentOf(folder / "a.arxml"), "before");
        EXPECT_EQ(filesIn(folder / ".").size(), 1U);
    }
}

/// References to what is in no file of their own go through reference bases; the files together are
/// the model again.
TEST(Write, NamesTargetsOutsideOfAFileByReferenceBases) {
    const Folder folder;
    const Model model;
    read(dictionary, model);
    std::vector<QOB::ClassObject> units;
    std::vector<QOB::ClassObject> others;
    for (QOB::ClassObject const object : QOB::Model(model).getRootObjects()) {
        (types::Unit(object).isValid() ? units : others).push_back(object);
    }
    write(units, folder / "units.arxml");
    write(others, folder / "others.arxml");
    const std::string text = contentOf(folder / "others.arxml");
    EXPECT_NE(text.find("<PACKAGE-REF DEST=\"AR-PACKAGE\">/Platform/Units</PACKAGE-REF>"),
              std::string::npos);
    EXPECT_NE(text.find("<UNIT-REF DEST=\"UNIT\" BASE=\"Platform_Units\">Percent</UNIT-REF>"),
              std::string::npos);
    const Model together;
    read({folder / "units.arxml", folder / "others.arxml"}, together);
    EXPECT_EQ(differences(model, together), "");

    const Model alone; // what the references ask for is known, though it isn't there
    read({folder / "others.arxml"}, alone);
    write(alone, folder / "again.arxml");
    const Model reread;
    read({folder / "again.arxml"}, reread);
    EXPECT_EQ(differences(alone, reread), "");
}

/// Two packages whose files would have one name.
TEST(Write, GivesEachPackageAFileOfItsOwn) {
    const Folder folder;
    const Model model;
    make<types::Unit>(model, "/A.B/U");
    make<types::Unit>(model, "/A/B/V");
    const WriteReport report = write(model, folder / "parts", {.layout = Layout::filePerPackage});
    EXPECT_EQ(std::set<std::string>(report.files.begin(), report.files.end()).size(), 2U);
    const Model again;
    read(report.files, again);
    EXPECT_EQ(differences(model, again), "");
}

} // namespace velum::arxml
