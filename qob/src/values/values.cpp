#include "qob/kernel/deviant/objectmemory.h"
#include "qob/qob/assert.h"
#include "qob/qob/boolean.h"
#include "qob/qob/integer.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"
#include "qob/qob/util/utf8.h"
#include "tessel/encoding.h"
#include "values/valuetext.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <ostream>

namespace QOB {

// Text -----------------------------------------------------------------------------------------

namespace {
/// Texts up to this size lie beside each other like objects, as most names do.
constexpr std::size_t LargestShortText = 64;
} // namespace

String::Block* String::allocate(std::string_view text) {
    if (text.empty()) { // shared by all, and never freed: its own count is one of them
        static Block empty{1, 0};
        ++empty.count;
        return &empty;
    }
    QOB_REQUIRE(text.size() <= UINT32_MAX, "A text is at its limit of length.");
    std::size_t const size = sizeof(Block) + text.size();
    void* const memory =
        size <= LargestShortText ? internal::allocateObject(size) : ::operator new(size);
    auto* const block = new (memory) Block{1, static_cast<std::uint32_t>(text.size())};
    std::memcpy(block + 1, text.data(), text.size());
    return block;
}

void String::destroy(Block* block) noexcept {
    if (sizeof(Block) + block->size <= LargestShortText) {
        internal::freeObject(block);
    } else {
        ::operator delete(block);
    }
}

namespace {

std::string narrow(std::wstring const& text) {
    try {
        return Tessel::wideToUtf8(text);
    } catch (Tessel::EncodingError const& error) {
        QOB_FAIL("The wide text is not well-formed: %s", error.what());
    }
}

} // namespace

String::String(char const* text) : block_(text != nullptr ? allocate(text) : nullptr) {
}
String::String(std::string const& text) : block_(allocate(text)) {
}
String::String(std::wstring const& text) : block_(allocate(narrow(text))) {
}

std::string_view String::view() const noexcept {
    return block_ != nullptr
               ? std::string_view(reinterpret_cast<char const*>(block_ + 1), block_->size)
               : std::string_view();
}

String::operator std::wstring() const {
    try {
        return Tessel::utf8ToWide(view());
    } catch (Tessel::EncodingError const& error) {
        QOB_FAIL("The text is not well-formed UTF-8: %s", error.what());
    }
}

std::wstring util::UTF8ToUString(char const* text) {
    return String(text);
}

std::string String::getTypeName() {
    return "QOB.String";
}

std::ostream& operator<<(std::ostream& out, String const& text) {
    return out << text.view();
}

unsigned hash_value(String const& text) noexcept {
    return static_cast<unsigned>(std::hash<std::string_view>()(text.view()));
}

// Numbers --------------------------------------------------------------------------------------

namespace {

template <class Value, class Number>
bool readNumber(std::string_view text, Value& value) {
    if (text.empty()) {
        value = Value();
        return true;
    }
    Number number{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !Value(number).isValid()) {
        return false;
    }
    value = Value(number);
    return true;
}

template <class Value>
Value readWhole(String const& text) {
    Value value;
    if (!internal::readText(text.view(), value)) {
        QOB_FAIL("%s", internal::refusal<Value>(text.view()).c_str());
    }
    return value;
}

template <class Number>
String writeNumber(Number number) {
    std::array<char, 32> buffer{};
    auto const [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return String(std::string(buffer.data(), end));
}

} // namespace

bool internal::readText(std::string_view text, Integer& value) {
    return readNumber<Integer, int>(text, value);
}
char const* internal::expectedText(Integer const&) {
    return "a whole number of 32 bits";
}

String Integer::toString() const {
    return isValid() ? writeNumber(value_) : String("");
}

Integer Integer::fromString(String const& text) {
    return readWhole<Integer>(text);
}

std::string Integer::getTypeName() {
    return "QOB.Integer";
}

std::ostream& operator<<(std::ostream& out, Integer const& value) {
    return out << value.toString();
}

bool internal::readText(std::string_view text, Real& value) {
    return readNumber<Real, double>(text, value);
}
char const* internal::expectedText(Real const&) {
    return "a number in the range of a double";
}

String Real::toString() const {
    if (!isValid()) {
        return "";
    }
    return std::isnan(value_) ? String("nan") : writeNumber(value_);
}

Real Real::fromString(String const& text) {
    return readWhole<Real>(text);
}

std::string Real::getTypeName() {
    return "QOB.Real";
}

std::ostream& operator<<(std::ostream& out, Real const& value) {
    return out << value.toString();
}

unsigned hash_value(Real const& value) noexcept {
    double const number = value;
    std::uint64_t bits = std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number);
    if (std::isnan(number) && value.isValid()) {
        bits = 1;
    }
    return static_cast<unsigned>(bits ^ (bits >> 32));
}

// Truth ----------------------------------------------------------------------------------------

bool internal::readText(std::string_view text, Boolean& value) {
    if (!text.empty() && text != "true" && text != "false") {
        return false;
    }
    value = text.empty() ? Boolean() : Boolean(text == "true");
    return true;
}
char const* internal::expectedText(Boolean const&) {
    return R"("true" or "false")";
}

String Boolean::toString() const {
    return valid_ ? String(value_ ? "true" : "false") : String("");
}

Boolean Boolean::fromString(String const& text) {
    return readWhole<Boolean>(text);
}

std::string Boolean::getTypeName() {
    return "QOB.Boolean";
}

std::ostream& operator<<(std::ostream& out, Boolean const& value) {
    return out << value.toString();
}

} // namespace QOB
