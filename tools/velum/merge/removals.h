#pragma once

#include "merge/conflict.h"
#include "merge/side.h"

#include <cstddef>
#include <qob/qob.h>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velum::merge {

/// The objects that leave ours. They stay until all other changes are made: only then it shows
/// whether something still refers to them.
class Removals {
public:
    Removals(Side& base, Side& ours, ConflictLog& log);

    void add(QOB::ClassObject const& object) { objects_.push_back(object); }

    /// Leads references to what was replaced over to what took its place, and destroys the objects
    /// that nothing refers to; what is still in use is a conflict. Returns how many objects stay.
    std::size_t finish();

private:
    using Pointers = std::unordered_set<void const*>;

    void findAffected();
    bool lead(QOB::ClassObject const& user);
    QOB::ClassObject leadTo(QOB::ClassObject const& user, QOB::ClassObject const& target);
    void keep(void const* whole);
    Pointers usedWithoutPath();
    void destroyUnused(Pointers const& usedBefore);

    Side& base_;
    Side& ours_;
    ConflictLog& log_;
    std::vector<QOB::ClassObject> objects_;
    std::unordered_map<void const*, void const*>
        affected_;     ///< What goes, with the object it is in.
    Pointers decided_; ///< Objects with a conflict in the log.
    Pointers usedBefore_;
    std::size_t keptCount_ = 0;
};

} // namespace velum::merge
