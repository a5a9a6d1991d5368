#include "qob/qob/assert.h"
#include "qob/qob/serializer/datatypestringrepresenter.h"

namespace QOB::Serializer {

namespace {
constexpr wchar_t Separator = L'|';
constexpr wchar_t Escape = L'\\';
} // namespace

std::wstring
DatatypeStringRepresenter::combineStrings(std::vector<std::wstring> const& parts) const {
    std::wstring text;
    for (bool first = true; std::wstring const& part : parts) {
        if (!first) {
            text += Separator;
        }
        first = false;
        for (wchar_t const character : part) {
            if (character == Separator || character == Escape) {
                text += Escape;
            }
            text += character;
        }
    }
    return text;
}

std::vector<std::wstring> DatatypeStringRepresenter::splitString(std::wstring const& text) const {
    std::vector<std::wstring> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == Separator) {
            parts.emplace_back();
            continue;
        }
        if (text[i] == Escape) {
            ++i;
            if (i == text.size() || (text[i] != Separator && text[i] != Escape)) {
                QOB_FAIL("The backslash at index (%zu) of the text stands neither before \"|\" nor "
                         "before a backslash.",
                         i - 1);
            }
        }
        parts.back() += text[i];
    }
    return parts;
}

std::string DatatypeStringRepresenter::combinePlainPair(std::string_view first,
                                                        std::string_view second) {
    std::string text;
    text.reserve(first.size() + 1 + second.size());
    text += first;
    text += static_cast<char>(Separator);
    text += second;
    return text;
}

bool DatatypeStringRepresenter::splitPlainPair(std::string_view text,
                                               std::string_view& first,
                                               std::string_view& second) noexcept {
    std::size_t bar = std::string_view::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const character = text[i];
        bool const isBar = character == static_cast<char>(Separator);
        bool const isAscii = static_cast<unsigned char>(character) < 0x80;
        if (!isAscii || character == static_cast<char>(Escape) ||
            (isBar && bar != std::string_view::npos)) {
            return false;
        }
        if (isBar) {
            bar = i;
        }
    }
    if (bar == std::string_view::npos) {
        return false;
    }
    first = text.substr(0, bar);
    second = text.substr(bar + 1);
    return true;
}

} // namespace QOB::Serializer
