#include "updating/verification.h"

#include <algorithm>
#include <sstream>

namespace velum::arxml {

namespace {

/// The values but for references to objects that don't exist any more.
std::vector<QOB::Object> withoutGone(std::vector<QOB::Object> const& values) {
    std::vector<QOB::Object> rest;
    for (QOB::Object const& value : values) {
        const QOB::ClassObject object(value);
        if (object.get() == nullptr || object.isValid()) {
            rest.push_back(value);
        }
    }
    return rest;
}

} // namespace

std::string lineOf(QOB::Difference const& difference) {
    std::ostringstream line;
    line << difference;
    return line.str();
}

std::optional<Verification::Mismatch>
Verification::mismatch(QOB::Model const& got, std::vector<std::string> const& paths) {
    const WrittenElements elements(got);
    for (std::string const& path : paths) {
        if (elements.textAt(path) != wanted_.textAt(path) ||
            elements.mapAt(path) != wanted_.mapAt(path)) {
            return Mismatch{path, path};
        }
        if (wanted_.at(path) != nullptr) {
            if (std::string line = hiddenDifference(elements, path); !line.empty()) {
                return Mismatch{path, std::move(line)};
            }
        }
    }
    return std::nullopt;
}

/// What an object has that no element of a file tells.
std::string Verification::hiddenDifference(WrittenElements const& got, std::string const& path) {
    for (QOB::Difference const& difference :
         QOB::compare(got.at(path)->object, wanted_.at(path)->object)) {
        if (!isMirror(difference) && !areSame(got, difference)) {
            return lineOf(difference);
        }
    }
    return {};
}

/// Whether a property only lists who refers to the object.
bool Verification::isMirror(QOB::Difference const& difference) {
    if (difference.kind == QOB::DifferenceKind::Existence ||
        difference.kind == QOB::DifferenceKind::Class) {
        return false;
    }
    auto const& all = attributes_.of(difference.left);
    return std::any_of(all.begin(), all.end(), [&](QOB::Attribute const& each) {
        return each.isOtherEnd && each.name == difference.property;
    });
}

/// Whether the values are the same but for what is renamed and for objects that are gone.
bool Verification::areSame(WrittenElements const& got, QOB::Difference const& difference) const {
    if (difference.property.isValid() && difference.property.view() == "ExternalId") {
        return externalIdOf(difference.left) == idAfter(externalIdOf(difference.right));
    }
    if (difference.property.isValid() && difference.property.view() == "Name") {
        return isNamedAfterPart(difference.left, difference.right);
    }
    const std::vector<QOB::Object> left = withoutGone(difference.leftValues);
    const std::vector<QOB::Object> right = withoutGone(difference.rightValues);
    const bool isAnyGone =
        left.size() + right.size() != difference.leftValues.size() + difference.rightValues.size();
    return (!left.empty() || isAnyGone) &&
           std::equal(
               left.begin(),
               left.end(),
               right.begin(),
               right.end(),
               [&](QOB::Object const& a, QOB::Object const& b) { return areOneObject(got, a, b); });
}

/// Whether an object without a path has in the file the name that a part around it has now, and in
/// the model the one that the part had: so it is with the type that is written within a member.
bool Verification::isNamedAfterPart(QOB::ClassObject const& got,
                                    QOB::ClassObject const& wanted) const {
    if (got.hasExternalId() || wanted.hasExternalId()) {
        return false;
    }
    const std::string around = wanted_.pathAround(wanted) + '/';
    return std::any_of(renamings_.begin(), renamings_.end(), [&](auto const& renaming) {
        return renaming.second.starts_with(around) &&
               renaming.second.ends_with('/' + nameOf(got)) &&
               renaming.first.ends_with('/' + nameOf(wanted));
    });
}

/// Whether two values are objects of one name, but for renamings, that are in the same element:
/// what these have in them is compared there.
bool Verification::areOneObject(WrittenElements const& got,
                                QOB::Object const& a,
                                QOB::Object const& b) const {
    const QOB::ClassObject one(a);
    const QOB::ClassObject other(b);
    return one.isValid() && other.isValid() && externalIdOf(one) == idAfter(externalIdOf(other)) &&
           (nameOf(one) == nameOf(other) || isNamedAfterPart(one, other)) &&
           got.pathAround(one) == wanted_.pathAround(other);
}

/// The external id that an object gets by the renamings.
std::string Verification::idAfter(std::string const& id) const {
    return renamed(id, renamings_).value_or(id);
}

} // namespace velum::arxml
