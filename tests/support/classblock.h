#pragma once

#include "qob/qob/deviant.h"
#include "support/vtable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

/// The order of the operations of interface classes: a test writes down what a class adds, in the
/// words below, and the compiler's own table is held against it.
namespace VelumTest {

/// The two operations that end the block of every class.
template <class Intf>
std::vector<std::size_t> slotsOfPair() {
    using Pair = Intf* (Intf::*)(QOB::Deviant, Intf const*) const;
    return {slotOf(static_cast<Pair>(&Intf::getReadDeviantI)),
            slotOf(static_cast<Pair>(&Intf::getWriteDeviantI))};
}

/// The class's own operations and its pair stand one behind the other, directly behind the pair of
/// the class's base. `own` lists all of them but the pair.
template <class Intf, class Base>
void expectBlock(std::vector<std::size_t> own) {
    for (std::size_t const slot : slotsOfPair<Intf>()) {
        own.push_back(slot);
    }
    std::vector<std::size_t> expected;
    std::size_t const first = slotsOfPair<Base>().back() + 1;
    for (std::size_t slot = first; slot < first + own.size(); ++slot) {
        expected.push_back(slot);
    }
    EXPECT_EQ(own, expected);
}

} // namespace VelumTest

// What one property adds to the class `Intf`.
#define VELUM_VALUE_READ_BY(Name, getter)                                                          \
    VelumTest::slotOf(&Intf::has##Name), VelumTest::slotOf(&Intf::remove##Name),                   \
        VelumTest::slotOf(&Intf::set##Name), VelumTest::slotOf(&Intf::getter)
#define VELUM_VALUE(Name) VELUM_VALUE_READ_BY(Name, get##Name)
#define VELUM_REFERENCE(Name)                                                                      \
    VELUM_VALUE(Name), VelumTest::slotOf(&Intf::removeOnly##Name),                                 \
        VelumTest::slotOf(&Intf::setOnly##Name)
#define VELUM_MANY(Names)                                                                          \
    VelumTest::slotOf(&Intf::get##Names), VelumTest::slotOf(&Intf::get##Names##WithoutAssociation)
#define VELUM_ONE(operation) VelumTest::slotOf(&Intf::operation)
