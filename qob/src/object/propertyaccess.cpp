#include "nshandmaintained/propertyindex.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/class.h"
#include "qob/qob/property.h"
#include "tessel/any.h"

#include <string>
#include <utility>

/// Properties of any object by their live element or by name. Finds the functions of the class that
/// declares the property, checks kind and value, and calls them.
namespace QOB {

namespace {

using Generic::Ref;
using Generic::SequenceRef;
using internal::PropertyIndex;
using NSInterface::ClassObjectIntf;

/// What a value of a property is.
enum class ValueKind {
    Unknown, ///< the type isn't there, or its values can't be objects
    Object,  ///< an instance of a class
    Kernel,  ///< a value of one of the kernel's value types
    Value    ///< of another library's
};

/// A property of one object, with the functions that reach its values.
class Access {
public:
    Access(ClassObjectIntf const* object, Deviant deviant, ImmutableProperty const& property)
        : object_(const_cast<ClassObjectIntf*>(object)), deviant_(deviant) {
        if (!take(index().find(property->internal_binding()))) {
            failUnknown(property.getName());
        }
    }
    Access(ClassObjectIntf const* object, Deviant deviant, String const& name)
        : object_(const_cast<ClassObjectIntf*>(object)), deviant_(deviant) {
        if (!take(index().find(name.view()))) {
            failUnknown(name);
        }
    }

    Object one() const {
        requireSingle();
        return methods().getSingleValued(object_, deviant_, id());
    }

    Sequence<Object> all() const {
        if (isMultiValued()) {
            bool const ofObjects = requireKnownType() == ValueKind::Object;
            SequenceRef const values = methods().getMultiValued(object_, deviant_, id(), true);
            return ofObjects ? asBoxedObjects(values) : Sequence<Object>(values);
        }
        Sequence<Object> result = MakeSequence<Object>(deviant_);
        if (Object const value = one(); value.get() != nullptr) {
            result.push_back(value);
        }
        return result;
    }

    bool has() const {
        return isMultiValued()
                   ? !methods().getMultiValued(object_, deviant_, id(), false).generic_empty()
                   : methods().hasSingleValued(object_, deviant_, id());
    }

    void setOrAdd(Object const& value, bool only) const {
        requireWritable();
        if (isMultiValued()) {
            Ref element = elementFor(value);
            guarded(value, [&] { sequence(only).generic_push_back(std::move(element)); });
            return;
        }
        if (value.get() == nullptr) {
            removeSingle(only);
            return;
        }
        requireKind(value);
        bool const oneEnd = only && hasOnlyForms();
        auto* const set = oneEnd ? methods().setOnlySingleValued : methods().setSingleValued;
        guarded(value, [&] { set(object_, deviant_, id(), value); });
    }

    void removeAll() const {
        requireWritable();
        if (isMultiValued()) {
            sequence(false).generic_clear();
        } else {
            removeSingle(false);
        }
    }

    void removeValue(Object const& value, bool only) const {
        requireWritable();
        if (isMultiValued()) {
            Ref element = elementFor(value);
            guarded(value, [&] { sequence(only).generic_removeAll(std::move(element)); });
            return;
        }
        requireKind(value);
        if (!hasTypeOfProperty(value)) {
            failType(value);
        }
        if (Generic::equalObjects(one(), value)) {
            removeSingle(only);
        }
    }

    void removeOne(bool only) const {
        requireSingle();
        requireWritable();
        removeSingle(only);
    }

private:
    /// Of the object's class, which the meta-registry keeps.
    PropertyIndex const& index() const {
        ImmutableClass const meta = object_->getMetaClass(deviant_);
        if (meta.get() == nullptr) {
            QOB_FAIL("The properties of an object (%s) cannot be reached: its class is not in the "
                     "meta-registry.",
                     className());
        }
        return meta->internal_propertyIndex();
    }

    bool take(PropertyBinding const* found) noexcept {
        if (found != nullptr) {
            binding_ = *found;
        }
        return found != nullptr;
    }
    [[noreturn]] void failUnknown(std::string const& name) const {
        QOB_FAIL("The class (%s) has no property (%s).", className(), name.c_str());
    }

    char const* className() const { return object_->getLumvoName(false); }
    IntrospectiveMethods const& methods() const { return *binding_.methods; }
    unsigned id() const { return binding_.id; }
    MetaPropertyDescription const& description() const { return *methods().properties[id()]; }
    bool hasFlags(unsigned flags) const { return (description().flags & flags) == flags; }
    bool isMultiValued() const { return hasFlags(PropertyMultiValued); }

    IntrospectiveMethods const* type() const {
        return internal::recordAt(description().package, description().typeIndex);
    }
    ValueKind kind() const {
        IntrospectiveMethods const* const record = type();
        if (record == nullptr) {
            return ValueKind::Unknown;
        }
        if (record->getSingleValued != nullptr) {
            return ValueKind::Object; // the records of data types have no functions
        }
        if (description().package != &get_QOB_PackageIntrospectiveMethods) {
            return ValueKind::Value;
        }
        return description().typeIndex == ExternalToolInfoIndex ? ValueKind::Unknown
                                                                : ValueKind::Kernel;
    }
    /// Values of the kernel's types and what is derived have no other end and no form without it.
    bool hasOnlyForms() const { return kind() != ValueKind::Kernel && !hasFlags(PropertyDerived); }

    void requireSingle() const {
        if (isMultiValued()) {
            QOB_FAIL("The property (%s) of the class (%s) has any number of values; this operation "
                     "is for one.",
                     description().name,
                     className());
        }
    }
    void requireWritable() const {
        if (hasFlags(PropertyReadOnly | PropertyDerived)) {
            QOB_FAIL("The property (%s) of the class (%s) follows from others and cannot be "
                     "written.",
                     description().name,
                     className());
        }
    }
    ValueKind requireKnownType() const {
        ValueKind const known = kind();
        if (known == ValueKind::Unknown) {
            QOB_FAIL(
                "The values of the property (%s) of the class (%s) are of no type that is known "
                "by itself.",
                description().name,
                className());
        }
        return known;
    }
    /// An instance of the property's class, or a boxed value of whatever type.
    void requireKind(Object const& value) const {
        bool const fits = requireKnownType() == ValueKind::Object
                              ? isInstance(value)
                              : valueObject(value.get()) != nullptr;
        if (!fits) {
            failType(value);
        }
    }
    /// Of a boxed value; true also where the box doesn't know its type.
    bool hasTypeOfProperty(Object const& value) const {
        if (kind() == ValueKind::Object) {
            return true;
        }
        ImmutableType const is = value->getMetaType(value.getDeviant());
        return is.get() == nullptr || type()->meta == nullptr || is.get() == type()->meta;
    }
    bool isInstance(Object const& value) const {
        auto* const object = castObject<ClassObjectIntf>(value.get());
        if (object == nullptr || type() == &ClassObjectIntf::sIntrospectiveMethods) {
            return object != nullptr;
        }
        ImmutableClass const is = object->getMetaClass(value.getDeviant());
        return is.get() != nullptr && is->internal_propertyIndex().isKindOf(type());
    }
    [[noreturn]] void failType(Object const& value) const {
        NSInterface::TypeIntf const* const expected = type()->meta;
        std::string const wanted =
            expected != nullptr ? expected->getName(expected->getRootDeviant()) : String("?");
        std::string const given = value.get() != nullptr ? value.getLumvoName(false) : "nothing";
        QOB_FAIL("The property (%s) of the class (%s) takes values of type %s, not what was given "
                 "(%s).",
                 description().name,
                 className(),
                 wanted.c_str(),
                 given.c_str());
    }
    /// Boxes of another type come out of the conversion of the value class.
    template <class Action>
    void guarded(Object const& value, Action const& action) const {
        try {
            action();
        } catch (Tessel::bad_any_cast const&) {
            failType(value);
        }
    }

    void removeSingle(bool only) const {
        bool const oneEnd = only && hasOnlyForms();
        (oneEnd ? methods().removeOnlySingleValued
                : methods().removeSingleValued)(object_, deviant_, id());
    }

    SequenceRef sequence(bool only) const {
        return (only ? methods().getOnlyMultiValued
                     : methods().getMultiValued)(object_, deviant_, id(), true);
    }

    /// The value as the sequence of the property takes it.
    Ref elementFor(Object const& value) const {
        requireKind(value);
        return kind() == ValueKind::Object
                   ? Generic::objectRef(castObject<ClassObjectIntf>(value.get()),
                                        value.getDeviant())
                   : Generic::toRef(value);
    }

    static Sequence<Object> asBoxedObjects(SequenceRef const& objects) {
        using filtered_sequence_internal::GenericFilter;
        using filtered_sequence_internal::GenericFilteredSequence;
        objects.access();
        return {new GenericFilteredSequence(objects.pointer(), GenericFilter::boxedObjects()),
                objects.getDeviant()};
    }

    ClassObjectIntf* object_;
    Deviant deviant_;
    PropertyBinding binding_;
};

} // namespace

namespace NSInterface {

ImmutableSequence<Object> ClassObjectIntf::get(Deviant deviant,
                                               ImmutableProperty const& property) const {
    return Access(this, deviant, property).all();
}
ImmutableSequence<Object> ClassObjectIntf::get(Deviant deviant, String name) const {
    return Access(this, deviant, name).all();
}
Object ClassObjectIntf::getOne(Deviant deviant, ImmutableProperty const& property) const {
    return Access(this, deviant, property).one();
}
Object ClassObjectIntf::getOne(Deviant deviant, String name) const {
    return Access(this, deviant, name).one();
}
bool ClassObjectIntf::has(Deviant deviant, ImmutableProperty const& property) const {
    return Access(this, deviant, property).has();
}
bool ClassObjectIntf::has(Deviant deviant, String name) const {
    return Access(this, deviant, name).has();
}
void ClassObjectIntf::setOrAdd(Deviant deviant, ImmutableProperty const& property, Object value) {
    Access(this, deviant, property).setOrAdd(value, false);
}
void ClassObjectIntf::setOrAdd(Deviant deviant, String name, Object value) {
    Access(this, deviant, name).setOrAdd(value, false);
}
void ClassObjectIntf::setOrAddOnly(Deviant deviant,
                                   ImmutableProperty const& property,
                                   Object value) {
    Access(this, deviant, property).setOrAdd(value, true);
}
void ClassObjectIntf::setOrAddOnly(Deviant deviant, String name, Object value) {
    Access(this, deviant, name).setOrAdd(value, true);
}
void ClassObjectIntf::remove(Deviant deviant, ImmutableProperty const& property) {
    Access(this, deviant, property).removeAll();
}
void ClassObjectIntf::remove(Deviant deviant, String name) {
    Access(this, deviant, name).removeAll();
}
void ClassObjectIntf::remove(Deviant deviant, ImmutableProperty const& property, Object value) {
    Access(this, deviant, property).removeValue(value, false);
}
void ClassObjectIntf::remove(Deviant deviant, String name, Object value) {
    Access(this, deviant, name).removeValue(value, false);
}
void ClassObjectIntf::removeOnly(Deviant deviant, ImmutableProperty const& property, Object value) {
    Access(this, deviant, property).removeValue(value, true);
}
void ClassObjectIntf::removeOnly(Deviant deviant, String name, Object value) {
    Access(this, deviant, name).removeValue(value, true);
}
void ClassObjectIntf::removeOne(Deviant deviant, ImmutableProperty const& property) {
    Access(this, deviant, property).removeOne(false);
}
void ClassObjectIntf::removeOne(Deviant deviant, String name) {
    Access(this, deviant, name).removeOne(false);
}
void ClassObjectIntf::removeOneOnly(Deviant deviant, ImmutableProperty const& property) {
    Access(this, deviant, property).removeOne(true);
}
void ClassObjectIntf::removeOneOnly(Deviant deviant, String name) {
    Access(this, deviant, name).removeOne(true);
}

} // namespace NSInterface
} // namespace QOB
