#include "report/printers.h"
#include "report/table.h"

#include <array>
#include <string>

namespace velum::report {

namespace {

std::string counted(std::uint64_t count, std::string const& noun) {
    std::string text = std::to_string(count);
    text += ' ';
    text += noun;
    text += count == 1 ? "" : "s";
    return text;
}

std::string lineAndColumn(arxml::Place const& place) {
    return std::to_string(place.position.line) + ":" + std::to_string(place.position.column);
}

std::uint64_t printClasses(std::string& text, arxml::Report const& report) {
    std::uint64_t total = 0;
    Table table({{"count", Table::Align::right}, {"class"}});
    for (arxml::ClassCount const& row : report.classes) {
        table.addRow({std::to_string(row.count), row.metaclass});
        total += row.count;
    }
    if (!table.empty()) {
        text += table.text() + "\n";
    }
    return total;
}

/// "FILE:LINE:COLUMN: WORD: PATH: SENTENCE".
std::string lineOf(arxml::FileReport const& file,
                   arxml::Place const& place,
                   std::string const& word,
                   std::string const& sentence) {
    return inOneLine(file.file) + ":" + lineAndColumn(place) + ": " + word + ": " +
           inOneLine(place.path) + ": " + inOneLine(sentence);
}

void printOmissions(std::string& text, arxml::FileReport const& file) {
    text += "\nNo object is made of these:\n";
    for (arxml::Omission const& omission : file.omissions) {
        text += lineOf(file,
                       omission.place,
                       std::string(code(omission.reason)),
                       omission.element + (omission.text.empty() ? "." : ". " + omission.text)) +
                "\n";
    }
}

/// " [57 times, also at 345:9 and 351:9]"; nothing for a single one.
std::string repetitionOf(arxml::Finding const& finding) {
    if (finding.count < 2) {
        return {};
    }
    std::string text = " [" + std::to_string(finding.count) + " times, also at ";
    for (std::size_t i = 1; i < finding.places.size(); ++i) {
        text += i == 1 ? "" : " and ";
        text += lineAndColumn(finding.places[i]);
    }
    return text + "]";
}

void printFindings(std::string& text, arxml::FileReport const& file) {
    text += file.findings.empty() ? "" : "\n";
    for (arxml::Finding const& finding : file.findings) {
        const std::string reason(code(finding.reason));
        const bool isUnexpectedNote = isFault(finding.reason) && !finding.isFault;
        text += lineOf(file,
                       finding.places.front(),
                       isUnexpectedNote ? "note: " + reason : reason,
                       finding.text) +
                repetitionOf(finding) + "\n";
    }
}

void printStore(std::string& text, StoreFile const& store) {
    text += inOneLine(store.file) + ": " + counted(store.objectCount, "object");
    if (store.unresolvedCount > 0) {
        text += ", " + counted(store.unresolvedCount, "reference") + " to other models left out";
    }
    text += ".\n";
}

void printFile(std::string& text, arxml::FileReport const& file, bool withOmissions) {
    const std::string name = inOneLine(file.file);
    text += name + ": " + counted(file.elementCount, "element") + ", " +
            std::to_string(file.consumedCount) + " consumed, " + std::to_string(file.skippedCount) +
            " skipped.\n";

    Table skips({{"count", Table::Align::right}, {"skipped element"}, {"reason"}, {"first at"}});
    for (arxml::SkippedElements const& row : file.skipped) {
        skips.addRow({std::to_string(row.count),
                      inOneLine(row.element),
                      std::string(code(row.reason)),
                      lineAndColumn(row.first) + " " + inOneLine(row.first.path)});
    }
    if (!skips.empty()) {
        text += "\n" + skips.text();
    }
    if (withOmissions && !file.omissions.empty()) {
        printOmissions(text, file);
    }
    printFindings(text, file);
}

} // namespace

std::string inOneLine(std::string_view text) {
    constexpr std::array<char, 16> digits = {
        '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F are control characters too; they are C2 80 to C2 9F.
        const bool isPair = byte == 0xC2 && i + 1 < text.size() &&
                            static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                            static_cast<unsigned char>(text[i + 1]) < 0xA0;
        const unsigned char control = isPair ? static_cast<unsigned char>(text[i + 1]) : byte;
        if (isPair || byte < 0x20 || byte == 0x7F) {
            line += "\\x";
            line += digits[control >> 4U];
            line += digits[control & 0xFU];
            i += isPair ? 1 : 0;
        } else {
            line += text[i];
        }
    }
    return line;
}

std::string printText(Input const& input, bool withOmissions) {
    std::string text;
    arxml::Report const& report = input.documents;
    const std::uint64_t total = printClasses(text, report);
    if (!report.isKept()) {
        text += "Nothing is kept: something is wrong in the files.\n";
    }
    text += counted(total, "object") + " from " + counted(input.files().size(), "file") + ".\n";
    for (StoreFile const& store : input.stores) {
        printStore(text, store);
    }
    for (arxml::FileReport const& file : report.files) {
        printFile(text, file, withOmissions);
    }
    return text;
}

} // namespace velum::report
