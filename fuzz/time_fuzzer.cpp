#include "quantity_fuzzer.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    readAnyText<Zorvane::metamodel::types::Time>(data, size);
    return 0;
}
