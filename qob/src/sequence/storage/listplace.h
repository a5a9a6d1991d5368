#pragma once

#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "qob/kernel/deviant/deviations.h"

#include <cstdint>

namespace QOB::internal {

/// What an object notes of its place in the model's list of objects: a guess at the slot of its
/// chunk and at its offset there, which whoever reads it has to verify.
struct ListPlace {
    std::uint32_t slot = 0;
    std::uint32_t offset = 0;

    static ListPlace of(ReferenceStorage::Element element) noexcept {
        DeviationsBase const* const object = deviations(element);
        return object != nullptr ? ListPlace{object->listSlot_, object->listOffset_} : ListPlace();
    }
    static void note(ReferenceStorage::Element element, ListPlace const& place) noexcept {
        if (DeviationsBase* const object = deviations(element)) {
            object->listSlot_ = place.slot & 0x7'FFFF;
            object->listOffset_ = place.offset & 0xFF;
        }
    }

private:
    static DeviationsBase* deviations(ReferenceStorage::Element element) noexcept {
        return static_cast<DeviationsBase*>(const_cast<RootPart*>(rootPartOf(element)));
    }
};

} // namespace QOB::internal
