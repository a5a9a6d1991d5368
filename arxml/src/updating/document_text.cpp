#include "updating/document_text.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <velum_arxml/source/input_error.h>

namespace velum::arxml {

namespace {

/// Pieces keep their order: one that goes to the left takes the place of none behind it, one that
/// goes to the right of none before it.
void movePieces(char* text, std::vector<TextPiece> const& pieces) {
    for (TextPiece const& piece : pieces) {
        if (piece.to < piece.from) {
            std::memmove(text + piece.to, text + piece.from, piece.size);
        }
    }
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
        if (piece->to > piece->from) {
            std::memmove(text + piece->to, text + piece->from, piece->size);
        }
    }
}

} // namespace

DocumentText::DocumentText(std::string const& file) {
    constexpr std::size_t piece = std::size_t(1) << 20U;
    std::ifstream in(file, std::ios::binary);
    std::error_code isUnknown;
    const auto expected = std::filesystem::file_size(file, isUnknown);
    bytes_.reserve((isUnknown ? 0 : static_cast<std::size_t>(expected)) + piece);
    while (in.good()) {
        const std::size_t size = bytes_.size();
        bytes_.resize(size + piece);
        in.read(bytes_.data() + size, static_cast<std::streamsize>(piece));
        bytes_.resize(size + static_cast<std::size_t>(in.gcount()));
    }
    if (!in.eof()) {
        throw InputError(file, "The file cannot be read.");
    }
}

std::string DocumentText::obstacle() const {
    const std::string_view text = view();
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

void DocumentText::apply(std::vector<TextEdit> edits) {
    const std::vector<TextPiece> pieces = piecesBetween(edits, bytes_.size());
    const std::size_t size = pieces.back().to + pieces.back().size;
    bytes_.resize(std::max(bytes_.size(), size));
    movePieces(bytes_.data(), pieces);
    for (std::size_t i = 0; i < edits.size(); ++i) {
        std::string const& text = edits[i].text;
        std::copy(text.begin(), text.end(), bytes_.data() + pieces[i].to + pieces[i].size);
    }
    bytes_.resize(size);
}

} // namespace velum::arxml
