#include "writing/array_size.h"
#include "writing/element_output.h"

#include <algorithm>
#include <optional>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

using foundation::ValueType;

namespace {

/// The size of a base type in bits; invalid if it has none.
QOB::Integer bitsOf(types::DataSize const& size) {
    using Unit = types::DataSizeUnitKind;
    if (!size.getValue().isValid() || size.getUnit() == Unit::bit) {
        return size.getValue();
    }
    const std::int64_t factor = size.getUnit() == Unit::byte ? 8
                                : size.getUnit() == Unit::KB ? 8LL << 10U
                                : size.getUnit() == Unit::MB ? 8LL << 20U
                                                             : 8LL << 30U;
    const std::int64_t bits = factor * int(size.getValue());
    return bits >= 0 && bits <= 0x7FFFFFFF ? QOB::Integer(static_cast<int>(bits)) : QOB::Integer();
}

/// What a type says about its base type.
struct Width {
    std::string_view encoding;
    QOB::Integer bits;
    friend bool operator==(Width const&, Width const&) = default;
};

template <class Handle>
std::optional<Width> integerWidth(Handle const& type) {
    if (!type.isValid()) {
        return std::nullopt;
    }
    return Width{bool(type.isSigned()) ? "2C" : "NONE", bitsOf(type.getLength())};
}

std::optional<Width> widthOf(types::PrimitiveType const& type) {
    if (const types::FloatingPoint real(type); real.isValid()) {
        const bool isSingle = real.getKind() == types::FloatingPointKind::IEEE_Single;
        return Width{"IEEE754", QOB::Integer(isSingle ? 32 : 64)};
    }
    if (types::Boolean(type).isValid()) {
        return Width{"BOOLEAN", QOB::Integer()};
    }
    for (const auto& width : {integerWidth(types::Integer(type)),
                              integerWidth(types::Enumeration(type)),
                              integerWidth(types::FixedPoint(type))}) {
        if (width) {
            return width;
        }
    }
    return std::nullopt;
}

/// A type that has its values from its base type: not one that refers to another type, nor a named
/// application type, whose values are those of the type that it is mapped to.
bool isOfBaseType(ElementOutput const& out, types::PrimitiveType const& type) {
    const bool isNamed = out.outline.find(type) != nullptr;
    return !type.hasReference() && !(isNamed && bool(type.isApplication()));
}

void writeMissingReference(ElementOutput const& out,
                           QOB::ClassObject const& object,
                           std::string_view tag,
                           std::string_view dest) {
    if (const auto missing = tool_note::get(object, tool_note::missingType)) {
        out.xml.leaf(tag, "DEST", dest, *missing);
    }
}

/// COMPU-METHOD-REF, DATA-CONSTR-REF and the rest that a primitive type has.
void writePrimitiveReferences(ElementOutput const& out, types::PrimitiveType const& type) {
    if (type.hasCompuMethod()) {
        out.reference("COMPU-METHOD-REF", type.getCompuMethod());
    }
    if (type.hasDataConstr()) {
        out.reference("DATA-CONSTR-REF", type.getDataConstr());
        return;
    }
    const types::Real real(type);
    const bool isBounded = real.isValid() && (real.hasMinValue() || real.hasMaxValue());
    if (isBounded && !types::Boolean(type).isValid()) {
        out.noPlace("The type has limits and no DataConstr to write them in.");
    }
}

void writeBaseTypeRef(ElementOutput const& out, types::PrimitiveType const& type) {
    if (type.hasSwBaseType()) {
        out.reference("BASE-TYPE-REF", type.getSwBaseType());
    }
}

void writeUnitRef(ElementOutput const& out, types::PrimitiveType const& type) {
    if (type.hasUnit()) {
        out.reference("UNIT-REF", type.getUnit());
    }
}

void writeTypeReference(ElementOutput const& out, ValueType const& target) {
    if (const types::Matrix owner = out.outline.ownerOf(target); owner.isValid()) {
        out.noPlace("A type that is a part of \"" + externalIdOf(owner) +
                    "\" can't be referred to.");
        return;
    }
    out.reference("IMPLEMENTATION-DATA-TYPE-REF", target);
}

/// Writes implementation types, and the elements inside of them.
class ImplementationTypes {
public:
    explicit ImplementationTypes(ElementOutput const& out) : out_(out), xml_(out.xml) {}

    /// Where the body of a type stands: as a type, or in an element, which may have a size.
    struct Place {
        bool isElement = false;
        types::Matrix array{}; ///< Empty without a size.
        std::size_t index = 0;
    };

    /// What stands behind the name.
    void writeBody(ValueType const& type, Place const& place) {
        if (const types::Structure structure(type); structure.isValid()) {
            writeStructure(structure, place);
        } else if (const types::Matrix matrix(type); matrix.isValid()) {
            writeArray(matrix, namesBelow(externalIdOf(matrix), matrix), place.isElement);
        } else if (const types::VoidPointer pointer(type); pointer.isValid()) {
            writePointer(pointer, place);
        } else if (const types::PrimitiveType primitive(type); primitive.isValid()) {
            writePrimitive(primitive, place);
        } else {
            out_.noPlace("A type of this class can't stand inside of another one.");
        }
    }

private:
    void writeCategory(std::string_view category, Place const& place) {
        xml_.leaf("CATEGORY", category);
        if (place.array.isValid()) {
            writeSize(out_, "ARRAY-SIZE", place.array, place.index);
        }
    }

    void writePrimitive(types::PrimitiveType const& type, Place const& place) {
        const bool isReference = type.hasReference();
        writeCategory(isReference && !type.hasSwBaseType() ? "TYPE_REFERENCE" : "VALUE", place);
        const OpenProperties properties(xml_);
        writeBaseTypeRef(out_, type);
        writePrimitiveReferences(out_, type);
        if (isReference) {
            writeTypeReference(out_, type.getReference());
        }
        writeInvalidValue(out_, type);
        writeUnitRef(out_, type);
    }

    void writePointer(types::VoidPointer const& pointer, Place const& place) {
        writeCategory("DATA_REFERENCE", place);
        const OpenProperties properties(xml_);
        out_.text("SW-IMPL-POLICY", pointer.getSwImplPolicy());
        writeInvalidValue(out_, pointer);
        if (pointer.hasSwBaseType()) {
            const OpenElement target(xml_, "SW-POINTER-TARGET-PROPS");
            const OpenProperties targetProperties(xml_);
            out_.reference("BASE-TYPE-REF", pointer.getSwBaseType());
        }
    }

    /// A structure whose members have the types inside of another one's members is another name for
    /// that one.
    static types::Structure originOf(types::Structure const& structure) {
        for (const types::StructElement member : structure.getElementses()) {
            if (member.hasInlineType()) {
                return {};
            }
            const ValueType type = member.getZorvane_metamodel_types_StructElement_Type();
            if (type.isValid() && type.hasContainerQOB()) {
                const types::StructElement owner(type.getContainerQOB());
                return owner.isValid() ? owner.getStructure() : types::Structure();
            }
        }
        return {};
    }

    void writeProperties(ValueType const& type) {
        const OpenProperties properties(xml_);
        writeInvalidValue(out_, type);
    }

    void writeStructure(types::Structure const& structure, Place const& place) {
        if (const types::Structure origin = originOf(structure); origin.isValid()) {
            writeAlias(structure, origin);
            return;
        }
        writeCategory("STRUCTURE", place);
        if (!place.isElement) {
            writeProperties(structure);
        }
        {
            const OpenElement elements(xml_, "SUB-ELEMENTS", OpenElement::When::ifUsed);
            for (const types::StructElement member : structure.getElementses()) {
                writeMember(member);
            }
        }
        if (place.isElement) {
            writeProperties(structure);
        }
    }

    void writeAlias(ValueType const& type, ValueType const& origin) {
        xml_.leaf("CATEGORY", "TYPE_REFERENCE");
        const OpenProperties properties(xml_);
        writeTypeReference(out_, origin);
        writeInvalidValue(out_, type);
    }

    void writeMember(types::StructElement const& member) {
        const OpenElement element(xml_, "IMPLEMENTATION-DATA-TYPE-ELEMENT");
        out_.partName(nameOf(member));
        if (member.hasInlineType()) {
            writeInline(member, member.getInlineType());
            return;
        }
        const ValueType type = member.getZorvane_metamodel_types_StructElement_Type();
        if (!type.isValid() && !tool_note::get(member, tool_note::missingType)) {
            return;
        }
        xml_.leaf("CATEGORY", "TYPE_REFERENCE");
        const OpenProperties properties(xml_);
        if (type.isValid()) {
            writeTypeReference(out_, type);
        } else {
            writeMissingReference(
                out_, member, "IMPLEMENTATION-DATA-TYPE-REF", "IMPLEMENTATION-DATA-TYPE");
        }
    }

    /// What stands behind the name of a member that has its type for itself.
    void writeInline(types::StructElement const& member, ValueType const& type) {
        const types::Matrix matrix(type);
        if (!matrix.isValid()) {
            writeBody(type, {true});
            return;
        }
        const std::vector<std::string> names = namesBelow(externalIdOf(member), matrix);
        if (!names.empty() || matrix.getDimensionses().size() != 1) {
            writeArray(matrix, names, true);
        } else {
            writeInnermost(matrix, {true, matrix, 0});
        }
    }

    /// The names of the elements down to the one that describes the base type, by its path.
    static std::vector<std::string> namesBelow(std::string const& path,
                                               types::Matrix const& matrix) {
        std::vector<std::string> names;
        const std::string below =
            matrix.hasBaseType() ? externalIdOf(matrix.getBaseType()) : std::string();
        if (path.empty() || below.size() <= path.size() + 1 ||
            below.compare(0, path.size(), path) != 0 || below[path.size()] != '/') {
            return names;
        }
        for (std::size_t at = path.size() + 1; at <= below.size();) {
            const std::size_t end = std::min(below.find('/', at), below.size());
            names.push_back(below.substr(at, end - at));
            at = end + 1;
        }
        return names;
    }

    bool isOwnPart(types::Matrix const& matrix) const {
        return matrix.hasBaseType() && out_.outline.ownerOf(matrix.getBaseType()) == matrix;
    }

    /// Another name for a matrix has its base type, which stands inside of that one's element.
    types::Matrix originOf(types::Matrix const& matrix) const {
        types::Matrix owner =
            matrix.hasBaseType() ? out_.outline.ownerOf(matrix.getBaseType()) : types::Matrix();
        return owner == matrix ? types::Matrix() : owner;
    }

    /// ARRAY: an element for each dimension, one inside of the other.
    void writeArray(types::Matrix const& matrix, std::vector<std::string> names, bool isElement) {
        if (const types::Matrix origin = originOf(matrix); origin.isValid()) {
            writeAlias(matrix, origin);
            return;
        }
        xml_.leaf("CATEGORY", "ARRAY");
        const std::size_t sizes = static_cast<std::size_t>(matrix.getDimensionses().size());
        const std::string own = isOwnPart(matrix) ? nameOf(matrix.getBaseType()) : std::string();
        while (names.size() < std::max<std::size_t>(sizes, 1)) {
            names.emplace_back(names.size() + 1 >= sizes && !own.empty() ? own : "Element");
        }
        if (!isElement) {
            writeProperties(matrix);
        }
        writeLevel(matrix, names, 0);
        if (isElement) {
            writeProperties(matrix);
        }
    }

    /// Elements without a size, if there are more of them than sizes, are the outer ones.
    void writeLevel(types::Matrix const& matrix,
                    std::vector<std::string> const& names,
                    std::size_t level) {
        const auto sizes = static_cast<std::size_t>(matrix.getDimensionses().size());
        const std::size_t unsized = names.size() - std::min(sizes, names.size());
        const OpenElement elements(xml_, "SUB-ELEMENTS");
        const OpenElement element(xml_, "IMPLEMENTATION-DATA-TYPE-ELEMENT");
        out_.partName(names[level]);
        Place place{true};
        if (level >= unsized) {
            place.array = matrix;
            place.index = level - unsized;
        }
        if (level + 1 == names.size()) {
            writeInnermost(matrix, place);
            return;
        }
        writeCategory("ARRAY", place);
        writeLevel(matrix, names, level + 1);
    }

    /// The element that is no array any more: it describes the base type, or refers to it.
    void writeInnermost(types::Matrix const& matrix, Place const& place) {
        if (isOwnPart(matrix)) {
            writeBody(matrix.getBaseType(), place);
            return;
        }
        writeCategory("TYPE_REFERENCE", place);
        const OpenProperties properties(xml_);
        if (matrix.hasBaseType()) {
            writeTypeReference(out_, matrix.getBaseType());
        } else {
            writeMissingReference(
                out_, matrix, "IMPLEMENTATION-DATA-TYPE-REF", "IMPLEMENTATION-DATA-TYPE");
        }
    }

    ElementOutput const& out_;
    XmlWriter& xml_;
};

/// BOOLEAN is written where VALUE would do as well, since with a table of texts it doesn't.
void writeApplicationPrimitive(ElementOutput const& out, types::PrimitiveType const& type) {
    out.xml.leaf("CATEGORY", types::Boolean(type).isValid() ? "BOOLEAN" : "VALUE");
    const OpenProperties properties(out.xml);
    writeBaseTypeRef(out, type);
    writePrimitiveReferences(out, type);
    writeInvalidValue(out, type);
    writeUnitRef(out, type);
}

void writeValueBlock(ElementOutput const& out, types::Matrix const& matrix) {
    out.xml.leaf("CATEGORY", "VAL_BLK");
    const types::PrimitiveType part(matrix.getBaseType());
    const OpenProperties properties(out.xml);
    writeBaseTypeRef(out, part);
    const auto sizes = static_cast<std::size_t>(matrix.getDimensionses().size());
    if (sizes == 1) {
        writeSize(out, "SW-VALUE-BLOCK-SIZE", matrix, 0);
    } else {
        const OpenElement list(out.xml, "SW-VALUE-BLOCK-SIZE-MULTS", OpenElement::When::ifUsed);
        for (std::size_t i = 0; i < sizes; ++i) {
            writeSize(out, "V", matrix, i);
        }
    }
    writePrimitiveReferences(out, part);
    writeInvalidValue(out, matrix);
    writeUnitRef(out, part);
}

std::string_view destOf(ElementOutput const& out, ValueType const& target) {
    Outline::Entry const* const entry = out.outline.find(target);
    return entry == nullptr ? std::string_view() : tagOf(entry->kind);
}

/// TYPE-TREF to an application type.
void writeTypeRef(ElementOutput const& out,
                  QOB::ClassObject const& owner,
                  ValueType const& target) {
    if (!target.isValid()) {
        writeMissingReference(out, owner, "TYPE-TREF", "APPLICATION-PRIMITIVE-DATA-TYPE");
    } else if (destOf(out, target).empty()) {
        out.noPlace(
            "The type of a part is written inside of another type; it can't be referred to.");
    } else {
        out.reference("TYPE-TREF", target);
    }
}

void writeApplicationArray(ElementOutput const& out, types::Matrix const& matrix) {
    out.xml.leaf("CATEGORY", "ARRAY");
    {
        const OpenProperties properties(out.xml);
        writeInvalidValue(out, matrix);
    }
    const OpenElement element(out.xml, "ELEMENT");
    out.xml.leaf("SHORT-NAME", "Element");
    writeTypeRef(out, matrix, matrix.hasBaseType() ? matrix.getBaseType() : ValueType());
    const auto sizes = static_cast<std::size_t>(matrix.getDimensionses().size());
    if (sizes > 0) {
        writeSize(out, "MAX-NUMBER-OF-ELEMENTS", matrix, 0);
    }
    if (sizes > 1) {
        out.noPlace(
            "An array of named types has one size in the format; the others aren't written.");
    }
}

void writeRecord(ElementOutput const& out, types::Structure const& structure) {
    out.xml.leaf("CATEGORY", "STRUCTURE");
    {
        const OpenProperties properties(out.xml);
        writeInvalidValue(out, structure);
    }
    const OpenElement elements(out.xml, "ELEMENTS", OpenElement::When::ifUsed);
    for (const types::StructElement member : structure.getElementses()) {
        const OpenElement element(out.xml, "APPLICATION-RECORD-ELEMENT");
        out.partName(nameOf(member));
        if (member.hasInlineType()) {
            out.noPlace("A member of an application type can't have its type in it.");
            continue;
        }
        writeTypeRef(out, member, member.getZorvane_metamodel_types_StructElement_Type());
    }
}

} // namespace

void writeBaseType(ElementOutput const& out, types::SwBaseType const& baseType) {
    std::optional<Width> width;
    for (const types::PrimitiveType type : baseType.getPrimitiveTypes()) {
        if (!isOfBaseType(out, type)) {
            continue;
        }
        const std::optional<Width> own = widthOf(type);
        if (width && own && !(*width == *own)) {
            out.remark(Remark::contradiction,
                       "The types of this base type have different values; those of the first one "
                       "are written.");
        }
        width = width ? width : own;
    }
    if (!width) {
        return;
    }
    if (width->bits.isValid()) {
        out.xml.leaf("CATEGORY", "FIXED_LENGTH");
        out.xml.leaf("BASE-TYPE-SIZE", std::to_string(static_cast<int>(width->bits)));
    }
    out.xml.leaf("BASE-TYPE-ENCODING", width->encoding);
}

void writeImplementationType(ElementOutput const& out, ValueType const& type) {
    ImplementationTypes(out).writeBody(type, {});
}

void writeApplicationType(ElementOutput const& out, ValueType const& type) {
    if (const types::Structure structure(type); structure.isValid()) {
        writeRecord(out, structure);
    } else if (const types::Matrix matrix(type); matrix.isValid()) {
        if (out.outline.find(matrix)->kind == ElementKind::applicationPrimitive) {
            writeValueBlock(out, matrix);
        } else {
            writeApplicationArray(out, matrix);
        }
    } else if (const types::LookupTableType table(type); table.isValid()) {
        writeTable(out, table);
    } else if (const types::SharedAxisType axis(type); axis.isValid()) {
        writeSharedAxis(out, axis);
    } else {
        writeApplicationPrimitive(out, types::PrimitiveType(type));
    }
}

} // namespace velum::arxml
