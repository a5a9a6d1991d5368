#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "qob/qob/introspection.h"
#include "qob/qob/object.h"

#include <concepts>
#include <cstddef>
#include <type_traits>

/// The eight functions of a class that access its properties by number, made from a list of the
/// class's operations. A class is described by a type with
///
///     using Interface = ...;               the interface class
///     static constexpr char const* name;   its dotted name
///     static constexpr Place place{__FILE__, __LINE__};   where it is described
///     using Properties = List<Single<...>, Many<...>, ...>;
///     static constexpr auto create = &createAsObject<...>;   of a class that has objects
namespace QOB::reflective {

/// The source place that a failure of one of the functions reports.
struct Place {
    char const* file;
    int line;
};

struct Always {};
/// Stands for `has` if the property is always there, so that the object isn't asked.
inline constexpr Always always;

/// A single-valued property. Operations that the property doesn't have are null, and calling them
/// by number raises QOB::Exception.
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

/// Stands for a property that the class doesn't have.
using NoProperty = Single<0, nullptr>;

template <unsigned Id, class Properties>
struct FindProperty {
    using type = NoProperty;
};
template <unsigned Id, class First, class... Rest>
struct FindProperty<Id, List<First, Rest...>>
    : std::conditional_t<First::id == Id,
                         std::type_identity<First>,
                         FindProperty<Id, List<Rest...>>> {};
/// The property of an id.
template <unsigned Id, class Properties>
using PropertyAt = typename FindProperty<Id, Properties>::type;

/// Whether there are properties with this id or a higher one.
template <unsigned Id, class... Property>
constexpr bool reachesTo(List<Property...>) {
    return ((Property::id >= Id) || ...);
}

/// Returns what `action` returns for the property of an id; ids below `First` are already handled.
/// The cases are written out, because g++ doesn't turn a chain of comparisons into a jump.
template <class Properties, unsigned First = 1, class Action>
auto dispatch(unsigned id, Action const& action) {
    switch (id - First) { // NOLINTBEGIN(bugprone-branch-clone): ids without a property
    case 0:
        return action(PropertyAt<First + 0, Properties>());
    case 1:
        return action(PropertyAt<First + 1, Properties>());
    case 2:
        return action(PropertyAt<First + 2, Properties>());
    case 3:
        return action(PropertyAt<First + 3, Properties>());
    case 4:
        return action(PropertyAt<First + 4, Properties>());
    case 5:
        return action(PropertyAt<First + 5, Properties>());
    case 6:
        return action(PropertyAt<First + 6, Properties>());
    case 7:
        return action(PropertyAt<First + 7, Properties>());
    case 8:
        return action(PropertyAt<First + 8, Properties>());
    case 9:
        return action(PropertyAt<First + 9, Properties>());
    case 10:
        return action(PropertyAt<First + 10, Properties>());
    case 11:
        return action(PropertyAt<First + 11, Properties>());
    case 12:
        return action(PropertyAt<First + 12, Properties>());
    case 13:
        return action(PropertyAt<First + 13, Properties>());
    case 14:
        return action(PropertyAt<First + 14, Properties>());
    case 15:
        return action(PropertyAt<First + 15, Properties>());
    default:
        if constexpr (reachesTo<First + 16>(Properties())) {
            return dispatch<Properties, First + 16>(id, action);
        } else {
            return action(NoProperty());
        }
    } // NOLINTEND(bugprone-branch-clone)
}

template <class Class>
struct Functions {
    using Intf = typename Class::Interface;
    using Properties = typename Class::Properties;
    using ObjectPointer = NSInterface::ObjectIntf*;

    static Object getSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf const& self = selfOf(object);
        return dispatch<Properties>(id, [&]<class Property>(Property) -> Object {
            if constexpr (isThere<Property::get>) {
                return Object((self.*Property::get)(deviant));
            } else {
                fail("getSingleValued", id);
            }
        });
    }

    static bool hasSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf const& self = selfOf(object);
        requireNotZero("hasSingleValued", id);
        return dispatch<Properties>(id, [&]<class Property>(Property) {
            if constexpr (std::is_same_v<decltype(Property::has), Always const>) {
                return true;
            } else if constexpr (isThere<Property::has>) {
                return (self.*Property::has)(deviant);
            } else {
                return false;
            }
        });
    }

    static void
    setSingleValued(ObjectPointer object, Deviant deviant, unsigned id, Object const& value) {
        Intf& self = selfOf(object);
        dispatch<Properties>(id, [&]<class Property>(Property) {
            assign<Property::set>(self, deviant, value, "setSingleValued", id);
        });
    }

    static void
    setOnlySingleValued(ObjectPointer object, Deviant deviant, unsigned id, Object const& value) {
        Intf& self = selfOf(object);
        dispatch<Properties>(id, [&]<class Property>(Property) {
            assign<Property::setOnly>(self, deviant, value, "setOnlySingleValued", id);
        });
    }

    static void removeSingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf& self = selfOf(object);
        dispatch<Properties>(id, [&]<class Property>(Property) {
            call<Property::remove>(self, deviant, "removeSingleValued", id);
        });
    }

    static void removeOnlySingleValued(ObjectPointer object, Deviant deviant, unsigned id) {
        Intf& self = selfOf(object);
        dispatch<Properties>(id, [&]<class Property>(Property) {
            call<Property::removeOnly>(self, deviant, "removeOnlySingleValued", id);
        });
    }

    static Generic::SequenceRef
    getMultiValued(ObjectPointer object, Deviant deviant, unsigned id, bool asObjects) {
        Intf& self = selfOf(object);
        requireNotZero("getMultiValued", id);
        return dispatch<Properties>(id, [&]<class Property>(Property) {
            return elementsOf<Property::getMany>(self, deviant, asObjects);
        });
    }

    static Generic::SequenceRef
    getOnlyMultiValued(ObjectPointer object, Deviant deviant, unsigned id, bool asObjects) {
        Intf& self = selfOf(object);
        requireNotZero("getOnlyMultiValued", id);
        return dispatch<Properties>(id, [&]<class Property>(Property) {
            return elementsOf<Property::getOnlyMany>(self, deviant, asObjects);
        });
    }

private:
    static Intf& selfOf(ObjectPointer object) {
        auto* const found = castObject<Intf>(object);
        if (found == nullptr) {
            QOB::internal::failAt(Class::place.file, Class::place.line, "illegal object");
        }
        return *found;
    }
    [[noreturn]] static void fail(char const* function, unsigned id) {
        failIllegalProperty(Class::place, Class::name, function, id);
    }
    static void requireNotZero(char const* function, unsigned id) {
        if (id == 0) {
            fail(function, id);
        }
    }
    template <auto Operation>
    static void assign([[maybe_unused]] Intf& self,
                       [[maybe_unused]] Deviant deviant,
                       [[maybe_unused]] Object const& value,
                       char const* function,
                       unsigned id) {
        if constexpr (isThere<Operation>) {
            using Value = typename ArgumentOf<std::remove_const_t<decltype(Operation)>>::type;
            (self.*Operation)(deviant, Value(value));
        } else {
            fail(function, id);
        }
    }
    template <auto Operation>
    static void call([[maybe_unused]] Intf& self,
                     [[maybe_unused]] Deviant deviant,
                     char const* function,
                     unsigned id) {
        if constexpr (isThere<Operation>) {
            (self.*Operation)(deviant);
        } else {
            fail(function, id);
        }
    }
    template <auto Operation>
    static Generic::SequenceRef elementsOf([[maybe_unused]] Intf& self,
                                           [[maybe_unused]] Deviant deviant,
                                           [[maybe_unused]] bool asObjects) {
        if constexpr (isThere<Operation>) {
            auto elements = (self.*Operation)(deviant);
            using Element = typename decltype(elements)::value_type;
            // A value class that can't be boxed is shown as it is.
            if constexpr (!Generic::ObjectElement<Element> &&
                          std::is_convertible_v<Element, Object>) {
                if (asObjects) {
                    return QOB::asObjects(elements);
                }
            }
            return elements;
        } else {
            return {};
        }
    }
};

/// What makes objects of the class; null if its description names nothing.
template <class Class>
constexpr auto creatorOf() -> decltype(IntrospectiveMethods::create) {
    if constexpr (requires { Class::create; }) {
        return Class::create;
    } else {
        return nullptr;
    }
}

} // namespace internal

/// The record of the class that `Class` describes, with its table of properties, its list of supers
/// and its package, as far as it has them.
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
        .create = internal::creatorOf<Class>(),
    };
}

} // namespace QOB::reflective
