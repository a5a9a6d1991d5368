#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/boolean.h"
#include "qob/qob/integer.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"
#include "registry/modulelife.h"

#include <new>
#include <utility>

namespace QOB {

namespace {

template <class Value>
Value unbox(NSInterface::ObjectIntf const* object) {
    auto const* const box = valueObject(object);
    if (box == nullptr) {
        QOB_FAIL("The object holds no value (%s): %s.",
                 Value::getTypeName().c_str(),
                 object == nullptr ? "it is null" : "it is no value object");
    }
    return unboxValue<Value>(*box);
}

} // namespace

constinit void* internal::spareBoxes[SpareBoxSizes]{};

void internal::releaseSpareBoxes() noexcept {
    for (void*& spare : spareBoxes) {
        ::operator delete(std::exchange(spare, nullptr));
    }
}

Integer::Integer(Object const& object) : Integer(unbox<Integer>(object.get())) {
}
Integer::Integer(ImmutableObject const& object) : Integer(unbox<Integer>(object.get())) {
}
Integer::Integer(ValueObject const& object) : Integer(unbox<Integer>(object.get())) {
}
Integer::Integer(ImmutableValueObject const& object) : Integer(unbox<Integer>(object.get())) {
}
Integer::operator Object() const {
    return boxValue<Object>(*this);
}

Real::Real(Object const& object) : Real(unbox<Real>(object.get())) {
}
Real::Real(ImmutableObject const& object) : Real(unbox<Real>(object.get())) {
}
Real::Real(ValueObject const& object) : Real(unbox<Real>(object.get())) {
}
Real::Real(ImmutableValueObject const& object) : Real(unbox<Real>(object.get())) {
}
Real::operator Object() const {
    return boxValue<Object>(*this);
}

Boolean::Boolean(Object const& object) : Boolean(unbox<Boolean>(object.get())) {
}
Boolean::Boolean(ImmutableObject const& object) : Boolean(unbox<Boolean>(object.get())) {
}
Boolean::Boolean(ValueObject const& object) : Boolean(unbox<Boolean>(object.get())) {
}
Boolean::Boolean(ImmutableValueObject const& object) : Boolean(unbox<Boolean>(object.get())) {
}
// A box never changes, so three serve all truth values, for as long as the process runs.
Boolean::operator Object() const {
    static auto const* const boxes = new Object[]{boxValue<Object>(Boolean()),
                                                  boxValue<Object>(Boolean(false)),
                                                  boxValue<Object>(Boolean(true))};
    return boxes[valid_ ? 1 + static_cast<int>(value_) : 0];
}

String::String(Object const& object) : String(unbox<String>(object.get())) {
}
String::String(ImmutableObject const& object) : String(unbox<String>(object.get())) {
}
String::String(ValueObject const& object) : String(unbox<String>(object.get())) {
}
String::String(ImmutableValueObject const& object) : String(unbox<String>(object.get())) {
}
String::operator Object() const {
    return boxValue<Object>(*this);
}

} // namespace QOB
