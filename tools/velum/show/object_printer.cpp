#include "show/object_printer.h"

#include "model/objects.h"
#include "report/printers.h"
#include "show/texts.h"

#include <algorithm>
#include <unordered_set>
#include <vector>
#include <velum_arxml/notation/number.h>

namespace velum::show {

using arxml::numberText;
using foundation::ValueType;

namespace {

/// A small file can ask for any number of lines by types of types; beyond this nobody reads on.
constexpr std::size_t mostLines = 10'000;

/// Writes one object and what it is made of.
class ObjectPrinter {
public:
    std::string print(QOB::ClassObject const& object) {
        const foundation::NamedElement named(object);
        const std::string path = report::inOneLine(model::pathOf(object));
        text_ = path.empty() ? nameOf(named) : path;
        text_ += ": ";
        if (const ValueType type(object); type.isValid()) {
            text_ += typeText(type) + "\n";
            printRelations(type);
            printParts(type, 1);
        } else if (const types::StructElement member(object); member.isValid()) {
            printMemberType(member, 0);
        } else {
            text_ += otherText(object) + "\n";
        }
        return std::move(text_);
    }

private:
    void line(std::size_t depth, std::string const& text) {
        text_.append(2 * depth, ' ');
        text_ += text;
        text_ += '\n';
        ++lines_;
    }

    void printParts(ValueType const& type, std::size_t depth) {
        // A structure may refer to itself over a pointer or by a fault of its file.
        const bool isNested = types::Structure(type).isValid() || types::Matrix(type).isValid();
        if (isNested && (around_.size() >= deepestType || lines_ >= mostLines ||
                         std::find(around_.begin(), around_.end(), type) != around_.end())) {
            line(depth, "...");
            return;
        }
        around_.push_back(type);
        if (const types::Structure structure(type); structure.isValid()) {
            printMembers(structure, depth);
        } else if (const types::Enumeration enumeration(type); enumeration.isValid()) {
            printLiterals(enumeration, depth);
        } else if (const types::Matrix matrix(type); matrix.isValid()) {
            if (const ValueType base = matrix.getBaseType(); base.isValid()) {
                printParts(base, depth);
            }
        } else if (const types::LookupTableType table(type); table.isValid()) {
            printTable(table, depth);
        } else if (const types::SharedAxisType shared(type); shared.isValid()) {
            printShared(shared, depth);
        }
        around_.pop_back();
    }

    /// Those of an enumeration that several parts share are told at the first one.
    void printLiterals(types::Enumeration const& enumeration, std::size_t depth) {
        if (!told_.insert(enumeration.get()).second) {
            return;
        }
        for (const types::EnumerationLiteral literal : enumeration.getOwnedLiterals()) {
            line(depth,
                 std::to_string(static_cast<int>(literal.getValue())) + " = " + nameOf(literal));
        }
    }

    /// What a type is beside what it holds.
    void printRelations(ValueType const& type) {
        if (const types::PrimitiveType primitive(type);
            primitive.isValid() && primitive.hasReference()) {
            const types::PrimitiveType target = primitive.getReference();
            const std::string path = report::inOneLine(model::pathOf(target));
            line(1, "refers to " + (path.empty() ? nameOf(target) : path));
        }
        if (type.hasInvalidValue()) {
            line(1, "invalid value " + valueText(type.getInvalidValue()));
        }
    }

    void printMembers(types::Structure const& structure, std::size_t depth) {
        std::size_t width = 0;
        for (const types::StructElement member : structure.getElementses()) {
            width = std::max(width, nameOf(member).size());
        }
        for (const types::StructElement member : structure.getElementses()) {
            std::string name = nameOf(member);
            name.resize(std::max(width, name.size()), ' ');
            text_.append(2 * depth, ' ');
            text_ += name + "  ";
            printMemberType(member, depth);
            ++lines_;
        }
    }

    /// Ends the line that the member began, with its parts below.
    void printMemberType(types::StructElement const& member, std::size_t depth) {
        const ValueType type = member.hasInlineType()
                                   ? member.getInlineType()
                                   : member.getZorvane_metamodel_types_StructElement_Type();
        if (!type.isValid()) {
            text_ += "of " + unknownTypeText(member) + "\n";
            return;
        }
        text_ += (member.hasInlineType() ? typeText(type) : usedTypeText(type)) + "\n";
        printParts(type, depth + 1);
    }

    void printTable(types::LookupTableType const& table, std::size_t depth) {
        if (table.hasValueAxisDataType()) {
            line(depth, "values: " + usedTypeText(table.getValueAxisDataType()));
        } else if (table.hasBaseType()) {
            line(depth, "values: " + typeText(table.getBaseType()));
        }
        int number = 0;
        for (const types::Axis axis : table.getAxeses()) {
            line(depth, "axis " + std::to_string(++number) + ": " + axisText(axis));
        }
        if (table.hasSwRecordLayout()) {
            line(depth, "record layout: " + nameOf(table.getSwRecordLayout()));
        }
    }

    void printShared(types::SharedAxisType const& shared, std::size_t depth) {
        if (shared.hasAxis()) {
            line(depth, "axis: " + axisText(shared.getAxis()));
        }
        if (shared.hasValueAxisDataType()) {
            line(depth, "values: " + usedTypeText(shared.getValueAxisDataType()));
        }
        if (shared.hasSwRecordLayout()) {
            line(depth, "record layout: " + nameOf(shared.getSwRecordLayout()));
        }
    }

    static std::string axisText(types::Axis const& axis) {
        if (axis.hasSharedAxis()) {
            const types::SharedAxisType shared = axis.getSharedAxis();
            return nameOf(shared) +
                   (shared.hasAxis() ? ", " + axisText(shared.getAxis()) : std::string());
        }
        const QOB::Integer points = axis.getDimensions();
        std::string text =
            (points.isValid() ? std::to_string(static_cast<int>(points)) : std::string("?")) +
            " points";
        if (axis.hasInputVariableType()) {
            text += ", input " + usedTypeText(axis.getInputVariableType());
        }
        if (axis.hasBaseType()) {
            text += ", " + typeText(axis.getBaseType());
        }
        return text;
    }

    static std::string otherText(QOB::ClassObject const& object) {
        if (const types::Unit unit(object); unit.isValid()) {
            return unitLine(unit);
        }
        if (const types::Dimension dimension(object); dimension.isValid()) {
            return "dimension" + exponentsText(dimension);
        }
        if (const types::CompuMethod method(object); method.isValid()) {
            return "computation method, " + methodText(method);
        }
        if (const types::DataConstr constraint(object); constraint.isValid()) {
            return "data constraint of " + counted(constraint.getPrimitiveTypes().size());
        }
        if (const types::SwBaseType base(object); base.isValid()) {
            return "base type of " + counted(base.getPrimitiveTypes().size());
        }
        if (const types::ConstantSpecification constant(object); constant.isValid()) {
            return "constant " + valueText(constant.getConstantValue());
        }
        return std::string(model::classOf(object));
    }

    static std::string counted(int count) {
        return std::to_string(count) + (count == 1 ? " type" : " types");
    }

    static std::string unitLine(types::Unit const& unit) {
        std::string text = "unit " + unitText(unit);
        if (unit.hasDimension()) {
            text += " of " + nameOf(unit.getDimension());
        }
        const double factor = unit.getConvFactor();
        const double offset = unit.getConvOffset();
        if (unit.hasConvUnit() || factor != 1.0 || offset != 0.0) {
            text += ", " +
                    (unit.hasConvUnit() ? unitText(unit.getConvUnit()) : std::string("base")) +
                    " = " + numberText(offset) + " + " + numberText(factor) + " x";
        }
        return text;
    }

    static std::string exponentsText(types::Dimension const& dimension) {
        std::vector<int> exponents;
        for (const QOB::Integer exponent : dimension.getBaseExponents()) {
            exponents.push_back(exponent);
        }
        std::string text;
        std::size_t i = 0;
        for (const types::Dimension base : dimension.getBaseDimensions()) {
            text += ' ';
            text += base.hasSymbol() ? textOf(base.getSymbol()) : nameOf(base);
            text += '^';
            text += i < exponents.size() ? std::to_string(exponents[i]) : "?";
            ++i;
        }
        if (dimension.hasSymbol()) {
            text += " " + textOf(dimension.getSymbol());
        }
        return text;
    }

    std::string text_;
    std::size_t lines_ = 0;
    std::vector<ValueType> around_;
    std::unordered_set<void const*> told_; // enumerations whose literals stand above
};

} // namespace

std::string objectText(QOB::ClassObject const& object) {
    return ObjectPrinter().print(object);
}

} // namespace velum::show
