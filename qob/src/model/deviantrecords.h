#pragma once

#include "qob/qob/deviant.h"

namespace QOB {

/// The private door between the deviant's word and the kernel's records.
struct DeviantAccess {
    static std::uint32_t index(Deviant deviant) noexcept { return deviant.index_; }
    static internal::DeviantRecord& record(Deviant deviant) noexcept { return deviant.record(); }
    static Deviant make(std::uint32_t index, std::uint32_t generation) noexcept {
        return {index, generation};
    }
};

namespace internal {

inline DeviantRecord& deviantRecordAt(std::uint32_t index) noexcept {
    return deviantChunks[index / RecordsPerChunk][index % RecordsPerChunk];
}

/// A record nobody uses: recycled, or new in a chunk that is made when it is needed.
std::uint32_t acquireRecord();

/// Makes every word of the record invalid for ever. A record whose generations are used up is not
/// used again.
void retireRecord(std::uint32_t index) noexcept;

} // namespace internal
} // namespace QOB
