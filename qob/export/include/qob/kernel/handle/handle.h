#pragma once

#include "qob/kernel/handle/conversion.h"

/// The bases of handle classes. A handle class derives from one of the two, inherits its
/// constructors and adds the operations of its interface class.
namespace QOB {

/// Marks a pointer whose object is known to be of the handle's class, because it comes from a
/// state.
struct OfClass {};
inline constexpr OfClass ofClass;

/// A handle for reading: empty, or an object of interface class `Intf` as seen in one deviant.
template <class Intf>
class ReadHandle : public RefBase<Intf*> {
public:
    ReadHandle() noexcept = default;
    ReadHandle(Intf const* object, Deviant deviant) : RefBase<Intf*>(object, deviant) {}
    template <BelowInSecondPart<Intf> From>
    ReadHandle(From const* object, Deviant deviant)
        : RefBase<Intf*>(castObject<Intf>(object), deviant) {}
    ReadHandle(OfClass, Intf const* object, Deviant deviant) : RefBase<Intf*>(object, deviant) {}
    /// From a handle of another class to the same object. Implicit if the object is always an
    /// `Intf`.
    // Two constructors, because g++ 12 ignores a conditional "explicit" on inherited constructors.
    template <ConvertibleHandle<ReadHandle> Handle>
    requires(extends<Handle, Intf>)
        ReadHandle(Handle const& other) // NOLINT(*-explicit-constructor)
        : RefBase<Intf*>(pointerFrom<Intf>(other), other.getDeviant()) {}
    /// Empty if the object isn't an `Intf`.
    template <ConvertibleHandle<ReadHandle> Handle>
    requires(!extends<Handle, Intf>) explicit ReadHandle(Handle const& other)
        : RefBase<Intf*>(pointerFrom<Intf>(other), other.getDeviant()) {}

    Intf const* get() const noexcept { return RefBase<Intf*>::get(); }
    Intf const* operator->() const { return this->access(); }
};

/// A handle for reading and writing; `Immutable` is the handle of the same class for reading.
template <class Immutable>
class WriteHandle : public Immutable {
    using Intf = typename Immutable::Interface;

public:
    WriteHandle() noexcept = default;
    WriteHandle(Intf* object, Deviant deviant) : Immutable(object, deviant) {}
    template <BelowInSecondPart<Intf> From>
    WriteHandle(From* object, Deviant deviant) : Immutable(object, deviant) {}
    WriteHandle(OfClass known, Intf* object, Deviant deviant) : Immutable(known, object, deviant) {}
    template <ConvertibleMutableHandle<WriteHandle> Handle>
    requires(extends<Handle, Intf>)
        WriteHandle(Handle const& other) // NOLINT(*-explicit-constructor)
        : Immutable(ofClass, pointerFrom<Intf>(other), other.getDeviant()) {}
    template <ConvertibleMutableHandle<WriteHandle> Handle>
    requires(!extends<Handle, Intf>) explicit WriteHandle(Handle const& other)
        : Immutable(ofClass, pointerFrom<Intf>(other), other.getDeviant()) {}

    using Immutable::get; // a class may have operations of that name
    Intf* get() const noexcept { return RefBase<Intf*>::get(); }
    Intf* operator->() const { return this->access(); }
};

} // namespace QOB

template <QOB::AnyHandle Handle>
struct std::hash<Handle> : QOB::HandleHash<Handle> {};
