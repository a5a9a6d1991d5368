#include "dictionary/dictionary.h"

#include <string>

namespace velum::dictionary {

namespace types = Zorvane::metamodel::types;

Dictionary::Dictionary() : model_(types::NSInterface::FactoryIntf::createNewModel()) {
}

Dictionary::~Dictionary() {
    integers_.clear();
    model_.destroy();
}

void Dictionary::addInteger(std::string_view name,
                            bool isSigned,
                            std::optional<std::int32_t> bits) {
    types::Integer integer = types::Integer::create(model_, QOB::String(std::string(name)));
    integer.setIsSigned(QOB::Boolean(isSigned));
    integer.setLength(
        types::DataSize(bits ? QOB::Integer(*bits) : QOB::Integer(), types::DataSizeUnitKind::bit));
    integers_.push_back(integer);
}

std::vector<report::IntegerRow> Dictionary::integers() const {
    std::vector<report::IntegerRow> rows;
    rows.reserve(integers_.size());
    for (const types::Integer& integer : integers_) {
        const types::DataSize length = integer.getLength();
        rows.push_back({integer.getName(),
                        integer.getObjectId(),
                        integer.isSigned(),
                        length.getValue().isValid() ? std::string(length.toString()) : ""});
    }
    return rows;
}

} // namespace velum::dictionary
