#include "describe/class_tree.h"
#include "describe/printers.h"
#include "describe/words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <utility>

namespace velum::describe {

namespace {

/// A text of one line that looks in Markdown, also in a table, as it stands.
std::string escaped(std::string_view text) {
    constexpr std::string_view special = "\\`*_[]<>#|&~$";
    std::string markdown;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) {
            markdown += '\\';
        }
        markdown += c;
    }
    return markdown;
}

/// The same where it begins a line: nothing there makes a list, a heading or a block of code.
std::string escapedLine(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto digits = static_cast<std::size_t>(
        std::find_if_not(line.begin(), line.end(), isDigit) - line.begin());
    const std::string_view number = line.substr(0, digits);
    line.remove_prefix(digits);
    const bool isMarker =
        !line.empty() && (digits == 0 ? line[0] == '-' || line[0] == '+' || line[0] == '='
                                      : line[0] == '.' || line[0] == ')');
    return std::string(number) + (isMarker ? "\\" : "") + escaped(line);
}

/// Line breaks stay, an empty line begins a paragraph; `indent` is for what goes on in a list.
std::string paragraphs(std::string_view text, std::string_view indent = "") {
    std::string markdown;
    bool isBegun = false;
    for (const std::string_view line : linesOf(text)) {
        const std::string escaped = escapedLine(line);
        if (escaped.empty()) {
            markdown += '\n';
            isBegun = false;
            continue;
        }
        if (!markdown.empty()) {
            markdown += isBegun ? "\\\n" : "\n";
            markdown += indent;
        }
        markdown += escaped;
        isBegun = true;
    }
    return markdown;
}

/// As code; within a table also a bar is escaped there.
std::string code(std::string_view text) {
    std::string markdown = "`";
    for (const char c : text) {
        markdown += c == '|' ? "\\|" : std::string(1, c);
    }
    return markdown + "`";
}

std::string anchor(std::string const& id) {
    return "<a id=\"" + id + "\"></a>";
}

std::string anchorOf(Type const& type) {
    return std::string(shortName(*type.package)) + "." + type.name;
}

std::string anchorOf(Property const& property) {
    return anchorOf(*property.owner) + "." + property.name;
}

std::string tagsText(std::vector<Tag> const& tags) {
    return (tags.size() == 1 ? "tag " : "tags ") +
           listOf(tags, [](Tag const& tag) { return code(textOf(tag)); });
}

/// A table without the columns that have nothing in them.
class Table {
public:
    static constexpr std::size_t columnCount = 6;
    using Row = std::array<std::string, columnCount>;

    explicit Table(Row titles) : titles_(std::move(titles)) {}

    void add(Row row) { rows_.push_back(std::move(row)); }

    std::string text() const {
        std::string markdown = line(titles_) + "|";
        for (std::size_t i = 0; i < columnCount; ++i) {
            markdown += isUsed(i) ? "---|" : "";
        }
        markdown += '\n';
        for (Row const& row : rows_) {
            markdown += line(row);
        }
        return markdown;
    }

private:
    bool isUsed(std::size_t column) const {
        return std::any_of(
            rows_.begin(), rows_.end(), [column](Row const& row) { return !row[column].empty(); });
    }

    std::string line(Row const& row) const {
        std::string markdown = "|";
        for (std::size_t i = 0; i < columnCount; ++i) {
            if (isUsed(i)) {
                markdown += row[i].empty() ? " |" : " " + row[i] + " |";
            }
        }
        return markdown + "\n";
    }

    Row titles_;
    std::vector<Row> rows_;
};

/// Collects a page about some types. What lies on it is linked to.
class Page {
public:
    explicit Page(std::vector<Type const*> types) : types_(std::move(types)) {}

    Page& operator<<(std::string_view markdown) {
        text_ += markdown;
        return *this;
    }

    /// The name of a type as one of the package `here` writes it.
    std::string link(Package const& here, Type const& type) const {
        return link(nameIn(here, type), type, anchorOf(type));
    }

    std::string link(Package const& here, Property const& property) const {
        return link(nameIn(here, property), *property.owner, anchorOf(property));
    }

    template <class Elements>
    std::string links(Package const& here, Elements const& elements) const {
        return listOf(elements, [&](auto const* element) { return link(here, *element); });
    }

    bool has(Type const& type) const {
        return std::find(types_.begin(), types_.end(), &type) != types_.end();
    }

    std::string text() && { return std::move(text_); }

private:
    std::string link(std::string const& name, Type const& type, std::string const& id) const {
        return has(type) ? "[" + escaped(name) + "](#" + id + ")" : code(name);
    }

    std::vector<Type const*> types_;
    std::string text_;
};

/// What a property has to do with others, and its tags; one line each in its cell.
std::string relations(Page const& page, Property const& property) {
    Package const& here = *property.owner->package;
    std::vector<std::string> lines;
    const std::string association =
        property.associationName.empty() ? "" : "association " + code(property.associationName);
    if (property.opposite != nullptr) {
        lines.push_back("opposite " + page.link(here, *property.opposite));
    } else if (!property.otherEndName.empty()) {
        lines.push_back("other end " + code(property.otherEndName));
    }
    if (!association.empty()) {
        lines.push_back(association);
    }
    if (!property.redefined.empty()) {
        lines.push_back("redefines " + page.links(here, property.redefined));
    }
    if (!property.subsetted.empty()) {
        lines.push_back("subsets " + page.links(here, property.subsetted));
    }
    if (!property.tags.empty()) {
        lines.push_back(tagsText(property.tags));
    }
    std::string cell;
    for (std::string const& line : lines) {
        cell += cell.empty() ? "" : "<br>";
        cell += line;
    }
    return cell;
}

void addProperties(Page& page, Type const& type) {
    if (type.properties.empty()) {
        return;
    }
    Package const& here = *type.package;
    Table table({"Property", "Type", "Multiplicity", "Default", "Is", "Relations and tags"});
    for (Property const& property : type.properties) {
        table.add({anchor(anchorOf(property)) + "**" + escaped(property.name) + "**",
                   property.type == nullptr ? "" : page.link(here, *property.type),
                   escaped(multiplicity(property)),
                   property.defaultValue.empty() ? "" : code(property.defaultValue),
                   joined(traits(property)),
                   relations(page, property)});
    }
    page << "\n" << table.text();
    bool isFirst = true;
    for (Property const& property : type.properties) {
        if (!property.documentation.empty()) {
            page << (isFirst ? "\n" : "") << "- **" << escaped(property.name)
                 << "**: " << paragraphs(property.documentation, "  ") << "\n";
            isFirst = false;
        }
    }
}

void addType(Page& page, Type const& type, std::string_view heading, bool isAlone) {
    page << heading << " " << anchor(anchorOf(type)) << escaped(type.name) << "\n\n";
    Package const& here = *type.package;
    std::string kind(kindOf(type));
    kind[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(kind[0])));
    std::vector<std::string> facts;
    if (!type.supers.empty()) {
        facts.push_back("supers: " + page.links(here, type.supers));
    }
    if (!type.subs.empty()) {
        facts.push_back("subclasses: " + page.links(here, type.subs));
    }
    if (!type.literals.empty()) {
        facts.push_back("literals: " + listOf(type.literals, code));
    }
    if (!type.tags.empty()) {
        facts.push_back(tagsText(type.tags));
    }
    page << kind;
    if (isAlone) {
        page << " of package " << code(here.name);
    }
    for (std::string const& fact : facts) {
        page << "; " << fact;
    }
    page << ".\n";
    for (std::string const& comment : type.comments) {
        page << "\n" << paragraphs(comment) << "\n";
    }
    addProperties(page, type);
}

struct Chapter {
    std::string title;
    std::string id;
    Package const* package;
    std::vector<Type const*> types;
};

void addContents(Page& page, std::vector<Chapter> const& chapters) {
    page << "## Contents\n\n- [Inheritance](#inheritance)\n";
    for (Chapter const& chapter : chapters) {
        page << "- [" << chapter.title << "](#" << chapter.id
             << "): " << page.links(*chapter.package, chapter.types) << "\n";
    }
}

/// The tree of classes as a nested list. A class with several supers stands below the first and
/// names the others.
void addInheritance(Page& page, Package const& here, std::vector<Package const*> const& packages) {
    page << "\n## " << anchor("inheritance")
         << "Inheritance\n\nAbstract classes are in italics.\n\n";
    for (auto const& [type, depth] : classTree(packages)) {
        const std::string name = page.link(here, *type);
        page << std::string(2 * depth, ' ') << "- " << (type->isAbstract ? "*" + name + "*" : name);
        if (type->supers.size() > 1) {
            page << ", also below " << page.links(here, std::span(type->supers).subspan(1));
        }
        page << "\n";
    }
}

} // namespace

std::string printMarkdown(Metamodel const& metamodel) {
    Package const& types = metamodel.types();
    Package const& base = metamodel.foundation();
    Package const& kernel = metamodel.kernel();
    const std::vector<Package const*> packages = {&types, &base, &kernel};
    const std::vector<Chapter> chapters = {
        {"Data types", "data-types", &types, dataTypesOf(types)},
        {"Classes", "classes", &types, classesOf(types)},
        {"Data types of the base metamodel", "base-data-types", &base, dataTypesOf(base)},
        {"Classes of the base metamodel", "base-classes", &base, classesOf(base)},
        {"Data types of the kernel", "kernel-data-types", &kernel, dataTypesOf(kernel)},
        {"Classes of the kernel", "kernel-classes", &kernel, classesOf(kernel)}};

    std::vector<Type const*> all;
    for (Chapter const& chapter : chapters) {
        all.insert(all.end(), chapter.types.begin(), chapter.types.end());
    }
    Page page(std::move(all));
    page << "# Metamodel\n\n<!-- Written by \"velum describe --format md\": ./dev docs writes it "
            "anew. "
            "-->\n\n";
    for (Package const* package : packages) {
        page << "- Package " << code(package->name) << ": " << sumOf(*package);
        if (!package->tags.empty()) {
            page << "; " << tagsText(package->tags);
        }
        page << ".\n";
    }
    page << "\n";
    addContents(page, chapters);
    addInheritance(page, types, packages);
    for (Chapter const& chapter : chapters) {
        page << "\n## " << anchor(chapter.id) << chapter.title << "\n";
        for (Type const* type : chapter.types) {
            page << "\n";
            addType(page, *type, "###", false);
        }
    }
    return std::move(page).text();
}

std::string printMarkdown(Type const& type) {
    Page page({&type});
    addType(page, type, "#", true);
    return std::move(page).text();
}

} // namespace velum::describe
