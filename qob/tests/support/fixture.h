#pragma once

#include "qob/qob/transaction.h"
#include "support/failure.h"
#include "thing.h"

#include <gtest/gtest.h>

#include <string>

/// A model of things that ends with the test, and the check that nothing of it is left.
class ThingModel : public testing::Test {
protected:
    ThingModel() : model(QOB::NSInterface::FactoryIntf::createNewModel()) {}
    ~ThingModel() override {
        model.destroy();
        model = QOB::Model();
    }
    void TearDown() override { model.destroy(); }

    QOB::Model branch() const { return model.inDeviant(model.createDeviant()); }

    QOB::Model model;
};

using VelumTest::failureOf;
using VelumTest::messageOf;
