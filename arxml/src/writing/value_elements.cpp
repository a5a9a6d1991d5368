#include "writing/element_output.h"

#include <numeric>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

using foundation::ValueSpecification;
using foundation::ValueType;

namespace {

void writeNumber(ElementOutput const& out, types::LiteralReal const& literal) {
    const OpenElement element(out.xml, "NUMERICAL-VALUE-SPECIFICATION");
    out.label(nameOf(literal));
    if (literal.getValue().isValid()) {
        out.xml.leaf("VALUE", numberInFile(literal.getValue()));
    }
}

void writeText(ElementOutput const& out, types::EnumerationLiteralReference const& reference) {
    const OpenElement element(out.xml, "TEXT-VALUE-SPECIFICATION");
    out.label(nameOf(reference));
    if (reference.hasLiteralText()) {
        out.text("VALUE", reference.getLiteralText());
    } else if (reference.hasValue()) {
        out.xml.leaf("VALUE", nameOf(reference.getValue()));
    }
}

void writeConstantReference(ElementOutput const& out, types::ConstantReference const& reference) {
    const OpenElement element(out.xml, "CONSTANT-REFERENCE");
    out.label(nameOf(reference));
    if (reference.hasValue()) {
        out.reference("CONSTANT-REF", reference.getValue());
    }
}

/// Keeps the place of a value that isn't there.
void writeNoValue(ElementOutput const& out, std::string const& name) {
    const OpenElement element(out.xml, "NOT-AVAILABLE-VALUE-SPECIFICATION");
    out.label(name);
}

/// The cells of an array; over a matrix of several dimensions, in arrays of arrays.
class Cells {
public:
    Cells(ElementOutput const& out,
          types::MatrixValueSpecification const& array,
          ValueType const& type)
        : out_(out) {
        bool isInOrder = true;
        for (const types::Cell cell : array.getOwnedCells()) {
            const auto index = cell.getIndexs();
            isInOrder = isInOrder && index.size() == 1 &&
                        QOB::Integer(*index.begin()) == static_cast<int>(cells_.size());
            cells_.push_back(cell);
        }
        if (!isInOrder) {
            out.noPlace("Cells that don't stand in the order of their indexes lose them.");
        }
        if (const types::Matrix matrix(type); matrix.isValid()) {
            elementType_ = matrix.getBaseType();
            for (const QOB::Integer size : matrix.getDimensionses()) {
                sizes_.push_back(size.isValid() && size > 0 ? static_cast<std::size_t>(int(size))
                                                            : 0);
            }
        }
        const std::size_t count = std::accumulate(
            sizes_.begin(), sizes_.end(), std::size_t(1), [this](std::size_t a, std::size_t b) {
                return a > cells_.size() ? a : a * b; // too many is enough to know
            });
        isNested_ = sizes_.size() > 1 && count == cells_.size() && count > 0;
    }

    void write() { writeLevel(0, 0, cells_.size()); }

private:
    void writeLevel(std::size_t level, std::size_t first, std::size_t count) {
        const OpenElement elements(out_.xml, "ELEMENTS", OpenElement::When::ifUsed);
        if (isNested_ && level + 1 < sizes_.size()) {
            const std::size_t part = count / sizes_[level];
            for (std::size_t i = 0; i < sizes_[level]; ++i) {
                const OpenElement array(out_.xml, "ARRAY-VALUE-SPECIFICATION");
                writeLevel(level + 1, first + i * part, part);
            }
            return;
        }
        for (std::size_t i = first; i < first + count; ++i) {
            if (cells_[i].hasValue()) {
                writeValue(out_, cells_[i].getValue(), elementType_);
            } else {
                writeNoValue(out_, {});
            }
        }
    }

    ElementOutput const& out_;
    std::vector<types::Cell> cells_;
    std::vector<std::size_t> sizes_;
    ValueType elementType_;
    bool isNested_ = false;
};

void writeRecord(ElementOutput const& out, types::StructureValueSpecification const& record) {
    const OpenElement element(out.xml, "RECORD-VALUE-SPECIFICATION");
    out.label(nameOf(record));
    const OpenElement fields(out.xml, "FIELDS", OpenElement::When::ifUsed);
    for (const types::Slot slot : record.getOwnedSlots()) {
        if (!slot.hasValue()) {
            writeNoValue(out, nameOf(slot));
            continue;
        }
        const ValueSpecification value = slot.getValue();
        if (nameOf(slot) != nameOf(value)) {
            out.noPlace(
                "A field and its value have different names; that of the value is written.");
        }
        ValueType type;
        if (const types::StructElement member = slot.getStructElement(); member.isValid()) {
            type = member.hasInlineType() ? member.getInlineType()
                                          : member.getZorvane_metamodel_types_StructElement_Type();
        }
        writeValue(out, value, type);
    }
}

bool isNumber(std::string_view text) {
    return !readRealNumber(text).fault.has_value();
}

/// SW-ARRAYSIZE, if the number of values isn't enough, and the values.
void writeContent(ElementOutput const& out, types::ApplicationValueSpecification const& content) {
    const auto texts = content.getVs();
    std::vector<int> sizes;
    bool isWhole = true;
    for (const QOB::Integer size : content.getDimensionses()) {
        isWhole = isWhole && size.isValid() && size >= 0;
        sizes.push_back(size);
    }
    if (!isWhole) {
        out.noPlace("A size of the values is no number; none is written.");
    } else if (sizes != std::vector<int>{static_cast<int>(texts.size())} && !sizes.empty()) {
        const OpenElement list(out.xml, "SW-ARRAYSIZE");
        for (const int size : sizes) {
            out.xml.leaf("V", std::to_string(size));
        }
    }
    const OpenElement values(out.xml, "SW-VALUES-PHYS");
    for (const QOB::String text : texts) {
        out.xml.leaf(isNumber(text.view()) ? "V" : "VT", text.view());
    }
}

bool isEmpty(types::ApplicationValueSpecification const& content) {
    return content.getVs().empty() && content.getDimensionses().empty();
}

std::string_view categoryOf(types::ApplicationValueSpecification const& value) {
    const types::LookupTableSpecification table(value);
    if (!table.isValid()) {
        return value.getVs().size() == 1 ? "VALUE" : "VAL_BLK";
    }
    switch (static_cast<int>(table.getAxeses().size())) {
    case 0:
    case 1:
        return "CURVE";
    case 2:
        return "MAP";
    case 3:
        return "CUBOID";
    case 4:
        return "CUBE_4";
    default:
        return "CUBE_5";
    }
}

void writeApplicationValue(ElementOutput const& out,
                           types::ApplicationValueSpecification const& value) {
    const OpenElement element(out.xml, "APPLICATION-VALUE-SPECIFICATION");
    out.label(nameOf(value));
    out.xml.leaf("CATEGORY", categoryOf(value));
    if (const types::LookupTableSpecification table(value); table.isValid()) {
        const OpenElement axes(out.xml, "SW-AXIS-CONTS", OpenElement::When::ifUsed);
        std::size_t index = 0;
        for (const types::LookupTableSpecification axis : table.getAxeses()) {
            const OpenElement axisElement(out.xml, "SW-AXIS-CONT");
            out.xml.leaf("CATEGORY", "STD_AXIS");
            out.xml.leaf("SW-AXIS-INDEX", std::to_string(++index));
            writeContent(out, types::ApplicationValueSpecification(axis));
        }
    }
    if (!isEmpty(value)) {
        const OpenElement content(out.xml, "SW-VALUE-CONT");
        writeContent(out, value);
    }
}

} // namespace

void writeValue(ElementOutput const& out, ValueSpecification const& value, ValueType const& type) {
    if (const types::LiteralReal literal(value); literal.isValid()) {
        writeNumber(out, literal);
    } else if (const types::EnumerationLiteralReference reference(value); reference.isValid()) {
        writeText(out, reference);
    } else if (const types::ConstantReference constant(value); constant.isValid()) {
        writeConstantReference(out, constant);
    } else if (const types::MatrixValueSpecification array(value); array.isValid()) {
        const OpenElement element(out.xml, "ARRAY-VALUE-SPECIFICATION");
        out.label(nameOf(array));
        Cells(out, array, type).write();
    } else if (const types::StructureValueSpecification record(value); record.isValid()) {
        writeRecord(out, record);
    } else if (const types::ApplicationValueSpecification application(value);
               application.isValid()) {
        writeApplicationValue(out, application);
    } else {
        out.noPlace("A value of the class " + std::string(value.getLumvoName(false)) +
                    " isn't written.");
    }
}

void writeInvalidValue(ElementOutput const& out, ValueType const& type) {
    if (type.hasInvalidValue()) {
        const OpenElement element(out.xml, "INVALID-VALUE");
        writeValue(out, type.getInvalidValue(), type);
    }
}

void writeConstant(ElementOutput const& out, types::ConstantSpecification const& constant) {
    if (constant.hasConstantValue()) {
        const OpenElement element(out.xml, "VALUE-SPEC");
        writeValue(out, constant.getConstantValue(), ValueType());
    }
}

} // namespace velum::arxml
