#include "export/writers.h"
#include "model/addresses.h"
#include "model/objects.h"
#include "model/values.h"

#include <nlohmann/json.hpp>

namespace velum::exporting {

bool writeJson(QOB::Model const& model, Sink const& sink) {
    using Json = nlohmann::ordered_json;
    model::Addresses addresses;
    std::string piece = "{\"format\": \"velum-objects\", \"version\": 1, \"objects\": [";
    bool isFirst = true;
    for (QOB::ClassObject const& object : model::freeObjects(model)) {
        piece += isFirst ? "\n" : ",\n";
        isFirst = false;
        // Texts of files need not be UTF-8; what is not becomes U+FFFD.
        piece += model::objectJson(object, addresses)
                     .dump(-1, ' ', false, Json::error_handler_t::replace);
        if (!sink(piece)) {
            return false;
        }
        piece.clear();
    }
    return sink(piece + (isFirst ? "]}\n" : "\n]}\n"));
}

} // namespace velum::exporting
