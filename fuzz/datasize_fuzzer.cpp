#include "quantity_fuzzer.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    readAnyText<Zorvane::metamodel::types::DataSize>(data, size);
    return 0;
}
