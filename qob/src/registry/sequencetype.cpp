#include "qob/qob/sequencetype.h"

#include "qob/kernel/containers/sequence/sequenceref.h"
#include "qob/qob/assert.h"

#include <functional>
#include <typeinfo>
#include <utility>

namespace QOB {

namespace {
constexpr char const* noText = "Sequences and iterators have no text form.";
} // namespace

ElementwiseType::ElementwiseType(ImmutableType elementType) : elementType_(std::move(elementType)) {
}
ElementwiseType::ElementwiseType(ElementwiseType const& other) = default;
ElementwiseType& ElementwiseType::operator=(ElementwiseType const& other) = default;
ElementwiseType::~ElementwiseType() = default;

Tessel::any ElementwiseType::convertFromString(std::string const& /*text*/,
                                               Tessel::ErrorHolder& errors) const {
    errors.setError(noText);
    return {};
}

std::string ElementwiseType::convertToString(Tessel::any const& /*value*/) const {
    QOB_FAIL("%s", noText);
}

bool ElementwiseType::isEqualTo(Tessel::Type* other) const {
    return Type::isEqualTo(other) &&
           static_cast<ElementwiseType const*>(other)->elementType_ == elementType_;
}

bool ElementwiseType::isLessThan(Tessel::Type* other) const {
    if (!Type::isEqualTo(other)) {
        return Type::isLessThan(other);
    }
    return std::less<void const*>()(elementType_.get(),
                                    static_cast<ElementwiseType const*>(other)->elementType_.get());
}

Tessel::TypeInfo SequenceType::Create(QOB::Type const& elementType) {
    return CreateTypeInfo(new SequenceType(elementType));
}
Tessel::any SequenceType::defaultConstruct() const {
    return Generic::SequenceRef();
}
Tessel::Type* SequenceType::clone() const {
    return new SequenceType(*this);
}

Tessel::TypeInfo IteratorType::Create(QOB::Type const& elementType) {
    return CreateTypeInfo(new IteratorType(elementType));
}
Tessel::any IteratorType::defaultConstruct() const {
    return {};
}
bool IteratorType::isValid(Tessel::any const& /*value*/) const {
    return false;
}
Tessel::Type* IteratorType::clone() const {
    return new IteratorType(*this);
}

} // namespace QOB
