#include "merge/copies.h"

#include "model/objects.h"

#include <utility>

namespace velum::merge {

using QOB::Attribute;
using QOB::ClassObject;
using Values = std::vector<QOB::Object>;

namespace types = Zorvane::metamodel::types;

namespace {

/// Whether a copy gets the values themselves, or copies of them.
bool isContent(Attribute const& attribute) {
    return attribute.reader == nullptr && !attribute.isReference && !attribute.isWayToOwner &&
           !attribute.isOtherEnd && !attribute.property.isReadOnly();
}

} // namespace

bool isOwnReference(Attribute const& attribute) {
    return attribute.reader == nullptr && attribute.isReference && !attribute.isWayToOwner &&
           !attribute.isOtherEnd && !attribute.property.isReadOnly();
}

void setValues(ClassObject const& object, Attribute const& attribute, Values const& values) {
    bool const isAlone = attribute.isReference && !attribute.property.hasOpposite();
    if (attribute.isMultiValued || values.empty()) {
        object.remove(attribute.property);
    }
    for (QOB::Object const& value : values) {
        if (isAlone) {
            object.setOrAddOnly(attribute.property, value);
        } else {
            object.setOrAdd(attribute.property, value);
        }
    }
}

void copyNotes(ClassObject const& from, ClassObject const& to) {
    std::vector<QOB::ExternalToolInfo> old;
    for (QOB::ExternalToolInfo const info : to.getExternalToolInfos()) {
        old.push_back(info);
    }
    for (QOB::ExternalToolInfo const& info : old) {
        to.removeExternalToolInfo(info);
    }
    for (QOB::ExternalToolInfo const info : from.getExternalToolInfos()) {
        to.setExternalToolInfo(info);
    }
}

Copies::Copies(Side& from, Side& to)
    : from_(from),
      to_(to),
      factory_(types::NSInterface::FactoryIntf::createNewFactory(to.model()),
               to.model().getDeviant()) {
}

ClassObject Copies::make(ClassObject const& source) {
    ClassObject made =
        ClassObject(factory_.createFromString(QOB::String(source.getLumvoName(false))))
            .inDeviant(to_.model().getDeviant());
    if (source.hasExternalId()) {
        made.setExternalId(source.getExternalId());
    }
    if (source.hasExternalToolInfos()) {
        copyNotes(source, made);
    }
    copies_.insert_or_assign(source.get(), made);
    to_.put(from_.keyOf(source), made);
    unlinked_.push_back(source);
    return made;
}

ClassObject Copies::copy(ClassObject const& source) {
    ClassObject whole = make(source);
    std::vector<std::pair<ClassObject, ClassObject>> open{{source, whole}};
    while (!open.empty()) {
        auto const [from, to] = open.back();
        open.pop_back();
        for (Attribute const& attribute : from_.addresses().attributes().of(from)) {
            if (!isContent(attribute)) {
                continue;
            }
            Values values = attribute.valuesOf(from);
            if (attribute.ownsObjects) {
                for (QOB::Object& value : values) {
                    open.emplace_back(ClassObject(value), make(ClassObject(value)));
                    value = open.back().second;
                }
            }
            if (!values.empty() || !attribute.valuesOf(to).empty()) {
                setValues(to, attribute, values);
            }
        }
    }
    return whole;
}

ClassObject Copies::counterpart(ClassObject const& source) {
    if (auto const found = copies_.find(source.get()); found != copies_.end()) {
        return found->second;
    }
    ClassObject const known = to_.find(from_.keyOf(source));
    bool const isNamed = source.hasContainerQOB() || source.hasExternalId();
    return known.get() != nullptr || isNamed ? known : copy(source);
}

Values
Copies::translated(Values const& values, ClassObject const& user, OnMissing const& onMissing) {
    Values result;
    for (QOB::Object const& value : values) {
        ClassObject const target(value);
        if (target.get() == nullptr) {
            result.push_back(value);
            continue;
        }
        ClassObject found = counterpart(target);
        found = found.get() != nullptr ? found : onMissing(target, user);
        if (found.get() != nullptr) {
            result.emplace_back(found);
        }
    }
    return result;
}

void Copies::link(OnMissing const& onMissing) {
    while (!unlinked_.empty()) {
        ClassObject const source = unlinked_.front();
        unlinked_.pop_front();
        ClassObject const made = copies_.at(source.get());
        for (Attribute const& attribute : from_.addresses().attributes().of(source)) {
            if (isOwnReference(attribute)) {
                Values const values = translated(attribute.valuesOf(source), source, onMissing);
                if (!values.empty()) {
                    setValues(made, attribute, values);
                }
            }
        }
    }
}

} // namespace velum::merge
