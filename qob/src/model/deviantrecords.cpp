#include "model/deviantrecords.h"

#include "qob/qob/assert.h"

#include <utility>

namespace QOB::internal {

namespace {

/// The null word's record stands first; its generation is one that no word has.
constinit DeviantRecord firstChunk[RecordsPerChunk] = {{.generation = 1}};

std::uint32_t firstFreeRecord = 0;
std::uint32_t recordCount = 1; // the null word's record

} // namespace

constinit DeviantRecord* deviantChunks[MaximalChunks] = {firstChunk};

std::uint32_t acquireRecord() {
    if (firstFreeRecord != 0) {
        std::uint32_t const index = firstFreeRecord;
        firstFreeRecord = deviantRecordAt(index).nextFree;
        return index;
    }
    std::uint32_t const chunk = recordCount / RecordsPerChunk;
    QOB_REQUIRE(chunk < MaximalChunks, "The number of living deviants is at its limit.");
    if (deviantChunks[chunk] == nullptr) {
        deviantChunks[chunk] = new DeviantRecord[RecordsPerChunk];
    }
    deviantRecordAt(recordCount).generation = 1;
    return recordCount++;
}

void retireRecord(std::uint32_t index) noexcept {
    DeviantRecord& record = deviantRecordAt(index);
    record.writeGate = 0;
    record.rootIndex = 0;
    record.model = nullptr;
    record.data = nullptr;
    if (++record.generation != UINT32_MAX) {
        record.nextFree = std::exchange(firstFreeRecord, index);
    }
}

} // namespace QOB::internal
