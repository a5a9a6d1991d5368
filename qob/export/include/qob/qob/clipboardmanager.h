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
    /// What was put in and still exists in the deviant of its handle, in the order given.
    std::vector<ClassObject> getContent() const;
    void clear();

private:
    ClipboardManager() = default;
    ~ClipboardManager() = default;

    std::vector<ClassObject> objects_;
};

} // namespace QOB
