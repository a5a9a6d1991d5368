#include "describe/printers.h"
#include "describe/words.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace velum::describe {

namespace {

/// For the HTML of labels.
std::string inLabel(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string inQuotes(std::string_view text) {
    std::string escaped = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped + '"';
}

std::string nodeOf(Type const& type) {
    return inQuotes(type.package->name + "." + type.name);
}

/// In UML a derived property has a slash in front, a private one a minus.
std::string signOf(Property const& property) {
    return std::string(property.isPrivate ? "- " : "") + (property.isDerived ? "/" : "");
}

bool isBothWays(Property const& property) {
    return property.opposite != nullptr && property.opposite->opposite == &property;
}

/// An association with two ends is one line. It is drawn from what owns, else from the end that
/// refers to a single object.
bool isDrawnFrom(Property const& property) {
    if (!isBothWays(property)) {
        return true;
    }
    Property const& other = *property.opposite;
    const auto rank = [](Property const& end) {
        return std::make_tuple(!end.isComposite, end.upper != 1, end.owner->name, end.name);
    };
    return rank(property) < rank(other);
}

class Diagram {
public:
    /// `focus` limits the associations to those at one type; null for all.
    Diagram(Package const& here, Type const* focus) : here_(here), focus_(focus) {}

    /// Types that the package only refers to are drawn small, and values of other packages not at
    /// all: nearly every class has a text or a number.
    void add(Type const& type) {
        if (type.isClass() || type.package == &here_) {
            types_.insert(&type);
        }
    }

    std::string text() const {
        std::string dot = "digraph " + inQuotes(here_.name) +
                          " {\n"
                          "  graph [rankdir=BT, nodesep=0.35, ranksep=0.6]\n"
                          "  node [shape=plain, fontname=\"Helvetica\", fontsize=10]\n"
                          "  edge [fontname=\"Helvetica\", fontsize=9, color=\"#444444\"]\n\n";
        for (Type const* type : sorted()) {
            dot += node(*type);
        }
        dot += '\n';
        for (Type const* type : sorted()) {
            for (Type const* super : type->supers) {
                if (isDrawn(super)) {
                    dot += "  " + nodeOf(*type) + " -> " + nodeOf(*super) + " [arrowhead=empty]\n";
                }
            }
        }
        dot += '\n';
        for (Type const* type : sorted()) {
            for (Property const& property : type->properties) {
                if (isAtFocus(property) && isDrawn(property.type) && isDrawnFrom(property)) {
                    dot += edge(property);
                }
            }
        }
        return dot + "}\n";
    }

private:
    /// By name, so that the text doesn't depend on addresses.
    std::vector<Type const*> sorted() const {
        std::vector<Type const*> types(types_.begin(), types_.end());
        std::sort(types.begin(), types.end(), [](Type const* a, Type const* b) {
            return std::tie(a->package->name, a->name) < std::tie(b->package->name, b->name);
        });
        return types;
    }

    bool isDrawn(Type const* type) const { return types_.contains(type); }

    /// Whether a type is drawn with what it has.
    bool isWhole(Type const& type) const {
        return focus_ == nullptr ? type.package == &here_ : &type == focus_;
    }

    bool isAtFocus(Property const& property) const {
        return focus_ == nullptr ? isWhole(*property.owner)
                                 : property.owner == focus_ || property.type == focus_;
    }

    std::string node(Type const& type) const {
        std::string title = inLabel(nameIn(here_, type));
        title = "<b>" + (type.isAbstract ? "<i>" + title + "</i>" : title) + "</b>";
        if (!type.isClass()) {
            title = "<font point-size=\"8\">" + inLabel(kindOf(type)) + "</font><br/>" + title;
        }
        std::string rows;
        if (isWhole(type)) {
            for (Property const& property : type.properties) {
                rows += propertyRow(property);
            }
            for (std::string const& literal : type.literals) {
                rows += "<tr><td align=\"left\" colspan=\"3\">" + inLabel(literal) + "</td></tr>";
            }
        }
        char const* const color = type.package != &here_ ? "#eeeeee"
                                  : type.isClass()       ? "#dbe7f5"
                                                         : "#e3f1dc";
        std::string label = "<table border=\"0\" cellborder=\"1\" cellspacing=\"0\" "
                            "cellpadding=\"4\"><tr><td bgcolor=\"";
        label += color;
        label += "\">" + title + "</td></tr>";
        if (!rows.empty()) {
            label += "<tr><td><table border=\"0\" cellspacing=\"0\" cellpadding=\"1\">" + rows +
                     "</table></td></tr>";
        }
        return "  " + nodeOf(type) + " [label=<" + label + "</table>>]\n";
    }

    std::string propertyRow(Property const& property) const {
        const auto cell = [](std::string const& text) {
            return "<td align=\"left\">" + inLabel(text) + "</td>";
        };
        std::string type = property.type == nullptr ? "" : nameIn(here_, *property.type);
        if (!property.defaultValue.empty()) {
            type += " = " + property.defaultValue;
        }
        return "<tr>" + cell(signOf(property) + property.name + "  ") + cell(type + "  ") +
               cell(multiplicity(property)) + "</tr>";
    }

    /// An owner stands above what it owns, as a super does: lines go upwards.
    std::string edge(Property const& property) const {
        const std::string owner = nodeOf(*property.owner);
        const std::string type = nodeOf(*property.type);
        // The spaces keep labels apart that stand side by side.
        std::string label = "  " + property.name;
        if (property.isComposite) {
            return "  " + type + " -> " + owner +
                   " [arrowhead=diamond, label=" + inQuotes(label + "  ") + "]\n";
        }
        std::string style = "arrowhead=vee";
        if (isBothWays(property)) {
            style += ", arrowtail=vee, dir=both";
            label += " / " + property.opposite->name;
        }
        return "  " + owner + " -> " + type + " [" + style + ", label=" + inQuotes(label + "  ") +
               "]\n";
    }

    Package const& here_;
    Type const* focus_;
    std::set<Type const*> types_;
};

} // namespace

std::string printDot(Package const& package) {
    Diagram diagram(package, nullptr);
    for (Type const& type : package.types) {
        diagram.add(type);
        for (Type const* super : type.supers) {
            diagram.add(*super);
        }
        for (Property const& property : type.properties) {
            if (property.type != nullptr) {
                diagram.add(*property.type);
            }
        }
    }
    return diagram.text();
}

std::string printDot(Type const& type) {
    Diagram diagram(*type.package, &type);
    diagram.add(type);
    for (Type const* ancestor : ancestorsOf(type)) {
        diagram.add(*ancestor);
    }
    for (Type const* sub : type.subs) {
        diagram.add(*sub);
    }
    for (Property const& property : type.properties) {
        if (property.type != nullptr) {
            diagram.add(*property.type);
        }
    }
    for (Property const* user : type.users) {
        diagram.add(*user->owner);
    }
    return diagram.text();
}

} // namespace velum::describe
