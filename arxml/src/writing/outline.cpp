#include "writing/outline.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace velum::arxml {

using foundation::ValueType;

namespace {

std::string_view shortClassName(QOB::ClassObject const& object) {
    std::string_view name = object.getLumvoName(false);
    name.remove_prefix(name.rfind('.') + 1);
    return name;
}

bool isContained(QOB::ClassObject const& object) {
    return object.hasContainerQOB();
}

constexpr auto noPackage = static_cast<std::uint32_t>(-1);

bool isEntryBefore(Outline::Entry const& a, Outline::Entry const& b) {
    return a.package() == b.package() ? a.name() < b.name()
                                      : isPathBefore(a.package(), b.package());
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

Outline::Outline(QOB::Model const& model,
                 WriteOptions const& options,
                 std::vector<WriteFinding>& findings)
    : newPackage_(cleaned(options.package)) {
    if (newPackage_.empty()) {
        newPackage_ = WriteOptions().package;
    }
    std::vector<Candidate> candidates = freeObjects(model);
    std::size_t kept = 0;
    for (Candidate& each : candidates) {
        if (owners_.contains(each.id) || usedBases_.contains(each.id)) {
            continue;
        }
        if (each.kind == ElementKind::none) {
            each.kind = kindOf(each.object);
        }
        if (each.kind == ElementKind::none) {
            findings.push_back({Remark::noPlace,
                                externalIdOf(each.object),
                                "The format has no element for the " +
                                    std::string(shortClassName(each.object)) + " \"" +
                                    nameOf(each.object) + "\"."});
            continue;
        }
        if (&candidates[kept] != &each) {
            candidates[kept] = std::move(each);
        }
        ++kept;
    }
    candidates.resize(kept);
    place(candidates, findings);
    indexObjects();
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

/// Looks at every object once: that is what costs most in a large model. Kinds that depend on the
/// parts of matrices are left open.
std::vector<Outline::Candidate> Outline::freeObjects(QOB::Model const& model) {
    std::vector<Candidate> candidates;
    std::vector<types::Matrix> matrices;
    for (const QOB::ClassObject object : model.getRootObjects()) {
        const types::Matrix matrix(object);
        if (matrix.isValid()) {
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
        noteRemarkable(object);
        if (!isContained(object)) {
            Candidate& candidate = candidates.emplace_back();
            candidate.object = object;
            candidate.id = object.getObjectId();
            candidate.kind = matrix.isValid() ? ElementKind::none : kindOf(object);
            complete(candidate);
        }
    }
    findParts(matrices);
    return candidates;
}

/// Most objects have nothing but properties that elements are written for.
void Outline::noteRemarkable(QOB::ClassObject const& object) {
    const foundation::NamedElement named(object);
    const bool isNamed = named.isValid();
    hasRelations_ = hasRelations_ || !isNamed || foundation::Dependency(object).isValid();
    if (object.hasExternalToolInfos() || object.hasAppliedStereotypeInstances() ||
        (isNamed && named.getVisibility() != foundation::VisibilityKind::PublicVisibility)) {
        remarkable_.push_back(object);
    }
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

/// The name of a candidate, and its package.
void Outline::complete(Candidate& candidate) {
    const foundation::NamedElement named(candidate.object);
    const QOB::String name =
        named.isValid() && named.hasName() ? named.getName() : QOB::String(std::string());
    const std::size_t size = name.view().size();
    candidate.text = name;
    candidate.name = candidate.text.view();
    std::uint32_t package = noPackage;
    if (candidate.object.hasExternalId()) {
        const QOB::String id = candidate.object.getExternalId();
        const std::string_view whole = id.view();
        if (whole.size() > 1 && whole.front() == '/') {
            const bool hasName = size > 0 && whole.size() > size + 1 &&
                                 whole.substr(whole.size() - size) == name.view() &&
                                 whole[whole.size() - size - 1] == '/';
            const std::size_t end = hasName ? whole.size() - size - 1 : whole.rfind('/');
            package = packageAt(whole.substr(0, end));
            if (hasName || size == 0) {
                candidate.text = id;
                candidate.name = candidate.text.view().substr(end + 1);
                candidate.isPath =
                    package != noPackage && packages_[package] == whole.substr(0, end);
            }
        }
    }
    candidate.isKnown = package != noPackage;
    candidate.package = candidate.isKnown ? package : packageAt(newPackage_);
}

/// The place of a package in `packages_`; `noPackage` if there is no name in the text. Objects that
/// follow each other are mostly in one package.
std::uint32_t Outline::packageAt(std::string_view written) {
    if (!packages_.empty() && written == lastPackageText_) {
        return lastPackage_;
    }
    lastPackageText_ = written;
    const auto [found, isNew] = packageByText_.try_emplace(lastPackageText_, noPackage);
    lastPackage_ = found->second;
    if (!isNew) {
        return lastPackage_;
    }
    std::string package = cleaned(written);
    if (package == written && !package.empty()) {
        packages_.push_back(std::move(package));
        found->second = static_cast<std::uint32_t>(packages_.size() - 1);
        lastPackage_ = found->second;
    } else if (!package.empty()) {
        const std::uint32_t place = packageAt(package);
        lastPackageText_ = written;
        packageByText_[lastPackageText_] = place;
    }
    return lastPackage_;
}

/// The candidates in the order of their paths. Of one path, those that have it come first.
std::vector<Outline::Rank> Outline::inOrder(std::vector<Candidate> const& candidates) const {
    std::vector<std::uint32_t> byPath(packages_.size());
    std::iota(byPath.begin(), byPath.end(), 0U);
    std::sort(byPath.begin(), byPath.end(), [this](std::uint32_t a, std::uint32_t b) {
        return isPathBefore(packages_[a], packages_[b]);
    });
    std::vector<std::uint32_t> places(packages_.size());
    for (std::uint32_t i = 0; i < byPath.size(); ++i) {
        places[byPath[i]] = i;
    }
    std::vector<Rank> order;
    order.reserve(candidates.size());
    for (Candidate const& each : candidates) {
        order.push_back(
            {places[each.package], static_cast<std::uint32_t>(order.size()), each.name});
    }
    std::sort(order.begin(), order.end(), [&candidates](Rank const& a, Rank const& b) {
        if (a.package != b.package) {
            return a.package < b.package;
        }
        if (const int names = a.name.compare(b.name); names != 0) {
            return names < 0;
        }
        Candidate const& one = candidates[a.candidate];
        Candidate const& other = candidates[b.candidate];
        return one.isKnown != other.isKnown ? one.isKnown : one.id < other.id;
    });
    return order;
}

QOB::String Outline::pathOf(Candidate const& candidate) const {
    return candidate.isPath
               ? candidate.text
               : QOB::String(packages_[candidate.package] + "/" + std::string(candidate.name));
}

void Outline::place(std::vector<Candidate> const& candidates, std::vector<WriteFinding>& findings) {
    const std::vector<Rank> order = inOrder(candidates);
    entries_.reserve(candidates.size());
    areIds_ = areAllInPlace(candidates, order);
    if (!areIds_) {
        nameAll(candidates, order, findings);
        return;
    }
    for (Rank const& rank : order) {
        Candidate const& each = candidates[rank.candidate];
        entries_.push_back({each.object,
                            pathOf(each),
                            static_cast<std::uint32_t>(packages_[each.package].size()),
                            each.kind});
    }
}

/// Whether each has a path of its own that is written as it is.
bool Outline::areAllInPlace(std::vector<Candidate> const& candidates,
                            std::vector<Rank> const& order) {
    Rank const* before = nullptr;
    return std::all_of(order.begin(), order.end(), [&](Rank const& each) {
        const bool isOwn =
            before == nullptr || before->package != each.package || before->name != each.name;
        before = &each;
        return isOwn && candidates[each.candidate].isPath && isIdentifier(each.name);
    });
}

/// Finds a path for each, those first that have one, and reports what isn't as the objects have it.
void Outline::nameAll(std::vector<Candidate> const& candidates,
                      std::vector<Rank> const& order,
                      std::vector<WriteFinding>& findings) {
    std::unordered_set<std::string> taken;
    const auto nameOne = [&](Candidate const& candidate) {
        const std::string own(candidate.name);
        std::string const& package = packages_[candidate.package];
        std::string name = nameInPath(own);
        if (name.empty()) {
            name = shortClassName(candidate.object);
        }
        std::string path = package + "/" + name;
        const bool isTaken = taken.contains(path);
        for (int number = 2; taken.contains(path); ++number) {
            path = package;
            path.append("/").append(name).append("_").append(std::to_string(number));
        }
        if (!isIdentifier(own)) {
            findings.push_back(
                {Remark::badName,
                 path,
                 "The name \"" + own + "\" is no identifier" +
                     (name == own ? "." : "; it is written in a form that can stand in a path.")});
        }
        if (isTaken) {
            findings.push_back({Remark::newPath,
                                path,
                                "Another object has the path \"" + package + "/" + name + "\"."});
        } else if (!candidate.isKnown) {
            findings.push_back(
                {Remark::newPath, path, "The object has no path in packages; this one is new."});
        } else if (!candidate.isPath && name == own) {
            findings.push_back(
                {Remark::newPath,
                 path,
                 "The external id \"" + externalIdOf(candidate.object) + "\" is another one."});
        }
        taken.insert(path);
        entries_.push_back({candidate.object,
                            QOB::String(path),
                            static_cast<std::uint32_t>(package.size()),
                            candidate.kind});
    };
    for (const bool isKnown : {true, false}) {
        for (Rank const& rank : order) {
            if (candidates[rank.candidate].isKnown == isKnown) {
                nameOne(candidates[rank.candidate]);
            }
        }
    }
    std::sort(entries_.begin(), entries_.end(), isEntryBefore);
}

/// Where the search for an object begins; there are at least twice as many slots as objects.
std::size_t Outline::slotOf(QOB::ClassObject const& object) const {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    const std::uint64_t address = std::hash<void const*>()(object.get());
    return static_cast<std::size_t>((address * spread) >> 20U) & (slots_.size() - 1);
}

void Outline::indexObjects() {
    std::size_t size = 16;
    while (size < 2 * entries_.size()) {
        size *= 2;
    }
    slots_.resize(size);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        std::size_t slot = slotOf(entries_[i].object);
        while (slots_[slot] != 0) {
            slot = (slot + 1) & (size - 1);
        }
        slots_[slot] = static_cast<std::uint32_t>(i + 1);
    }
}

Outline::Entry const* Outline::find(QOB::ClassObject const& object) const {
    if (object.get() == nullptr) {
        return nullptr;
    }
    for (std::size_t slot = slotOf(object); slots_[slot] != 0;
         slot = (slot + 1) & (slots_.size() - 1)) {
        Entry const& entry = entries_[slots_[slot] - 1];
        if (entry.object == object) {
            return &entry;
        }
    }
    return nullptr;
}

Outline::Entry const* Outline::at(std::string_view path) const {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return nullptr;
    }
    const std::string_view package = path.substr(0, slash);
    const std::string_view name = path.substr(slash + 1);
    const auto found =
        std::partition_point(entries_.begin(), entries_.end(), [&](Entry const& entry) {
            return entry.package() == package ? entry.name() < name
                                              : isPathBefore(entry.package(), package);
        });
    return found != entries_.end() && found->path() == path ? &*found : nullptr;
}

/// Empty if nothing is around the object.
QOB::ClassObject Outline::outerOf(QOB::ClassObject const& object) const {
    return object.isValid() && object.hasContainerQOB() ? object.getContainerQOB()
                                                        : ownerOf(ValueType(object));
}

/// Objects may be in each other: the way outwards is compared with an object on it, which is
/// replaced after twice as many steps each time.
Outline::Entry const* Outline::entryAround(QOB::ClassObject const& object) const {
    QOB::ClassObject outer = object;
    QOB::ClassObject passed = object;
    std::size_t steps = 0;
    std::size_t most = 16;
    Entry const* entry = find(outer);
    while (entry == nullptr) {
        outer = outerOf(outer);
        if (outer.get() == nullptr || outer == passed) {
            return nullptr;
        }
        if (++steps == most) {
            passed = outer;
            most *= 2;
        }
        entry = find(outer);
    }
    return entry;
}

types::Matrix Outline::ownerOf(ValueType const& part) const {
    const auto found = part.isValid() ? owners_.find(part.getObjectId()) : owners_.end();
    return found == owners_.end() ? types::Matrix() : found->second;
}

} // namespace velum::arxml
