#include "qob/qob/clipboardmanager.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace QOB {

ClipboardManager* ClipboardManager::instance() {
    // Never destroyed: a metamodel's library clears it when it goes.
    static auto* const manager = new ClipboardManager();
    return manager;
}

void ClipboardManager::setContent(std::vector<ClassObject> objects) {
    // What goes may set off deletions that look here again: it is out of the way by then.
    std::vector<ClassObject> const old = std::exchange(objects_, std::move(objects));
}

std::vector<ClassObject> ClipboardManager::getContent() const {
    std::vector<ClassObject> present;
    std::copy_if(objects_.begin(),
                 objects_.end(),
                 std::back_inserter(present),
                 [](ClassObject const& object) { return object.isValid(); });
    return present;
}

void ClipboardManager::clear() {
    setContent({});
}

} // namespace QOB
