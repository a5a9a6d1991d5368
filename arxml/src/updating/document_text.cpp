#include "updating/document_text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <velum_arxml/source/input_error.h>

namespace velum::arxml {

std::string contentOf(std::string const& file) {
    constexpr std::size_t piece = std::size_t(1) << 20U;
    std::ifstream in(file, std::ios::binary);
    std::error_code isUnknown;
    const auto expected = std::filesystem::file_size(file, isUnknown);
    std::string text;
    text.reserve((isUnknown ? 0 : static_cast<std::size_t>(expected)) + piece);
    while (in.good()) {
        const std::size_t size = text.size();
        text.resize(size + piece);
        in.read(text.data() + size, static_cast<std::streamsize>(piece));
        text.resize(size + static_cast<std::size_t>(in.gcount()));
    }
    if (!in.eof()) {
        throw InputError(file, "The file cannot be read.");
    }
    return text;
}

std::string obstacleIn(std::string_view text) {
    if (text.size() >= 2 && (text.substr(0, 2) == "\x1F\x8B")) {
        return "The file is compressed.";
    }
    const std::string_view head =
        text.substr(0, std::min<std::size_t>(text.find("<AUTOSAR"), 4096));
    if (text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF" ||
        head.find('\0') != std::string_view::npos) {
        return "The file is written in UTF-16.";
    }
    const std::size_t encoding = head.find("encoding=");
    if (encoding != std::string_view::npos) {
        std::string name(head.substr(encoding + 10, 6));
        std::transform(name.begin(), name.end(), name.begin(), [](char c) {
            return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        });
        if (name.substr(0, 5) != "UTF-8" && name != "US-ASC") {
            return "The file is not written in UTF-8.";
        }
    }
    return head.find("<!DOCTYPE") == std::string_view::npos ? "" : "The file has a DOCTYPE.";
}

} // namespace velum::arxml
