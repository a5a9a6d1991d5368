#pragma once

#include "tessel/export.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Tessel {

/// Something that is to be destroyed when the module (shared library) that made it goes.
class TESSEL_EXPORT ModuleObject {
public:
    ModuleObject(const ModuleObject&) = delete;
    ModuleObject& operator=(const ModuleObject&) = delete;
    virtual ~ModuleObject();

protected:
    ModuleObject();
};

/// Owns the object behind a pointer of type P and ends it by a D, a callable that takes the
/// pointer. P may be null; then there is nothing to end.
template <class P, class D>
class ModuleObjectImpl : public ModuleObject {
public:
    explicit ModuleObjectImpl(P object) : object_(object) {}
    ~ModuleObjectImpl() override { ModuleObjectImpl::deleteObject(); }

    /// Ends the held object now; a second call does nothing.
    virtual void deleteObject() {
        if (P object = std::exchange(object_, nullptr)) {
            D()(object);
        }
    }

private:
    P object_;
};

/// Owns the module objects of one module and deletes them in reverse order of entry when it ends,
/// so that what was made later may still use what was made earlier.
class TESSEL_EXPORT ModuleObjectDeleter {
public:
    ModuleObjectDeleter();
    ModuleObjectDeleter(const ModuleObjectDeleter&) = delete;
    ModuleObjectDeleter& operator=(const ModuleObjectDeleter&) = delete;
    /// Also deletes what the objects append while they are being deleted.
    ~ModuleObjectDeleter();

    /// Takes ownership, also if it raises. Raises std::invalid_argument for null.
    void append(std::unique_ptr<ModuleObject> object);
    std::size_t size() const noexcept { return objects_.size(); }

private:
    std::vector<std::unique_ptr<ModuleObject>> objects_;
};

} // namespace Tessel
