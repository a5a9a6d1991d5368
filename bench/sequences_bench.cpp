// Lists of distinct references at 10, 1,000 and 100,000 elements: the kernel's storage beside a
// vector of counted pointers, and beside a bare boost::multi_index_container with the same two
// indices. One iteration works on one element, except where the row says otherwise.

#include "counted_element.h"
#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "support/comparison.h"

#include <boost/multi_index/identity.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

namespace {

using benchmark::DoNotOptimize;
using benchmark::State;
using Element = QOB::ReferenceStorage::Element;

void retain(Element element) {
    QOB::internal::retain(static_cast<QOB::ReferenceCountingIntf const*>(element));
}
void release(Element element) {
    QOB::internal::release(static_cast<QOB::ReferenceCountingIntf const*>(element));
}

/// The kernel's storage.
class Chunks {
public:
    void push(Element element) { list_.push_back(element); }
    void insert(std::size_t index, Element element) { list_.insert(index, element); }
    void erase(Element element) { list_.erase(element); }
    bool contains(Element element) const { return list_.contains(element); }
    Element at(std::size_t index) const { return list_.at(index); }
    auto begin() const { return list_.begin(); }
    auto end() const { return list_.end(); }

private:
    QOB::ReferenceStorage list_;
};

/// A vector whose owner knows that it pushes nothing twice.
class Vector {
public:
    Vector() = default;
    Vector(Vector const& other) : list_(other.list_) {
        std::for_each(list_.begin(), list_.end(), retain);
    }
    Vector& operator=(Vector other) {
        list_.swap(other.list_);
        return *this;
    }
    ~Vector() { std::for_each(list_.begin(), list_.end(), release); }

    void push(Element element) {
        list_.push_back(element);
        retain(element);
    }
    void insert(std::size_t index, Element element) {
        list_.insert(list_.begin() + static_cast<std::ptrdiff_t>(index), element);
        retain(element);
    }
    void erase(Element element) {
        list_.erase(std::find(list_.begin(), list_.end(), element));
        release(element);
    }
    bool contains(Element element) const {
        return std::find(list_.begin(), list_.end(), element) != list_.end();
    }
    Element at(std::size_t index) const { return list_[index]; }
    auto begin() const { return list_.begin(); }
    auto end() const { return list_.end(); }

private:
    std::vector<Element> list_;
};

/// The container that keeps order and finds elements out of the box.
class MultiIndex {
    using List = boost::multi_index_container<
        Element,
        boost::multi_index::indexed_by<
            boost::multi_index::random_access<>,
            boost::multi_index::ordered_unique<boost::multi_index::identity<Element>>>>;

public:
    MultiIndex() = default;
    MultiIndex(MultiIndex const& other) : list_(other.list_) {
        std::for_each(list_.begin(), list_.end(), retain);
    }
    MultiIndex& operator=(MultiIndex other) {
        list_.swap(other.list_);
        return *this;
    }
    ~MultiIndex() { std::for_each(list_.begin(), list_.end(), release); }

    void push(Element element) {
        if (list_.push_back(element).second) {
            retain(element);
        }
    }
    void insert(std::size_t index, Element element) {
        if (list_.insert(list_.begin() + static_cast<std::ptrdiff_t>(index), element).second) {
            retain(element);
        }
    }
    void erase(Element element) {
        if (list_.get<1>().erase(element) != 0) {
            release(element);
        }
    }
    bool contains(Element element) const { return list_.get<1>().count(element) != 0; }
    Element at(std::size_t index) const { return list_[index]; }
    auto begin() const { return list_.begin(); }
    auto end() const { return list_.end(); }

private:
    List list_;
};

/// A list of `size` elements and the order in which a row touches them. The elements stand in
/// memory like objects of a model: apart from each other, in another order than in the list.
template <class List>
class Fixture {
public:
    explicit Fixture(std::int64_t size) : objects_(static_cast<std::size_t>(size)) {
        for (CountedElement const& object : objects_) {
            order.push_back(&object);
        }
        std::shuffle(order.begin(), order.end(), std::mt19937(1));
        for (Element const element : order) {
            list.push(element);
        }
        std::shuffle(order.begin(), order.end(), std::mt19937(2));
    }
    Element next() {
        Element const element = order[next_];
        next_ = next_ + 1 == order.size() ? 0 : next_ + 1;
        return element;
    }

private:
    std::deque<CountedElement> objects_;

public:
    std::vector<Element> order;
    List list;

private:
    std::size_t next_ = 0;
};

template <class List>
void push(State& state, std::int64_t size) {
    Fixture<List> const fixture(size);
    for (auto _ : state) {
        List list;
        for (Element const element : fixture.order) {
            list.push(element);
        }
        DoNotOptimize(list);
    }
    state.SetItemsProcessed(state.iterations() * size);
}

template <class List>
void move(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        Element const element = fixture.next();
        fixture.list.erase(element);
        fixture.list.push(element);
    }
}

template <class List>
void removeFirst(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        Element const element = fixture.list.at(0);
        fixture.list.erase(element);
        fixture.list.push(element);
    }
}

template <class List>
void insertInTheMiddle(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        Element const element = fixture.next();
        fixture.list.erase(element);
        fixture.list.insert(static_cast<std::size_t>(size / 2), element);
    }
}

template <class List>
void contains(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        DoNotOptimize(fixture.list.contains(fixture.next()));
    }
}

template <class List>
void at(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    std::minstd_rand random(3);
    for (auto _ : state) {
        DoNotOptimize(fixture.list.at(random() % static_cast<std::size_t>(size)));
    }
}

template <class List>
void iterate(State& state, std::int64_t size) {
    Fixture<List> const fixture(size);
    for (auto _ : state) {
        std::uintptr_t sum = 0;
        for (Element const element : fixture.list) {
            sum += reinterpret_cast<std::uintptr_t>(element);
        }
        DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * size);
}

/// What a transaction does to a list: keep a copy, change the list, let the copy go.
template <class List>
void copyChangeCommit(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        List const saved(fixture.list);
        Element const element = fixture.next();
        fixture.list.erase(element);
        fixture.list.push(element);
    }
}

/// The same, rolled back.
template <class List>
void copyChangeRollBack(State& state, std::int64_t size) {
    Fixture<List> fixture(size);
    for (auto _ : state) {
        List const saved(fixture.list);
        Element const element = fixture.next();
        fixture.list.erase(element);
        fixture.list.push(element);
        fixture.list = saved;
    }
}

constexpr std::int64_t Sizes[] = {10, 1000, 100'000};

#define SEQUENCE_ROW(words, function, target)                                                      \
    comparison::add(words " / vector",                                                             \
                    &function<Chunks>,                                                             \
                    &function<Vector>,                                                             \
                    target,                                                                        \
                    {std::begin(Sizes), std::end(Sizes)});                                         \
    comparison::add(words " / multi_index",                                                        \
                    &function<Chunks>,                                                             \
                    &function<MultiIndex>,                                                         \
                    1,                                                                             \
                    {std::begin(Sizes), std::end(Sizes)})

} // namespace

int main(int argc, char** argv) {
    SEQUENCE_ROW("push all", push, 3);
    SEQUENCE_ROW("move to the end", move, 3);
    SEQUENCE_ROW("first to the end", removeFirst, 3);
    SEQUENCE_ROW("move to the middle", insertInTheMiddle, 3);
    SEQUENCE_ROW("contains", contains, 3);
    SEQUENCE_ROW("at", at, 0);
    SEQUENCE_ROW("iterate", iterate, 3);
    SEQUENCE_ROW("copy, change, commit", copyChangeCommit, 3);
    SEQUENCE_ROW("copy, change, roll back", copyChangeRollBack, 3);
    return comparison::run(argc, argv);
}
