#include "qob/kernel/deviant/sparseproperties.h"

#include "model/modelcore.h"
#include "qob/kernel/deviant/countedpointer.h"
#include "qob/kernel/deviant/sparsetables.h"
#include "qob/kernel/property/reference.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace QOB::internal {

namespace {

using State = NSInterface::ClassObjectIntf;
using StereotypeContainer = MultiIndexImpl<StereotypeObject>;
using ToolInfoContainer = MultiIndexImpl<ExternalToolInfo>;

// Never destroyed: states are freed until the very end of the library.

AppliedStereotypeInstanceTable& stereotypeTable() {
    static auto* const table = new AppliedStereotypeInstanceTable;
    return *table;
}
ExternalIdTable& externalIdTable() {
    static auto* const table = new ExternalIdTable;
    return *table;
}
ExternalToolInfoTable& toolInfoTable() {
    static auto* const table = new ExternalToolInfoTable;
    return *table;
}

/// The objects of other models that a state refers to, and the object whose state it is.
struct ForeignValues {
    State const* object = nullptr;
    std::vector<CountedPointer<NSInterface::ObjectIntf>> values;
};
boost::unordered_flat_map<State const*, ForeignValues>& foreignTable() {
    static auto* const table = new boost::unordered_flat_map<State const*, ForeignValues>;
    return *table;
}

/// The sequence of a state; a common empty one, which must never be written, if there is none.
template <class Container, class Table>
Container* reading(bool has, Table const& table, State const* state) {
    static auto* const empty = new Container();
    return has ? table.find(state)->second.get() : empty;
}

/// The sequence of a state, made if there is none.
template <class Container, class Table>
Container* writing(Table& table, State const* state) {
    std::unique_ptr<Container>& place = table[state];
    if (place == nullptr) {
        place = std::make_unique<Container>();
    }
    return place.get();
}

template <class Table>
void copyEntry(Table& table, State const* from, State const* to) {
    auto copy =
        std::make_unique<typename Table::mapped_type::element_type>(*table.find(from)->second);
    table.insert_or_assign(to, std::move(copy));
}

/// Takes what the table holds for a state out of it.
template <class Table>
typename Table::mapped_type taken(Table& table, State const* state) noexcept {
    typename Table::mapped_type held{};
    if (auto const found = table.find(state); found != table.end()) {
        held = std::move(found->second);
        table.erase(found);
    }
    return held;
}

} // namespace

bool SparseProperties::isEmptyStereotypeEntry(State const* state) noexcept {
    return stereotypeTable().find(state)->second->generic_empty({});
}
Sequence<StereotypeObject> SparseProperties::stereotypeInstances(State const* state,
                                                                 Deviant deviant) {
    return {reading<StereotypeContainer>(has(state, StereotypeInstances), stereotypeTable(), state),
            deviant};
}
Sequence<StereotypeObject> SparseProperties::writableStereotypeInstances(State* state,
                                                                         Deviant deviant) {
    auto* const container = writing<StereotypeContainer>(stereotypeTable(), state);
    mark(state, StereotypeInstances);
    return {container, deviant};
}

String SparseProperties::externalId(State const* state) noexcept {
    return hasExternalId(state) ? externalIdTable().find(state)->second : String();
}
void SparseProperties::setExternalId(State* state, String const& id) {
    if (!id.view().empty()) {
        externalIdTable().insert_or_assign(state, id);
        mark(state, ExternalId);
    } else if (hasExternalId(state)) {
        externalIdTable().erase(state);
        unmark(state, ExternalId);
    }
}

bool SparseProperties::isEmptyToolInfoEntry(State const* state) noexcept {
    return toolInfoTable().find(state)->second->generic_empty({});
}
Sequence<ExternalToolInfo> SparseProperties::toolInfos(State const* state, Deviant deviant) {
    return {reading<ToolInfoContainer>(has(state, ToolInfos), toolInfoTable(), state), deviant};
}
Sequence<ExternalToolInfo> SparseProperties::writableToolInfos(State* state, Deviant deviant) {
    auto* const container = writing<ToolInfoContainer>(toolInfoTable(), state);
    mark(state, ToolInfos);
    return {container, deviant};
}

void SparseProperties::addForeign(State* state,
                                  State const* object,
                                  NSInterface::ObjectIntf* value) {
    ForeignValues& held = foreignTable()[state];
    held.object = object;
    held.values.emplace_back(value);
    mark(state, ForeignReferences);
}
void SparseProperties::removeForeign(State* state, NSInterface::ObjectIntf const* value) {
    if (!has(state, ForeignReferences)) {
        return;
    }
    auto const entry = foreignTable().find(state);
    auto& values = entry->second.values;
    auto const found = std::find_if(
        values.begin(), values.end(), [value](auto const& held) { return held.get() == value; });
    if (found == values.end()) {
        return;
    }
    CountedPointer<NSInterface::ObjectIntf> const last = std::move(*found); // goes at the end
    values.erase(found);
    if (values.empty()) {
        foreignTable().erase(entry);
        unmark(state, ForeignReferences);
    }
}
std::vector<Deviant> SparseProperties::foreignModels(Deviant deviant) {
    std::vector<Deviant> models;
    for (auto const& [state, held] : foreignTable()) {
        if (held.object->getRootDeviant() != deviant.getRootDeviant() ||
            ModelCore::deviationsOf(held.object).seenIn(deviant) != state) {
            continue;
        }
        for (auto const& value : held.values) {
            Deviant const root = value.get()->getRootDeviant();
            if (value.get()->deviant_isValid(root)) {
                models.push_back(root);
            }
        }
    }
    std::sort(models.begin(), models.end(), [](Deviant a, Deviant b) {
        return DeviantAccess::index(a) < DeviantAccess::index(b);
    });
    models.erase(std::unique(models.begin(), models.end()), models.end());
    return models;
}

void SparseProperties::copy(State const& from, State& to) {
    try {
        if (hasStereotypeInstances(&from)) {
            copyEntry(stereotypeTable(), &from, &to);
            mark(&to, StereotypeInstances);
        }
        if (hasExternalId(&from)) {
            setExternalId(&to, externalId(&from));
        }
        if (hasToolInfos(&from)) {
            copyEntry(toolInfoTable(), &from, &to);
            mark(&to, ToolInfos);
        }
        if (has(&from, ForeignReferences)) {
            ForeignValues held = foreignTable().find(&from)->second;
            foreignTable().insert_or_assign(&to, std::move(held));
            mark(&to, ForeignReferences);
        }
    } catch (...) {
        drop(to); // the copy never comes to be, and nobody else would forget it
        throw;
    }
}

void SparseProperties::drop(State& state) noexcept {
    // What is let go of at the end may free other states, which come here too.
    std::unique_ptr<StereotypeContainer> const stereotypes = taken(stereotypeTable(), &state);
    std::unique_ptr<ToolInfoContainer> const infos = taken(toolInfoTable(), &state);
    ForeignValues const foreign = taken(foreignTable(), &state);
    taken(externalIdTable(), &state);
    state.sparse_ = 0;
}

} // namespace QOB::internal

namespace QOB::NSInterface {

AppliedStereotypeInstanceTable const& ClassObjectIntf::appliedStereotypeInstance_sparse() {
    return QOB::internal::stereotypeTable();
}
ExternalIdTable const& ClassObjectIntf::externalId_sparse() {
    return QOB::internal::externalIdTable();
}
ExternalToolInfoTable const& ClassObjectIntf::externalToolInfo_sparse() {
    return QOB::internal::toolInfoTable();
}

} // namespace QOB::NSInterface
