#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::merge {

/// How two changes of one thing contradict each other.
enum class ConflictKind {
    value,     ///< Both set a property, to different values.
    order,     ///< Both changed a list, and the order of the result is open.
    added,     ///< Both added an object or part of this name, with different contents.
    removed,   ///< One removed what the other one changed or refers to.
    renamed,   ///< Both renamed it, differently.
    metaclass, ///< One made it an object of another class, and the other one changed it.
};

/// All kinds with their words, for options and reports.
inline constexpr std::array<std::pair<ConflictKind, std::string_view>, 6> conflictKinds{{
    {ConflictKind::value, "value"},
    {ConflictKind::order, "order"},
    {ConflictKind::added, "added"},
    {ConflictKind::removed, "removed"},
    {ConflictKind::renamed, "renamed"},
    {ConflictKind::metaclass, "class"},
}};

constexpr std::string_view code(ConflictKind kind) {
    return conflictKinds[static_cast<std::size_t>(kind)].second;
}

/// Whose change counts.
enum class Taken { neither, ours, theirs };

/// One contradiction, with the three values as a person reads them.
struct Conflict {
    ConflictKind kind;
    std::string path; ///< Of the object, with the place of the part: "/P/Kind#OwnedLiteral/a".
    std::string property{}; ///< Empty if it is about the object as a whole.
    std::string base{};
    std::string ours{};
    std::string theirs{};
    Taken taken = Taken::neither;
};

/// Whose change counts for the kinds that the user has decided.
using Resolutions = std::map<ConflictKind, Taken>;

/// The conflicts that were found.
class ConflictLog {
public:
    explicit ConflictLog(Resolutions const& resolutions) : resolutions_(resolutions) {}

    /// Returns whose change counts.
    Taken add(Conflict conflict);
    /// By path.
    std::vector<Conflict> take();

private:
    Resolutions const& resolutions_;
    std::vector<Conflict> conflicts_;
};

} // namespace velum::merge
