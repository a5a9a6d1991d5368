#include "ordered.h"
#include "scratch.h"
#include "store/tests/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <qob/qob/compare.h>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_arxml/write.h>

namespace velum::arxml {

namespace {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using scratch::contentOf;
using scratch::differences;
using scratch::Folder;
using scratch::Model;

/// Fills a model with whatever its classes allow: also with what no file has a place for.
class RandomModel {
public:
    RandomModel(QOB::Model model, unsigned seed) : model_(std::move(model)), random_(seed) {}

    void fill() {
        repeat<types::SwBaseType>(4, bases_, [](auto const&) {});
        repeat<types::Dimension>(2, dimensions_, [](auto const&) {});
        repeat<types::Unit>(5, units_, [this](auto const& unit) { fillUnit(unit); });
        repeat<types::CompuMethod>(6, methods_, [this](auto const& method) { fillMethod(method); });
        repeat<types::DataConstr>(
            4, constraints_, [this](auto const& constraint) { constraint.setUnit(any(units_)); });
        addPrimitives<types::Integer>();
        addPrimitives<types::FixedPoint>();
        addPrimitives<types::FloatingPoint>();
        addPrimitives<types::Boolean>();
        addPrimitives<types::Enumeration>();
        std::vector<types::Matrix> matrices;
        repeat<types::Matrix>(5, matrices, [this](auto const& matrix) {
            matrix.setIsApplication(QOB::Boolean(coin()));
            for (int i = below(4); i > 0; --i) {
                matrix.getDimensionses().push_back(QOB::Integer(below(4)));
            }
            if (coin()) {
                matrix.getSymbolicDimensionses().push_back(QOB::String(coin() ? "N" : "2 * N"));
            }
            matrix.setBaseType(any(valueTypes_));
            valueTypes_.push_back(matrix);
        });
        std::vector<types::Structure> structures;
        repeat<types::Structure>(
            4, structures, [this](auto const& structure) { fillStructure(structure); });
        std::vector<types::ConstantSpecification> constants;
        repeat<types::ConstantSpecification>(5, constants, [&](auto const& constant) {
            constant.setConstantValue(value(constants, 3));
        });
        for (foundation::ValueType const& type : valueTypes_) {
            if (below(4) == 0) {
                type.setInvalidValue(value(constants, 2));
            }
        }
    }

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    bool coin() { return below(2) == 0; }

    template <class T>
    T any(std::vector<T> const& list) {
        return list.empty() || below(5) == 0
                   ? T()
                   : list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

    double number() {
        static constexpr double numbers[] = {0.0,
                                             1.0,
                                             -0.0,
                                             1.8,
                                             -459.67,
                                             1e-300,
                                             1.7976931348623157e308,
                                             9007199254740993.0,
                                             18446744073709551616.0,
                                             0.1,
                                             std::numeric_limits<double>::infinity(),
                                             -3.0};
        return below(3) == 0 ? static_cast<double>(random_()) / 7.0
                             : numbers[below(static_cast<int>(std::size(numbers)))];
    }

    QOB::String text() {
        static char const* const texts[] = {"plain",
                                            "a & b < c > \"d\" 'e'",
                                            "]]>",
                                            "\x01 control",
                                            "lone \xED\xA0\x80 surrogate",
                                            "cut \xE2\x82",
                                            "Gr\xC3\xB6\xC3\x9F\x65 \xF0\x9F\x9A\x97",
                                            "line\nbreak\tand\rreturn",
                                            " blanks ",
                                            ""};
        return texts[below(static_cast<int>(std::size(texts)))];
    }

    template <class Handle>
    Handle make() {
        auto object = Handle::create(model_);
        static char const* const names[] = {
            "A", "B", "Name", "with blank", "sl/ash", "", "1st", "__"};
        if (below(8) == 0) {
            object.setName(text());
        } else {
            object.setName(QOB::String(std::string(names[below(4) == 0 ? below(8) : below(3)]) +
                                       (coin() ? std::to_string(below(50)) : std::string())));
        }
        if (coin()) {
            object.setExternalId(QOB::String("/P" + std::to_string(below(3)) + "/Q/" +
                                             std::string(object.getName())));
        }
        return object;
    }

    template <class Handle, class Fill>
    void repeat(int times, std::vector<Handle>& list, Fill const& fill) {
        for (int i = 0; i < times; ++i) {
            const auto object = make<Handle>();
            fill(object);
            list.push_back(object);
        }
    }

    void fillUnit(types::Unit const& unit) {
        unit.setSymbol(text());
        unit.setConvFactor(QOB::Real(number()));
        unit.setConvOffset(QOB::Real(number()));
        unit.setDimension(any(dimensions_));
        if (coin()) {
            unit.getSuperscripts().push_back(QOB::String("2"));
        }
    }

    void fillMethod(types::CompuMethod const& method) {
        static const types::CompuMethodCategory categories[] = {
            types::CompuMethodCategory::Identical,
            types::CompuMethodCategory::Linear,
            types::CompuMethodCategory::RatFunc,
            types::CompuMethodCategory::TextTable,
            types::CompuMethodCategory::LinearAndTextTable};
        method.setCategory(categories[below(5)]);
        method.setUnit(any(units_));
        method.setDisplayFormat(text());
        for (int i = below(4); i > 0; --i) {
            method.getCalToInternalCompuNumerators().push_back(QOB::Real(number()));
        }
        for (int i = below(3); i > 0; --i) {
            method.getCalToInternalCompuDenominators().push_back(QOB::Real(number()));
        }
    }

    template <class Handle>
    void addPrimitives() {
        std::vector<Handle> list;
        repeat<Handle>(4, list, [this](auto const& type) {
            type.setIsApplication(QOB::Boolean(coin()));
            type.setCompuMethod(any(methods_));
            type.setUnit(any(units_));
            type.setDataConstr(any(constraints_));
            type.setSwBaseType(any(bases_));
            type.setReference(any(primitives_));
            if (coin()) {
                type.setMinValue(QOB::Real(number()));
                type.setIsMaxOpen(QOB::Boolean(coin()));
            }
            // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a copy for one type
            if (const types::Enumeration enumeration(type); enumeration.isValid()) {
                for (int i = below(3); i > 0; --i) {
                    const auto literal = make<types::EnumerationLiteral>();
                    literal.setPvalue(QOB::Integer(below(5)));
                    literal.setValue(QOB::Integer(below(5)));
                    literal.setEnumeration(enumeration);
                }
            }
            primitives_.push_back(types::PrimitiveType(type));
            valueTypes_.push_back(foundation::ValueType(type));
        });
    }

    void fillStructure(types::Structure const& structure) {
        structure.setIsApplication(QOB::Boolean(coin()));
        for (int i = below(4); i > 0; --i) {
            const auto member = make<types::StructElement>();
            member.setStructure(structure);
            if (coin()) {
                member.setType(any(valueTypes_));
            } else if (coin()) {
                const auto type = make<types::Integer>();
                type.setSwBaseType(any(bases_));
                member.setInlineType(type);
            }
        }
        valueTypes_.emplace_back(structure);
    }

    foundation::ValueSpecification value(std::vector<types::ConstantSpecification> const& constants,
                                         int depth) {
        switch (below(depth > 0 ? 6 : 4)) {
        case 0: {
            const auto literal = make<types::LiteralReal>();
            literal.setValue(QOB::Real(number()));
            return literal;
        }
        case 1: {
            const auto reference = make<types::EnumerationLiteralReference>();
            reference.setLiteralText(text());
            return reference;
        }
        case 2: {
            const auto reference = make<types::ConstantReference>();
            reference.setValue(any(constants)); // circles among them
            return reference;
        }
        case 3: {
            const auto content = make<types::LookupTableSpecification>();
            content.getVs().push_back(text());
            content.getAxeses().push_back(types::LookupTableSpecification::create(model_));
            return content;
        }
        case 4: {
            const auto array = make<types::MatrixValueSpecification>();
            for (int i = below(4); i > 0; --i) {
                const auto cell = types::Cell::create(model_);
                array.getOwnedCells().push_back(cell);
                cell.setValue(value(constants, depth - 1));
            }
            return array;
        }
        default: {
            const auto record = make<types::StructureValueSpecification>();
            for (int i = below(4); i > 0; --i) {
                const auto slot = make<types::Slot>();
                record.getOwnedSlots().push_back(slot);
                slot.setValue(value(constants, depth - 1));
            }
            return record;
        }
        }
    }

    QOB::Model model_;
    std::mt19937 random_;
    std::vector<types::SwBaseType> bases_;
    std::vector<types::Dimension> dimensions_;
    std::vector<types::Unit> units_;
    std::vector<types::CompuMethod> methods_;
    std::vector<types::DataConstr> constraints_;
    std::vector<types::PrimitiveType> primitives_;
    std::vector<foundation::ValueType> valueTypes_;
};

/// Gives each object that isn't a part a path of its own, so that it can be told which is which.
void givePaths(QOB::Model const& model) {
    int number = 0;
    for (QOB::ClassObject const object : model.getRootObjects()) {
        const foundation::NamedElement named(object);
        if (named.isValid() && !object.hasContainerQOB()) {
            const std::string name = "Object" + std::to_string(++number);
            named.setName(QOB::String(name));
            object.setExternalId(QOB::String("/path/" + name));
        }
    }
}

/// A line about objects without their numbers.
std::string withoutNumbers(std::string_view line) {
    std::string text;
    bool isNumber = false;
    for (const char c : line) {
        isNumber = c == '#' || (isNumber && c >= '0' && c <= '9');
        if (!isNumber) {
            text += c;
        }
    }
    return text;
}

/// Whether the object only got a path that had none, or is one that dimensions bring with them.
bool isNoLoss(QOB::Difference const& difference) {
    if (difference.property.isValid()) {
        return difference.property.view() == "ExternalId" && difference.leftValues.empty();
    }
    QOB::ClassObject const& object =
        difference.left.get() == nullptr ? difference.right : difference.left;
    return types::Dimension(object).isValid() && !object.hasExternalId();
}

/// What a reader gets otherwise, by the report.
std::vector<std::string> changesIn(WriteReport const& report) {
    std::vector<std::string> lines;
    for (WriteFinding const& finding : report.findings) {
        if (finding.remark == Remark::changed) {
            lines.push_back(withoutNumbers(finding.text.substr(finding.text.find(": ") + 2)));
        }
    }
    return lines;
}

} // namespace

/// Whatever is in a model, the file is one that can be read, and what was read goes round
/// unchanged.
TEST(RandomModels, AreWrittenAsFilesThatGoRound) {
    const Folder folder;
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const Model model;
        RandomModel(model, seed).fill();
        write(model, folder / "0.arxml", {.isReadBack = false});
        EXPECT_EQ(scratch::misplacedIn(contentOf(folder / "0.arxml")), "");
        const Model first;
        ASSERT_NO_THROW(read({folder / "0.arxml"}, first));
        const WriteReport report = write(first, folder / "1.arxml");
        EXPECT_TRUE(changesIn(report).empty()) << scratch::inText(report);
        const Model second;
        read({folder / "1.arxml"}, second);
        EXPECT_EQ(differences(first, second), "");
        write(second, folder / "2.arxml", {.isReadBack = false});
        EXPECT_EQ(contentOf(folder / "1.arxml"), contentOf(folder / "2.arxml"));
    }
}

/// Objects of all classes with all their properties: whatever a reader doesn't get back is in the
/// report.
TEST(RandomModels, LoseNothingThatTheReportDoesNotName) {
    types::initialize();
    const Folder folder;
    std::size_t losses = 0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        StoreTest::RandomModel random(seed);
        random.create(40);
        random.write(seed % 2 == 0 ? 100 : 600);
        givePaths(random.model());
        const WriteReport report = write(random.model(), folder / "a.arxml");
        const std::vector<std::string> named = changesIn(report);
        const Model again;
        ASSERT_NO_THROW(read({folder / "a.arxml"}, again));
        for (QOB::Difference const& difference : QOB::compare(random.model(), again)) {
            std::ostringstream line;
            line << difference;
            const std::string words = withoutNumbers(line.str());
            EXPECT_TRUE(isNoLoss(difference) ||
                        std::find(named.begin(), named.end(), words) != named.end())
                << words;
        }
        losses += named.size();
    }
    EXPECT_GT(losses, 100U) << "the models should have more than files have a place for";
}

} // namespace velum::arxml
