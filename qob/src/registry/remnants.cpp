#include "registry/remnants.h"

#include "qob/kernel/deviant/objectmemory.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/immortal.h"
#include "qob/kernel/joinedbases.h"
#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/initialize.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <dlfcn.h>
#include <new>
#include <typeinfo>
#include <vector>

namespace QOB {

namespace {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

boost::unordered_flat_set<ClassObjectIntf*>& outliving() {
    // Never destroyed: handles may let go of their objects until the very end of the process.
    static auto* const objects = new boost::unordered_flat_set<ClassObjectIntf*>;
    return *objects;
}

struct ImmortalEntry {
    void* object;
    void (*destroy)(void*);
};
std::vector<ImmortalEntry>& immortals() {
    static auto* const entries = new std::vector<ImmortalEntry>;
    return *entries;
}

/// Stands where an object was whose library has gone, for the handles that still count it. It is
/// valid nowhere. Its two parts stand where those of a class with a doubled base do.
class FirstHalf : public ClassObjectIntf {};
class SecondHalf : public ClassObjectIntf {
public:
    using SecondPart = SecondHalf;
};
class Remnant final : public JoinedBases<FirstHalf, SecondHalf> {
public:
    using ObjectIntf = NSInterface::ObjectIntf;
    using ClassObjectIntf = NSInterface::ClassObjectIntf;

    explicit Remnant(int count) noexcept {
        FirstHalf::referenceCount_ = count;
        FirstHalf::countInPlace();
    }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
    /// The memory is that of the object, which was larger.
    // NOLINTNEXTLINE(misc-new-delete-overloads): it was allocated by the library that has gone
    static void operator delete(void* memory) noexcept { internal::freeObject(memory); }

    void incRef() const override { ++FirstHalf::referenceCount_; }
    void decRef() const override {
        if (--FirstHalf::referenceCount_ == 0) {
            delete this;
        }
    }
    int numRef() const override { return FirstHalf::referenceCount_; }
    bool deviant_isValid(Deviant) const override { return false; }

    using JoinedBases::getReadDeviantI;
    using JoinedBases::getWriteDeviantI;
    ObjectIntf* getReadDeviantI(Deviant, ObjectIntf const*) const override { return refuse(); }
    ObjectIntf* getWriteDeviantI(Deviant, ObjectIntf const*) const override { return refuse(); }
    ClassObjectIntf* getReadDeviantI(Deviant, ClassObjectIntf const*) const override {
        return refuse();
    }
    ClassObjectIntf* getWriteDeviantI(Deviant, ClassObjectIntf const*) const override {
        return refuse();
    }

private:
    static ClassObjectIntf* refuse() {
        QOB_FAIL("object accessed after its model has been destroyed");
    }
};

/// The same for a value.
class EmptyBox final : public NSInterface::ValueObjectIntf {
public:
    explicit EmptyBox(int count) noexcept {
        referenceCount_ = count;
        countInPlace();
    }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
    // NOLINTNEXTLINE(misc-new-delete-overloads): as above
    static void operator delete(void* memory) noexcept { ::operator delete(memory); }

    void incRef() const override { ++referenceCount_; }
    void decRef() const override {
        if (--referenceCount_ == 0) {
            delete this;
        }
    }
    int numRef() const override { return referenceCount_; }
    void getValue(Tessel::any& value) const override { value = Tessel::any(); }
    std::string getValueTypeName() const override { return {}; }
};

// Nothing that they stand for is smaller.
static_assert(sizeof(Remnant) <= sizeof(ClassObjectIntf) + sizeof(DeviationsBase));
static_assert(sizeof(EmptyBox) <= sizeof(internal::LinkedBox));

/// The library in which an address lies; null if there is none.
void const* libraryOf(void const* address) noexcept {
    Dl_info info{};
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

/// Ends the object, which lies at `memory` as a whole, and puts a `Replacement` in its place.
template <class Replacement, class Object>
void replace(Object* object) {
    int const count = object->numRef();
    void* const memory = dynamic_cast<void*>(object);
    object->~Object();
    new (memory) Replacement(count);
}

} // namespace

void internal::noteOutliving(ClassObjectIntf* object) {
    outliving().insert(object);
}

void internal::forgetOutliving(ClassObjectIntf* object) noexcept {
    outliving().erase(object);
}

constinit internal::LinkedBox* internal::firstLinkedBox = nullptr;

internal::LinkedBox::~LinkedBox() {
    (previous_ != nullptr ? previous_->next_ : firstLinkedBox) = next_;
    if (next_ != nullptr) {
        next_->previous_ = previous_;
    }
}

void internal::noteImmortal(void* object, void (*destroy)(void*)) {
    immortals().push_back({object, destroy});
}

namespace {

void replaceObjectsOf(void const* library) {
    std::vector<ClassObjectIntf*> const objects(outliving().begin(), outliving().end());
    for (ClassObjectIntf* const object : objects) {
        if (libraryOf(&typeid(*object)) == library) {
            replace<Remnant>(object);
        }
    }
    for (internal::LinkedBox* box = internal::firstLinkedBox; box != nullptr;) {
        internal::LinkedBox* const next = box->next();
        if (libraryOf(&typeid(*box)) == library) {
            replace<EmptyBox>(box);
        }
        box = next;
    }
}

/// From the last to the first: what came later may use what was there.
void destroyImmortalsOf(void const* library) {
    for (std::size_t i = immortals().size(); i-- != 0;) {
        ImmortalEntry const entry = immortals()[i];
        if (libraryOf(entry.object) == library) {
            immortals().erase(immortals().begin() + static_cast<std::ptrdiff_t>(i));
            entry.destroy(entry.object);
        }
    }
}

} // namespace

void leaveLibrary(void const* inside) noexcept {
    internal::forgetKeptParts();
    void const* const library = libraryOf(inside);
    replaceObjectsOf(library);
    destroyImmortalsOf(library);
    ++CooperativeVisitor::internal::goneLibraries;
}

} // namespace QOB
