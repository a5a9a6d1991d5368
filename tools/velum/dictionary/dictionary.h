#pragma once

#include "report/report.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>
#include <velum_types/types.h>

namespace velum::dictionary {

/// The data types of an import, held in a model of the library. Owns the model and ends it.
class Dictionary {
public:
    Dictionary();
    ~Dictionary();
    Dictionary(const Dictionary&) = delete;
    Dictionary& operator=(const Dictionary&) = delete;

    const QOB::Model& model() const { return model_; }

    /// An integer of so many bits; none if the file doesn't tell.
    void addInteger(std::string_view name, bool isSigned, std::optional<std::int32_t> bits);

    /// What the model says about the integers, in the order of their creation.
    std::vector<report::IntegerRow> integers() const;

private:
    QOB::Model model_;
    std::vector<Zorvane::metamodel::types::Integer> integers_;
};

} // namespace velum::dictionary
