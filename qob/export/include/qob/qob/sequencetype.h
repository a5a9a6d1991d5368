#pragma once

#include "qob/qob/export.h"
#include "qob/qob/type.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"

namespace QOB {

/// The common base of the two descriptions below: the type of the elements, which may be empty.
/// There is no text form: a conversion from text or bytes is an error, one to text or bytes raises
/// QOB::Exception.
class QOB_EXPORT ElementwiseType : public Tessel::Type {
public:
    ImmutableType getElementType() const { return elementType_; }

    Tessel::any convertFromString(std::string const& text,
                                  Tessel::ErrorHolder& errors) const override;
    std::string convertToString(Tessel::any const& value) const override;
    /// True for the same kind of description with the same element type.
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

/// The run-time description of iterators over elements of one type. An any can't hold an iterator.
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
