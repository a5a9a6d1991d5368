#pragma once

#include "writing/outline.h"
#include "writing/outside_bases.h"
#include "writing/xml_writer.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::arxml {

/// Where the element of one object goes, and the remarks about it.
struct ElementOutput {
    XmlWriter& xml;
    Outline const& outline;
    std::vector<WriteFinding>& findings;
    std::string_view path;         ///< of the object that is being written
    OutsideBases* bases = nullptr; ///< Null if the file has all elements.

    void remark(Remark kind, std::string text) const {
        findings.push_back({kind, std::string(path), std::move(text)});
    }
    void noPlace(std::string text) const { remark(Remark::noPlace, std::move(text)); }

    /// A reference with the kind of its target; none if the target is unknown.
    void reference(std::string_view tag, QOB::ClassObject const& target) const;

    /// An element with a text; none without one.
    void text(std::string_view tag, QOB::String const& text) const {
        if (text.isValid()) {
            xml.leaf(tag, text.view());
        }
    }

    /// SHORT-NAME of a part.
    void partName(std::string const& name) const;

    /// The label of a value or field, if there is one.
    void label(std::string const& name) const {
        if (!name.empty()) {
            xml.leaf("SHORT-LABEL", name);
        }
    }
};

/// The element of one object, by its kind.
void writeElement(ElementOutput const& out, Outline::Entry const& entry);

void writeBaseType(ElementOutput const& out, types::SwBaseType const& baseType);
void writeUnit(ElementOutput const& out, types::Unit const& unit);
void writeDimension(ElementOutput const& out, types::Dimension const& dimension);
void writeMethod(ElementOutput const& out, types::CompuMethod const& method);
void writeConstraint(ElementOutput const& out, types::DataConstr const& constraint);
void writeConstant(ElementOutput const& out, types::ConstantSpecification const& constant);
void writeImplementationType(ElementOutput const& out, foundation::ValueType const& type);
void writeApplicationType(ElementOutput const& out, foundation::ValueType const& type);

/// CATEGORY and SW-DATA-DEF-PROPS of a table, and of an axis that tables share.
void writeTable(ElementOutput const& out, types::LookupTableType const& table);
void writeSharedAxis(ElementOutput const& out, types::SharedAxisType const& axis);

/// A value of a type; the type is empty where the format doesn't know it.
void writeValue(ElementOutput const& out,
                foundation::ValueSpecification const& value,
                foundation::ValueType const& type);

/// What INVALID-VALUE of a type has in it, if there is one.
void writeInvalidValue(ElementOutput const& out, foundation::ValueType const& type);

/// SW-DATA-DEF-PROPS around what the caller writes; nothing if that is nothing.
class OpenProperties {
public:
    explicit OpenProperties(XmlWriter& xml)
        : properties_(xml, "SW-DATA-DEF-PROPS", OpenElement::When::ifUsed),
          variants_(xml, "SW-DATA-DEF-PROPS-VARIANTS", OpenElement::When::ifUsed),
          conditional_(xml, "SW-DATA-DEF-PROPS-CONDITIONAL", OpenElement::When::ifUsed) {}

private:
    OpenElement properties_;
    OpenElement variants_;
    OpenElement conditional_;
};

/// The shortest text of the format for a number.
std::string numberInFile(double number);

} // namespace velum::arxml
