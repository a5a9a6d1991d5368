#include "read_back.h"

#include "scratch_model.h"

#include <qob/qob/compare.h>
#include <sstream>

namespace velum::arxml {

namespace {

/// An object that is written under another path or name than its own gets its own ones back, so
/// that it is compared with what it was: that the path is new is reported already.
void giveIdentities(Outline const& outline, Outline const& written) {
    for (Outline::Entry const& entry : outline.entries()) {
        Outline::Entry const* const found = written.at(entry.path());
        if (found == nullptr) {
            continue;
        }
        const foundation::NamedElement own(entry.object);
        if (nameOf(entry.object) != nameOf(found->object) && own.isValid()) {
            foundation::NamedElement(found->object)
                .setName(own.hasName() ? own.getName() : QOB::String());
        }
        if (!entry.object.hasExternalId()) {
            found->object.removeExternalId();
        } else if (entry.object.getExternalId().view() != entry.path()) {
            found->object.setExternalId(entry.object.getExternalId());
        }
    }
}

/// Whether an object only has a path now that had none: parts get one from what they are in.
bool isNewPath(QOB::Difference const& difference) {
    return difference.property.isValid() && difference.property.view() == "ExternalId" &&
           difference.leftValues.empty();
}

/// Whether the objects are base dimensions of the international system, which come and go with the
/// exponents of others.
bool isBaseDimension(QOB::Difference const& difference) {
    const types::Dimension dimension(difference.left.get() != nullptr ? difference.left
                                                                      : difference.right);
    return difference.kind == QOB::DifferenceKind::Existence && dimension.isValid() &&
           siDimensionOf(dimension) >= 0;
}

} // namespace

void reportDifferences(QOB::Model const& model,
                       Outline const& outline,
                       std::string const& file,
                       std::function<bool(Outline::Entry const&)> const& isWanted,
                       std::vector<WriteFinding>& findings) {
    const ScratchModel again({file});
    std::vector<WriteFinding> none;
    const Outline written(again.model(), {}, none);
    giveIdentities(outline, written);
    for (QOB::Difference const& difference : QOB::compare(model, again.model())) {
        if (isNewPath(difference) || isBaseDimension(difference)) {
            continue;
        }
        const bool isOfModel = difference.left.get() != nullptr;
        QOB::ClassObject const& object = isOfModel ? difference.left : difference.right;
        Outline::Entry const* const entry = (isOfModel ? outline : written).entryAround(object);
        if (entry != nullptr && isOfModel && isWanted && !isWanted(*entry)) {
            continue;
        }
        std::ostringstream line;
        line << difference;
        findings.push_back({Remark::changed,
                            entry == nullptr ? externalIdOf(object) : std::string(entry->path()),
                            "A reader gets something else: " + line.str()});
    }
}

} // namespace velum::arxml
