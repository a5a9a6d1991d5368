#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "qob/qob/object.h"
#include "qob/qob/reflection.h"

#include <concepts>
#include <cstddef>
#include <type_traits>

/// The eight functions of a class by which its properties are reached by number, made of a list of
/// the class's operations. A class is described by a type with
///
///     using Interface = ...;               the interface class
///     static constexpr char const* name;   its dotted name
///     static constexpr Place place{__FILE__, __LINE__};   where it is described
///     using Properties = List<Single<...>, Many<...>, ...>;
namespace QOB::reflective {

/// What a failure of one of the functions is said to be at.
struct Place {
    char const* file;
    int line;
};

struct Always {};
/// In the place of `has`: the property is always there, and the object isn't asked.
inline constexpr Always always;

/// A single-valued property. What a property doesn't have stays null, and asking for it by number
/// raises QOB::Exception.
template <unsigned Id,
          auto Get,
          auto Has = nullptr,
          auto Set = nullptr,
          auto Remove = nullptr,
          auto SetOnly = nullptr,
          auto RemoveOnly = nullptr>
struct Single {
    static constexpr unsigned id = Id;
    static constexpr auto get = Get;
    static constexpr auto has = Has;
    static constexpr auto set = Set;
    static constexpr auto remove = Remove;
    static constexpr auto setOnly = SetOnly;
    static constexpr auto removeOnly = RemoveOnly;
    static constexpr auto getMany = nullptr;
    static constexpr auto getOnlyMany = nullptr;
};

/// A multi-valued property.
template <unsigned Id, auto GetMany, auto GetOnlyMany>
struct Many {
    static constexpr unsigned id = Id;
    static constexpr auto get = nullptr;
    static constexpr auto has = nullptr;
    static constexpr auto set = nullptr;
    static constexpr auto remove = nullptr;
    static constexpr auto setOnly = nullptr;
    static constexpr auto removeOnly = nullptr;
    static constexpr auto getMany = GetMany;
    static constexpr auto getOnlyMany = GetOnlyMany;
};

template <class... Property>
struct List {};

namespace internal {

[[noreturn]] QOB_EXPORT void
failIllegalProperty(Place const& place, char const* className, char const* function, unsigned id);

template <auto Operation>
inline constexpr bool isThere = !std::is_same_v<decltype(Operation), std::nullptr_t>;

/// The value that a setter takes.
template <class Setter>
struct ArgumentOf;
template <class Class, class Argument>
struct ArgumentOf<void (Class::*)(Deviant, Argument)> {
    using type = std::remove_cvref_t<Argument>;
};

template <class Class>
typename Class::Interface& objectAs(NSInterface::ObjectIntf* object) {
    auto* const found = castObject<typename Class::Interface>(object);
    if (found == nullptr) {
        QOB::internal::failAt(Class::place.file, Class::place.line, "illegal object");
    }
    return *found;
}

/// Calls `action` with the property of the given id; false if there is none, or if the action says
/// that it isn't for it.
template <class... Property, class Action>
bool dispatch(List<Property...>, [[maybe_unused]] unsigned id, Action const& action) {
    return ((id == Property::id && action(Property())) || ...);
}

template <auto Operation, class Intf>
Generic::SequenceRef sequence(Intf& self, Deviant deviant, [[maybe_unused]] bool asObjects) {
    auto elements = (self.*Operation)(deviant);
    using Element = typename decltype(elements)::value_type;
    // A value class that can't be boxed shows as it is.
    if constexpr (!Generic::ObjectElement<Element> && std::is_convertible_v<Element, Object>) {
        if (asObjects) {
            return QOB::asObjects(elements);
        }
    }
    return elements;
}

template <class Class>
struct Functions {
    using Intf = typename Class::Interface;
    using Properties = typename Class::Properties;
    using ObjectPointer = NSInterface::ObjectIntf*;

    static Object getSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf const& self = objectAs<Class>(object);
        Object result;
        bool const done = dispatch(Properties(), id, [&](auto property) {
            using Property = decltype(property);
            if constexpr (isThere<Property::get>) {
                result = Object((self.*Property::get)(deviant));
            }
            return isThere<Property::get>;
        });
        require(done, "getSingleValued", id);
        return result;
    }

    static bool hasSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf const& self = objectAs<Class>(object);
        require(id != 0, "hasSingleValued", id);
        return dispatch(Properties(), id, [&](auto property) {
            using Property = decltype(property);
            if constexpr (std::is_same_v<decltype(Property::has), Always const>) {
                return true;
            } else if constexpr (isThere<Property::has>) {
                return (self.*Property::has)(deviant);
            }
            return false;
        });
    }

    static void
    setSingleValued(ObjectPointer object, Deviant deviant, unsigned id, Object const& value) {
        Intf& self = objectAs<Class>(object);
        bool const done = dispatch(Properties(), id, [&](auto property) {
            return assign<decltype(property)::set>(self, deviant, value);
        });
        require(done, "setSingleValued", id);
    }

    static void
    setOnlySingleValued(ObjectPointer object, Deviant deviant, unsigned id, Object const& value) {
        Intf& self = objectAs<Class>(object);
        bool const done = dispatch(Properties(), id, [&](auto property) {
            return assign<decltype(property)::setOnly>(self, deviant, value);
        });
        require(done, "setOnlySingleValued", id);
    }

    static void removeSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf& self = objectAs<Class>(object);
        bool const done = dispatch(Properties(), id, [&](auto property) {
            return call<decltype(property)::remove>(self, deviant);
        });
        require(done, "removeSingleValued", id);
    }

    static void removeOnlySingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf& self = objectAs<Class>(object);
        bool const done = dispatch(Properties(), id, [&](auto property) {
            return call<decltype(property)::removeOnly>(self, deviant);
        });
        require(done, "removeOnlySingleValued", id);
    }

    static Generic::SequenceRef
    getMultiValued(ObjectPointer object, Deviant deviant, unsigned id, bool asObjects) {
        Intf& self = objectAs<Class>(object);
        require(id != 0, "getMultiValued", id);
        Generic::SequenceRef result;
        dispatch(Properties(), id, [&](auto property) {
            using Property = decltype(property);
            if constexpr (isThere<Property::getMany>) {
                result = sequence<Property::getMany>(self, deviant, asObjects);
            }
            return isThere<Property::getMany>;
        });
        return result;
    }

    static Generic::SequenceRef
    getOnlyMultiValued(ObjectPointer object, Deviant deviant, unsigned id, bool asObjects) {
        Intf& self = objectAs<Class>(object);
        require(id != 0, "getOnlyMultiValued", id);
        Generic::SequenceRef result;
        dispatch(Properties(), id, [&](auto property) {
            using Property = decltype(property);
            if constexpr (isThere<Property::getOnlyMany>) {
                result = sequence<Property::getOnlyMany>(self, deviant, asObjects);
            }
            return isThere<Property::getOnlyMany>;
        });
        return result;
    }

private:
    static void require(bool done, char const* function, unsigned id) {
        if (!done) {
            failIllegalProperty(Class::place, Class::name, function, id);
        }
    }
    template <auto Operation>
    static bool assign([[maybe_unused]] Intf& self,
                       [[maybe_unused]] Deviant deviant,
                       [[maybe_unused]] Object const& value) {
        if constexpr (isThere<Operation>) {
            using Value = typename ArgumentOf<std::remove_const_t<decltype(Operation)>>::type;
            (self.*Operation)(deviant, Value(value));
        }
        return isThere<Operation>;
    }
    template <auto Operation>
    static bool call([[maybe_unused]] Intf& self, [[maybe_unused]] Deviant deviant) {
        if constexpr (isThere<Operation>) {
            (self.*Operation)(deviant);
        }
        return isThere<Operation>;
    }
};

} // namespace internal

/// The record of the class that `Class` describes, with the table of its properties, the list of
/// its supers and its package if it has them.
template <class Class>
constexpr IntrospectiveMethods methodsOf(MetaPropertyDescription** properties = nullptr,
                                         SuperReference const* supers = nullptr,
                                         PackageIntrospectiveMethods const* package = nullptr) {
    using Functions = internal::Functions<Class>;
    return {
        .getSingleValued = &Functions::getSingleValued,
        .hasSingleValued = &Functions::hasSingleValued,
        .setSingleValued = &Functions::setSingleValued,
        .setOnlySingleValued = &Functions::setOnlySingleValued,
        .removeSingleValued = &Functions::removeSingleValued,
        .removeOnlySingleValued = &Functions::removeOnlySingleValued,
        .getMultiValued = &Functions::getMultiValued,
        .getOnlyMultiValued = &Functions::getOnlyMultiValued,
        .properties = properties,
        .supers = supers,
        .meta = nullptr,
        .package = package,
    };
}

} // namespace QOB::reflective
