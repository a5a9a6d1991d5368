#pragma once

#include "qob/qob/export.h"
#include "qob/qob/visitor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace QOB {

class ReferenceCountingIntf;

/// Root of everything that the kernel counts. Marks the section in which a library creates the
/// objects of the process-wide meta-registry.
class QOB_EXPORT Cleanup {
public:
    /// Sections nest. An exception inside a section leaves it open.
    static void beginMetaRegistrySection();
    static void endMetaRegistrySection();
    static bool isInMetaRegistrySection() noexcept;

protected:
    Cleanup() = default;
    Cleanup(Cleanup const&) = default;
    Cleanup& operator=(Cleanup const&) = default;
    ~Cleanup() = default;
};

using ListOfReferences = std::vector<ReferenceCountingIntf*>;

namespace internal {
struct RootPart;
inline void retain(ReferenceCountingIntf const* object);
inline void release(ReferenceCountingIntf const* object);
inline RootPart const* rootPartOf(ReferenceCountingIntf const* object) noexcept;
inline bool isInNoModel(ReferenceCountingIntf const* object) noexcept;
} // namespace internal

/// The counted base of every interface class. The base operations count and never destroy;
/// classes whose lifetime follows their count override them. Counts are plain integers.
class QOB_EXPORT ReferenceCountingIntf : public Cleanup {
public:
    ReferenceCountingIntf() noexcept = default;
    /// A copy is a new object: it starts with no references.
    ReferenceCountingIntf(ReferenceCountingIntf const&) noexcept : Cleanup() {}
    ReferenceCountingIntf& operator=(ReferenceCountingIntf const&) noexcept { return *this; }

    virtual ~ReferenceCountingIntf();
    virtual void incRef() const;
    virtual void decRef() const;
    virtual int numRef() const;
    /// Always null: no class keeps a list of its references.
    virtual ListOfReferences* getListOfReferences() const;
    virtual CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const;
    /// This object as the class that `info` identifies, or null if it isn't one.
    virtual void* cast(CooperativeVisitor::internal::ClassInfo const& info) const;

protected:
    /// Lets handles count in the object without a virtual call. Only for classes whose incRef and
    /// decRef are those of a counted object (see internal::releaseLast).
    void countInPlace() noexcept { countsInPlace_ = true; }
    bool countsInPlace() const noexcept { return countsInPlace_; }

    /// Tells where in this object its RootPart lies, so that it is found without a virtual call.
    void setRootPart(internal::RootPart const* part) noexcept {
        rootPart_ = static_cast<std::uint8_t>(
            (reinterpret_cast<char const*>(part) - reinterpret_cast<char const*>(this)) /
            static_cast<std::ptrdiff_t>(sizeof(void*)));
    }
    /// For an object that never belongs to a model.
    void setInNoModel() noexcept { rootPart_ = InNoModel; }

    mutable int referenceCount_ = 0;

private:
    friend void internal::retain(ReferenceCountingIntf const* object);
    friend void internal::release(ReferenceCountingIntf const* object);
    friend internal::RootPart const*
    internal::rootPartOf(ReferenceCountingIntf const* object) noexcept;
    friend bool internal::isInNoModel(ReferenceCountingIntf const* object) noexcept;
    friend class DeletionQueue;

    /// Below the distance of any part: the object has to be asked, or it has no model.
    static constexpr std::uint8_t Unknown = 0;
    static constexpr std::uint8_t InNoModel = 1;

    bool countsInPlace_ = false;
    mutable bool pendingDeletion_ = false;
    /// The distance of the RootPart in words, or one of the two constants.
    std::uint8_t rootPart_ = Unknown;
};

/// Deletes objects whose last reference is gone. A deletion inside a deletion waits for the
/// outermost one, so that a chain of any length is freed without recursion. An object that gained a
/// reference while it waited lives on.
class QOB_EXPORT DeletionQueue {
public:
    static void schedule(ReferenceCountingIntf const* object);
};

namespace internal {

inline void retain(ReferenceCountingIntf const* object) {
    if (object->countsInPlace_) {
        ++object->referenceCount_;
    } else {
        object->incRef();
    }
}

/// The part of a root object that reads and handles need; null for any other object, and for the
/// second base of one.
inline RootPart const* rootPartOf(ReferenceCountingIntf const* object) noexcept {
    return object->rootPart_ > ReferenceCountingIntf::InNoModel
               ? reinterpret_cast<RootPart const*>(reinterpret_cast<char const*>(object) +
                                                   object->rootPart_ * sizeof(void*))
               : nullptr;
}
inline bool isInNoModel(ReferenceCountingIntf const* object) noexcept {
    return object->rootPart_ == ReferenceCountingIntf::InNoModel;
}

/// The decRef of a class that is deleted with its last reference. Raises, and changes nothing, if
/// there is none.
QOB_EXPORT void releaseCounted(int& count, ReferenceCountingIntf const* object);

/// The last decrement goes through the virtual operation, which decides what it means.
inline void release(ReferenceCountingIntf const* object) {
    if (object->countsInPlace_ && object->referenceCount_ > 1) {
        --object->referenceCount_;
    } else {
        object->decRef();
    }
}

} // namespace internal

/// Increments an int for the duration of a scope, however the scope is left.
class IntegerIncDec {
public:
    explicit IntegerIncDec(int* counter) noexcept : counter_(counter) { ++*counter_; }
    ~IntegerIncDec() { --*counter_; }
    IntegerIncDec(IntegerIncDec const&) = delete;
    IntegerIncDec& operator=(IntegerIncDec const&) = delete;

private:
    int* counter_;
};

} // namespace QOB
