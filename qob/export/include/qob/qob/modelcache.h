#pragma once

#include "qob/qob/export.h"
#include "qob/qob/model.h"

#include <map>
#include <string>

namespace QOB {

/// The process-wide table of models by URI. An entry keeps the model object alive and is removed
/// with the model.
class QOB_EXPORT ModelCache {
public:
    /// The base name of a model that was created without one.
    static std::wstring const UNTITLED;

    /// Never null.
    static ModelCache* instance();

    ModelCache(ModelCache const&) = delete;
    ModelCache& operator=(ModelCache const&) = delete;

    /// The first of `base`, `base`1, `base`2 ... that is not taken.
    std::wstring getNextAvailableModelUri(std::wstring const& base) const;
    /// Enters a model. Raises QOB::Exception if the URI is taken by another model.
    void bindModel(std::wstring const& uri, Model const& model);
    /// The model under a URI; empty if there is none.
    Model findModel(std::wstring const& uri) const;
    /// Removes every entry of the model.
    void unbindModel(Model const& model);

private:
    ModelCache() = default;
    ~ModelCache() = default;

    std::map<std::wstring, Model> models_;
};

} // namespace QOB
