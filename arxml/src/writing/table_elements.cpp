#include "writing/element_output.h"

#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

namespace {

/// The references that a table or an axis has of its values. They stand in the properties of the
/// element; in the model, in a type of their own.
struct PartReferences {
    types::CompuMethod method;
    types::Unit unit;
    types::DataConstr constraint;
    types::SwBaseType baseType;

    explicit PartReferences(types::PrimitiveType const& part) {
        if (part.isValid()) {
            method = part.getCompuMethod();
            unit = part.getUnit();
            constraint = part.getDataConstr();
            baseType = part.getSwBaseType();
        }
    }

    bool isEmpty() const {
        return !method.isValid() && !unit.isValid() && !constraint.isValid() && !baseType.isValid();
    }
};

void reference(ElementOutput const& out, std::string_view tag, QOB::ClassObject const& target) {
    if (target.isValid()) {
        out.reference(tag, target);
    }
}

/// The unit of a part, or what its note keeps of a reference that leads nowhere: without any
/// reference there would be no part.
void writeUnitOf(ElementOutput const& out,
                 types::PrimitiveType const& part,
                 PartReferences const& references) {
    if (references.unit.isValid()) {
        out.reference("UNIT-REF", references.unit);
        return;
    }
    if (!part.isValid() || !references.isEmpty()) {
        return;
    }
    if (const auto missing = tool_note::get(part, tool_note::missingReference)) {
        out.xml.leaf("UNIT-REF", "DEST", "UNIT", *missing);
    } else {
        out.noPlace(
            "A type of values without method, unit, constraint and base type isn't written.");
    }
}

void writeIndividual(ElementOutput const& out, types::Axis const& axis) {
    const types::PrimitiveType part =
        axis.hasBaseType() ? axis.getBaseType() : types::PrimitiveType();
    const PartReferences references(part);
    const OpenElement individual(out.xml, "SW-AXIS-INDIVIDUAL");
    if (axis.hasInputVariableType()) {
        out.reference("INPUT-VARIABLE-TYPE-REF", axis.getInputVariableType());
    }
    reference(out, "COMPU-METHOD-REF", references.method);
    writeUnitOf(out, part, references);
    const QOB::Integer points = axis.hasDimensions() ? axis.getDimensions() : QOB::Integer();
    if (points.isValid()) {
        out.xml.leaf("SW-MAX-AXIS-POINTS", std::to_string(static_cast<int>(points)));
    }
    reference(out, "DATA-CONSTR-REF", references.constraint);
    reference(out, "BASE-TYPE-REF", references.baseType);
}

/// An axis whose values are another type's has none of its own.
bool isIndividual(types::Axis const& axis) {
    return axis.hasInputVariableType() || axis.hasBaseType() ||
           (!axis.hasSharedAxis() && axis.hasDimensions() && axis.getDimensions().isValid());
}

void writeAxis(ElementOutput const& out,
               types::Axis const& axis,
               std::size_t index,
               std::string_view category) {
    const OpenElement element(out.xml, "SW-CALPRM-AXIS");
    out.xml.leaf("SW-AXIS-INDEX", std::to_string(index));
    out.xml.leaf("CATEGORY", axis.hasSharedAxis() ? "COM_AXIS" : category);
    if (isIndividual(axis)) {
        writeIndividual(out, axis);
    }
    if (axis.hasSharedAxis()) {
        const OpenElement grouped(out.xml, "SW-AXIS-GROUPED");
        out.reference("SHARED-AXIS-TYPE-REF", axis.getSharedAxis());
    }
}

} // namespace

void writeTable(ElementOutput const& out, types::LookupTableType const& table) {
    const std::string category = table.getCategory();
    out.xml.leaf("CATEGORY", category);
    if (table.getAxeses().empty()) {
        out.noPlace("A table without axes is none in the format.");
    }
    const types::PrimitiveType part =
        table.hasBaseType() ? table.getBaseType() : types::PrimitiveType();
    const PartReferences references(part);
    const OpenProperties properties(out.xml);
    reference(out, "BASE-TYPE-REF", references.baseType);
    {
        const OpenElement set(out.xml, "SW-CALPRM-AXIS-SET", OpenElement::When::ifUsed);
        std::size_t index = 0;
        for (const types::Axis axis : table.getAxeses()) {
            writeAxis(out, axis, ++index, "STD_AXIS");
        }
    }
    reference(out, "COMPU-METHOD-REF", references.method);
    reference(out, "DATA-CONSTR-REF", references.constraint);
    writeInvalidValue(out, table);
    if (table.hasSwRecordLayout()) {
        out.reference("SW-RECORD-LAYOUT-REF", table.getSwRecordLayout());
    }
    writeUnitOf(out, part, references);
    if (table.hasValueAxisDataType()) {
        out.reference("VALUE-AXIS-DATA-TYPE-REF", table.getValueAxisDataType());
    }
}

void writeSharedAxis(ElementOutput const& out, types::SharedAxisType const& axis) {
    out.xml.leaf("CATEGORY", "COM_AXIS");
    const OpenProperties properties(out.xml);
    if (axis.hasAxis()) {
        const OpenElement set(out.xml, "SW-CALPRM-AXIS-SET");
        writeAxis(out, axis.getAxis(), 1, "COM_AXIS");
    }
    writeInvalidValue(out, axis);
    if (axis.hasSwRecordLayout()) {
        out.reference("SW-RECORD-LAYOUT-REF", axis.getSwRecordLayout());
    }
    if (axis.hasValueAxisDataType()) {
        out.reference("VALUE-AXIS-DATA-TYPE-REF", axis.getValueAxisDataType());
    }
}

} // namespace velum::arxml
