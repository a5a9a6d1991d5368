#include "qob/qob/transaction.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/nsimplementation/zorvanemetamodeltypesfactoryimpl.h"

#include <gtest/gtest.h>

#include <string>

namespace types = Zorvane::metamodel::types;

namespace {

class FactoryTest : public testing::Test {
protected:
    FactoryTest() : model(types::NSInterface::FactoryIntf::createNewModel()) {}
    ~FactoryTest() override { model.destroy(); }

    types::Factory factoryIn(QOB::Deviant deviant) const {
        return {types::NSInterface::FactoryIntf::createNewFactory(model.inDeviant(deviant)),
                deviant};
    }

    QOB::Model model;
};

TEST_F(FactoryTest, BelongsToItsModelAndHasNoId) {
    types::Factory const factory = factoryIn(model.getDeviant());
    EXPECT_TRUE(factory.isValid());
    EXPECT_EQ(factory.getModelQOB(), model);
    EXPECT_EQ(factory.getContainerQOB(), QOB::ClassObject(model));
    EXPECT_FALSE(factory.getObjectId().isValid());
    EXPECT_TRUE(QOB::DeviantAssertions::sAssertionsEnabled);
}

TEST_F(FactoryTest, MadeInABranchKeepsItsStateThere) {
    QOB::Deviant const branch = model.createDeviant();
    types::Factory const factory = factoryIn(branch);
    EXPECT_TRUE(factory.isValid());
    EXPECT_EQ(factory->getRootDeviant(), model.getDeviant());
    EXPECT_FALSE(types::Factory(factory.get(), model.getDeviant()).isValid());
}

TEST_F(FactoryTest, MadeInATransactionGoesWithIt) {
    for (QOB::Deviant const& deviant : {model.getDeviant(), model.createDeviant()}) {
        QOB::Model const there = model.inDeviant(deviant);
        types::Factory gone;
        {
            QOB::Transaction const transaction(there);
            gone = factoryIn(deviant);
            EXPECT_TRUE(gone.isValid());
        }
        EXPECT_FALSE(gone.isValid());
        there.setUndoEnabled(true);
        QOB::Transaction transaction(there);
        types::Factory const undone = factoryIn(deviant);
        transaction.commit();
        EXPECT_TRUE(there.undo());
        EXPECT_FALSE(undone.isValid());
        EXPECT_TRUE(there.redo());
        EXPECT_TRUE(undone.isValid());
        there.setUndoEnabled(false);
    }
}

TEST_F(FactoryTest, IsNoRootObjectAfterAMerge) {
    QOB::Deviant const branch = model.createDeviant();
    types::Factory const factory = factoryIn(branch);
    types::Integer const made = factory.createInteger("made");
    model.mergeDeviant(branch);
    types::Factory const merged(factory.get(), model.getDeviant());
    EXPECT_TRUE(merged.isValid());
    EXPECT_EQ(model.getRootObjects().size(), 1);
    EXPECT_TRUE(types::Integer(made.get(), model.getDeviant()).isValid());
    EXPECT_TRUE(merged.createInteger().isValid());
}

TEST_F(FactoryTest, MakesObjectsByClass) {
    types::Factory const factory = factoryIn(model.getDeviant());
    types::Integer const integer = factory.createInteger("int");
    EXPECT_EQ(integer.getName(), "int");
    EXPECT_EQ(integer.getModelQOB(), model);
    EXPECT_TRUE(factory.createInteger().isValid());
}

TEST_F(FactoryTest, MakesObjectsByShortAndByDottedName) {
    types::Factory const factory = factoryIn(model.getDeviant());
    for (char const* const name : {"Integer", "Zorvane.metamodel.types.Integer"}) {
        QOB::Object const made = factory.createFromString(name);
        EXPECT_STREQ(made.getLumvoName(false), "Zorvane.metamodel.types.Integer");
    }
    types::Integer const integer(factory.createFromString("Integer", QOB::Integer(4711)));
    EXPECT_EQ(integer.getObjectId(), 4711);
    EXPECT_EQ(model.findObject(4711), QOB::ClassObject(integer));
}

TEST_F(FactoryTest, MakesValuesOfTheKernelFromTexts) {
    types::Factory const factory = factoryIn(model.getDeviant());
    std::string const name = QOB::Integer::getTypeName();
    EXPECT_EQ(QOB::Integer(factory.createFromString(name, "42")), 42);
    EXPECT_FALSE(QOB::Integer(factory.createFromString(name)).isValid());
    EXPECT_THROW(factory.createFromString(name, "forty-two"), QOB::Exception);
}

TEST_F(FactoryTest, MakesValuesOfThePackageByShortAndByDottedNameWithAndWithoutText) {
    types::initialize();
    types::Factory const factory = factoryIn(model.getDeviant());
    int const objects = model.getRootObjects().size();
    struct Sample {
        std::string name;
        char const* text;
        char const* byDefault;
    };
    for (Sample const& sample : {Sample{"DataSize", "3|KB", "|bit"},
                                 Sample{"Time", "1.5|min", "|s"},
                                 Sample{"FloatingPointKind", "IEEE_Single", "IEEE_Double"},
                                 Sample{"DataSizeUnitKind", "GB", "bit"},
                                 Sample{"TimeUnitKind", "yrs", "s"},
                                 Sample{"CompuMethodCategory", "TextTable", "Identical"}}) {
        for (std::string const prefix : {"", "Zorvane.metamodel.types."}) {
            SCOPED_TRACE(prefix + sample.name);
            QOB::String const name = prefix + sample.name;
            EXPECT_EQ(factory.createFromString(name, sample.text).toString(),
                      QOB::String(sample.text));
            for (QOB::Object const& made : {factory.createFromString(name),
                                            factory.createFromString(name, QOB::Integer(7))}) {
                EXPECT_EQ(made.toString(), QOB::String(sample.byDefault));
                EXPECT_EQ(QOB::ValueObject(made).getValueTypeName(),
                          "Zorvane.metamodel.types." + sample.name);
            }
            EXPECT_ANY_THROW(factory.createFromString(name, "no text of any type"));
        }
    }
    EXPECT_EQ(model.getRootObjects().size(), objects) << "values are no objects of a model";
    EXPECT_EQ(factory.createFromString("Zorvane.metamodel.foundation.VisibilityKind", "private")
                  .toString(),
              QOB::String("private"));
}

TEST_F(FactoryTest, KnowsNoOtherNameAndNoAbstractClass) {
    types::Factory const factory = factoryIn(model.getDeviant());
    for (char const* const name : {"", "integer", "PrimitiveType", "Factory", "NamedElement"}) {
        EXPECT_EQ(factory.createFromString(name).get(), nullptr) << name;
    }
    EXPECT_EQ(factory.createFromString(QOB::String()).get(), nullptr);
}

TEST_F(FactoryTest, AnswersEmptyOnAState) {
    types::Factory const factory = factoryIn(model.getDeviant());
    types::NSInterface::FactoryIntf* const state = factory->getReadDeviant(model.getDeviant());
    EXPECT_EQ(state->createInteger(model.getDeviant()).get(), nullptr);
    EXPECT_EQ(state->createObject(model.getDeviant(), "Integer", 1, nullptr).get(), nullptr);
}

TEST_F(FactoryTest, CannotBeMadeWithoutAModel) {
    try {
        types::NSImplementation::FactoryImpl const factory;
        FAIL() << "a factory without a model was made";
    } catch (QOB::Exception const& exception) {
        EXPECT_EQ(std::string(exception.what())
                      .find("Assertion failed: factory cannot be default constructed at "
                            "velum_types/zorvane/metamodel/types/nshandmaintained/factory.cpp:"),
                  0U)
            << exception.what();
    }
}

} // namespace
