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
        ElementKind kind = ElementKind::none;
        std::string path;
        std::size_t packageSize = 0; ///< of the path without the name

        std::string_view package() const { return std::string_view(path).substr(0, packageSize); }
        std::string_view name() const { return std::string_view(path).substr(packageSize + 1); }
    };

    Outline(QOB::Model const& model,
            WriteOptions const& options,
            std::vector<WriteFinding>& findings);

    /// In the order of their paths.
    std::vector<Entry> const& entries() const { return entries_; }
    /// Null if the object is no element of a package.
    Entry const* find(QOB::ClassObject const& object) const;
    /// The matrix whose element has the type in it; empty if the type stands for itself.
    types::Matrix ownerOf(foundation::ValueType const& part) const;

private:
    struct Candidate {
        QOB::ClassObject object;
        ElementKind kind;
        std::string package;
        std::string name;
        bool isKnown; ///< The path is that of the object's external id.
        int id;
    };

    void findInner(QOB::Model const& model);
    void findParts(std::vector<types::Matrix> const& matrices);
    Candidate candidate(QOB::ClassObject const& object, ElementKind kind);
    void place(std::vector<Candidate> candidates, std::vector<WriteFinding>& findings);
    static bool areAllInPlace(std::vector<Candidate> const& candidates);
    void nameAll(std::vector<Candidate> candidates, std::vector<WriteFinding>& findings);
    ElementKind kindOf(QOB::ClassObject const& object) const;
    ElementKind kindOfType(foundation::ValueType const& type) const;

    WriteOptions const& options_;
    QOB::Model model_;
    std::vector<Entry> entries_;
    std::unordered_map<int, std::size_t> byId_;
    std::unordered_map<int, types::Matrix> owners_; ///< by the id of the part
    std::unordered_set<int> usedBases_;             ///< dimensions that are written as exponents
};

/// Whether a path stands before another one: package by package, then by name.
bool isPathBefore(std::string_view a, std::string_view b);

} // namespace velum::arxml
