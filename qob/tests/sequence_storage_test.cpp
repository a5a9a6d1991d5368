#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "support/allocation_count.h"
#include "support/counted_element.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <deque>
#include <numeric>
#include <vector>

using QOB::ReferenceStorage;
using Element = ReferenceStorage::Element;

namespace {

class StorageOfReferences : public testing::Test {
protected:
    explicit StorageOfReferences(std::size_t elements = 3000) : pool(elements) {}

    ReferenceStorage filled(std::size_t size) {
        ReferenceStorage result;
        for (std::size_t i = 0; i < size; ++i) {
            result.push_back(&pool[i]);
        }
        return result;
    }
    int counts() const {
        return std::accumulate(pool.begin(), pool.end(), 0, [](int sum, CountedElement const& e) {
            return sum + e.numRef();
        });
    }

    std::deque<CountedElement> pool;
};

std::vector<Element> elementsOf(ReferenceStorage const& storage) {
    return {storage.begin(), storage.end()};
}

// One step of the random test: what to do, to which list, and two numbers to choose places with.
struct Step {
    int operation;
    int list;
    unsigned a;
    unsigned b;
};

std::ostream& operator<<(std::ostream& out, Step const& step) {
    return out << '{' << step.operation << ", " << step.list << ", " << step.a << ", " << step.b
               << '}';
}

/// A list and what it must be.
struct Twin {
    ReferenceStorage storage;
    std::vector<Element> model;

    void insert(std::size_t index, Element element) {
        bool const fresh = std::find(model.begin(), model.end(), element) == model.end();
        RC_ASSERT(storage.insert(index, element) == fresh);
        if (fresh) {
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), element);
        }
    }
    void eraseRange(std::size_t index, std::size_t count) {
        storage.eraseRange(index, count);
        auto const first = model.begin() + static_cast<std::ptrdiff_t>(index);
        model.erase(first, first + static_cast<std::ptrdiff_t>(count));
    }
    void replace(std::size_t index, Element element) {
        bool const fresh = std::find(model.begin(), model.end(), element) == model.end();
        RC_ASSERT(storage.replaceAt(index, element) == fresh);
        if (fresh) {
            model[index] = element;
        }
    }
    void check() const {
        RC_ASSERT(storage.isConsistent());
        RC_ASSERT(elementsOf(storage) == model);
        RC_ASSERT(storage.size() == model.size());
        RC_ASSERT(storage.empty() == model.empty());
        if (!model.empty()) {
            std::size_t const middle = model.size() / 2;
            RC_ASSERT(storage.at(middle) == model[middle]);
            RC_ASSERT(storage.indexOf(model[middle]) == middle);
            RC_ASSERT(*storage.iteratorAt(middle) == model[middle]);
            RC_ASSERT(storage.indexOf(storage.iteratorAt(middle)) == middle);
            auto position = storage.end();
            RC_ASSERT(*--position == model.back());
        }
    }
};

} // namespace

TEST_F(StorageOfReferences, EmptyOneIsAWordAndAllocatesNothing) {
    std::size_t const before = VelumTest::allocationCount();
    ReferenceStorage const empty;
    ReferenceStorage copy(empty);
    copy.clear();
    EXPECT_EQ(copy.begin(), copy.end());
    EXPECT_FALSE(copy.contains(&pool[0]));
    EXPECT_EQ(VelumTest::allocationCount(), before);
    static_assert(sizeof(ReferenceStorage) == sizeof(void*));
}

TEST_F(StorageOfReferences, EachElementIsCountedOnceAndGivenBack) {
    for (std::size_t const size : {10U, 64U, 65U, 2000U}) {
        {
            ReferenceStorage storage = filled(size);
            EXPECT_EQ(counts(), static_cast<int>(size));
            EXPECT_FALSE(storage.push_back(&pool[size / 2]));
            EXPECT_EQ(counts(), static_cast<int>(size)) << "a refused element is not counted";
            EXPECT_TRUE(storage.erase(&pool[size / 2]));
            EXPECT_EQ(pool[size / 2].numRef(), 0);
            EXPECT_TRUE(storage.replaceAt(0, &pool[size / 2]));
            EXPECT_EQ(pool[0].numRef(), 0);
            EXPECT_EQ(pool[size / 2].numRef(), 1);
        }
        EXPECT_EQ(counts(), 0);
    }
}

TEST_F(StorageOfReferences, CopyTouchesNoElementAndAWriteClonesOneChunk) {
    ReferenceStorage const original = filled(3000);
    std::size_t const before = VelumTest::allocationCount();
    ReferenceStorage copy(original);
    EXPECT_EQ(VelumTest::allocationCount(), before);
    EXPECT_EQ(counts(), 3000);
    EXPECT_EQ(copy, original);

    EXPECT_TRUE(copy.erase(&pool[1000]));
    EXPECT_LE(counts(), 3000 + 256);
    EXPECT_NE(copy, original);
    EXPECT_TRUE(original.contains(&pool[1000]));
    EXPECT_FALSE(copy.contains(&pool[1000]));
    EXPECT_TRUE(original.contains(&pool[1000])) << "look-ups may alternate";
    copy.insert(1000, &pool[1000]);
    EXPECT_EQ(copy, original);
}

TEST_F(StorageOfReferences, RandomOperationsAgreeWithAVector) {
    auto const step = rc::gen::construct<Step>(rc::gen::inRange(0, 20),
                                               rc::gen::inRange(0, 3),
                                               rc::gen::inRange(0U, 100'000U),
                                               rc::gen::inRange(0U, 100'000U));
    bool const held = rc::check("lists that share chunks behave like vectors", [&] {
        auto const steps = *rc::gen::container<std::vector<Step>>(step);
        unsigned const population = *rc::gen::element(80U, 400U, 1500U);
        {
            std::vector<Twin> twins(3);
            for (auto const& [operation, list, a, b] : steps) {
                Twin& twin = twins[static_cast<std::size_t>(list)];
                std::size_t const size = twin.model.size();
                auto const element = [&](unsigned i) { return &pool[i % population]; };
                switch (operation) {
                case 0:
                case 1:
                    twin = Twin(twins[a % twins.size()]);
                    break;
                case 2:
                case 3:
                    for (unsigned i = 0; i < b % 700; ++i) {
                        twin.insert(twin.model.size(), element(a + i));
                    }
                    break;
                case 4:
                case 5:
                    for (unsigned i = 0; i < b % 400; ++i) {
                        twin.insert(std::min<std::size_t>(a % (size + 1), twin.model.size()),
                                    element(b + i));
                    }
                    break;
                case 6:
                    twin.insert(0, element(a));
                    break;
                case 7:
                case 8:
                    twin.insert(a % (size + 1), element(b));
                    break;
                case 9:
                    if (size != 0) {
                        std::size_t const first = a % size;
                        twin.eraseRange(first, b % (size - first + 1));
                    }
                    break;
                case 10:
                case 11:
                    for (unsigned i = 0; i < b % 300; ++i) {
                        auto const place =
                            std::find(twin.model.begin(), twin.model.end(), element(a + i));
                        bool const there = place != twin.model.end();
                        RC_ASSERT(twin.storage.erase(element(a + i)) == there);
                        if (there) {
                            twin.model.erase(place);
                        }
                    }
                    break;
                case 12:
                    if (size != 0) {
                        twin.eraseRange(a % size, 1);
                    }
                    break;
                case 13:
                case 14:
                    if (size != 0) {
                        twin.replace(a % size, element(b));
                    }
                    break;
                case 15:
                    twin.storage.swap(twins[a % twins.size()].storage);
                    twin.model.swap(twins[a % twins.size()].model);
                    break;
                case 16:
                    if (b % 4 == 0) {
                        twin.storage.clear();
                        twin.model.clear();
                    }
                    break;
                default:
                    RC_ASSERT(twin.storage.contains(element(a)) ==
                              (std::find(twin.model.begin(), twin.model.end(), element(a)) !=
                               twin.model.end()));
                }
                twin.check();
            }
            for (Twin const& a : twins) {
                a.check();
                for (Twin const& b : twins) {
                    RC_ASSERT((a.storage == b.storage) == (a.model == b.model));
                }
            }
        }
        RC_ASSERT(counts() == 0);
    });
    EXPECT_TRUE(held);
}
