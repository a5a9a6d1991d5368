#include "attributes.h"

#include "nshandmaintained/propertyindex.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/sequence.h"
#include "qob/qob/stereotypeobject.h"

#include <string_view>
#include <typeinfo>
#include <unordered_set>
#include <utility>

namespace QOB {

namespace {

using internal::isNothing;
using Values = std::vector<Object>;

template <class Elements>
Values allOf(Elements const& elements) {
    Values values;
    for (auto const& element : elements) {
        values.emplace_back(element);
    }
    return values;
}

Values one(String const& text) {
    return text.isValid() ? Values{Object(text)} : Values();
}

Values externalId(ClassObject const& object) {
    return object.hasExternalId() ? one(object.getExternalId()) : Values();
}
Values externalToolInfos(ClassObject const& object) {
    Values values;
    if (object.hasExternalToolInfos()) {
        for (ExternalToolInfo const info : object.getExternalToolInfosWithoutAssociation()) {
            values.emplace_back(
                String(std::string(info.getKey()) + "=" + std::string(info.getValue())));
        }
    }
    return values;
}
Values appliedStereotypes(ClassObject const& object) {
    return object.hasAppliedStereotypeInstances()
               ? allOf(object.getAppliedStereotypeInstancesWithoutAssociation())
               : Values();
}
Values container(ClassObject const& object) {
    return object.hasContainerQOB() ? Values{object.getContainerQOB()} : Values();
}

template <class Number>
bool isValid(NSInterface::ValueObjectIntf const& box) {
    auto const* const number = static_cast<Number const*>(box.findValue(typeid(Number)));
    return number != nullptr && number->isValid();
}

/// Whether a box is seen to hold something without a look at its text.
bool isValidNumber(NSInterface::ValueObjectIntf const& box) {
    return isValid<Integer>(box) || isValid<Real>(box) || isValid<Boolean>(box);
}

/// What the class and its supers declare, that of the supers first.
class Collection {
public:
    void add(ImmutableClass const& of) {
        enter(of);
        while (!open_.empty()) {
            if (Level& last = open_.back(); last.next != last.supers.size()) {
                enter(last.supers.at(last.next++));
            } else {
                addDeclared(last.of);
                open_.pop_back();
            }
        }
    }

    std::vector<Attribute> attributes(internal::PropertyIndex const& index) const {
        std::vector<Attribute> found;
        for (ImmutableProperty const& property : properties_) {
            PropertyBinding const* const binding = index.find(property->internal_binding());
            if (binding != nullptr && !property.isDerived() &&
                !replaced_.contains(property.get())) {
                found.push_back(attributeOf(property));
                found.back().binding = *binding;
            }
        }
        return found;
    }

private:
    /// A class whose supers are being added; live classes may be derived to any depth.
    struct Level {
        ImmutableClass of;
        ImmutableSequence<ImmutableClass> supers;
        int next = 0;
    };

    void enter(ImmutableClass const& of) {
        // What every object has is who and where it is, but for what `attributesOf` adds.
        bool const isOfEvery =
            of->internal_binding().methods == &NSInterface::ClassObjectIntf::sIntrospectiveMethods;
        if (!isOfEvery && seen_.insert(of.get()).second) {
            open_.push_back({of, of.getSupers()});
        }
    }
    void addDeclared(ImmutableClass const& of) {
        for (ImmutableProperty const property : of.getOwnedAttributes()) {
            for (ImmutableProperty const redefined : property.getRedefinedProperties()) {
                replaced_.insert(redefined.get());
            }
            properties_.push_back(property);
        }
    }
    static bool hasObjects(ImmutableProperty const& property) {
        return ImmutableClass(property.getType()).isValid();
    }
    static bool ownsObjects(ImmutableProperty const& property) {
        return property.isComposite() && hasObjects(property);
    }
    /// The other end of single references: what it lists follows from them.
    static bool isOtherEnd(ImmutableProperty const& property) {
        return property.isMultiValued() && !property.isComposite() && property.hasOpposite() &&
               !property.getOpposite().isMultiValued();
    }
    static Attribute attributeOf(ImmutableProperty const& property) {
        return {.name = property.getName(),
                .property = property,
                .isMultiValued = property.isMultiValued(),
                .isOrdered = property.isOrdered(),
                .ownsObjects = ownsObjects(property),
                .isReference = hasObjects(property) && !property.isComposite(),
                .isWayToOwner = property.hasOpposite() && ownsObjects(property.getOpposite()),
                .isOtherEnd = isOtherEnd(property)};
    }

    std::vector<Level> open_;
    std::unordered_set<void const*> seen_;
    std::unordered_set<void const*> replaced_;
    std::vector<ImmutableProperty> properties_;
};

std::vector<Attribute> attributesOf(ImmutableClass const& live) {
    std::vector<Attribute> attributes;
    if (live.isValid()) {
        Collection collection;
        collection.add(live);
        attributes = collection.attributes(live->internal_propertyIndex());
    }
    attributes.push_back({.name = "ExternalId", .reader = &externalId});
    attributes.push_back(
        {.name = "ExternalToolInfo", .reader = &externalToolInfos, .isMultiValued = true});
    attributes.push_back({.name = "AppliedStereotypeInstance",
                          .reader = &appliedStereotypes,
                          .isMultiValued = true,
                          .ownsObjects = true});
    return attributes;
}

} // namespace

std::vector<Object> Attribute::valuesOf(ClassObject const& object) const {
    if (reader != nullptr) {
        return reader(object);
    }
    if (!internal::hasValues(*this, object)) {
        return {};
    }
    if (isMultiValued) {
        bool const areObjects = isReference || ownsObjects;
        return areObjects ? allOf(Sequence<ClassObject>(binding.methods->getMultiValued(
                                object.get(), object.getDeviant(), binding.id, true)))
                          : allOf(object.get(property));
    }
    Object value = binding.methods->getSingleValued(object.get(), object.getDeviant(), binding.id);
    return isNothing(value) ? Values() : Values{std::move(value)};
}

std::vector<Attribute> const& Attributes::of(ClassObject const& object) {
    // Objects without a live class are told apart by the name of their class.
    ImmutableClass const live = object.getMetaClass();
    return of(live,
              live.get() != nullptr ? live.get()
                                    : static_cast<void const*>(object.getLumvoName(false)));
}

std::vector<Attribute> const& Attributes::of(ImmutableClass const& live) {
    return of(live, live.get());
}

std::vector<Attribute> const& Attributes::of(ImmutableClass const& live, void const* key) {
    auto const found = byClass_.find(key);
    return found != byClass_.end() ? found->second
                                   : byClass_.emplace(key, attributesOf(live)).first->second;
}

namespace internal {

bool isNothing(Object const& value) {
    if (value.get() == nullptr) {
        return true;
    }
    auto const* const box = valueObject(value.get());
    if (box == nullptr || isValidNumber(*box)) {
        return false;
    }
    String const text = value.toString();
    bool const isText = std::string_view(value.getLumvoName(false)) == String::getTypeName();
    return !text.isValid() || (!isText && text.view().empty());
}

bool hasValues(Attribute const& attribute, ClassObject const& object) {
    if (attribute.reader != nullptr) {
        return !attribute.reader(object).empty();
    }
    PropertyBinding const& binding = attribute.binding;
    IntrospectiveMethods const& methods = *binding.methods;
    Deviant const deviant = object.getDeviant();
    if (!attribute.isMultiValued) {
        return methods.hasSingleValued(object.get(), deviant, binding.id);
    }
    return !listOf(attribute, object).generic_empty();
}

Generic::SequenceRef listOf(Attribute const& attribute, ClassObject const& object) {
    Deviant const deviant = object.getDeviant();
    NSInterface::ObjectIntf* const self = object.get();
    NSInterface::ObjectIntf* const state = self->getReadDeviantI(deviant, self);
    PropertyBinding const& binding = attribute.binding;
    return binding.methods->getMultiValued(state, deviant, binding.id, false);
}

bool isExternalId(Attribute const& attribute) {
    return attribute.reader == &externalId;
}

Attribute containerAttribute() {
    return {.name = "ContainerQOB", .reader = &container, .isWayToOwner = true};
}

String nameOf(ClassObject const& object) {
    if (StereotypeObject const stereotype(object); stereotype.get() != nullptr) {
        return stereotype.getStereotypeName();
    }
    ImmutableClass const live = object.getMetaClass();
    if (live.get() == nullptr) {
        return {};
    }
    PropertyBinding const* const binding = live->internal_propertyIndex().find("Name");
    if (binding == nullptr) {
        return {};
    }
    Object const value =
        binding->methods->getSingleValued(object.get(), object.getDeviant(), binding->id);
    return value.get() != nullptr ? String(value) : String();
}

} // namespace internal

} // namespace QOB
