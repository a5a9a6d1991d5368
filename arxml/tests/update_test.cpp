#include "scratch.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/notation/tool_notes.h>
#include <velum_arxml/read.h>
#include <velum_arxml/update.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;
namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using scratch::contentOf;
using scratch::Folder;
using scratch::Model;
using scratch::objectAt;

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// The lines that are only in the first text ("-") and only in the second one ("+"), in order and
/// without the blanks before them.
std::string lineDiff(std::string const& before, std::string const& after) {
    const std::vector<std::string> a = linesOf(before);
    const std::vector<std::string> b = linesOf(after);
    std::size_t head = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head]) {
        ++head;
    }
    std::vector<std::vector<unsigned>> common(a.size() - head + 1,
                                              std::vector<unsigned>(b.size() - head + 1));
    for (std::size_t i = a.size(); i-- > head;) {
        for (std::size_t j = b.size(); j-- > head;) {
            auto& cell = common[i - head][j - head];
            cell = a[i] == b[j]
                       ? common[i - head + 1][j - head + 1] + 1
                       : std::max(common[i - head + 1][j - head], common[i - head][j - head + 1]);
        }
    }
    std::string diff;
    const auto add = [&diff](char sign, std::string const& line) {
        diff += sign + line.substr(std::min(line.find_first_not_of(' '), line.size())) + '\n';
    };
    std::size_t i = head;
    std::size_t j = head;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (i < a.size() && (j == b.size() || common[i - head + 1][j - head] >=
                                                         common[i - head][j - head + 1])) {
            add('-', a[i++]);
        } else {
            add('+', b[j++]);
        }
    }
    return diff;
}

struct Case {
    char const* name;
    std::function<void(QOB::Model const&)> change;
    std::string diff;
    std::string refusal;
};

void addLiteral(QOB::Model const& model, std::string const& path) {
    const types::Enumeration enumeration(objectAt(model, path));
    const auto literal = types::EnumerationLiteral::create(model);
    literal.setName(QOB::String("Park"));
    literal.setValue(QOB::Integer(9));
    literal.setPvalue(QOB::Integer(9));
    literal.setPisUserDefined(QOB::Boolean(true));
    literal.setEnumeration(enumeration);
}

types::StructElement
memberOf(QOB::Model const& model, std::string const& path, std::string const& name) {
    for (types::StructElement member : types::Structure(objectAt(model, path)).getElementses()) {
        if (member.getName().view() == name) {
            return member;
        }
    }
    return {};
}

std::vector<Case> const& cases() {
    static const std::vector<Case> list = {
        {"nothing", [](QOB::Model const&) {}, "", ""},
        {"a limit",
         [](QOB::Model const& model) {
             types::Real(objectAt(model, "/Gearbox/ApplicationTypes/OilTemperature"))
                 .setMaxValue(QOB::Real(180.5));
         },
         "-<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">215</UPPER-LIMIT>\n"
         "+<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">180.5</UPPER-LIMIT>\n",
         ""},
        {"the openness of a limit",
         [](QOB::Model const& model) {
             types::Real(objectAt(model, "/Gearbox/ApplicationTypes/OilTemperature"))
                 .setIsMinOpen(QOB::Boolean(true));
         },
         "-<LOWER-LIMIT INTERVAL-TYPE=\"CLOSED\">-40</LOWER-LIMIT>\n"
         "+<LOWER-LIMIT INTERVAL-TYPE=\"OPEN\">-40</LOWER-LIMIT>\n",
         ""},
        {"a unit",
         [](QOB::Model const& model) {
             types::CompuMethod(objectAt(model, "/Gearbox/CompuMethods/Celsius"))
                 .setUnit(types::Unit(objectAt(model, "/Platform/Units/Percent")));
         },
         "-<UNIT-REF DEST=\"UNIT\">/Platform/Units/DegreeCelsius</UNIT-REF>\n"
         "+<UNIT-REF DEST=\"UNIT\">/Platform/Units/Percent</UNIT-REF>\n",
         ""},
        {"a unit that is gone",
         [](QOB::Model const& model) {
             types::CompuMethod(objectAt(model, "/Gearbox/CompuMethods/Celsius")).removeUnit();
         },
         "-<UNIT-REF DEST=\"UNIT\">/Platform/Units/DegreeCelsius</UNIT-REF>\n",
         ""},
        {"a new literal",
         [](QOB::Model const& model) {
             addLiteral(model, "/Gearbox/ApplicationTypes/Gear");
             addLiteral(model, "/Gearbox/ImplementationTypes/GearCode");
         },
         "+<LOWER-LIMIT INTERVAL-TYPE=\"CLOSED\">9</LOWER-LIMIT>\n"
         "+<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">9</UPPER-LIMIT>\n"
         "+<COMPU-CONST>\n"
         "+<VT>Park</VT>\n"
         "+</COMPU-CONST>\n"
         "+</COMPU-SCALE>\n"
         "+<COMPU-SCALE>\n",
         ""},
        {"a renamed type",
         [](QOB::Model const& model) {
             foundation::NamedElement(objectAt(model, "/Gearbox/ImplementationTypes/Frame"))
                 .setName(QOB::String("Message"));
         },
         "-<SHORT-NAME>Frame</SHORT-NAME>\n"
         "+<SHORT-NAME>Message</SHORT-NAME>\n"
         "-<IMPLEMENTATION-DATA-TYPE-REF DEST=\"IMPLEMENTATION-DATA-TYPE\">"
         "/Gearbox/ImplementationTypes/Frame</IMPLEMENTATION-DATA-TYPE-REF>\n"
         "+<IMPLEMENTATION-DATA-TYPE-REF DEST=\"IMPLEMENTATION-DATA-TYPE\">"
         "/Gearbox/ImplementationTypes/Message</IMPLEMENTATION-DATA-TYPE-REF>\n"
         "-<IMPLEMENTATION-DATA-TYPE-REF DEST=\"IMPLEMENTATION-DATA-TYPE\">"
         "/Gearbox/ImplementationTypes/Frame</IMPLEMENTATION-DATA-TYPE-REF>\n"
         "+<IMPLEMENTATION-DATA-TYPE-REF DEST=\"IMPLEMENTATION-DATA-TYPE\">"
         "/Gearbox/ImplementationTypes/Message</IMPLEMENTATION-DATA-TYPE-REF>\n",
         ""},
        {"a new unit",
         [](QOB::Model const& model) {
             const auto format = types::CompuMethod::create(model);
             format.setName(QOB::String("Plain"));
             format.setExternalId(QOB::String("/Gearbox/CompuMethods/Plain"));
             format.setCategory(types::CompuMethodCategory::Identical);
         },
         "+<COMPU-METHOD>\n+<SHORT-NAME>Plain</SHORT-NAME>\n+<CATEGORY>IDENTICAL</CATEGORY>\n"
         "+</COMPU-METHOD>\n",
         ""},
        {"a removed member",
         [](QOB::Model const& model) {
             for (char const* const path : {"/Gearbox/ImplementationTypes/Frame",
                                            "/Gearbox/ImplementationTypes/FrameAlias"}) {
                 memberOf(model, path, "raw").destroy();
             }
         },
         "-<SHORT-NAME>raw</SHORT-NAME>\n"
         "-<CATEGORY>VALUE</CATEGORY>\n"
         "-<SW-DATA-DEF-PROPS>\n"
         "-<SW-DATA-DEF-PROPS-VARIANTS>\n"
         "-<SW-DATA-DEF-PROPS-CONDITIONAL>\n"
         "-<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/Platform/BaseTypes/u16</BASE-TYPE-REF>\n"
         "-</SW-DATA-DEF-PROPS-CONDITIONAL>\n"
         "-</SW-DATA-DEF-PROPS-VARIANTS>\n"
         "-</SW-DATA-DEF-PROPS>\n"
         "-</IMPLEMENTATION-DATA-TYPE-ELEMENT>\n"
         "-<IMPLEMENTATION-DATA-TYPE-ELEMENT>\n",
         ""},
        {"a member that another name of the structure still has",
         [](QOB::Model const& model) {
             memberOf(model, "/Gearbox/ImplementationTypes/Frame", "raw").destroy();
         },
         "",
         "can't be expressed in this file"},
        {"a new unit of a method without one",
         [](QOB::Model const& model) {
             types::CompuMethod(objectAt(model, "/Gearbox/CompuMethods/Gears"))
                 .setUnit(types::Unit(objectAt(model, "/Platform/Units/Percent")));
         },
         "+<UNIT-REF DEST=\"UNIT\">/Platform/Units/Percent</UNIT-REF>\n",
         ""},
        {"a method that is gone",
         [](QOB::Model const& model) { objectAt(model, "/Gearbox/CompuMethods/Flat").destroy(); },
         "-<SHORT-NAME>Flat</SHORT-NAME>\n"
         "-<CATEGORY>LINEAR</CATEGORY>\n"
         "-<UNIT-REF DEST=\"UNIT\">/Platform/Units/Percent</UNIT-REF>\n"
         "-<COMPU-INTERNAL-TO-PHYS>\n"
         "-<COMPU-SCALES>\n"
         "-<COMPU-SCALE>\n"
         "-<COMPU-RATIONAL-COEFFS>\n"
         "-<COMPU-NUMERATOR>\n"
         "-<V>5</V>\n"
         "-<V>0</V>\n"
         "-</COMPU-NUMERATOR>\n"
         "-<COMPU-DENOMINATOR>\n"
         "-<V>1</V>\n"
         "-</COMPU-DENOMINATOR>\n"
         "-</COMPU-RATIONAL-COEFFS>\n"
         "-</COMPU-SCALE>\n"
         "-</COMPU-SCALES>\n"
         "-</COMPU-INTERNAL-TO-PHYS>\n"
         "-</COMPU-METHOD>\n"
         "-<COMPU-METHOD>\n",
         ""},
        {"an object of another file",
         [](QOB::Model const& model) {
             types::Unit(objectAt(model, "/Platform/Units/Percent")).setSymbol(QOB::String("pc"));
         },
         "",
         "The changed /Platform/Units/Percent is not in this file."},
        {"the name of an object of another file",
         [](QOB::Model const& model) {
             types::Unit(objectAt(model, "/Platform/Units/Hertz")).setName(QOB::String("Cycles"));
         },
         "",
         "The renamed /Platform/Units/Hertz is not in this file."},
        {"a member that another name of the structure has too",
         [](QOB::Model const& model) {
             memberOf(model, "/Gearbox/ImplementationTypes/Frame", "raw")
                 .setName(QOB::String("counted"));
         },
         "",
         "The renaming of /Gearbox/ImplementationTypes/Frame/raw can't be expressed in this file: "
         "it would change /Gearbox/ImplementationTypes/FrameAlias too."},
        {"what files have no place for",
         [](QOB::Model const& model) {
             foundation::NamedElement(objectAt(model, "/Gearbox/CompuMethods/Celsius"))
                 .setVisibility(foundation::VisibilityKind::PrivateVisibility);
         },
         "",
         "can't be expressed in this file"},
        {"a package that isn't there",
         [](QOB::Model const& model) {
             const auto unit = types::Unit::create(model);
             unit.setName(QOB::String("Bar"));
             unit.setExternalId(QOB::String("/New/Bar"));
         },
         "",
         "The file has no package for the new /New/Bar."},
    };
    return list;
}

} // namespace

TEST(Update, ChangesTheLinesThatAChangeNeedsAndNoOthers) {
    const std::string samples = VELUM_SAMPLES;
    const std::string original = contentOf(samples + "/gearbox.arxml");
    for (Case const& each : cases()) {
        SCOPED_TRACE(each.name);
        const Folder folder;
        const std::string file = folder / "gearbox.arxml";
        fs::copy_file(samples + "/gearbox.arxml", file);
        const Model model;
        read({file, samples + "/platform.arxml"}, model);
        each.change(model);
        const UpdateReport report = update(file, model, {samples + "/platform.arxml"});
        EXPECT_EQ(report.isRefused(), !each.refusal.empty()) << report.refusal;
        EXPECT_NE(report.refusal.find(each.refusal), std::string::npos) << report.refusal;
        EXPECT_EQ(report.edits == 0, each.diff.empty());
        EXPECT_EQ(lineDiff(original, contentOf(file)), each.diff);
        EXPECT_EQ(scratch::filesIn(folder / ".").size(), 1U) << "the draft is left";
    }
}

namespace {

std::string documentOf(std::string const& elements) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\"><AR-PACKAGES><AR-PACKAGE>\n"
           "<SHORT-NAME>P</SHORT-NAME><ELEMENTS>\n" +
           elements + "</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>\n";
}

/// Of a type, in one line.
std::string properties(std::string const& references) {
    return "<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>" +
           references +
           "</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>\n";
}

char const* const limits = R"(<DATA-CONSTR><SHORT-NAME>Limits</SHORT-NAME>
<DATA-CONSTR-RULES><DATA-CONSTR-RULE>
<INTERNAL-CONSTRS>
<LOWER-LIMIT INTERVAL-TYPE="CLOSED">0</LOWER-LIMIT>
<UPPER-LIMIT INTERVAL-TYPE="CLOSED">1</UPPER-LIMIT><!-- on -->
</INTERNAL-CONSTRS>
</DATA-CONSTR-RULE></DATA-CONSTR-RULES></DATA-CONSTR>
)";

char const* const wholeNumber =
    "<SW-BASE-TYPE><SHORT-NAME>u8</SHORT-NAME><BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>"
    "<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING></SW-BASE-TYPE>\n";

std::string replaced(std::string text, std::string const& old, std::string const& now) {
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + now.size())) {
        text.replace(at, old.size(), now);
    }
    return text;
}

struct WrittenOtherwise {
    char const* name;
    std::string elements;
    std::function<void(QOB::Model const&)> change;
    std::string diff;
};

std::vector<WrittenOtherwise> writtenOtherwise() {
    return {
        {"limits of a truth, which a reader takes for granted",
         "<SW-BASE-TYPE><SHORT-NAME>bool</SHORT-NAME><BASE-TYPE-ENCODING>BOOLEAN"
         "</BASE-TYPE-ENCODING></SW-BASE-TYPE>\n" +
             std::string(limits) +
             "<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>Flag</SHORT-NAME><CATEGORY>VALUE</CATEGORY>\n" +
             properties("<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/P/bool</BASE-TYPE-REF>"
                        "<DATA-CONSTR-REF DEST=\"DATA-CONSTR\">/P/Limits</DATA-CONSTR-REF>") +
             "</IMPLEMENTATION-DATA-TYPE>\n",
         [](QOB::Model const& model) {
             types::Real(objectAt(model, "/P/Flag")).setMaxValue(QOB::Real(0));
         },
         "-<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">1</UPPER-LIMIT><!-- on -->\n"
         "+<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">0</UPPER-LIMIT><!-- on -->\n"},
        {"a factor that is left out",
         "<UNIT>\n<SHORT-NAME>Half</SHORT-NAME>\n</UNIT>\n",
         [](QOB::Model const& model) {
             types::Unit(objectAt(model, "/P/Half")).setConvFactor(QOB::Real(2));
         },
         "+<FACTOR-SI-TO-UNIT>0.5</FACTOR-SI-TO-UNIT>\n"},
        {"raised parts of a symbol",
         "<UNIT><SHORT-NAME>A</SHORT-NAME>\n"
         "<DISPLAY-NAME>m/s<SUP>2</SUP></DISPLAY-NAME>\n</UNIT>\n"
         "<UNIT><SHORT-NAME>B</SHORT-NAME>\n<DISPLAY-NAME>m</DISPLAY-NAME>\n</UNIT>\n",
         [](QOB::Model const& model) {
             const types::Unit both(objectAt(model, "/P/A"));
             both.setSymbol(QOB::String("k<m/s"));
             tool_note::set(both, tool_note::displayName, "k<m/s²");
             types::Unit(objectAt(model, "/P/B")).getSuperscripts().push_back(QOB::String("3"));
             tool_note::set(objectAt(model, "/P/B"), tool_note::displayName, "m³");
         },
         "-<DISPLAY-NAME>m/s<SUP>2</SUP></DISPLAY-NAME>\n"
         "+<DISPLAY-NAME>k&lt;m/s<SUP>2</SUP></DISPLAY-NAME>\n"
         "-<DISPLAY-NAME>m</DISPLAY-NAME>\n"
         "+<DISPLAY-NAME>m<SUP>3</SUP></DISPLAY-NAME>\n"},
        {"physical limits that come from internal ones",
         std::string(limits) +
             "<COMPU-METHOD><SHORT-NAME>Tens</SHORT-NAME><CATEGORY>LINEAR</CATEGORY>"
             "<COMPU-INTERNAL-TO-PHYS><COMPU-SCALES><COMPU-SCALE><COMPU-RATIONAL-COEFFS>"
             "<COMPU-NUMERATOR><V>10</V><V>10</V></COMPU-NUMERATOR>"
             "<COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR></COMPU-RATIONAL-COEFFS>"
             "</COMPU-SCALE></COMPU-SCALES></COMPU-INTERNAL-TO-PHYS></COMPU-METHOD>\n"
             "<APPLICATION-PRIMITIVE-DATA-TYPE><SHORT-NAME>T</SHORT-NAME>"
             "<CATEGORY>VALUE</CATEGORY>\n" +
             properties("<COMPU-METHOD-REF DEST=\"COMPU-METHOD\">/P/Tens</COMPU-METHOD-REF>"
                        "<DATA-CONSTR-REF DEST=\"DATA-CONSTR\">/P/Limits</DATA-CONSTR-REF>") +
             "</APPLICATION-PRIMITIVE-DATA-TYPE>\n",
         [](QOB::Model const& model) {
             types::Real(objectAt(model, "/P/T")).setMaxValue(QOB::Real(19));
         },
         "+<PHYS-CONSTRS>\n"
         "+<LOWER-LIMIT INTERVAL-TYPE=\"CLOSED\">10</LOWER-LIMIT>\n"
         "+<UPPER-LIMIT INTERVAL-TYPE=\"CLOSED\">19</UPPER-LIMIT>\n"
         "+</PHYS-CONSTRS>\n"},
        {"an array whose element has a name of its own",
         wholeNumber +
             std::string("<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>Row</SHORT-NAME>"
                         "<CATEGORY>ARRAY</CATEGORY><SUB-ELEMENTS>"
                         "<IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>Own</SHORT-NAME>"
                         "<CATEGORY>VALUE</CATEGORY>\n<ARRAY-SIZE>5</ARRAY-SIZE>\n") +
             properties("<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/P/u8</BASE-TYPE-REF>") +
             "</IMPLEMENTATION-DATA-TYPE-ELEMENT></SUB-ELEMENTS></IMPLEMENTATION-DATA-TYPE>\n",
         [](QOB::Model const& model) {
             const auto sizes = types::Matrix(objectAt(model, "/P/Row")).getDimensionses();
             sizes.clear();
             sizes.push_back(QOB::Integer(6));
         },
         "-<ARRAY-SIZE>5</ARRAY-SIZE>\n+<ARRAY-SIZE>6</ARRAY-SIZE>\n"},
        {"a member to which an element refers that isn't held",
         wholeNumber +
             std::string("<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>S</SHORT-NAME>"
                         "<CATEGORY>STRUCTURE</CATEGORY><SUB-ELEMENTS>"
                         "<IMPLEMENTATION-DATA-TYPE-ELEMENT>\n<SHORT-NAME>raw</SHORT-NAME>\n"
                         "<CATEGORY>VALUE</CATEGORY>\n") +
             properties("<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/P/u8</BASE-TYPE-REF>") +
             "</IMPLEMENTATION-DATA-TYPE-ELEMENT></SUB-ELEMENTS></IMPLEMENTATION-DATA-TYPE>\n"
             "<ALIAS-NAME-SET><SHORT-NAME>A</SHORT-NAME>\n"
             "<TARGET-REF DEST=\"IMPLEMENTATION-DATA-TYPE-ELEMENT\">/P/S/raw</TARGET-REF>\n"
             "</ALIAS-NAME-SET>\n",
         [](QOB::Model const& model) {
             memberOf(model, "/P/S", "raw").setName(QOB::String("counted"));
             foundation::NamedElement(objectAt(model, "/P/S")).setName(QOB::String("R"));
         },
         "-<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>S</SHORT-NAME><CATEGORY>STRUCTURE</CATEGORY>"
         "<SUB-ELEMENTS><IMPLEMENTATION-DATA-TYPE-ELEMENT>\n"
         "-<SHORT-NAME>raw</SHORT-NAME>\n"
         "+<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>R</SHORT-NAME><CATEGORY>STRUCTURE</CATEGORY>"
         "<SUB-ELEMENTS><IMPLEMENTATION-DATA-TYPE-ELEMENT>\n"
         "+<SHORT-NAME>counted</SHORT-NAME>\n"
         "-<TARGET-REF DEST=\"IMPLEMENTATION-DATA-TYPE-ELEMENT\">/P/S/raw</TARGET-REF>\n"
         "+<TARGET-REF DEST=\"IMPLEMENTATION-DATA-TYPE-ELEMENT\">/P/R/counted</TARGET-REF>\n"},
        {"a constant that another one refers to",
         "<CONSTANT-SPECIFICATION><SHORT-NAME>One</SHORT-NAME><VALUE-SPEC>\n"
         "<NUMERICAL-VALUE-SPECIFICATION><VALUE>1</VALUE></NUMERICAL-VALUE-SPECIFICATION>\n"
         "</VALUE-SPEC></CONSTANT-SPECIFICATION>\n"
         "<CONSTANT-SPECIFICATION><SHORT-NAME>Same</SHORT-NAME><VALUE-SPEC>\n"
         "<CONSTANT-REFERENCE>\n"
         "<CONSTANT-REF DEST=\"CONSTANT-SPECIFICATION\">/P/One</CONSTANT-REF>\n"
         "</CONSTANT-REFERENCE>\n</VALUE-SPEC></CONSTANT-SPECIFICATION>\n",
         [](QOB::Model const& model) { objectAt(model, "/P/One").destroy(); },
         "-<CONSTANT-SPECIFICATION><SHORT-NAME>One</SHORT-NAME><VALUE-SPEC>\n"
         "-<NUMERICAL-VALUE-SPECIFICATION><VALUE>1</VALUE></NUMERICAL-VALUE-SPECIFICATION>\n"
         "-</VALUE-SPEC></CONSTANT-SPECIFICATION>\n"
         "-<CONSTANT-REF DEST=\"CONSTANT-SPECIFICATION\">/P/One</CONSTANT-REF>\n"},
    };
}

} // namespace

namespace {

struct Refused {
    char const* name;
    std::string elements;
    std::function<void(QOB::Model const&)> change;
    char const* refusal;
};

/// An implementation type of eight bits with the limits.
std::string limited(std::string const& name) {
    return "<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>" + name +
           "</SHORT-NAME><CATEGORY>VALUE</CATEGORY>\n" +
           properties("<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/P/u8</BASE-TYPE-REF>"
                      "<DATA-CONSTR-REF DEST=\"DATA-CONSTR\">/P/Limits</DATA-CONSTR-REF>") +
           "</IMPLEMENTATION-DATA-TYPE>\n";
}

std::vector<Refused> refused() {
    return {
        {"limits that two types share",
         wholeNumber + std::string(limits) + limited("A") + limited("B"),
         [](QOB::Model const& model) {
             types::Real(objectAt(model, "/P/A")).setMaxValue(QOB::Real(3));
         },
         "\"A\": maxValue: 1 -> 3 can't be expressed in this file: it would change /P/B too."},
        {"a unit that isn't the base of its dimension any more",
         "<PHYSICAL-DIMENSION><SHORT-NAME>Speed</SHORT-NAME><LENGTH-EXP>1</LENGTH-EXP>"
         "<TIME-EXP>-1</TIME-EXP></PHYSICAL-DIMENSION>\n"
         "<UNIT><SHORT-NAME>M</SHORT-NAME><FACTOR-SI-TO-UNIT>1</FACTOR-SI-TO-UNIT>"
         "<PHYSICAL-DIMENSION-REF DEST=\"PHYSICAL-DIMENSION\">/P/Speed</PHYSICAL-DIMENSION-REF>"
         "</UNIT>\n",
         [](QOB::Model const& model) {
             types::Unit(objectAt(model, "/P/M")).setConvFactor(QOB::Real(2));
         },
         "it would change /P/Speed too."},
        {"the type of an array's elements without the array",
         wholeNumber +
             std::string("<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>Row</SHORT-NAME>"
                         "<CATEGORY>ARRAY</CATEGORY><SUB-ELEMENTS>"
                         "<IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>Cell</SHORT-NAME>"
                         "<CATEGORY>VALUE</CATEGORY><ARRAY-SIZE>5</ARRAY-SIZE>") +
             properties("<BASE-TYPE-REF DEST=\"SW-BASE-TYPE\">/P/u8</BASE-TYPE-REF>") +
             "</IMPLEMENTATION-DATA-TYPE-ELEMENT></SUB-ELEMENTS></IMPLEMENTATION-DATA-TYPE>\n",
         [](QOB::Model const& model) { objectAt(model, "/P/Row").destroy(); },
         "The package of the new /P/Row/Cell has no elements in this file."},
    };
}

} // namespace

TEST(Update, TellsWhatWouldChangeToo) {
    for (Refused const& each : refused()) {
        SCOPED_TRACE(each.name);
        const Folder folder;
        const std::string file = folder / "a.arxml";
        const std::string original = documentOf(each.elements);
        std::ofstream(file) << original;
        const Model model;
        read({file}, model);
        each.change(model);
        const std::string refusal = update(file, model).refusal;
        EXPECT_NE(refusal.find(each.refusal), std::string::npos) << refusal;
        EXPECT_EQ(contentOf(file), original);
    }
}

/// A file may say in other words what a writer says of the same objects, and end its lines as other
/// systems do.
TEST(Update, ChangesWhatAWriterWouldHaveWrittenOtherwise) {
    for (WrittenOtherwise const& each : writtenOtherwise()) {
        for (std::string const lineEnd : {"\n", "\r\n"}) {
            SCOPED_TRACE(each.name + std::string(lineEnd == "\n" ? "" : ", with line ends of two"));
            const Folder folder;
            const std::string file = folder / "a.arxml";
            const std::string original = replaced(documentOf(each.elements), "\n", lineEnd);
            std::ofstream(file, std::ios::binary) << original;
            const Model model;
            read({file}, model);
            each.change(model);
            EXPECT_EQ(update(file, model).refusal, "");
            const std::string after = contentOf(file);
            EXPECT_EQ(lineDiff(original, after), replaced(each.diff, "\n", lineEnd));
        }
    }
}

} // namespace velum::arxml
