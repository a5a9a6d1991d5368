#pragma once

#include "qob/qob/assert.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/integer.h"
#include "qob/qob/object.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"

#include <concepts>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace QOB::Generic {

/// An element in transit: what sequences exchange without knowing the element's type. A Ref owns
/// one reference to its element and releases it exactly once. Passed by value: the callee owns it.
struct Ref {
    /// Counts the element up (true) or down (false); does nothing for null.
    using RefFunction = void (*)(void* data, bool up);
    using EqualFunction = bool (*)(void const* a, void const* b);

    Ref() noexcept = default;
    Ref(void* element, Deviant in, RefFunction count, EqualFunction compare)
        : data(element), deviant(in), refFn(count), equalFn(compare) {
        refFn(data, true);
    }
    Ref(Ref const& other)
        : data(other.data), deviant(other.deviant), refFn(other.refFn), equalFn(other.equalFn) {
        if (refFn != nullptr) {
            refFn(data, true);
        }
    }
    Ref(Ref&& other) noexcept
        : data(std::exchange(other.data, nullptr)),
          deviant(other.deviant),
          refFn(other.refFn),
          equalFn(other.equalFn) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(data, other.data);
        std::swap(deviant, other.deviant);
        std::swap(refFn, other.refFn);
        std::swap(equalFn, other.equalFn);
        return *this;
    }
    ~Ref() {
        if (data != nullptr) {
            refFn(data, false);
        }
    }

    /// For an object its ClassObjectIntf, for a value the block with a copy of it.
    void* data = nullptr;
    Deviant deviant; ///< of an object; null for values
    RefFunction refFn = nullptr;
    EqualFunction equalFn = nullptr; ///< of values; null for objects
};

/// True if both hold the same object, or equal values of the same type.
inline bool sameElement(Ref const& a, Ref const& b) {
    if (a.data == b.data) {
        return true;
    }
    return a.equalFn != nullptr && a.equalFn == b.equalFn && a.data != nullptr &&
           b.data != nullptr && a.equalFn(a.data, b.data);
}

/// True if both handles hold the same object, or boxed values of one type that are equal.
QOB_EXPORT bool equalObjects(Object const& a, Object const& b);

/// The heap block of a value in transit: the value, and behind it its count, which starts at 0.
template <class T>
struct ValueBlock {
    explicit ValueBlock(T copied) : value(std::move(copied)) {}

    T value;
    std::int32_t count = 0;

    static void refFn(void* data, bool up) {
        auto* const block = static_cast<ValueBlock*>(data);
        if (block == nullptr) {
            return;
        }
        if (up) {
            ++block->count;
        } else if (block->count-- == 1) {
            delete block;
        }
    }
    static bool equalFn(void const* a, void const* b) {
        T const& first = static_cast<ValueBlock const*>(a)->value;
        T const& second = static_cast<ValueBlock const*>(b)->value;
        if constexpr (std::is_same_v<T, Object>) {
            return equalObjects(first, second);
        } else {
            return first == second;
        }
    }
};

// One set of functions per type in the process, because Refs are compared by them.
extern template struct QOB_EXPORT ValueBlock<Integer>;
extern template struct QOB_EXPORT ValueBlock<Real>;
extern template struct QOB_EXPORT ValueBlock<String>;
extern template struct QOB_EXPORT ValueBlock<ExternalToolInfo>;
extern template struct QOB_EXPORT ValueBlock<Object>;

/// The refFn of objects.
QOB_EXPORT void countObject(void* data, bool up);

/// The element handles that refer to an object of a model: ClassObject and classes below it,
/// mutable or not.
template <class T>
concept ObjectElement = requires {
    typename T::Interface;
}
&&std::is_base_of_v<NSInterface::ClassObjectIntf, typename T::Interface>;

inline Ref objectRef(NSInterface::ClassObjectIntf const* object, Deviant deviant) {
    return {const_cast<NSInterface::ClassObjectIntf*>(object), deviant, &countObject, nullptr};
}

/// A Ref of the object as a handle in `deviant` would show it.
inline Ref objectRefIn(NSInterface::ClassObjectIntf const* object, Deviant deviant) {
    ImmutableClassObject const handle(object, deviant);
    return objectRef(object, handle.getDeviant());
}

template <class T>
Ref toRef(T const& element) {
    if constexpr (ObjectElement<T>) {
        return objectRef(pointerFrom<NSInterface::ClassObjectIntf>(element), element.getDeviant());
    } else {
        return {
            new ValueBlock<T>(element), Deviant(), &ValueBlock<T>::refFn, &ValueBlock<T>::equalFn};
    }
}

/// Raises if a Ref has another type than the requested one.
inline void requireElementType(bool isOfType) {
    QOB_REQUIRE_IN("qob/export/include/qob/kernel/containers/sequence/ref.h",
                   isOfType,
                   "The sequence holds elements of another type.");
}

/// The object of a Ref; null if it holds none. Only for Refs of objects.
inline NSInterface::ClassObjectIntf* objectOf(Ref const& ref) noexcept {
    return static_cast<NSInterface::ClassObjectIntf*>(ref.data);
}

/// The value of a Ref, which must hold one. Raises QOB::Exception if it is of another type.
template <class T>
T const& valueOf(Ref const& ref) {
    requireElementType(ref.equalFn == &ValueBlock<T>::equalFn);
    return static_cast<ValueBlock<T> const*>(ref.data)->value;
}

/// The typed element. An object of another class than `T` gives an empty handle. A value instead of
/// an object, or a value of another type, raises QOB::Exception.
template <class T>
T fromRef(Ref const& ref) {
    if constexpr (ObjectElement<T>) {
        requireElementType(ref.equalFn == nullptr);
        typename T::Interface* object = nullptr;
        if constexpr (std::is_same_v<typename T::Interface, NSInterface::ClassObjectIntf>) {
            object = objectOf(ref);
        } else {
            object = castObject<typename T::Interface>(objectOf(ref));
        }
        if constexpr (std::is_constructible_v<T, OfClass, typename T::Interface*, Deviant>) {
            return T(ofClass, object, ref.deviant);
        } else {
            return T(object, ref.deviant);
        }
    } else {
        return valueOf<T>(ref);
    }
}

} // namespace QOB::Generic
