#include "model/changes.h"

#include "model/modelcore.h"
#include "nshandmaintained/propertyindex.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "qob/qob/attributes.h"
#include "qob/qob/class.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/factoryobject.h"
#include "qob/qob/nsinterface/modelintf.h"
#include "qob/qob/real.h"
#include "qob/qob/stereotypeobject.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <typeinfo>
#include <utility>

namespace QOB {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;
using NSInterface::ValueObjectIntf;

namespace {

bool isOfEvery(PropertyBinding const& binding) {
    return binding.methods == &ClassObjectIntf::sIntrospectiveMethods;
}

/// The live property of every object; empty before the kernel has described itself.
ImmutableProperty propertyOfEvery(unsigned id) {
    IntrospectiveMethods const& methods = ClassObjectIntf::sIntrospectiveMethods;
    MetaPropertyDescription const* const description =
        methods.properties != nullptr ? methods.properties[id] : nullptr;
    NSInterface::PropertyIntf const* const meta =
        description != nullptr ? description->meta : nullptr;
    return meta != nullptr ? ImmutableProperty(meta, meta->getRootDeviant()) : ImmutableProperty();
}

template <class Value>
Value const* valueIn(Object const& box) {
    auto const* const value = castObject<ValueObjectIntf>(box.get());
    return value != nullptr ? static_cast<Value const*>(value->findValue(typeid(Value))) : nullptr;
}

template <class Value>
bool areEqual(Value const* one, Value const* other) {
    return one != nullptr && other != nullptr && *one == *other;
}

/// Of values that one property had before and after. All bits of a number count.
bool isSame(Object const& one, Object const& other) {
    if (one.get() == other.get()) {
        return true;
    }
    if (castObject<ValueObjectIntf>(one.get()) == nullptr ||
        castObject<ValueObjectIntf>(other.get()) == nullptr) {
        return false;
    }
    if (Real const* const real = valueIn<Real>(one)) {
        Real const* const otherReal = valueIn<Real>(other);
        auto const bits = [](Real const& value) {
            return std::bit_cast<std::uint64_t>(static_cast<double const&>(value));
        };
        return otherReal != nullptr && real->isValid() == otherReal->isValid() &&
               (!real->isValid() || bits(*real) == bits(*otherReal));
    }
    return areEqual(valueIn<String>(one), valueIn<String>(other)) ||
           areEqual(valueIn<Integer>(one), valueIn<Integer>(other)) ||
           areEqual(valueIn<Boolean>(one), valueIn<Boolean>(other)) ||
           (valueIn<String>(one) == nullptr && one.toString() == other.toString());
}

/// What a state has for a single-valued property; an empty handle if nothing.
Object oneIn(ObjectIntf* state, Deviant deviant, PropertyBinding const& binding) {
    IntrospectiveMethods const& methods = *binding.methods;
    Object value = methods.getSingleValued(state, deviant, binding.id);
    // A reference is what the state holds, whether or not the object exists in the deviant.
    bool const isThere = castObject<ValueObjectIntf>(value.get()) == nullptr ||
                         methods.hasSingleValued(state, deviant, binding.id);
    return isThere ? value : Object();
}

Generic::SequenceRef
manyIn(ObjectIntf* state, Deviant deviant, PropertyBinding const& binding, bool asObjects) {
    return binding.methods->getMultiValued(state, deviant, binding.id, asObjects);
}

bool differs(ObjectIntf* before,
             ObjectIntf* after,
             Deviant deviant,
             PropertyBinding const& binding,
             bool isMultiValued) {
    if (!isMultiValued) {
        return !isSame(oneIn(before, deviant, binding), oneIn(after, deviant, binding));
    }
    Generic::SequenceRef const old = manyIn(before, deviant, binding, false);
    Generic::SequenceRef const now = manyIn(after, deviant, binding, false);
    return old.isNull() || now.isNull() ? old.isNull() != now.isNull() : !old.generic_equal(now);
}

std::vector<Object> toolInfosIn(ObjectIntf* state, Deviant deviant) {
    std::vector<Object> values;
    for (ExternalToolInfo const info :
         castObject<ClassObjectIntf>(state)->getExternalToolInfos(deviant)) {
        values.emplace_back(
            String(std::string(info.getKey()) + "=" + std::string(info.getValue())));
    }
    return values;
}

} // namespace

// ObjectChange ---------------------------------------------------------------------------------

bool ObjectChange::has(ImmutableProperty const& property) const {
    return std::any_of(properties_.begin(), properties_.end(), [&](auto const& each) {
        return each.get() == property.get();
    });
}

std::vector<Object> ObjectChange::oldValues(ImmutableProperty const& property) const {
    return valuesIn(before_, idBefore_, property);
}

std::vector<Object> ObjectChange::newValues(ImmutableProperty const& property) const {
    return valuesIn(after_, object_->getObjectId(object_.getDeviant()), property);
}

std::vector<Object> ObjectChange::valuesIn(ObjectIntf* state,
                                           Integer const& id,
                                           ImmutableProperty const& property) const {
    PropertyBinding binding = property->internal_binding();
    if (!isOfEvery(binding)) {
        ImmutableClass const live = object_->getMetaClass(object_.getDeviant());
        PropertyBinding const* const found =
            live.get() != nullptr ? live->internal_propertyIndex().find(binding) : nullptr;
        if (found == nullptr || property.isDerived()) {
            QOB_FAIL("The class (%s) stores no property (%s).",
                     object_.getLumvoName(false),
                     std::string(property.getName()).c_str());
        }
        binding = *found;
    }
    Deviant const deviant = object_.getDeviant();
    if (state == nullptr) {
        return {};
    }
    if (isOfEvery(binding) && binding.id == ClassObjectIntf::ObjectIdId) {
        return id.isValid() ? std::vector<Object>{Object(id)} : std::vector<Object>();
    }
    if (isOfEvery(binding) && binding.id == ClassObjectIntf::ExternalToolInfoId) {
        return toolInfosIn(state, deviant);
    }
    std::vector<Object> values;
    if (!property.isMultiValued()) {
        Object value = oneIn(state, deviant, binding);
        if (value.get() != nullptr) {
            values.push_back(std::move(value));
        }
    } else if (ImmutableClass(property.getType()).isValid()) {
        for (ClassObject const element :
             Sequence<ClassObject>(manyIn(state, deviant, binding, true))) {
            values.emplace_back(element);
        }
    } else {
        for (Object const value : Sequence<Object>(manyIn(state, deviant, binding, true))) {
            values.push_back(value);
        }
    }
    return values;
}

namespace internal {

// ChangeCollector ------------------------------------------------------------------------------

ChangeCollector::ChangeCollector(DeviantData& deviant, ObserverList& observers)
    : deviant_(deviant.self()), observers_(observers) {
    changes_.model_ = Model(castObject<NSInterface::ModelIntf>(deviant.model().model()), deviant_);
}

ObjectChange
ChangeCollector::changeOf(ClassObjectIntf* object, ObjectIntf* before, ObjectIntf* after) const {
    ObjectChange change;
    change.object_ = ClassObject(object, deviant_);
    change.before_ = before;
    change.after_ = after;
    change.idBefore_ = object->getObjectId(deviant_);
    return change;
}

void ChangeCollector::add(ClassObjectIntf* object, ObjectIntf* before, ObjectIntf* after) {
    if ((before == nullptr && after == nullptr) ||
        castObject<NSInterface::FactoryObjectIntf>(object) != nullptr) {
        return;
    }
    ObjectChange change = changeOf(object, before, after);
    if (before == nullptr) {
        changes_.created_.push_back(std::move(change));
    } else if (after == nullptr) {
        changes_.destroyed_.push_back(std::move(change));
    } else {
        compareStates(change);
        if (!change.properties_.empty()) {
            changes_.changed_.push_back(std::move(change));
        }
    }
}

void ChangeCollector::addId(ClassObjectIntf* object, ObjectIntf* state, Integer const& before) {
    ObjectChange change = changeOf(object, state, state);
    change.idBefore_ = before;
    if (ImmutableProperty const id = propertyOfEvery(ClassObjectIntf::ObjectIdId);
        id.get() != nullptr) {
        change.properties_.push_back(id);
    }
    changes_.changed_.push_back(std::move(change));
}

void ChangeCollector::compareStates(ObjectChange& change) {
    bool tellsContainer = false;
    for (Attribute const& attribute : observers_.attributesOf(change.object_)) {
        if (attribute.reader == nullptr &&
            attribute.binding.methods != &NSInterface::ModelIntf::sIntrospectiveMethods &&
            differs(change.before_,
                    change.after_,
                    deviant_,
                    attribute.binding,
                    attribute.isMultiValued)) {
            change.properties_.push_back(attribute.property);
            tellsContainer = tellsContainer || attribute.isWayToOwner;
        }
    }
    bool const isModel = castObject<NSInterface::ModelIntf>(change.object_.get()) != nullptr;
    for (unsigned const id : {ClassObjectIntf::UriId,
                              ClassObjectIntf::ContainerQOBId,
                              ClassObjectIntf::AppliedStereotypeInstanceId,
                              ClassObjectIntf::ExternalIdId,
                              ClassObjectIntf::ExternalToolInfoId}) {
        if ((id == ClassObjectIntf::UriId && !isModel) ||
            (id == ClassObjectIntf::ContainerQOBId && tellsContainer)) {
            continue;
        }
        bool const isMultiValued = id == ClassObjectIntf::AppliedStereotypeInstanceId ||
                                   id == ClassObjectIntf::ExternalToolInfoId;
        PropertyBinding const binding{&ClassObjectIntf::sIntrospectiveMethods, id};
        if (differs(change.before_, change.after_, deviant_, binding, isMultiValued)) {
            if (ImmutableProperty const property = propertyOfEvery(id); property.get() != nullptr) {
                change.properties_.push_back(property);
            }
        }
    }
}

Changes const& ChangeCollector::take() {
    auto const isEarlier = [](ObjectChange const& one, ObjectChange const& other) {
        return ModelCore::placeOf(one.object().get()) < ModelCore::placeOf(other.object().get());
    };
    for (auto* const list : {&changes_.created_, &changes_.destroyed_, &changes_.changed_}) {
        std::sort(list->begin(), list->end(), isEarlier);
    }
    return changes_;
}

} // namespace internal
} // namespace QOB
