#pragma once

#include "merge/alignment.h"
#include "merge/copies.h"
#include "merge/removals.h"
#include "merge/touched.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace velum::merge {

/// What all parts of a merge share: the three sides, and what is being done to ours.
class Work {
public:
    Work(QOB::Model const& baseModel,
         QOB::Model const& ourModel,
         QOB::Model const& theirModel,
         Alignment const& aligned,
         ConflictLog& conflicts);

    Side base;
    Side ours;
    Side theirs;
    Alignment const& alignment;
    ConflictLog& log;
    diff::Comparison const oursDiff;
    diff::Comparison const theirsDiff;
    Touched const ourChanges;
    Touched const theirChanges;
    Copies copies;
    Removals removals;
    std::size_t count; ///< Changes of theirs that are made.

    /// What an object is, in one line; "nothing" if there is none.
    static std::string text(Side& side, std::string const& key);
    /// Whether ours and theirs have the same at a key, without its name and path.
    bool haveSameContents(std::string const& key);
    /// Logs a conflict about a whole object or part; true if theirs counts.
    bool isTheirs(ConflictKind kind, std::string const& key);
    /// The same where one side removed what the other one changed.
    bool isRemoved(std::string const& key, std::string const& path, std::string_view part);
    bool isRestored(std::string const& key, std::string const& path, std::string_view part);

    /// Adds a copy of what theirs has.
    void add(std::string const& key);
    /// Puts a copy of what theirs has in the place of what ours has.
    void replace(std::string const& key);
    void setReferences();
    /// The same values in ours.
    std::vector<QOB::Object> translated(std::vector<QOB::Object> const& values,
                                        QOB::ClassObject const& user);

private:
    QOB::ClassObject findMissing(QOB::ClassObject const& target, QOB::ClassObject const& user);

    std::set<std::string> missing_;
};

} // namespace velum::merge
