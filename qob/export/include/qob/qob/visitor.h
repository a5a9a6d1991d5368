#pragma once

#include "qob/qob/export.h"
#include "tessel/moduleobject.h"

#include <boost/checked_delete.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace QOB {

/// The root of all visitation domains.
struct QOB_EXPORT RootVisitationDomain {};

/// The domain of the kernel's own classes.
struct QOB_EXPORT VisitationDomain {
    /// Owns the class tables of this domain and frees them when the library is unloaded.
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

/// Class identity, casts and visit methods by small numbers instead of the language's type
/// information. Each interface class names its domain and its direct bases:
///
///     using VisitationDomain = ...;
///     using VisitationBases = CooperativeVisitor::internal::Bases<Base, ...>;
namespace CooperativeVisitor::internal {

/// A growable array without spare capacity: it is read on every cast and grows a few times only.
template <class T>
class LightVector {
public:
    LightVector() noexcept = default;
    LightVector(LightVector const& other) { assign(other); }
    LightVector(LightVector&& other) noexcept
        : elements_(std::exchange(other.elements_, nullptr)),
          size_(std::exchange(other.size_, 0)) {}
    LightVector& operator=(LightVector other) noexcept {
        std::swap(elements_, other.elements_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~LightVector() { delete[] elements_; }

    std::size_t size() const noexcept { return size_; }
    T& operator[](std::size_t index) noexcept { return elements_[index]; }
    T const& operator[](std::size_t index) const noexcept { return elements_[index]; }
    T const* begin() const noexcept { return elements_; }
    T const* end() const noexcept { return elements_ + size_; }

    /// Allocates exactly `size` elements; new ones are value-initialised. Never shrinks.
    void grow(std::size_t size) {
        if (size <= size_) {
            return;
        }
        T* grown = new T[size]();
        for (std::size_t i = 0; i < size_; ++i) {
            grown[i] = std::move(elements_[i]);
        }
        delete[] elements_;
        elements_ = grown;
        size_ = size;
    }

    void push_back(T value) {
        grow(size_ + 1);
        elements_[size_ - 1] = std::move(value);
    }

private:
    void assign(LightVector const& other) {
        grow(other.size_);
        for (std::size_t i = 0; i < size_; ++i) {
            elements_[i] = other.elements_[i];
        }
    }

    T* elements_ = nullptr;
    std::size_t size_ = 0;
};

/// The identity of a class: the tag of its domain and its tag within the domain. Both are above 0.
struct ClassInfo {
    unsigned domain = 0;
    unsigned tag = 0;

    friend bool operator==(ClassInfo const&, ClassInfo const&) = default;
};

/// A visitor's method as the kernel stores it; called through the visitor that knows its type.
using Method = void (*)();

/// The result of getVisitMethod: the method, and the object as the class that the method takes.
/// Both are zero if the visitor has no method for the object.
struct MethodInfo {
    Method method = nullptr;
    void* object = nullptr;
};

/// A visitor's methods: rows by domain tag, entries by class tag, null where there is none.
using MethodTable = LightVector<LightVector<Method>>;

using CastFunction = void* (*)(void const*);

/// The table of one class: itself and its ancestors, and how to convert an object to each of them.
struct ClassMetaInfo {
    LightVector<ClassInfo> ancestors;
    LightVector<CastFunction> casts;
    LightVector<LightVector<std::size_t>> castIndex;
};

/// A stable, small, non-zero number for `what` within `domain`. Numbers start at 1 in each domain.
QOB_EXPORT unsigned GetTag(std::type_info const& what, std::type_info const& domain);

/// Binds a dotted name to a class. Several names may be bound to one class.
QOB_EXPORT void BindTagToName(char const* dottedName, ClassInfo const& info);

/// The class that was bound to a dotted name, or zeros.
QOB_EXPORT ClassInfo findClassByName(std::string const& dottedName);

/// Adds `cast` for `info` unless an earlier path to the same ancestor has one.
QOB_EXPORT void addAncestor(ClassMetaInfo& meta, ClassInfo const& info, CastFunction cast);

/// The cast function from the class of `meta` to `info`, or null.
inline CastFunction findCast(ClassMetaInfo const& meta, ClassInfo const& info) noexcept {
    if (info.domain >= meta.castIndex.size() || info.tag >= meta.castIndex[info.domain].size()) {
        return nullptr;
    }
    return meta.casts[meta.castIndex[info.domain][info.tag]];
}

/// The entry of a visitor's table for `info`, or null; never reads beyond the table.
inline Method findMethod(MethodTable const& table, ClassInfo const& info) noexcept {
    if (info.domain >= table.size() || info.tag >= table[info.domain].size()) {
        return nullptr;
    }
    return table[info.domain][info.tag];
}

/// Searches the ancestors in order; the first with a method wins.
QOB_EXPORT MethodInfo findAncestorMethod(ClassMetaInfo const& meta,
                                         MethodTable const& table,
                                         void const* object);

template <class... T>
struct Bases {};

template <class T>
QOB_NOINLINE ClassInfo makeClassInfo() {
    using Domain = typename T::VisitationDomain;
    return {GetTag(typeid(Domain), typeid(RootVisitationDomain)),
            GetTag(typeid(T), typeid(Domain))};
}

/// The identity of interface class `T`, requested from the kernel once per library.
template <class T>
inline ClassInfo const& classInfo() {
    static ClassInfo info;
    if (info.tag == 0) {
        info = makeClassInfo<T>();
    }
    return info;
}

/// Converts along one path of bases, step by step, because a class may inherit a base twice.
template <class From>
void* castAlong(void const* object) {
    return const_cast<void*>(object);
}
template <class From, class To, class... Rest>
void* castAlong(void const* object) {
    return castAlong<To, Rest...>(static_cast<To const*>(static_cast<From const*>(object)));
}

template <class... Path>
struct AncestorWalk {
    template <class Last, class... Direct>
    static void addBases(ClassMetaInfo& meta, Bases<Direct...>) {
        (AncestorWalk<Path..., Direct>::template add<Direct>(meta), ...);
    }
    template <class Last>
    static void add(ClassMetaInfo& meta) {
        addAncestor(meta, classInfo<Last>(), &castAlong<Path...>);
        addBases<Last>(meta, typename Last::VisitationBases());
    }
};

/// Clears the pointer to a class's table before the table is freed.
struct ForgetTable {
    void operator()(ClassMetaInfo const** noted) const noexcept { *noted = nullptr; }
};

/// Owned by the module objects of the library that `Module` stands for.
template <class T, class Module>
QOB_NOINLINE void makeClassMetaInfo(ClassMetaInfo const*& noted) {
    using Owner = Tessel::ModuleObjectImpl<ClassMetaInfo*, boost::checked_deleter<ClassMetaInfo>>;
    using Note = Tessel::ModuleObjectImpl<ClassMetaInfo const**, ForgetTable>;
    auto* const built = new ClassMetaInfo;
    Module::moduleObjects().append(std::make_unique<Owner>(built));
    AncestorWalk<T>::template add<T>(*built);
    Module::moduleObjects().append(std::make_unique<Note>(&noted));
    noted = built;
}

/// The table of `T`, built on first use. `Module` provides the module objects of the library that
/// `T` belongs to, which frees the table; a domain stands for the library that declares it.
template <class T, class Module = typename T::VisitationDomain>
inline ClassMetaInfo const& classMetaInfo() {
    static ClassMetaInfo const* meta = nullptr;
    if (meta == nullptr) {
        makeClassMetaInfo<T, Module>(meta);
    }
    return *meta;
}

/// `self` as the class `info`, or null: the body of every `cast`.
template <class T, class Module = typename T::VisitationDomain>
inline void* castTo(T const* self, ClassInfo const& info) {
    CastFunction const cast = findCast(classMetaInfo<T, Module>(), info);
    return cast != nullptr ? cast(self) : nullptr;
}

/// The best method for `self`: its own class's, else the first ancestor's that has one.
template <class T, class Module = typename T::VisitationDomain>
inline MethodInfo visitMethod(T const* self, MethodTable const& table) {
    if (Method const own = findMethod(table, classInfo<T>()); own != nullptr) {
        return MethodInfo{own, const_cast<T*>(self)};
    }
    return findAncestorMethod(classMetaInfo<T, Module>(), table, self);
}

} // namespace CooperativeVisitor::internal

namespace CooperativeVisitor::internal {

/// The number of libraries that have gone, and their classes with them.
extern QOB_EXPORT unsigned goneLibraries;

/// How an object was converted to a class, by the address of its virtual table: all objects with
/// this table are converted alike.
struct NotedCast {
    static constexpr std::ptrdiff_t NoCast = PTRDIFF_MIN;

    void const* virtualTable = nullptr;
    std::ptrdiff_t distance = NoCast;
};

/// The last two of them: an object and its states often take turns.
struct LastCasts {
    NotedCast newest;
    NotedCast older;
    unsigned goneLibraries = 0; ///< when they were noted; an address may serve another table since
};

/// The distance of an object whose cast isn't the newest.
template <class T, class From>
QOB_NOINLINE std::ptrdiff_t
distanceOf(LastCasts& last, From const* object, void const* virtualTable) {
    bool const isValid = last.goneLibraries == goneLibraries;
    if (isValid && last.older.virtualTable == virtualTable) {
        return last.older.distance;
    }
    void const* const found = object->cast(classInfo<T>());
    last.older = isValid ? last.newest : NotedCast();
    last.newest = {virtualTable,
                   found != nullptr ? static_cast<char const*>(found) -
                                          static_cast<char const*>(static_cast<void const*>(object))
                                    : NotedCast::NoCast};
    last.goneLibraries = goneLibraries;
    return last.newest.distance;
}

/// The object as class `T`, or null.
template <class T, class From>
T const* castPointer(From const* object) {
    static LastCasts last;
    void const* const address = object;
    void const* virtualTable = nullptr;
    std::memcpy(&virtualTable, address, sizeof virtualTable);
    std::ptrdiff_t distance = last.newest.distance;
    if (last.newest.virtualTable != virtualTable || last.goneLibraries != goneLibraries)
        [[unlikely]] {
        distance = distanceOf<T>(last, object, virtualTable);
    }
    return distance != NotedCast::NoCast ? static_cast<T const*>(static_cast<void const*>(
                                               static_cast<char const*>(address) + distance))
                                         : nullptr;
}

} // namespace CooperativeVisitor::internal

/// `object` as interface class `T`, or null if it is null or not a `T`. Uses the class tables, so
/// it also works for classes that inherit a base twice.
template <class T, class From>
T const* castObject(From const* object) {
    static_assert(std::is_polymorphic_v<From>);
    return object != nullptr ? CooperativeVisitor::internal::castPointer<T>(object) : nullptr;
}
template <class T, class From>
T* castObject(From* object) {
    return const_cast<T*>(castObject<T>(static_cast<From const*>(object)));
}

} // namespace QOB
