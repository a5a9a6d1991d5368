#include "model/glob.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace velum::model {

namespace {

/// One step of a pattern.
struct Token {
    enum class Kind { literal, anyOne, set, star, doubleStar };
    Kind kind = Kind::literal;
    std::string_view text{}; ///< The character, or what stands between the brackets.

    bool isStar() const { return kind == Kind::star || kind == Kind::doubleStar; }
};

/// The end of a set that begins at a bracket; npos if it has none.
std::size_t endOfSet(std::string_view pattern, std::size_t begin) {
    std::size_t const first = begin + 1 + (pattern.substr(begin + 1, 1) == "!" ? 1 : 0);
    return pattern.find(']', first + 1); // a bracket at the beginning is a member
}

std::vector<Token> tokensOf(std::string_view pattern) {
    using Kind = Token::Kind;
    std::vector<Token> tokens;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const c = pattern[i];
        if (c == '*') {
            bool const isDouble = pattern.substr(i + 1, 1) == "*";
            tokens.push_back({isDouble ? Kind::doubleStar : Kind::star});
            i += isDouble ? 1 : 0;
        } else if (c == '?') {
            tokens.push_back({Kind::anyOne});
        } else if (c == '[' && endOfSet(pattern, i) != std::string_view::npos) {
            std::size_t const end = endOfSet(pattern, i);
            tokens.push_back({Kind::set, pattern.substr(i + 1, end - i - 1)});
            i = end;
        } else {
            i += c == '\\' && i + 1 < pattern.size() ? 1 : 0;
            tokens.push_back({Kind::literal, pattern.substr(i, 1)});
        }
    }
    return tokens;
}

bool isInSet(std::string_view set, char c) {
    bool const isNegated = set.substr(0, 1) == "!";
    set.remove_prefix(isNegated ? 1 : 0);
    bool isFound = false;
    for (std::size_t i = 0; i < set.size() && !isFound; ++i) {
        if (i + 2 < set.size() && set[i + 1] == '-') {
            isFound = set[i] <= c && c <= set[i + 2];
            i += 2;
        } else {
            isFound = set[i] == c;
        }
    }
    return isFound != isNegated;
}

/// `end`: the character at which a name ends, which only some steps take; none if it is 0.
bool takes(Token const& token, char c, char end) {
    switch (token.kind) {
    case Token::Kind::literal:
        return token.text.front() == c;
    case Token::Kind::set:
        return c != end && isInSet(token.text, c);
    case Token::Kind::anyOne:
    case Token::Kind::star:
        return c != end;
    case Token::Kind::doubleStar:
        break;
    }
    return true;
}

/// Later bytes of a character in UTF-8.
bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// All places of the pattern that the text may have come to are followed at once, so that the time
// grows with the product of both lengths and no faster.
bool matchesUpTo(char end, std::string_view pattern, std::string_view text) {
    std::vector<Token> const tokens = tokensOf(pattern);
    std::vector<bool> at(tokens.size() + 1);
    auto const passStars = [&tokens](std::vector<bool>& places) {
        for (std::size_t i = 0; i != tokens.size(); ++i) {
            if (places[i] && tokens[i].isStar()) {
                places[i + 1] = true;
            }
        }
    };
    at[0] = true;
    passStars(at);
    for (char const c : text) {
        std::vector<bool> next(at.size());
        for (std::size_t i = 0; i != tokens.size(); ++i) {
            if (at[i] && takes(tokens[i], c, end)) {
                next[tokens[i].isStar() ? i : i + 1] = true;
            }
            if (at[i + 1] && tokens[i].kind == Token::Kind::anyOne && isContinuation(c)) {
                next[i + 1] = true;
            }
        }
        passStars(next);
        at = std::move(next);
    }
    return at.back();
}

} // namespace

bool matches(std::string_view pattern, std::string_view text) {
    return matchesUpTo('/', pattern, text);
}

bool matchesText(std::string_view pattern, std::string_view text) {
    return matchesUpTo('\0', pattern, text);
}

} // namespace velum::model
