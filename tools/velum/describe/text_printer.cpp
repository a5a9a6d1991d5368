#include "describe/printers.h"
#include "describe/words.h"
#include "report/table.h"

#include <algorithm>
#include <utility>

namespace velum::describe {

namespace {

using report::widthOf;

constexpr std::size_t lastColumn = 100;

/// Collects lines, and breaks those that are too long between two words.
class Lines {
public:
    /// A line; what doesn't fit goes on below with the same indent, or with a hanging one.
    void add(std::size_t indent, std::string_view text, std::size_t hanging = 0) {
        std::string line(indent, ' ');
        bool isBegun = false;
        while (!text.empty()) {
            // Spaces belong to the word behind them; where a line ends they fall away.
            const std::size_t word = std::min(text.find_first_not_of(' '), text.size());
            const std::size_t end = std::min(text.find(' ', word), text.size());
            std::string_view next = text.substr(0, end);
            if (isBegun && widthOf(line) + widthOf(next) > lastColumn) {
                finish(line);
                line.assign(indent + hanging, ' ');
                next.remove_prefix(word);
            }
            line += next;
            isBegun = true;
            text.remove_prefix(end);
        }
        finish(line);
    }

    /// Lines of a text, each of them broken by itself.
    void addText(std::size_t indent, std::string_view text) {
        for (const std::string_view line : linesOf(text)) {
            add(indent, line);
        }
    }

    void addBlank() { text_ += '\n'; }

    std::string text() && { return std::move(text_); }

private:
    void finish(std::string& line) {
        line.erase(line.find_last_not_of(' ') + 1);
        text_ += line;
        text_ += '\n';
    }

    std::string text_;
};

/// Each of a row of texts at its column; the last one isn't filled up.
std::string inColumns(std::vector<std::string> const& cells,
                      std::vector<std::size_t> const& widths) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (widths[i] > 0) {
            line += line.empty() ? "" : "  ";
            line += cells[i];
            line.append(widths[i] - widthOf(cells[i]), ' ');
        }
    }
    return line;
}

std::string tagTexts(std::vector<Tag> const& tags) {
    return listOf(tags, textOf);
}

template <class Elements>
std::string namesIn(Package const& here, Elements const& elements) {
    return listOf(elements, [&here](auto const* element) { return nameIn(here, *element); });
}

/// "label  a, b, c" unless there is nothing to tell.
void addFact(Lines& lines, std::size_t indent, std::string_view label, std::string const& text) {
    constexpr std::size_t labelWidth = 12;
    if (!text.empty()) {
        std::string line(label);
        line.append(labelWidth - std::min(labelWidth, line.size()), ' ');
        lines.add(indent, line + text, labelWidth);
    }
}

/// What stands below the line of a property.
void addDetails(Lines& lines, Property const& property) {
    constexpr std::size_t indent = 6;
    Package const& here = *property.owner->package;
    const bool isProperty = property.opposite != nullptr;
    std::string end = isProperty ? nameIn(here, *property.opposite) : property.otherEndName;
    if (!property.associationName.empty()) {
        end += (end.empty() ? "" : " ") + ("in association " + property.associationName);
    }
    addFact(lines, indent, isProperty ? "opposite" : "other end", end);
    addFact(lines, indent, "redefines", namesIn(here, property.redefined));
    addFact(lines, indent, "subsets", namesIn(here, property.subsetted));
    addFact(lines, indent, "tags", tagTexts(property.tags));
    if (!property.documentation.empty()) {
        lines.addText(indent, property.documentation);
    }
}

void addProperties(Lines& lines, Type const& type) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::size_t> widths;
    for (Property const& property : type.properties) {
        rows.push_back({property.name,
                        property.type == nullptr ? "" : nameIn(*type.package, *property.type),
                        multiplicity(property),
                        property.defaultValue.empty() ? "" : "= " + property.defaultValue,
                        joined(traits(property))});
        widths.resize(rows.back().size());
        for (std::size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], widthOf(rows.back()[i]));
        }
    }
    // Those with a documentation stand apart, the others close together.
    bool isApart = true;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isDocumented = !type.properties[i].documentation.empty();
        if (isApart || isDocumented) {
            lines.addBlank();
        }
        isApart = isDocumented;
        lines.add(2, inColumns(rows[i], widths));
        addDetails(lines, type.properties[i]);
    }
}

/// The names of what a class inherits, a line for each class that declares some.
void addInherited(Lines& lines, Type const& type) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::size_t width = 0;
    for (Type const* ancestor : ancestorsOf(type)) {
        const auto name = [](Property const* property) { return property->name; };
        if (std::string names = listOf(inheritedFrom(*ancestor, type), name); !names.empty()) {
            rows.emplace_back(nameIn(*type.package, *ancestor), std::move(names));
            width = std::max(width, rows.back().first.size() + 2);
        }
    }
    if (!rows.empty()) {
        lines.addBlank();
        lines.add(2, "inherited");
    }
    for (auto& [name, properties] : rows) {
        name.resize(width, ' ');
        lines.add(6, name + properties, width);
    }
}

void addType(Lines& lines, Type const& type, bool isAlone) {
    lines.add(0, std::string(kindOf(type)) + " " + type.name);
    constexpr std::size_t indent = 2;
    if (isAlone) {
        addFact(lines, indent, "package", type.package->name);
    }
    addFact(lines, indent, "supers", namesIn(*type.package, type.supers));
    addFact(lines, indent, "subclasses", namesIn(*type.package, type.subs));
    addFact(lines, indent, "literals", joined(type.literals));
    addFact(lines, indent, "tags", tagTexts(type.tags));
    for (std::string const& comment : type.comments) {
        lines.addBlank();
        lines.addText(indent, comment);
    }
    addProperties(lines, type);
    if (isAlone) {
        addInherited(lines, type);
    }
}

} // namespace

std::string printText(Package const& package) {
    Lines lines;
    lines.add(0, "package " + package.name + ": " + sumOf(package));
    addFact(lines, 2, "uri", package.uri);
    addFact(lines, 2, "tags", tagTexts(package.tags));
    for (auto const& types : {dataTypesOf(package), classesOf(package)}) {
        for (Type const* type : types) {
            lines.addBlank();
            addType(lines, *type, false);
        }
    }
    return std::move(lines).text();
}

std::string printText(Type const& type) {
    Lines lines;
    addType(lines, type, true);
    return std::move(lines).text();
}

} // namespace velum::describe
