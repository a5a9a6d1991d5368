#pragma once

#include "qob/qob/export.h"
#include "qob/qob/object.h"

#include <vector>

namespace QOB {

/// The process-wide clipboard: objects that a tool has copied and may paste into another model.
/// Keeps the objects alive, but not their models.
class QOB_EXPORT ClipboardManager {
public:
    /// Never null.
    static ClipboardManager* instance();

    ClipboardManager(ClipboardManager const&) = delete;
    ClipboardManager& operator=(ClipboardManager const&) = delete;

    /// Replaces what the clipboard holds.
    void setContent(std::vector<ClassObject> objects);
    /// The objects on the clipboard that still exist in the deviant of their handle, in the order
    /// given.
    std::vector<ClassObject> getContent() const;
    void clear();

private:
    ClipboardManager() = default;
    ~ClipboardManager() = default;

    std::vector<ClassObject> objects_;
};

} // namespace QOB
