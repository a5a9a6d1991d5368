#include "check/mandatory.h"

#include "model/metaclasses.h"
#include "model/objects.h"

namespace velum::check {

namespace {

using QOB::MetaPropertyDescription;

/// The kernel's value types by their index in its table.
enum ValueType : unsigned { string = 24, real = 27, integer = 28 };

bool hasValue(const QOB::IntrospectiveMethods& record,
              const MetaPropertyDescription& property,
              const QOB::ClassObject& object) {
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

/// Whether the property makes a tree of objects of one class, of which the object is a leaf.
bool isLeaf(const model::Metaclass& metaclass,
            const MetaPropertyDescription& property,
            const QOB::ClassObject& object) {
    return property.package()->classes[property.typeIndex] == metaclass.record &&
           object.hasContainerQOB() &&
           model::classOf(object.getContainerQOB()) == model::classOf(object);
}

/// A missing text or number is common in files; a missing object leaves a hole in the model.
Severity severityOf(const MetaPropertyDescription& property) {
    return property.package() == QOB::get_QOB_PackageIntrospectiveMethods() ? Severity::note
                                                                            : Severity::warning;
}

} // namespace

void checkMandatory(const QOB::ClassObject& object,
                    const std::string& path,
                    std::vector<Issue>& issues) {
    const model::Metaclass* metaclass = model::findMetaclass(model::classOf(object));
    while (metaclass != nullptr && metaclass->isOfTypes) {
        for (const MetaPropertyDescription* property : model::propertiesOf(*metaclass)) {
            const bool isMandatory =
                property->lower > 0 && (property->flags & QOB::PropertyDerived) == 0;
            if (isMandatory && !hasValue(*metaclass->record, *property, object) &&
                !isLeaf(*metaclass, *property, object)) {
                issues.push_back(
                    {path,
                     "mandatory-property",
                     severityOf(*property),
                     std::string(model::classOf(object)) + " has no " + property->name + "."});
            }
        }
        const auto supers = model::supersOf(*metaclass);
        metaclass = supers.empty() ? nullptr : supers.front();
    }
}

} // namespace velum::check
