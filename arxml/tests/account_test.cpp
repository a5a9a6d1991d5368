#include "reading/account.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velum::arxml {

namespace {

/// Two trees of the form a(b(c) d).
class Accounts : public testing::Test {
protected:
    Accounts() {
        for (int tree = 0; tree < 2; ++tree) {
            store.begin(0, PathTree::root);
            const auto a = store.add(ElementStore::none, element::unit, {}, PathTree::root);
            const auto b = store.add(a, element::compuScales, {}, PathTree::root);
            const auto c = store.add(b, element::v, {}, PathTree::root);
            store.setText(c, "1");
            store.end(c);
            store.end(b);
            const auto d = store.add(a, element::category, {}, PathTree::root);
            store.end(d);
            store.end(a);
        }
    }

    Element at(ElementStore::Index index) const { return store.at(index); }

    ElementStore store;
};

constexpr std::optional<Reason> consumed = std::nullopt;

TEST_F(Accounts, WhatIsLeftFollowsFromWhatIsAround) {
    Account account(store);
    account.consume(at(2)); // c
    account.settle();
    EXPECT_EQ(account.reason(2), consumed);
    EXPECT_EQ(account.reason(1), consumed); // the way to it
    EXPECT_EQ(account.reason(0), consumed);
    EXPECT_EQ(account.reason(3), Reason::noProperty);
    EXPECT_EQ(account.reason(4), Reason::noClass); // nothing of the other tree
    EXPECT_EQ(account.reason(6), Reason::noClass);
}

TEST_F(Accounts, WhatIsInARefusedElementSharesItsReason) {
    Account account(store);
    account.consume(at(0));
    account.skip(at(1), Reason::notInvertible);
    account.skip(at(0), Reason::dangling); // too late
    account.consume(Element());
    EXPECT_EQ(account.markedReason(at(1)), Reason::notInvertible);
    EXPECT_EQ(account.markedReason(at(2)), std::nullopt);
    account.settle();
    EXPECT_EQ(account.reason(0), consumed);
    EXPECT_EQ(account.reason(1), Reason::notInvertible);
    EXPECT_EQ(account.reason(2), Reason::notInvertible);
}

TEST_F(Accounts, TreesOfEqualContentShareTheirFate) {
    EXPECT_TRUE(haveEqualContent(store, at(0), at(4)));
    EXPECT_FALSE(haveEqualContent(store, at(0), at(5)));
    EXPECT_FALSE(haveEqualContent(store, at(2), at(3)));
    Account account(store);
    account.consume(at(2));
    account.skip(at(3), Reason::badNumber);
    account.shareFate(at(4), at(0));
    account.settle();
    for (ElementStore::Index i = 0; i < 4; ++i) {
        EXPECT_EQ(account.reason(i + 4), account.reason(i));
    }
}

TEST_F(Accounts, ElementsKnowTheirNeighbours) {
    std::string names;
    for (const Element child : at(4).children()) {
        names += std::to_string(child.index()) + " ";
    }
    EXPECT_EQ(names, "5 7 ");
    EXPECT_EQ(at(4).child(element::compuScales).child(element::v).text(), "1");
    EXPECT_FALSE(at(4).child(element::v));
    EXPECT_FALSE(Element().child(element::v).child(element::v));
    EXPECT_EQ(at(6).parent(), at(5));
    EXPECT_FALSE(at(4).parent());
    EXPECT_EQ(store.treeOf(6).first, 4U);
}

} // namespace

} // namespace velum::arxml
