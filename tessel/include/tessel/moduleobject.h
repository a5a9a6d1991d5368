#pragma once

#include "tessel/export.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Tessel {

/// Something to destroy when the module (shared library) that created it is unloaded.
class TESSEL_EXPORT ModuleObject {
public:
    ModuleObject(ModuleObject const&) = delete;
    ModuleObject& operator=(ModuleObject const&) = delete;
    virtual ~ModuleObject();

protected:
    ModuleObject();
};

/// Owns the object behind a pointer of type P and deletes it with D, a callable that takes the
/// pointer. The pointer may be null; then there is nothing to delete.
template <class P, class D>
class ModuleObjectImpl : public ModuleObject {
public:
    explicit ModuleObjectImpl(P object) : object_(object) {}
    ~ModuleObjectImpl() override { ModuleObjectImpl::deleteObject(); }

    /// Deletes the object now; a second call does nothing.
    virtual void deleteObject() {
        if (P object = std::exchange(object_, nullptr)) {
            D()(object);
        }
    }

private:
    P object_;
};

/// Owns the module objects of one module and deletes them in reverse order when it is destroyed, so
/// that a later object may still use an earlier one.
class TESSEL_EXPORT ModuleObjectDeleter {
public:
    ModuleObjectDeleter();
    ModuleObjectDeleter(ModuleObjectDeleter const&) = delete;
    ModuleObjectDeleter& operator=(ModuleObjectDeleter const&) = delete;
    /// Also deletes any objects that are appended during the deletion.
    ~ModuleObjectDeleter();

    /// Takes ownership even if it raises. Raises std::invalid_argument for null.
    void append(std::unique_ptr<ModuleObject> object);
    std::size_t size() const noexcept { return objects_.size(); }

private:
    std::vector<std::unique_ptr<ModuleObject>> objects_;
};

} // namespace Tessel
