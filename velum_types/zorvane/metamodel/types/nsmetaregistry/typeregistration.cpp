#include "typeregistration.h"

#include "qob/kernel/value/valuebox.h"
#include "qob/qob/clipboardmanager.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/log.h"
#include "qob/qob/sequencetype.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypesmetapackage.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesnames.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <vector>

namespace Zorvane::metamodel::types::NSImplementation {

namespace {

using QOB::TypeInfoRegistry;

/// The plain name of the factory; what is registered under it is an iterator.
constexpr char const* FactoryName = "Zorvane.metamodel.types.Factory";

/// Enters what the library has. Unless all of it could be entered, takes out what was: a name that
/// is taken stays with whoever has it.
class Enter {
public:
    explicit Enter(QOB::Deviant deviant) : deviant_(deviant) {}
    Enter(Enter const&) = delete;
    Enter& operator=(Enter const&) = delete;
    ~Enter() {
        for (auto takeOut = entered_.rbegin(); takeOut != entered_.rend(); ++takeOut) {
            (*takeOut)();
        }
    }

    template <class Value, class Element>
    void value(Element* meta) {
        TypeInfoRegistry::registerMetaType(
            Value::getTypeName(), Value::getTypeInfo(), QOB::ImmutableDataType(meta, deviant_));
        entered_.emplace_back([] { TypeInfoRegistry::unregisterMetaType(Value::getTypeName()); });
        QOB::ValueObjectFactory::registerType<Value>(Value::getTypeInfo());
        entered_.emplace_back(
            [] { QOB::ValueObjectFactory::unregisterType(Value::getTypeName()); });
    }
    void iterator(char const* name) { enter(name, QOB::IteratorType::Create(QOB::Type())); }
    void sequence(char const* name) { enter(name, QOB::SequenceType::Create(QOB::Type())); }

    void keep() { entered_.clear(); }

private:
    void enter(char const* name, Tessel::TypeInfo const& info) {
        TypeInfoRegistry::registerTypeInfo(name, info);
        entered_.emplace_back([name] { TypeInfoRegistry::unregisterTypeInfo(name); });
    }

    QOB::Deviant deviant_;
    std::vector<std::function<void()>> entered_;
};

/// Takes it out again.
struct TakeOut {
    template <class Value, class Element>
    void value(Element* /*meta*/) const {
        QOB::ValueObjectFactory::unregisterType(Value::getTypeName());
        TypeInfoRegistry::unregisterMetaType(Value::getTypeName());
    }
    void iterator(char const* name) const { TypeInfoRegistry::unregisterTypeInfo(name); }
    void sequence(char const* name) const { TypeInfoRegistry::unregisterTypeInfo(name); }
};

/// The first half of a family's names are iterators, the second half sequences.
template <class Action, class Family>
void forFamily(Action& action, Family const& family) {
    for (std::size_t i = 0; i != family.size(); ++i) {
        if (i < family.size() / 2) {
            action.iterator(family[i]);
        } else {
            action.sequence(family[i]);
        }
    }
}

/// Every name of the package, in the order in which names are entered and taken out.
template <class Action>
void forEveryName(Action& action) {
    action.iterator(FactoryName);
    auto const families = valueSequenceFamilies();
    std::size_t next = 0;
    auto const value = [&]<class Value>(auto* meta) {
        action.template value<Value>(meta);
        forFamily(action, families[next++]);
    };
    value.template operator()<DataSize>(staticGetDataSizeMeta());
    value.template operator()<Time>(staticGetTimeMeta());
    value.template operator()<FloatingPointKind>(staticGetFloatingPointKindMeta());
    value.template operator()<DataSizeUnitKind>(staticGetDataSizeUnitKindMeta());
    value.template operator()<TimeUnitKind>(staticGetTimeUnitKindMeta());
    value.template operator()<CompuMethodCategory>(staticGetCompuMethodCategoryMeta());
    for (QOB::SequenceFamily const& family : sequenceFamilies()) {
        forFamily(action, family);
    }
}

void terminateMeta() {
    QOB::Transaction transaction(QOB::DomainRegistry::instance()->getMetaRegistry());
    staticTerminateTypesMeta();
    transaction.commit();
}

void enterNames(QOB::Deviant deviant) {
    Enter enter(deviant);
    forEveryName(enter);
    enter.keep();
}

} // namespace

void registerTypes() {
    QOB::Model const registry = QOB::DomainRegistry::instance()->getMetaRegistry();
    {
        QOB::Transaction transaction(registry);
        staticInitializeTypesMeta();
        transaction.commit();
    }
    try {
        enterNames(registry.getDeviant());
    } catch (...) {
        terminateMeta();
        staticForgetTypesMetaPackage(); // so that the next call completes its classes
        throw;
    }
}

void unregisterTypes() noexcept {
    try {
        QOB::ClipboardManager::instance()->clear();
        TakeOut takeOut;
        forEveryName(takeOut);
        terminateMeta();
    } catch (std::exception const& failure) {
        qobLogDebug("Taking down the types meta-registry failed: %s", failure.what());
    }
}

} // namespace Zorvane::metamodel::types::NSImplementation
