#include "check/value_rules.h"

#include <algorithm>
#include <cstdint>
#include <velum_arxml/notation/number.h>
#include <velum_types/types.h>

namespace velum::check {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using arxml::numberText;

namespace {

constexpr std::int64_t mostValues = std::int64_t{1} << 40U;

/// The product of the sizes, none if one is unknown or there are no sizes.
std::int64_t productOf(QOB::Sequence<QOB::Integer> const& sizes) {
    std::int64_t product = sizes.empty() ? -1 : 1;
    for (const QOB::Integer size : sizes) {
        if (!size.isValid() || static_cast<int>(size) < 0) {
            return -1;
        }
        product = std::min(product * static_cast<int>(size), mostValues);
    }
    return product;
}

void checkAxes(types::LookupTableSpecification const& table, Sink const& sink) {
    std::int64_t needed = 1;
    std::string sizes;
    int number = 0;
    for (const types::LookupTableSpecification axis : table.getAxeses()) {
        const std::int64_t points = axis.getVs().size();
        needed = std::min(needed * points, mostValues);
        sizes += (number == 0 ? "" : " x ") + std::to_string(points);
        ++number;
        // A table may leave the points of a shared axis to that one.
        if (points == 0) {
            return;
        }
    }
    const std::int64_t held = table.getVs().size();
    if (number > 0 && held > 0 && needed != held) {
        sink.add("size-mismatch",
                 "The axes have " + sizes + " points, there are " + std::to_string(held) +
                     " values.");
    }
}

/// One place is enough: what follows it is its consequence more often than not.
void checkOrder(types::LookupTableSpecification const& axis, int number, Sink const& sink) {
    std::optional<double> before;
    int point = 0;
    for (const QOB::String text : axis.getVs()) {
        ++point;
        const std::string written = text;
        const arxml::RealNumber read = arxml::readRealNumber(written);
        if (!read.value) {
            return; // a text, of which there is no order
        }
        if (before && !(*read.value > *before)) {
            sink.add("axis-order",
                     "Point " + std::to_string(point) + " of axis " + std::to_string(number) +
                         ", " + numberText(*read.value) + ", is not above the one before, " +
                         numberText(*before) + ".");
            return;
        }
        before = read.value;
    }
}

/// Compares values with the limits of their types, as deep as they are nested.
class LimitCheck {
public:
    explicit LimitCheck(Sink const& sink) : sink_(sink) {}

    void compare(foundation::ValueSpecification const& value,
                 foundation::ValueType const& type,
                 int depth) {
        if (!value.isValid() || !type.isValid() || depth > deepest || isReported_) {
            return;
        }
        if (const types::LiteralReal literal(value); literal.isValid()) {
            const QOB::Real number = literal.getValue();
            if (number.isValid()) {
                compareNumber(number, types::Real(type));
            }
        } else if (const types::LookupTableSpecification table(value); table.isValid()) {
            compareTable(table, types::LookupTableType(type));
        } else if (const types::ApplicationValueSpecification content(value); content.isValid()) {
            compareTexts(content, scalarOf(type));
        } else if (const types::MatrixValueSpecification cells(value); cells.isValid()) {
            const types::Matrix matrix(type);
            for (const types::Cell cell : cells.getOwnedCells()) {
                if (matrix.isValid()) {
                    compare(cell.getValue(), matrix.getBaseType(), depth + 1);
                }
            }
        } else if (const types::StructureValueSpecification record(value); record.isValid()) {
            compareRecord(record, types::Structure(type), depth);
        } else if (const types::ConstantReference reference(value);
                   reference.isValid() && reference.hasValue()) {
            compare(reference.getValue().getConstantValue(), type, depth + 1);
        }
    }

private:
    static constexpr int deepest = 64;

    /// The type of the single values of a matrix of matrices.
    static types::Real scalarOf(foundation::ValueType type) {
        for (int depth = 0; depth < deepest; ++depth) {
            const types::Matrix matrix(type);
            if (!matrix.isValid()) {
                break;
            }
            type = matrix.getBaseType();
        }
        return types::Real(type);
    }

    void compareTexts(types::ApplicationValueSpecification const& content,
                      types::Real const& type) {
        if (!type.isValid() || types::Enumeration(type).isValid()) {
            return;
        }
        for (const QOB::String text : content.getVs()) {
            const std::string written = text;
            if (const auto read = arxml::readRealNumber(written); read.value) {
                compareNumber(*read.value, type);
            }
        }
    }

    void compareTable(types::LookupTableSpecification const& table,
                      types::LookupTableType const& type) {
        if (!type.isValid()) {
            return;
        }
        const types::PrimitiveType values =
            type.hasValueAxisDataType() ? type.getValueAxisDataType() : type.getBaseType();
        compareTexts(types::ApplicationValueSpecification(table), types::Real(values));
    }

    /// A slot belongs to the member of its name, or else to the one at its place.
    void compareRecord(types::StructureValueSpecification const& record,
                       types::Structure const& type,
                       int depth) {
        if (!type.isValid()) {
            return;
        }
        std::vector<types::StructElement> members;
        for (const types::StructElement member : type.getElementses()) {
            members.push_back(member);
        }
        std::size_t place = 0;
        for (const types::Slot slot : record.getOwnedSlots()) {
            types::StructElement member =
                place < members.size() ? members[place] : types::StructElement();
            for (types::StructElement const& candidate : members) {
                if (slot.hasName() && candidate.hasName() &&
                    slot.getName() == candidate.getName()) {
                    member = candidate;
                }
            }
            ++place;
            if (member.isValid()) {
                compare(slot.getValue(),
                        member.hasInlineType()
                            ? member.getInlineType()
                            : member.getZorvane_metamodel_types_StructElement_Type(),
                        depth + 1);
            }
        }
    }

    void compareNumber(double number, types::Real const& type) {
        if (!type.isValid() || isReported_) {
            return;
        }
        const bool isBelow = type.hasMinValue() && number < double(type.getMinValue());
        const bool isAbove = type.hasMaxValue() && number > double(type.getMaxValue());
        if (!isBelow && !isAbove) {
            return;
        }
        const std::string name = type.hasName() ? std::string(type.getName()) : std::string();
        sink_.add("constant-limits",
                  "The value " + numberText(number) + " is " +
                      (isBelow ? "below the minimum " + numberText(type.getMinValue())
                               : "above the maximum " + numberText(type.getMaxValue())) +
                      " of its type" + (name.empty() ? "." : " " + name + "."));
        isReported_ = true;
    }

    Sink const& sink_;
    bool isReported_ = false; // one place of a value is enough
};

} // namespace

void checkValues(types::ApplicationValueSpecification const& value, Sink const& sink) {
    const std::int64_t expected = productOf(value.getDimensionses());
    const std::int64_t held = value.getVs().size();
    if (expected >= 0 && expected != held) {
        sink.add("size-mismatch",
                 "The dimensions tell " + std::to_string(expected) + " values, there are " +
                     std::to_string(held) + ".");
    }
    if (const types::LookupTableSpecification table(value); table.isValid()) {
        checkAxes(table, sink);
        int number = 0;
        for (const types::LookupTableSpecification axis : table.getAxeses()) {
            checkOrder(axis, ++number, sink);
        }
    }
}

void checkAgainstType(foundation::ValueSpecification const& value,
                      foundation::ValueType const& type,
                      Sink const& sink) {
    LimitCheck(sink).compare(value, type, 0);
}

} // namespace velum::check
