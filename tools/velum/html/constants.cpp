#include "html/constants.h"

#include "check/file_rules.h"
#include "model/objects.h"

#include <algorithm>

namespace velum::html {

Constants::Constants(QOB::Model const& model, arxml::Sources const& sources) {
    const std::vector<check::InitialValue> values = check::initialValues(sources);
    if (values.empty()) {
        return;
    }
    std::unordered_map<std::string, QOB::ClassObject> byPath;
    for (QOB::ClassObject const& object : model::freeObjects(model)) {
        byPath.emplace(model::pathOf(object), object);
    }
    for (check::InitialValue const& value : values) {
        const types::LookupTableType table(byPath[value.type]);
        const types::ConstantSpecification constant(byPath[value.constant]);
        if (!table.isValid() || !constant.isValid()) {
            continue;
        }
        tables_.emplace(constant.get(), table);
        auto& filling = constants_[table.get()];
        if (std::find(filling.begin(), filling.end(), constant) == filling.end()) {
            filling.push_back(constant);
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
    types::ConstantSpecification next = constant;
    for (int steps = 0; steps < 64 && next.isValid(); ++steps) {
        const foundation::ValueSpecification value = next.getConstantValue();
        const types::ConstantReference reference(value);
        if (!reference.isValid()) {
            return types::LookupTableSpecification(value);
        }
        next = reference.getValue();
    }
    return {};
}

} // namespace velum::html
