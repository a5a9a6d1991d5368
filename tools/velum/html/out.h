#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace velum::html {

/// Takes the next piece of a page; false if it can't, which ends the writing.
using Sink = std::function<bool(std::string_view piece)>;

/// A number of pixels: written with one digit behind the point at most.
struct Px {
    double value;
};

/// Markup that this program made itself, as opposed to text.
struct Markup {
    std::string_view text;
};

/// Writes a page piece by piece. String literals are markup and go out as they stand; every other
/// text is escaped, so no text of a file can become markup.
class Out {
public:
    explicit Out(Sink sink) : sink_(std::move(sink)) {}

    template <std::size_t Size>
    Out& operator<<(const char (&markup)[Size]) {
        return add({markup, Size - 1});
    }
    Out& operator<<(Markup markup) { return add(markup.text); }
    Out& operator<<(std::string_view text);
    Out& operator<<(Px pixels);
    template <std::integral Number>
    requires(!std::same_as<Number, bool> && !std::same_as<Number, char>) Out&
    operator<<(Number number) {
        return add(std::to_string(number));
    }

    /// Hands on what is left; false if the sink failed at any time.
    bool finish();
    bool isGood() const { return isGood_; }

private:
    Out& add(std::string_view markup);

    Sink sink_;
    std::string pending_;
    bool isGood_ = true;
};

} // namespace velum::html
