#include "fixture.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/datatype.h"
#include "qob/qob/sequencetype.h"
#include "qob/qob/typeinforegistry.h"

#include <memory>

using QOB::IteratorType;
using QOB::SequenceType;
using Tessel::TypeInfo;

class SequenceTypes : public ThingModel {
protected:
    QOB::DataType first = QOB::DataType::create(model, "first");
    QOB::DataType second = QOB::DataType::create(model, "second");
};

TEST_F(SequenceTypes, AreEqualIfKindAndElementsAre) {
    TypeInfo const none = SequenceType::Create(QOB::Type());
    TypeInfo const sequence = SequenceType::Create(first);
    EXPECT_EQ(none, SequenceType::Create(QOB::Type()));
    EXPECT_EQ(sequence, SequenceType::Create(first));
    EXPECT_FALSE(sequence == none);
    EXPECT_FALSE(sequence == SequenceType::Create(second));
    EXPECT_FALSE(sequence == IteratorType::Create(first));
    EXPECT_FALSE(none == IteratorType::Create(QOB::Type()));
    EXPECT_FALSE(sequence < SequenceType::Create(first));
    EXPECT_NE(sequence < SequenceType::Create(second), SequenceType::Create(second) < sequence);
    EXPECT_NE(sequence < IteratorType::Create(first), IteratorType::Create(first) < sequence);

    auto* const type = dynamic_cast<SequenceType*>(Tessel::Type::GetBaseType(sequence));
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->getElementType(), QOB::ImmutableType(first));
    std::unique_ptr<Tessel::Type> const copy(type->clone());
    EXPECT_TRUE(copy->isEqualTo(type));
}

TEST_F(SequenceTypes, AnAnyHoldsASequenceAndNoIterator) {
    TypeInfo const info = SequenceType::Create(first);
    Tessel::Type const& type = *Tessel::Type::GetBaseType(info);
    EXPECT_TRUE(type.isValid(type.defaultConstruct()));
    QOB::Generic::SequenceRef const integers =
        QOB::MakeSequence<QOB::Integer>({}, {QOB::Integer(1)});
    EXPECT_TRUE(type.isValid(integers));
    EXPECT_FALSE(type.isValid(QOB::Integer(1)));
    TypeInfo const iterators = IteratorType::Create(first);
    Tessel::Type const& iterator = *Tessel::Type::GetBaseType(iterators);
    EXPECT_TRUE(iterator.defaultConstruct().empty());
    EXPECT_FALSE(iterator.isValid(integers));
}

TEST_F(SequenceTypes, HaveNoText) {
    TypeInfo const info = SequenceType::Create(QOB::Type());
    Tessel::ErrorHolder errors;
    EXPECT_TRUE(info.convertFromString("[1]", errors).empty());
    EXPECT_EQ(errors.getError(), "Sequences and iterators have no text form.");
    EXPECT_EQ(messageOf([&] { info.convertToString(QOB::Generic::SequenceRef()); }),
              "Sequences and iterators have no text form.");
}

TEST_F(SequenceTypes, AreRegisteredByName) {
    QOB::TypeInfoRegistry::registerTypeInfo("sample.SequenceOfFirst", SequenceType::Create(first));
    EXPECT_EQ(QOB::TypeInfoRegistry::getTypeInfo("sample.SequenceOfFirst"),
              SequenceType::Create(first));
    QOB::TypeInfoRegistry::unregisterTypeInfo("sample.SequenceOfFirst");
    EXPECT_FALSE(QOB::TypeInfoRegistry::isRegistered("sample.SequenceOfFirst"));
}
