#pragma once

#include "qob/qob/object.h"
#include "qob/qob/visitor.h"

#include <cstddef>
#include <functional>
#include <tuple>
#include <utility>

namespace QOB {

namespace internal {

template <class... Action>
struct Overloaded : Action... {
    using Action::operator()...;
};

/// A visitor's entry for one class: called with the visitor's actions and the object as that class.
using VisitCall = void (*)(void const* actions, void* object, Deviant deviant);

} // namespace internal

/// Calls the action for the class of an object whose class isn't known, or else for its nearest
/// base that has one. The classes are named by their handles; the actions are lambdas, one per
/// class, or function objects with overloads:
///
///     QOB::Visitor<types::Enumeration, types::Real> const print(
///         [](types::Enumeration const& type) { ... },
///         [](types::Real const& type) { ... });
///     print.visit(object);
///
/// A visit costs one table look-up, one virtual call and the call of the action.
template <class... Handle>
class Visitor {
    using Actions = std::tuple<std::function<void(Handle const&)>...>;

public:
    template <class... Action>
    explicit Visitor(Action... action) {
        internal::Overloaded<Action...> const overloaded{std::move(action)...};
        actions_ = Actions(std::function<void(Handle const&)>(overloaded)...);
        enterAll(std::index_sequence_for<Handle...>());
    }

    /// Returns whether there was an action for the object; an empty handle has none. Exceptions
    /// from an action are passed on.
    template <AnyHandle Visited>
    bool visit(Visited const& visited) const {
        if (visited.get() == nullptr) {
            return false;
        }
        auto const found = visited.get()->getVisitMethod(table_);
        if (found.method == nullptr) {
            return false;
        }
        reinterpret_cast<internal::VisitCall>(found.method)(
            &actions_, found.object, visited.getDeviant());
        return true;
    }

private:
    template <std::size_t... Index>
    void enterAll(std::index_sequence<Index...>) {
        (enter<Index>(), ...);
    }
    template <std::size_t Index>
    void enter() {
        using One = std::tuple_element_t<Index, std::tuple<Handle...>>;
        internal::VisitCall const call = [](void const* actions, void* object, Deviant deviant) {
            std::get<Index> (*static_cast<Actions const*>(actions))(
                One(static_cast<typename One::Interface*>(object), deviant));
        };
        auto const& info = CooperativeVisitor::internal::classInfo<typename One::Interface>();
        table_.grow(info.domain + std::size_t(1));
        table_[info.domain].grow(info.tag + std::size_t(1));
        table_[info.domain][info.tag] =
            reinterpret_cast<CooperativeVisitor::internal::Method>(call);
    }

    Actions actions_;
    CooperativeVisitor::internal::MethodTable table_;
};

} // namespace QOB
