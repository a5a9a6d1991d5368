#include "html/out.h"

#include "html/escape.h"

#include <array>
#include <charconv>
#include <cmath>

namespace velum::html {

namespace {

constexpr std::size_t sizeOfPiece = std::size_t{1} << 16U;

} // namespace

Out& Out::operator<<(std::string_view text) {
    appendEscaped(pending_, text);
    return add("");
}

Out& Out::operator<<(Px pixels) {
    const double rounded = std::round(pixels.value * 10.0) / 10.0;
    std::array<char, 32> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), rounded == 0.0 ? 0.0 : rounded);
    return add({digits.data(), end});
}

bool Out::finish() {
    if (isGood_ && !pending_.empty()) {
        isGood_ = sink_(pending_);
    }
    pending_.clear();
    return isGood_;
}

Out& Out::add(std::string_view markup) {
    pending_ += markup;
    if (pending_.size() >= sizeOfPiece) {
        finish();
    }
    return *this;
}

} // namespace velum::html
