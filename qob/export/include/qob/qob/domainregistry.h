#pragma once

#include "qob/qob/export.h"
#include "qob/qob/factory.h"
#include "qob/qob/model.h"
#include "qob/qob/string.h"

#include <string>

namespace QOB {

/// The registry of the metamodels of all domains, which live in a model of their own.
class QOB_EXPORT DomainRegistry {
public:
    /// The registry; never null. Created on the first call.
    static DomainRegistry* instance();

    DomainRegistry(DomainRegistry const&) = delete;
    DomainRegistry& operator=(DomainRegistry const&) = delete;

    /// The model that holds the metamodels.
    Model getMetaRegistry() const { return metaRegistry_; }

    /// The factory that makes the elements of metamodels in that model.
    Factory getMetaRegistryFactory() const { return metaRegistryFactory_; }

    /// The canonical URI of a domain: "qob://metamodels/" and its name.
    std::wstring getDomainCanonicalUri(String const& domain) const;

    /// The same as a text.
    static String canonicalUri(String const& domain);

private:
    friend struct KernelLife;

    DomainRegistry();
    ~DomainRegistry();

    Model metaRegistry_;
    Factory metaRegistryFactory_;
};

} // namespace QOB
