#include "qob/qob/modelcache.h"

namespace QOB {

std::wstring const ModelCache::UNTITLED = L"untitled";

ModelCache* ModelCache::instance() {
    // Never destroyed: models end, and leave it, until the very end of the library.
    static auto* const cache = new ModelCache();
    return cache;
}

std::wstring ModelCache::getNextAvailableModelUri(std::wstring const& base) const {
    std::wstring uri = base;
    for (unsigned number = 1; models_.contains(uri); ++number) {
        uri = base + std::to_wstring(number);
    }
    return uri;
}

void ModelCache::bindModel(std::wstring const& uri, Model const& model) {
    auto const [entry, isNew] = models_.try_emplace(uri, model);
    if (!isNew && !(entry->second == model)) {
        std::string const text(String(uri).view());
        QOB_FAIL("The URI (%s) belongs to another model.", text.c_str());
    }
}

Model ModelCache::findModel(std::wstring const& uri) const {
    auto const found = models_.find(uri);
    return found != models_.end() ? found->second : Model();
}

void ModelCache::unbindModel(Model const& model) {
    std::erase_if(models_, [&](auto const& entry) { return entry.second == model; });
}

} // namespace QOB
