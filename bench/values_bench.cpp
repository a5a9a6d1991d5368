// The value classes beside plain structs that are converted by std::to_chars and std::from_chars.

#include "qob/qob/valueobjectfactory.h"
#include "support/comparison.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

#include <algorithm>
#include <any>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

namespace types = Zorvane::metamodel::types;
using benchmark::DoNotOptimize;
using benchmark::State;
using types::DataSize;
using types::Time;

// The plain side -------------------------------------------------------------------------------

template <class Number>
struct Plain {
    Number value{};
    int unit = 0;

    auto operator<=>(Plain const&) const = default;
};

constexpr std::array<char const*, 9>
    unitTexts{"bit", "byte", "KB", "MB", "GB", "dys", "wks", "mos", "yrs"};

template <class Number>
std::string plainText(Plain<Number> const& value) {
    std::array<char, 32> buffer{};
    char* const end = std::to_chars(buffer.data(), buffer.data() + 32, value.value).ptr;
    std::string text(buffer.data(), end);
    text += '|';
    text += unitTexts[static_cast<std::size_t>(value.unit)];
    return text;
}

template <class Number>
Plain<Number> plainFromText(std::string_view text) {
    Plain<Number> value;
    char const* const end =
        std::from_chars(text.data(), text.data() + text.size(), value.value).ptr;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    value.unit =
        static_cast<int>(std::find(unitTexts.begin(), unitTexts.end(), text) - unitTexts.begin());
    return value;
}

// The rows, for a value class and the number type of its plain twin ----------------------------

template <class Value>
void box(State& state, std::int64_t) {
    Value const value(32, 1);
    for (auto _ : state) {
        QOB::Object const object = value;
        DoNotOptimize(object.get());
    }
}
template <class Number>
void boxPlain(State& state, std::int64_t) {
    Plain<Number> const value{32, 1};
    for (auto _ : state) {
        auto const object = std::make_shared<Plain<Number>>(value);
        DoNotOptimize(object.get());
    }
}

template <class Value>
void unbox(State& state, std::int64_t) {
    QOB::Object const object = Value(32, 1);
    for (auto _ : state) {
        Value const value(object);
        DoNotOptimize(value);
    }
}
template <class Number>
void unboxPlain(State& state, std::int64_t) {
    // As much as a plain program must do to find out what is in a box.
    std::any const object = Plain<Number>{32, 1};
    for (auto _ : state) {
        Plain<Number> const value = std::any_cast<Plain<Number>>(object);
        DoNotOptimize(value);
    }
}

template <class Value>
void toText(State& state, std::int64_t) {
    Value value(123456, 2);
    for (auto _ : state) {
        DoNotOptimize(value);
        QOB::String const text = value.toString();
        DoNotOptimize(text.view().data());
    }
}
template <class Number>
void toTextPlain(State& state, std::int64_t) {
    Plain<Number> value{123456, 2};
    for (auto _ : state) {
        DoNotOptimize(value);
        std::string const text = plainText(value);
        DoNotOptimize(text.data());
    }
}

template <class Value>
void fromText(State& state, std::int64_t) {
    QOB::String const text = Value(123456, 2).toString();
    for (auto _ : state) {
        Value const value = Value::fromString(text);
        DoNotOptimize(value);
    }
}
template <class Number>
void fromTextPlain(State& state, std::int64_t) {
    std::string const text = plainText(Plain<Number>{123456, 2});
    for (auto _ : state) {
        Plain<Number> const value = plainFromText<Number>(text);
        DoNotOptimize(value);
    }
}

template <class Value>
void fromTextByName(State& state, std::int64_t) {
    std::string const name = Value::getTypeName();
    QOB::String const text = Value(123456, 2).toString();
    for (auto _ : state) {
        QOB::ValueObject const object = QOB::ValueObjectFactory::createFromString(name, text);
        DoNotOptimize(object.get());
    }
}

constexpr std::size_t sampleSize = 1024;

template <class Value, class Number>
std::vector<Value> samples() {
    std::mt19937 random(7);
    std::vector<Value> values;
    for (std::size_t i = 0; i < sampleSize; ++i) {
        values.push_back(Value{static_cast<Number>(random() % 64), static_cast<int>(random() % 5)});
    }
    return values;
}

template <class Value, class Number>
void hash(State& state, std::int64_t) {
    std::vector<Value> const values = samples<Value, Number>();
    for (auto _ : state) {
        for (Value const& value : values) {
            DoNotOptimize(hash_value(value));
        }
    }
}
template <class Number>
void hashPlain(State& state, std::int64_t) {
    auto const values = samples<Plain<Number>, Number>();
    for (auto _ : state) {
        for (Plain<Number> const& value : values) {
            DoNotOptimize(std::hash<Number>()(value.value) * 33 +
                          static_cast<std::size_t>(value.unit));
        }
    }
}

template <class Value, class Number>
void compare(State& state, std::int64_t) {
    std::vector<Value> const values = samples<Value, Number>();
    for (auto _ : state) {
        for (std::size_t i = 1; i < values.size(); ++i) {
            DoNotOptimize(values[i - 1] < values[i]);
            DoNotOptimize(values[i - 1] == values[i]);
        }
    }
}

template <class Value, class Number>
void addRows(std::string const& name) {
    using comparison::add;
    add(name + ": box", box<Value>, boxPlain<Number>, 3);
    add(name + ": unbox", unbox<Value>, unboxPlain<Number>, 0);
    add(name + ": to text", toText<Value>, toTextPlain<Number>, 0);
    add(name + ": from text", fromText<Value>, fromTextPlain<Number>, 0);
    add(name + ": boxed from text, by name", fromTextByName<Value>, fromTextPlain<Number>, 0);
    add(name + ": hash, 1024 of them", hash<Value, Number>, hashPlain<Number>, 3);
    add(name + ": compare, 1024 of them",
        compare<Value, Number>,
        compare<Plain<Number>, Number>,
        3);
}

} // namespace

int main(int argc, char** argv) {
    types::initialize();
    addRows<DataSize, int>("size");
    addRows<Time, double>("time");
    return comparison::run(argc, argv);
}
