#pragma once

#include "qob/qob/export.h"
#include "qob/qob/type.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"

namespace QOB {

/// What the two descriptions below share: the type of the elements, which may be empty. Neither has
/// a text form: a conversion from text or bytes is an error, one to them raises QOB::Exception.
class QOB_EXPORT ElementwiseType : public Tessel::Type {
public:
    ImmutableType getElementType() const { return elementType_; }

    Tessel::any convertFromString(std::string const& text,
                                  Tessel::ErrorHolder& errors) const override;
    std::string convertToString(Tessel::any const& value) const override;
    /// Of the same kind, over the same element type.
    bool isEqualTo(Tessel::Type* other) const override;
    bool isLessThan(Tessel::Type* other) const override;

protected:
    explicit ElementwiseType(ImmutableType elementType);
    ElementwiseType(ElementwiseType const& other);
    ElementwiseType& operator=(ElementwiseType const& other);
    ~ElementwiseType() override;

private:
    ImmutableType elementType_;
};

/// The run-time description of sequences of one type. An any holds one as its Generic::SequenceRef;
/// the default is the null sequence.
class QOB_EXPORT SequenceType final : public ElementwiseType {
public:
    // NOLINTNEXTLINE(readability-identifier-naming): libraries are compiled against the name
    static Tessel::TypeInfo Create(QOB::Type const& elementType);

    Tessel::any defaultConstruct() const override;
    Tessel::Type* clone() const override;

private:
    using ElementwiseType::ElementwiseType;
};

/// The run-time description of iterators over elements of one type. No any holds one: an iterator
/// lasts only until its sequence is written.
class QOB_EXPORT IteratorType final : public ElementwiseType {
public:
    // NOLINTNEXTLINE(readability-identifier-naming): libraries are compiled against the name
    static Tessel::TypeInfo Create(QOB::Type const& elementType);

    Tessel::any defaultConstruct() const override;
    bool isValid(Tessel::any const& value) const override;
    Tessel::Type* clone() const override;

private:
    using ElementwiseType::ElementwiseType;
};

} // namespace QOB
