#include "check/mandatory.h"

#include "model/metaclasses.h"
#include "model/objects.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace velum::check {

namespace {

using QOB::MetaPropertyDescription;

/// The kernel's value types by their index in its table.
enum ValueType : unsigned { string = 24, real = 27, integer = 28 };

bool hasValue(QOB::IntrospectiveMethods const& record,
              MetaPropertyDescription const& property,
              QOB::ClassObject const& object) {
    QOB::NSInterface::ObjectIntf* const pointer = object.get();
    if ((property.flags & QOB::PropertyMultiValued) != 0) {
        return record.getMultiValued(pointer, object.getDeviant(), property.id, false)
                   .generic_size() > 0;
    }
    const QOB::Object value = record.getSingleValued(pointer, object.getDeviant(), property.id);
    if (!value.isValid()) {
        return false;
    }
    if (property.package() != QOB::get_QOB_PackageIntrospectiveMethods()) {
        return true;
    }
    switch (property.typeIndex) {
    case string:
        return QOB::String(value).isValid();
    case real:
        return QOB::Real(value).isValid();
    case integer:
        return QOB::Integer(value).isValid();
    default:
        return true;
    }
}

/// A property that files need not give.
struct Exception {
    std::string_view metaclass;
    std::string_view property;
    std::string_view replacement; ///< Only where this property has a value; empty: always.
};

constexpr std::array exceptions = {
    Exception{"Axis", "Dimensions", "SharedAxis"},
    Exception{"CompuMethod", "DisplayFormat", ""},
    Exception{"LookupTableSpecification", "Axes", ""}, // those of shared axes stand elsewhere
    Exception{"LookupTableType", "BaseType", "ValueAxisDataType"},
    Exception{"LookupTableType", "SwRecordLayout", ""},
    Exception{"SharedAxisType", "SwRecordLayout", ""},
    Exception{"ValueElement", "Value", ""}, // the file gives one of a kind that has no class
    Exception{"VoidPointer", "SwBaseType", ""}};

bool mayBeMissing(model::Metaclass const& metaclass,
                  MetaPropertyDescription const& property,
                  QOB::ClassObject const& object) {
    return std::any_of(exceptions.begin(), exceptions.end(), [&](Exception const& exception) {
        if (exception.metaclass != metaclass.name || exception.property != property.name) {
            return false;
        }
        for (MetaPropertyDescription const* other : model::propertiesOf(metaclass)) {
            if (exception.replacement == other->name) {
                return hasValue(*metaclass.record, *other, object);
            }
        }
        return exception.replacement.empty();
    });
}

/// Null for an object of another package: a store may hold a live metamodel, whose classes have
/// such names too.
model::Metaclass const* metaclassOf(QOB::ClassObject const& object) {
    constexpr std::string_view package = "Zorvane.metamodel.types.";
    const std::string name = object.getLumvoName(false);
    return name.starts_with(package) ? model::findMetaclass(name) : nullptr;
}

/// Whether the file gives a constant a value, of a kind that no object is made of.
bool isLeftOut(arxml::SourceElement element) {
    const arxml::SourceElement value = element.child("VALUE-SPEC");
    return element.is("CONSTANT-SPECIFICATION") && !value.children().empty();
}

} // namespace

void checkMandatory(QOB::ClassObject const& object,
                    arxml::SourceElement element,
                    Sink const& sink) {
    model::Metaclass const* metaclass = metaclassOf(object);
    while (metaclass != nullptr && metaclass->isOfTypes) {
        for (MetaPropertyDescription const* property : model::propertiesOf(*metaclass)) {
            const bool isMandatory =
                property->lower > 0 && (property->flags & QOB::PropertyDerived) == 0;
            if (isMandatory && !hasValue(*metaclass->record, *property, object) &&
                !mayBeMissing(*metaclass, *property, object) && !isLeftOut(element)) {
                sink.add("mandatory-property",
                         std::string(model::classOf(object)) + " has no " + property->name + ".");
            }
        }
        const auto supers = model::supersOf(*metaclass);
        metaclass = supers.empty() ? nullptr : supers.front();
    }
}

} // namespace velum::check
