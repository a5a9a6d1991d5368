#include "qob/kernel/containers/sequence/views/propertytosequenceproxy.h"

#include "nshandmaintained/propertyindex.h"
#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/qob/class.h"

#include <utility>

namespace QOB {

using Generic::IteratorPtr;
using Generic::Ref;

/// At the value, which it keeps, or behind it; where there is none always behind it.
class GenericPropertyToSequenceProxy::Iterator final : public IteratorProxy {
public:
    Iterator(ClassObject value, bool atEnd) noexcept
        : value_(std::move(value)), atEnd_(atEnd || value_.get() == nullptr) {}

    static Iterator const& own(IteratorIntf const* position) {
        auto const* const own = dynamic_cast<Iterator const*>(position);
        internal::checkPlace(own != nullptr);
        return *own;
    }
    bool atEnd() const noexcept { return atEnd_; }
    ClassObject const& value() const noexcept { return value_; }

    Ref generic_value(Deviant const& deviant) const override {
        internal::checkNotAtEnd(atEnd_);
        return Generic::objectRefIn(value_.get(), deviant);
    }
    void generic_next(Deviant const&) override {
        internal::checkNotAtEnd(atEnd_);
        atEnd_ = true;
    }
    void generic_prev(Deviant const&) override {
        internal::checkNotAtBegin(!atEnd_ || value_.get() == nullptr);
        atEnd_ = false;
    }
    IteratorPtr generic_clone() const override { return std::make_unique<Iterator>(*this); }
    bool generic_sameAs(IteratorIntf const* other) const override {
        auto const* const there = dynamic_cast<Iterator const*>(other);
        return there != nullptr && there->atEnd_ == atEnd_ &&
               (atEnd_ || there->value_.get() == value_.get());
    }

private:
    ClassObject value_;
    bool atEnd_;
};

GenericPropertyToSequenceProxy::GenericPropertyToSequenceProxy(ImmutableClassObject object,
                                                               IntrospectiveMethods const* methods,
                                                               unsigned propertyId,
                                                               int ends)
    : object_(std::move(object)), methods_(methods), propertyId_(propertyId), ends_(ends) {
}

GenericPropertyToSequenceProxy::~GenericPropertyToSequenceProxy() = default;

NSInterface::ObjectIntf* GenericPropertyToSequenceProxy::object() const noexcept {
    return const_cast<NSInterface::ClassObjectIntf*>(object_.get());
}

ClassObject GenericPropertyToSequenceProxy::value(Deviant const& deviant) const {
    if (!methods_->hasSingleValued(object(), deviant, propertyId_)) {
        return {};
    }
    ClassObject const result(methods_->getSingleValued(object(), deviant, propertyId_));
    return result.isValid() ? result : ClassObject();
}

namespace {

/// Whether an object can be a value of the property; true for what the meta-registry doesn't know.
bool takesIn(IntrospectiveMethods const& methods,
             unsigned propertyId,
             NSInterface::ClassObjectIntf const* object) {
    MetaPropertyDescription const* const property =
        methods.properties != nullptr ? methods.properties[propertyId] : nullptr;
    ImmutableClass const meta = object->getMetaClass(object->getRootDeviant());
    return property == nullptr || meta.get() == nullptr ||
           meta->internal_propertyIndex().isKindOf(
               internal::recordAt(property->package, property->typeIndex));
}

} // namespace

/// The property's setter would take an object of another class as a removal.
void GenericPropertyToSequenceProxy::set(Deviant const& deviant, Ref const& element) {
    if (element.data == nullptr || !takesIn(*methods_, propertyId_, Generic::objectOf(element))) {
        MultiIndexImplInternal::failNullElement(SequenceNames<ClassObject>::names[0][0]);
    }
    auto const function =
        ends_ == OneEnd ? methods_->setOnlySingleValued : methods_->setSingleValued;
    function(object(), deviant, propertyId_, Object(Generic::objectOf(element), element.deviant));
}

void GenericPropertyToSequenceProxy::remove(Deviant const& deviant) {
    auto const function =
        ends_ == OneEnd ? methods_->removeOnlySingleValued : methods_->removeSingleValued;
    function(object(), deviant, propertyId_);
}

Ref GenericPropertyToSequenceProxy::generic_at(Deviant const& deviant, int index) const {
    ClassObject const element = value(deviant);
    internal::checkElementIndex(index, element.get() == nullptr ? 0 : 1);
    return Generic::toRef(element);
}

Ref GenericPropertyToSequenceProxy::generic_front(Deviant const& deviant) const {
    ClassObject const element = value(deviant);
    internal::checkNotEmpty(element.get() == nullptr);
    return Generic::toRef(element);
}

Ref GenericPropertyToSequenceProxy::generic_back(Deviant const& deviant) const {
    return generic_front(deviant);
}

IteratorPtr GenericPropertyToSequenceProxy::generic_begin(Deviant const& deviant) const {
    return std::make_unique<Iterator>(value(deviant), false);
}

IteratorPtr GenericPropertyToSequenceProxy::generic_end(Deviant const& deviant) const {
    return std::make_unique<Iterator>(value(deviant), true);
}

void GenericPropertyToSequenceProxy::generic_clear(Deviant const& deviant) {
    if (!generic_empty(deviant)) {
        remove(deviant);
    }
}

int GenericPropertyToSequenceProxy::generic_size(Deviant const& deviant) const {
    return value(deviant).get() == nullptr ? 0 : 1;
}

bool GenericPropertyToSequenceProxy::generic_empty(Deviant const& deviant) const {
    return value(deviant).get() == nullptr;
}

IteratorPtr GenericPropertyToSequenceProxy::generic_insert(Deviant const& deviant,
                                                           IteratorIntf const*,
                                                           Ref element) {
    set(deviant, element);
    return generic_begin(deviant);
}

void GenericPropertyToSequenceProxy::generic_insert(Deviant const& deviant,
                                                    int index,
                                                    Ref element) {
    internal::checkInsertIndex(index, generic_size(deviant));
    set(deviant, element);
}

void GenericPropertyToSequenceProxy::generic_erase(Deviant const& deviant, int index) {
    internal::checkElementIndex(index, generic_size(deviant));
    remove(deviant);
}

IteratorPtr GenericPropertyToSequenceProxy::generic_erase(Deviant const& deviant,
                                                          IteratorIntf const* first,
                                                          IteratorIntf const* last) {
    value(deviant); // raises where nothing can be read
    bool const isEmpty = Iterator::own(first).atEnd();
    internal::checkRange(isEmpty <= Iterator::own(last).atEnd());
    if (isEmpty == Iterator::own(last).atEnd()) {
        return first->generic_clone();
    }
    return generic_erase(deviant, first);
}

IteratorPtr GenericPropertyToSequenceProxy::generic_erase(Deviant const& deviant,
                                                          IteratorIntf const* position) {
    Iterator const& own = Iterator::own(position);
    internal::checkNotAtEnd(own.atEnd());
    internal::checkPlace(own.value().get() == value(deviant).get());
    remove(deviant);
    return generic_end(deviant);
}

void GenericPropertyToSequenceProxy::generic_pop_back(Deviant const& deviant) {
    internal::checkNotEmpty(generic_empty(deviant));
    remove(deviant);
}

void GenericPropertyToSequenceProxy::generic_pop_front(Deviant const& deviant) {
    generic_pop_back(deviant);
}

void GenericPropertyToSequenceProxy::generic_push_back(Deviant const& deviant, Ref element) {
    set(deviant, element);
}

void GenericPropertyToSequenceProxy::generic_push_front(Deviant const& deviant, Ref element) {
    set(deviant, element);
}

void GenericPropertyToSequenceProxy::generic_replace(Deviant const& deviant,
                                                     int index,
                                                     Ref element) {
    internal::checkElementIndex(index, generic_size(deviant));
    set(deviant, element);
}

bool GenericPropertyToSequenceProxy::generic_contains(Deviant const& deviant, Ref element) const {
    ClassObject const present = value(deviant);
    return element.data != nullptr && present.get() == element.data;
}

char const*
GenericPropertyToSequenceProxy::generic_getLumvoName(bool, bool, char const* fallback) const {
    return fallback;
}

int GenericPropertyToSequenceProxy::generic_removeAll(Deviant const& deviant, Ref element) {
    if (!generic_contains(deviant, std::move(element))) {
        return 0;
    }
    remove(deviant);
    return 1;
}

} // namespace QOB
