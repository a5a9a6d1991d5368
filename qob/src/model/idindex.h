#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace QOB::internal {

/// The objects of a model by their ids. An id leads to one object but for undone creations and the
/// like, which share it. Ids that the model hands out follow each other and are found by position,
/// all others by hash.
class IdIndex {
    using ClassObjectIntf = NSInterface::ClassObjectIntf;

public:
    /// An id that no object has: the next one above all others, and once the largest possible id
    /// was used, one that is free.
    Integer allocate();
    void enter(int id, ClassObjectIntf* object);
    /// The same for an id that follows all others; false if it doesn't.
    bool enterNext(int id, ClassObjectIntf* object) {
        if (static_cast<std::size_t>(id) != dense_.size() || !sparse_.empty() || !shared_.empty()) {
            return false;
        }
        dense_.push_back(object);
        highest_ = id > highest_ ? id : highest_;
        return true;
    }
    /// `id` is the object's present one. If that was set past the index, the object is searched
    /// for.
    void forget(int id, ClassObjectIntf* object);
    /// The object with the id that exists in the deviant, or null.
    ClassObjectIntf* find(Deviant deviant, Integer id) const;
    /// Calls `function` with each object under the id, whatever deviant it exists in.
    template <class Function>
    void forEachWith(int id, Function const& function) const {
        if (ClassObjectIntf* const first = firstWith(id); first != nullptr) {
            function(first);
        }
        if (!shared_.empty()) {
            auto const [first, last] = shared_.equal_range(id);
            for (auto entry = first; entry != last; ++entry) {
                function(entry->second);
            }
        }
    }
    void clear() noexcept;

private:
    bool isInUse(int id) const;
    /// The first object under an id, or null.
    ClassObjectIntf* firstWith(int id) const;
    /// The place of an id, made if need be.
    ClassObjectIntf*& placeOf(int id);

    std::vector<ClassObjectIntf*> dense_;
    boost::unordered_flat_map<int, ClassObjectIntf*> sparse_;
    std::unordered_multimap<int, ClassObjectIntf*> shared_;
    /// The largest id that was ever used.
    int highest_ = 0;
    /// The last id that was found free, once there is none above the largest.
    int lastFree_ = 0;
};

} // namespace QOB::internal
