#include "tessel/enumtype.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Tessel {
namespace {

constexpr std::size_t numberBytes = 4;

std::optional<int> parseNumber(std::string_view text) {
    int number = 0;
    char const* const end = text.data() + text.size();
    const auto [stop, code] = std::from_chars(text.data(), end, number);
    if (code != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

} // namespace

EnumType::EnumType(std::string name) : name_(std::move(name)) {
}
EnumType::EnumType(EnumType const& other) = default;
EnumType& EnumType::operator=(EnumType const& other) = default;
EnumType::~EnumType() = default;

any EnumType::convertFromString(std::string const& text, ErrorHolder& errors) const {
    if (int const* number = findLiteral(text)) {
        return fromInteger(*number);
    }
    if (const std::optional<int> number = parseNumber(text)) {
        return fromInteger(*number);
    }
    std::string known;
    for (const auto& [number, literal] : literals_) {
        known += (known.empty() ? "" : ", ") + literal;
    }
    errors.setError("Literal (" + text + ") is unknown to the type (" + name_ +
                    "), whose literals are (" + known + ").");
    return {};
}

std::string EnumType::convertToString(any const& value) const {
    const int number = toInteger(value);
    const auto found = literals_.find(number);
    return found != literals_.end() ? found->second : std::to_string(number);
}

any EnumType::convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const {
    if (bytes.size() != numberBytes) {
        errors.setError("Byte array of size (" + std::to_string(bytes.size()) +
                        ") is no value of the type (" + name_ + "), which has the size (" +
                        std::to_string(numberBytes) + ").");
        return {};
    }
    std::uint32_t number = 0;
    for (std::size_t i = numberBytes; i-- > 0;) {
        number = (number << 8U) | std::to_integer<std::uint32_t>(bytes[i]);
    }
    return fromInteger(static_cast<std::int32_t>(number));
}

ByteArray EnumType::convertToByteArray(any const& value) const {
    auto number = static_cast<std::uint32_t>(toInteger(value));
    std::vector<std::byte> bytes(numberBytes);
    for (std::byte& byte : bytes) {
        byte = static_cast<std::byte>(number & 0xFFU);
        number >>= 8U;
    }
    return ByteArray(std::move(bytes));
}

any EnumType::defaultConstruct() const {
    return fromInteger(0);
}

bool EnumType::isEqualTo(Type* other) const {
    if (!Type::isEqualTo(other)) {
        return false;
    }
    const auto& same = static_cast<EnumType const&>(*other);
    return name_ == same.name_ && literals_ == same.literals_;
}

bool EnumType::isLessThan(Type* other) const {
    if (!Type::isEqualTo(other)) {
        return Type::isLessThan(other);
    }
    const auto& same = static_cast<EnumType const&>(*other);
    return std::tie(name_, literals_) < std::tie(same.name_, same.literals_);
}

void EnumType::addLiteral(int number, std::string literal) {
    const auto refuse = [&](std::string const& cause) {
        throw std::invalid_argument("Literal (" + literal + ") with the number (" +
                                    std::to_string(number) + ") cannot enter the type (" + name_ +
                                    "): " + cause);
    };
    if (const auto found = literals_.find(number); found != literals_.end()) {
        refuse("the number has the literal (" + found->second + ").");
    }
    if (int const* other = findLiteral(literal)) {
        refuse("the literal has the number (" + std::to_string(*other) + ").");
    }
    if (const auto meant = parseNumber(literal); meant.has_value() && *meant != number) {
        refuse("the literal reads as another number.");
    }
    literals_.emplace(number, std::move(literal));
}

// A walk: tables have a handful of literals.
int const* EnumType::findLiteral(std::string_view literal) const noexcept {
    const auto found = std::find_if(literals_.begin(), literals_.end(), [&](const auto& entry) {
        return entry.second == literal;
    });
    return found != literals_.end() ? &found->first : nullptr;
}

} // namespace Tessel
