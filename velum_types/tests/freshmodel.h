#pragma once

#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace VelumTest {

/// A model of the started library.
inline QOB::Model makeModel() {
    Zorvane::metamodel::types::initialize();
    return Zorvane::metamodel::types::NSInterface::FactoryIntf::createNewModel();
}

/// A fresh model for each test, ended with it.
class FreshModel : public testing::Test {
protected:
    FreshModel() : model(makeModel()) {}
    ~FreshModel() override { model.destroy(); }

    QOB::Model model;
};

/// Whether the branch has a state of the object's own: whether something was written there.
template <class Handle>
bool isWrittenIn(QOB::Deviant branch, Handle const& handle) {
    return handle->internal_getDeviation(branch) != nullptr;
}

/// The elements in order.
template <class T>
std::vector<T> elementsOf(QOB::Sequence<T> const& sequence) {
    return {sequence.begin(), sequence.end()};
}

/// What a sequence of these elements looks like.
template <class First, class... More>
std::vector<First> list(First const& first, More const&... more) {
    return {first, First(more)...};
}

} // namespace VelumTest
