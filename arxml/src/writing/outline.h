#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>
#include <velum_arxml/writing/write_report.h>
#include <velum_types/types.h>

namespace velum::arxml {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

/// The elements in packages that objects are written as.
enum class ElementKind : std::uint8_t {
    none,
    baseType,
    unit,
    dimension,
    method,
    constraint,
    layout,
    constant,
    implementationType,
    applicationPrimitive,
    applicationArray,
    applicationRecord,
};

/// The name of the element.
std::string_view tagOf(ElementKind kind);

/// The name of an object; empty if it has none.
std::string nameOf(QOB::ClassObject const& object);
/// The external id of an object; empty if it has none.
std::string externalIdOf(QOB::ClassObject const& object);

/// Whether a name is one that the format allows.
bool isIdentifier(std::string_view name);
/// A name that a path can have in it: no slash, no blanks at the ends, no control characters.
std::string nameInPath(std::string_view name);

/// The bases of the international system, in the order of the schema.
struct SiDimension {
    std::string_view exponentTag;
    std::string_view name;
    std::string_view symbol;
};
std::vector<SiDimension> const& siDimensions();
/// The place in `siDimensions` of a dimension that has no path; -1 if it is none.
int siDimensionOf(types::Dimension const& dimension);

/// What of a model is written where: each object that becomes an element of a package has its path,
/// and what is written inside of another one's element is known as its part.
class Outline {
public:
    struct Entry {
        QOB::ClassObject object;
        QOB::String text;              ///< The path: as a rule the external id, not a copy of it.
        std::uint32_t packageSize = 0; ///< of the path without the name
        ElementKind kind = ElementKind::none;

        std::string_view path() const { return text.view(); }
        std::string_view package() const { return path().substr(0, packageSize); }
        std::string_view name() const { return path().substr(packageSize + 1); }
    };

    Outline(QOB::Model const& model,
            WriteOptions const& options,
            std::vector<WriteFinding>& findings);

    /// In the order of their paths.
    std::vector<Entry> const& entries() const { return entries_; }
    /// Whether each path is the external id of its object: so it is with what was read.
    bool areIds() const { return areIds_; }
    /// Null if the object is no element of a package.
    Entry const* find(QOB::ClassObject const& object) const;
    /// Null if nothing is written at the path.
    Entry const* at(std::string_view path) const;
    /// The element that an object is in; null if it is in none.
    Entry const* entryAround(QOB::ClassObject const& object) const;
    /// Whether there are comments, dependencies or imports.
    bool hasRelations() const { return hasRelations_; }
    /// The objects with notes, stereotypes or another visibility than all have.
    std::vector<QOB::ClassObject> const& remarkable() const { return remarkable_; }
    /// The matrix whose element has the type in it; empty if the type stands for itself.
    types::Matrix ownerOf(foundation::ValueType const& part) const;

private:
    struct Candidate {
        QOB::ClassObject object;
        QOB::String text;      ///< The external id, or else the name.
        std::string_view name; ///< in the text
        std::uint32_t package = 0;
        int id = 0;
        ElementKind kind = ElementKind::none;
        bool isKnown = false; ///< The path is that of the object's external id.
        bool isPath = false;  ///< The text is the path.
    };

    /// Where a candidate comes in the order of the paths.
    struct Rank {
        std::uint32_t package;
        std::uint32_t candidate;
        std::string_view name;
    };

    std::vector<Candidate> freeObjects(QOB::Model const& model);
    void noteRemarkable(QOB::ClassObject const& object);
    void findParts(std::vector<types::Matrix> const& matrices);
    void complete(Candidate& candidate);
    std::uint32_t packageAt(std::string_view written);
    std::vector<Rank> inOrder(std::vector<Candidate> const& candidates) const;
    void place(std::vector<Candidate> const& candidates, std::vector<WriteFinding>& findings);
    static bool areAllInPlace(std::vector<Candidate> const& candidates,
                              std::vector<Rank> const& order);
    void nameAll(std::vector<Candidate> const& candidates,
                 std::vector<Rank> const& order,
                 std::vector<WriteFinding>& findings);
    QOB::String pathOf(Candidate const& candidate) const;
    void indexObjects();
    std::size_t slotOf(QOB::ClassObject const& object) const;
    QOB::ClassObject outerOf(QOB::ClassObject const& object) const;
    ElementKind kindOf(QOB::ClassObject const& object) const;
    ElementKind kindOfType(foundation::ValueType const& type) const;

    std::string newPackage_;            ///< of objects without a path
    std::vector<std::string> packages_; ///< In the order in which they were found.
    std::unordered_map<std::string, std::uint32_t> packageByText_; ///< As external ids have them.
    std::string lastPackageText_;
    std::uint32_t lastPackage_ = 0;
    std::vector<Entry> entries_;
    bool areIds_ = false;
    std::vector<std::uint32_t> slots_; ///< Places in `entries_` plus 1, by object; 0 if free.
    std::unordered_map<int, types::Matrix> owners_; ///< by the id of the part
    std::unordered_set<int> usedBases_;             ///< dimensions that are written as exponents
    std::vector<QOB::ClassObject> remarkable_;
    bool hasRelations_ = false;
};

/// Whether a path stands before another one: package by package, then by name.
bool isPathBefore(std::string_view a, std::string_view b);

} // namespace velum::arxml
