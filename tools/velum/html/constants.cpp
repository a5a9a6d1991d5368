#include "html/constants.h"

#include "check/file_rules.h"
#include "model/objects.h"

#include <algorithm>
#include <utility>

namespace velum::html {

namespace {

/// The constant at the end of references to constants; empty if there is none.
types::ConstantSpecification holderOf(types::ConstantSpecification const& constant) {
    types::ConstantSpecification next = constant;
    for (int steps = 0; steps < 64 && next.isValid(); ++steps) {
        const types::ConstantReference reference(next.getConstantValue());
        if (!reference.isValid()) {
            return next;
        }
        next = reference.getValue();
    }
    return {};
}

} // namespace

Constants::Constants(QOB::Model const& model, arxml::Sources const& sources) {
    const std::vector<check::InitialValue> values = check::initialValues(sources);
    if (values.empty()) {
        return;
    }
    std::unordered_map<std::string, QOB::ClassObject> byPath;
    for (QOB::ClassObject const& object : model::freeObjects(model)) {
        byPath.emplace(model::pathOf(object), object);
    }
    std::vector<std::pair<types::ConstantSpecification, types::LookupTableType>> references;
    for (check::InitialValue const& value : values) {
        const types::LookupTableType table(byPath[value.type]);
        const types::ConstantSpecification constant(byPath[value.constant]);
        if (!table.isValid() || !constant.isValid()) {
            continue;
        }
        tables_.emplace(constant.get(), table);
        references.emplace_back(constant, table);
        auto& filling = constants_[table.get()];
        if (std::find(filling.begin(), filling.end(), constant) == filling.end()) {
            filling.push_back(constant);
        }
    }
    // A constant that is used only through references has its axes from there.
    for (auto const& [constant, table] : references) {
        if (const types::ConstantSpecification holder = holderOf(constant); holder.isValid()) {
            tables_.emplace(holder.get(), table);
        }
    }
}

types::LookupTableType Constants::tableOf(types::ConstantSpecification const& constant) const {
    const auto found = tables_.find(constant.get());
    return found == tables_.end() ? types::LookupTableType() : found->second;
}

std::vector<types::ConstantSpecification> Constants::of(types::LookupTableType const& table) const {
    const auto found = constants_.find(table.get());
    return found == constants_.end() ? std::vector<types::ConstantSpecification>() : found->second;
}

types::LookupTableSpecification tableIn(types::ConstantSpecification const& constant) {
    const types::ConstantSpecification holder = holderOf(constant);
    return holder.isValid() ? types::LookupTableSpecification(holder.getConstantValue())
                            : types::LookupTableSpecification();
}

} // namespace velum::html
