#include <algorithm>
#include <array>
#include <string>
#include <velum_arxml/notation/encoding.h>

namespace velum::arxml {

namespace {

using Values = Encoding::Values;

/// Whether the code is that of characters; their numbers have no sign.
bool isCharacterCode(std::string_view code) {
    return code == "UTF-8" || code == "UTF-16" || code == "UCS-2" ||
           code.starts_with("ISO-8859-") || code.starts_with("WINDOWS-125");
}

/// "uint8", "sint16", "int32": the name of a platform type in the place of a code.
bool isPlatformName(std::string_view code) {
    constexpr std::array<std::string_view, 3> starts = {"uint", "sint", "int"};
    constexpr std::array<std::string_view, 4> sizes = {"8", "16", "32", "64"};
    return std::any_of(starts.begin(), starts.end(), [&](std::string_view start) {
        return code.starts_with(start) &&
               std::find(sizes.begin(), sizes.end(), code.substr(start.size())) != sizes.end();
    });
}

/// What a declaration in C says about the sign; a plain "char" says nothing.
std::optional<bool> signOf(std::string_view declaration) {
    std::optional<bool> isSigned;
    while (!declaration.empty()) {
        const std::size_t end = std::min(declaration.find(' '), declaration.size());
        const std::string_view word = declaration.substr(0, end);
        if (word == "unsigned" || word.starts_with("uint")) {
            return false;
        }
        if (word == "signed" || word == "short" || word == "long" || word.starts_with("int") ||
            word.starts_with("sint")) {
            isSigned = true;
        }
        declaration.remove_prefix(std::min(end + 1, declaration.size()));
    }
    return isSigned;
}

} // namespace

Encoding readEncoding(std::optional<std::string_view> code,
                      std::optional<std::string_view> nativeDeclaration) {
    Encoding encoding;
    if (!code || code->empty()) {
        encoding.values = Values::integer;
        encoding.isInferred = true;
    } else if (*code == "NONE") {
        encoding.values = Values::integer;
    } else if (*code == "2C") {
        encoding.values = Values::integer;
        encoding.isSigned = true;
    } else if (*code == "1C" || *code == "SM") {
        encoding.values = Values::integer;
        encoding.isSigned = true;
        encoding.isExact = false;
    } else if (isCharacterCode(*code)) {
        encoding.values = Values::integer;
        encoding.isExact = false;
    } else if (isPlatformName(*code)) {
        const std::optional<bool> declared =
            nativeDeclaration ? signOf(*nativeDeclaration) : std::nullopt;
        encoding.values = Values::integer;
        encoding.isSigned = declared.value_or(code->front() != 'u');
        encoding.isInferred = true;
        encoding.isFromDeclaration = declared.has_value();
    } else if (*code == "IEEE754") {
        encoding.values = Values::floatingPoint;
    } else if (*code == "BOOLEAN") {
        encoding.values = Values::boolean;
    } else if (*code == "VOID") {
        encoding.values = Values::nothing;
    }
    return encoding;
}

} // namespace velum::arxml
