// Imports whatever comes. Bytes that begin like a document are one; any others tell how to build a
// document of elements that the importers know, so that what they expect is met often.
#include "check/rules.h"
#include "model/dictionary.h"
#include "model/objects.h"
#include "show/object_printer.h"
#include "source/names.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>
#include <velum_arxml/read.h>

namespace {

constexpr std::array<std::string_view, velum::arxml::element::countOfKnown> elementNames = {
#define VELUM_KNOWN_NAME(identifier, text) text,
#include "source/known_names.inc"
#undef VELUM_KNOWN_NAME
};

constexpr std::array<std::string_view, 48> texts = {"a",
                                                    "b",
                                                    "c",
                                                    "d",
                                                    "/P/a",
                                                    "/P/b",
                                                    "/P/c",
                                                    "/P/d",
                                                    "/P/a/b",
                                                    "/Q/a",
                                                    "b",
                                                    "0",
                                                    "1",
                                                    "2",
                                                    "-1",
                                                    "8",
                                                    "32",
                                                    "0.5",
                                                    "1e9",
                                                    "0x10",
                                                    "010",
                                                    "4294967295",
                                                    "INF",
                                                    "true",
                                                    "VALUE",
                                                    "ARRAY",
                                                    "STRUCTURE",
                                                    "TYPE_REFERENCE",
                                                    "DATA_REFERENCE",
                                                    "BOOLEAN",
                                                    "VAL_BLK",
                                                    "CURVE",
                                                    "MAP",
                                                    "COM_AXIS",
                                                    "STD_AXIS",
                                                    "LINEAR",
                                                    "RAT_FUNC",
                                                    "TEXTTABLE",
                                                    "IDENTICAL",
                                                    "SCALE_LINEAR_AND_TEXTTABLE",
                                                    "NONE",
                                                    "2C",
                                                    "IEEE754",
                                                    "64",
                                                    "FIXED_LENGTH",
                                                    "FIXED-SIZE",
                                                    "",
                                                    "TAB_NOINTP"};

/// Each byte opens an element, writes a text or closes an element.
std::string buildDocument(std::uint8_t const* data, std::size_t size) {
    constexpr std::size_t deepest = 200;
    std::string document = "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\"><AR-PACKAGES>"
                           "<AR-PACKAGE><SHORT-NAME>P</SHORT-NAME><ELEMENTS>";
    std::vector<std::string_view> open;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t choice = data[i];
        if (choice < elementNames.size()) {
            if (open.size() < deepest) {
                open.push_back(elementNames[choice]);
                document.append("<").append(open.back()).append(">");
            }
        } else if (choice < elementNames.size() + texts.size()) {
            document += texts[choice - elementNames.size()];
        } else if (!open.empty()) {
            document.append("</").append(open.back()).append(">");
            open.pop_back();
        }
    }
    for (; !open.empty(); open.pop_back()) {
        document.append("</").append(open.back()).append(">");
    }
    return document + "</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>";
}

void require(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

/// One import; what it made can be shown, checked and undone.
void importOne(std::string const& file) {
    velum::model::Dictionary dictionary;
    try {
        const velum::arxml::Report report = velum::arxml::read({file}, dictionary.model());
        for (QOB::ClassObject const& object : velum::model::freeObjects(dictionary.model())) {
            require(!velum::show::objectText(object).empty(), "An object is shown by no text.");
        }
        velum::check::checkModel(dictionary.model());
        if (!report.classes.empty()) {
            require(dictionary.model().undo(), "The import is no step.");
        }
    } catch (velum::arxml::InputError const&) {
        // Refused, with nothing kept.
    }
    require(dictionary.model().getRootObjects().empty(), "Something is left.");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static const std::string file = std::filesystem::temp_directory_path() /
                                    ("velum_import_fuzzer_" + std::to_string(getpid()));
    const bool isDocument = size > 0 && (data[0] == '<' || data[0] == 0xEF);
    const std::string document = isDocument ? std::string(reinterpret_cast<char const*>(data), size)
                                            : buildDocument(data, size);
    std::FILE* const stream = std::fopen(file.c_str(), "wb");
    require(stream != nullptr, "The temporary file cannot be written.");
    std::fwrite(document.data(), 1, document.size(), stream);
    std::fclose(stream);
    importOne(file);
    return 0;
}
