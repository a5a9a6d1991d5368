#include "writing/outline.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace velum::arxml {

using foundation::ValueType;

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string_view shortClassName(QOB::ClassObject const& object) {
    std::string_view name = object.getLumvoName(false);
    name.remove_prefix(name.rfind('.') + 1);
    return name;
}

bool isContained(QOB::ClassObject const& object) {
    return object.hasContainerQOB();
}

/// A path without empty names and without a slash at the end.
std::string cleaned(std::string_view path) {
    std::string text;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (const std::string name = nameInPath(path.substr(0, end)); !name.empty()) {
            text += '/';
            text += name;
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return text;
}

} // namespace

bool isIdentifier(std::string_view name) {
    constexpr std::size_t mostCharacters = 128;
    return !name.empty() && name.size() <= mostCharacters && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
           });
}

std::string nameInPath(std::string_view name) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = name.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    std::string text(name.substr(first, name.find_last_not_of(blanks) - first + 1));
    for (char& c : text) {
        if (c == '/' || (c >= 0 && c < 0x20)) {
            c = '_';
        }
    }
    return text;
}

std::string_view tagOf(ElementKind kind) {
    switch (kind) {
    case ElementKind::baseType:
        return "SW-BASE-TYPE";
    case ElementKind::unit:
        return "UNIT";
    case ElementKind::dimension:
        return "PHYSICAL-DIMENSION";
    case ElementKind::method:
        return "COMPU-METHOD";
    case ElementKind::constraint:
        return "DATA-CONSTR";
    case ElementKind::layout:
        return "SW-RECORD-LAYOUT";
    case ElementKind::constant:
        return "CONSTANT-SPECIFICATION";
    case ElementKind::implementationType:
        return "IMPLEMENTATION-DATA-TYPE";
    case ElementKind::applicationPrimitive:
        return "APPLICATION-PRIMITIVE-DATA-TYPE";
    case ElementKind::applicationArray:
        return "APPLICATION-ARRAY-DATA-TYPE";
    case ElementKind::applicationRecord:
        return "APPLICATION-RECORD-DATA-TYPE";
    case ElementKind::none:
        break;
    }
    return "";
}

std::string nameOf(QOB::ClassObject const& object) {
    const foundation::NamedElement named(object);
    return named.isValid() && named.hasName() ? std::string(named.getName()) : std::string();
}

std::string externalIdOf(QOB::ClassObject const& object) {
    return object.hasExternalId() ? std::string(object.getExternalId()) : std::string();
}

std::vector<SiDimension> const& siDimensions() {
    static const std::vector<SiDimension> table = {
        {"LENGTH-EXP", "Length", "L"},
        {"MASS-EXP", "Mass", "M"},
        {"TIME-EXP", "Time", "T"},
        {"CURRENT-EXP", "Current", "I"},
        {"TEMPERATURE-EXP", "Temperature", "Theta"},
        {"MOLAR-AMOUNT-EXP", "MolarAmount", "N"},
        {"LUMINOUS-INTENSITY-EXP", "LuminousIntensity", "J"},
    };
    return table;
}

int siDimensionOf(types::Dimension const& dimension) {
    if (dimension.hasExternalId() || !dimension.hasSymbol()) {
        return -1;
    }
    const std::string name = nameOf(dimension);
    for (std::size_t i = 0; i < siDimensions().size(); ++i) {
        if (siDimensions()[i].name == name &&
            siDimensions()[i].symbol == dimension.getSymbol().view()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool isPathBefore(std::string_view a, std::string_view b) {
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (x == a.end() || y == b.end()) {
        return y != b.end();
    }
    const auto rank = [](char c) {
        return c == '/' ? 0 : static_cast<int>(static_cast<unsigned char>(c)) + 1;
    };
    return rank(*x) < rank(*y);
}

Outline::Outline(QOB::Model const& model,
                 WriteOptions const& options,
                 std::vector<WriteFinding>& findings)
    : options_(options), model_(model) {
    findInner(model);
    std::vector<Candidate> candidates;
    for (const QOB::ClassObject object : model.getRootObjects()) {
        if (isContained(object) || owners_.contains(object.getObjectId()) ||
            usedBases_.contains(object.getObjectId())) {
            continue;
        }
        if (const ElementKind kind = kindOf(object); kind != ElementKind::none) {
            candidates.push_back(candidate(object, kind));
        } else {
            findings.push_back({Remark::noPlace,
                                externalIdOf(object),
                                "The format has no element for the " +
                                    std::string(shortClassName(object)) + " \"" + nameOf(object) +
                                    "\"."});
        }
    }
    place(std::move(candidates), findings);
}

/// A type without a path, or with one below the matrix, is written inside of the matrix that has it
/// as base type. Those with a path go to the matrix that the path names.
void Outline::findParts(std::vector<types::Matrix> const& matrices) {
    for (const bool isByPath : {true, false}) {
        for (types::Matrix const& matrix : matrices) {
            const ValueType base = matrix.getBaseType();
            const std::string path = externalIdOf(base);
            if (isContained(base) || path.empty() == isByPath) {
                continue;
            }
            const std::string above = externalIdOf(matrix.hasExternalId() || !isContained(matrix)
                                                       ? QOB::ClassObject(matrix)
                                                       : matrix.getContainerQOB());
            const bool isBelow = !above.empty() && path.size() > above.size() + 1 &&
                                 path.compare(0, above.size(), above) == 0 &&
                                 path[above.size()] == '/';
            if (!isByPath || isBelow) {
                owners_.try_emplace(base.getObjectId(), matrix);
            }
        }
    }
}

/// Finds what is written within the elements of others.
void Outline::findInner(QOB::Model const& model) {
    std::vector<types::Matrix> matrices;
    for (const QOB::ClassObject object : model.getRootObjects()) {
        if (const types::Matrix matrix(object); matrix.isValid()) {
            if (matrix.hasBaseType() && matrix.getBaseType().isValid()) {
                matrices.push_back(matrix);
            }
        } else if (const types::Dimension dimension(object); dimension.isValid()) {
            for (const types::Dimension base : dimension.getBaseDimensions()) {
                if (siDimensionOf(base) >= 0) {
                    usedBases_.insert(base.getObjectId());
                }
            }
        }
    }
    findParts(matrices);
}

ElementKind Outline::kindOfType(ValueType const& type) const {
    if (const types::PrimitiveType primitive(type); primitive.isValid()) {
        return bool(primitive.isApplication()) ? ElementKind::applicationPrimitive
                                               : ElementKind::implementationType;
    }
    if (const types::Structure structure(type); structure.isValid()) {
        return bool(structure.isApplication()) ? ElementKind::applicationRecord
                                               : ElementKind::implementationType;
    }
    if (const types::Matrix matrix(type); matrix.isValid()) {
        if (!bool(matrix.isApplication())) {
            return ElementKind::implementationType;
        }
        const bool isBlock = matrix.hasBaseType() && ownerOf(matrix.getBaseType()) == matrix &&
                             types::PrimitiveType(matrix.getBaseType()).isValid();
        return isBlock ? ElementKind::applicationPrimitive : ElementKind::applicationArray;
    }
    if (types::LookupTableType(type).isValid() || types::SharedAxisType(type).isValid()) {
        return ElementKind::applicationPrimitive;
    }
    return types::VoidPointer(type).isValid() ? ElementKind::implementationType : ElementKind::none;
}

ElementKind Outline::kindOf(QOB::ClassObject const& object) const {
    if (const ValueType type(object); type.isValid()) {
        return kindOfType(type);
    }
    if (types::Unit(object).isValid()) {
        return ElementKind::unit;
    }
    if (types::CompuMethod(object).isValid()) {
        return ElementKind::method;
    }
    if (types::DataConstr(object).isValid()) {
        return ElementKind::constraint;
    }
    if (types::SwBaseType(object).isValid()) {
        return ElementKind::baseType;
    }
    if (types::ConstantSpecification(object).isValid()) {
        return ElementKind::constant;
    }
    if (types::Dimension(object).isValid()) {
        return ElementKind::dimension;
    }
    return types::SwRecordLayout(object).isValid() ? ElementKind::layout : ElementKind::none;
}

Outline::Candidate Outline::candidate(QOB::ClassObject const& object, ElementKind kind) {
    Candidate candidate{object, kind, {}, nameOf(object), false, object.getObjectId()};
    const std::string id = externalIdOf(object);
    if (id.size() > 1 && id.front() == '/') {
        const std::size_t size = candidate.name.size();
        const bool hasName = size > 0 && id.size() > size + 1 &&
                             id.compare(id.size() - size, size, candidate.name) == 0 &&
                             id[id.size() - size - 1] == '/';
        const std::size_t end = hasName ? id.size() - size - 1 : id.rfind('/');
        candidate.package = cleaned(std::string_view(id).substr(0, end));
        if (size == 0) {
            candidate.name = id.substr(end + 1);
        }
        candidate.isKnown = !candidate.package.empty();
    }
    if (candidate.package.empty()) {
        candidate.package = cleaned(options_.package);
    }
    return candidate;
}

void Outline::place(std::vector<Candidate> candidates, std::vector<WriteFinding>& findings) {
    std::sort(candidates.begin(), candidates.end(), [](Candidate const& a, Candidate const& b) {
        if (a.package != b.package) {
            return isPathBefore(a.package, b.package);
        }
        return std::tie(a.name, b.isKnown, a.id) < std::tie(b.name, a.isKnown, b.id);
    });
    entries_.reserve(candidates.size());
    if (areAllInPlace(candidates)) {
        for (Candidate const& each : candidates) {
            entries_.push_back(
                {each.object, each.kind, each.package + "/" + each.name, each.package.size()});
        }
    } else {
        nameAll(std::move(candidates), findings);
    }
    byId_.reserve(entries_.size());
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        byId_.emplace(entries_[i].object.getObjectId(), i);
    }
}

/// Whether each has a path of its own that can be written as it is: so it is with what was read.
bool Outline::areAllInPlace(std::vector<Candidate> const& candidates) {
    Candidate const* before = nullptr;
    return std::all_of(candidates.begin(), candidates.end(), [&](Candidate const& each) {
        const bool isOwn =
            before == nullptr || before->name != each.name || before->package != each.package;
        before = &each;
        return isOwn && each.isKnown && isIdentifier(each.name);
    });
}

/// Finds a path for each, those first that have one, and reports what isn't as the objects have it.
void Outline::nameAll(std::vector<Candidate> candidates, std::vector<WriteFinding>& findings) {
    std::stable_partition(
        candidates.begin(), candidates.end(), [](Candidate const& each) { return each.isKnown; });
    std::unordered_set<std::string> taken;
    for (Candidate& candidate : candidates) {
        std::string name = nameInPath(candidate.name);
        if (name.empty()) {
            name = shortClassName(candidate.object);
        }
        std::string path = candidate.package + "/" + name;
        const bool isTaken = taken.contains(path);
        for (int number = 2; taken.contains(path); ++number) {
            path = candidate.package + "/" + name + "_" + std::to_string(number);
        }
        if (!isIdentifier(candidate.name)) {
            findings.push_back({Remark::badName,
                                path,
                                "The name \"" + candidate.name + "\" is no identifier" +
                                    (name == candidate.name
                                         ? "."
                                         : "; it is written in a form that can stand in a path.")});
        }
        if (isTaken || !candidate.isKnown) {
            findings.push_back(
                {Remark::newPath,
                 path,
                 isTaken ? "Another object has the path \"" + candidate.package + "/" + name + "\"."
                         : std::string("The object has no path in packages; this one is new.")});
        }
        taken.insert(path);
        entries_.push_back(
            {candidate.object, candidate.kind, std::move(path), candidate.package.size()});
    }
    std::sort(entries_.begin(), entries_.end(), [](Entry const& a, Entry const& b) {
        return a.package() == b.package() ? a.name() < b.name()
                                          : isPathBefore(a.package(), b.package());
    });
}

Outline::Entry const* Outline::find(QOB::ClassObject const& object) const {
    const auto found = byId_.find(object.getObjectId());
    if (found == byId_.end() || !(entries_[found->second].object == object)) {
        return nullptr;
    }
    return &entries_[found->second];
}

types::Matrix Outline::ownerOf(ValueType const& part) const {
    const auto found = owners_.find(part.getObjectId());
    return found == owners_.end() ? types::Matrix() : found->second;
}

} // namespace velum::arxml
