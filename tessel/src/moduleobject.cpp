#include "tessel/moduleobject.h"

#include <stdexcept>

namespace Tessel {

ModuleObject::ModuleObject() = default;
ModuleObject::~ModuleObject() = default;

ModuleObjectDeleter::ModuleObjectDeleter() = default;

ModuleObjectDeleter::~ModuleObjectDeleter() {
    while (!objects_.empty()) {
        const std::unique_ptr<ModuleObject> last = std::move(objects_.back());
        objects_.pop_back();
    }
}

void ModuleObjectDeleter::append(std::unique_ptr<ModuleObject> object) {
    if (object == nullptr) {
        throw std::invalid_argument("Module object is null.");
    }
    objects_.push_back(std::move(object));
}

} // namespace Tessel
