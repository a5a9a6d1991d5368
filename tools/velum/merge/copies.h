#pragma once

#include "merge/side.h"

#include <deque>
#include <functional>
#include <qob/qob.h>
#include <string>
#include <unordered_map>
#include <vector>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfactory.h>

namespace velum::merge {

/// Whether the values of a property are objects that it refers to by itself.
bool isOwnReference(QOB::Attribute const& attribute);

/// Replaces all values of a property.
void setValues(QOB::ClassObject const& object,
               QOB::Attribute const& attribute,
               std::vector<QOB::Object> const& values);

/// Gives an object the tool notes of another one.
void copyNotes(QOB::ClassObject const& from, QOB::ClassObject const& to);

/// Copies objects from one side to the other. A copy has its references when all copies are there:
/// they lead to what has the same key.
class Copies {
public:
    Copies(Side& from, Side& to);

    /// With all that it contains. The copy takes the key of the object.
    QOB::ClassObject copy(QOB::ClassObject const& source);

    /// What stands for an object of the one side on the other side. What has no name and no path is
    /// copied if it isn't there; empty for anything else.
    QOB::ClassObject counterpart(QOB::ClassObject const& source);

    /// Sets the references of all copies. What has no counterpart is told.
    using OnMissing = std::function<QOB::ClassObject(QOB::ClassObject const& target,
                                                     QOB::ClassObject const& user)>;
    void link(OnMissing const& onMissing);
    /// The counterparts of values, where these are objects.
    std::vector<QOB::Object> translated(std::vector<QOB::Object> const& values,
                                        QOB::ClassObject const& user,
                                        OnMissing const& onMissing);

private:
    QOB::ClassObject make(QOB::ClassObject const& source);

    Side& from_;
    Side& to_;
    Zorvane::metamodel::types::Factory factory_;
    std::deque<QOB::ClassObject> unlinked_; ///< Those of the one side that were copied.
    std::unordered_map<void const*, QOB::ClassObject> copies_;
};

} // namespace velum::merge
