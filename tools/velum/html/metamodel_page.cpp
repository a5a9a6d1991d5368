#include "html/metamodel_page.h"

#include "describe/class_tree.h"
#include "describe/words.h"
#include "html/class_diagram.h"
#include "html/page.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace velum::html {

namespace {

using describe::Package;
using describe::Property;
using describe::Type;

std::string idOf(Type const& type) {
    return std::string(shortName(*type.package)) + "." + type.name;
}

/// A page about some types; what lies on it is linked to.
class MetamodelPage {
public:
    MetamodelPage(std::vector<Type const*> types, Sink sink)
        : types_(std::move(types)), out_(std::move(sink)) {}

    bool write(std::vector<Package const*> const& packages) {
        beginPage(out_,
                  "Metamodel",
                  "Classes, data types and properties, as the meta-registry has them",
                  "name, class:enumeration");
        out_ << "<ul class=tree>";
        for (Package const* const package : packages) {
            out_ << "<li><details open><summary>" << package->name << "</summary><ul>";
            for (Type const* const type : types_) {
                if (type->package == package) {
                    out_ << "<li>";
                    writeLink(*package, *type);
                }
            }
            out_ << "</ul></details>";
        }
        out_ << "</ul>";
        beginMain(out_);
        if (types_.size() > 1) {
            writeOverview(packages);
        }
        out_ << "<section id=objects><h2>Types</h2>";
        for (Package const* const package : packages) {
            out_ << "<h3>" << package->name << "</h3>";
            for (Type const* const type : types_) {
                if (type->package == package) {
                    writeType(*type);
                }
            }
        }
        out_ << "</section>";
        endPage(out_);
        return out_.isGood();
    }

private:
    void writeOverview(std::vector<Package const*> const& packages) {
        out_ << "<section id=overview><h2>Overview</h2>";
        for (Package const* const package : packages) {
            out_ << "<p>" << package->name << ": " << sumOf(*package) << ".";
        }
        out_ << "<p>Inheritance; abstract classes are in italics.<ul>";
        std::size_t depth = 0;
        for (describe::TreeEntry const& entry : describe::classTree(packages)) {
            for (; depth < entry.depth; ++depth) {
                out_ << "<ul>";
            }
            for (; depth > entry.depth; --depth) {
                out_ << "</ul>";
            }
            out_ << "<li>";
            writeLink(*packages.front(), *entry.type);
        }
        for (; depth > 0; --depth) {
            out_ << "</ul>";
        }
        out_ << "</ul></section>";
    }

    void writeLink(Package const& here, Type const& type) {
        const std::string name = nameIn(here, type);
        if (std::find(types_.begin(), types_.end(), &type) == types_.end()) {
            out_ << name;
            return;
        }
        out_ << "<a href=#" << idOf(type) << ">";
        if (type.isAbstract) {
            out_ << "<i>" << name << "</i>";
        } else {
            out_ << name;
        }
        out_ << "</a>";
    }

    template <class Types>
    void writeLinks(std::string_view label, Type const& type, Types const& others) {
        if (others.empty()) {
            return;
        }
        out_ << "<dt>" << label << "<dd>";
        bool isFirst = true;
        for (Type const* const other : others) {
            if (!isFirst) {
                out_ << ", ";
            }
            isFirst = false;
            writeLink(*type.package, *other);
        }
    }

    void writeType(Type const& type) {
        out_ << "<section id=" << idOf(type) << " data-c=\"" << kindOf(type) << "\"><h4><a href=#"
             << idOf(type) << ">" << type.name << "</a> <small>" << kindOf(type) << "</small></h4>";
        for (std::string const& comment : type.comments) {
            writeText(comment);
        }
        if (type.isClass()) {
            drawClass(out_, type);
        }
        out_ << "<dl>";
        writeLinks("Supers", type, type.supers);
        writeLinks("Subclasses", type, type.subs);
        if (!type.literals.empty()) {
            out_ << "<dt>Literals<dd>" << describe::joined(type.literals);
        }
        if (!type.tags.empty()) {
            out_ << "<dt>Tags<dd>" << describe::listOf(type.tags, describe::textOf);
        }
        out_ << "</dl>";
        writeProperties(type);
        writeInherited(type);
        out_ << "</section>\n";
    }

    void writeText(std::string_view text) {
        for (std::string_view const line : describe::linesOf(text)) {
            if (!line.empty()) {
                out_ << "<p>" << line;
            }
        }
    }

    void writeProperties(Type const& type) {
        if (type.properties.empty()) {
            return;
        }
        out_ << "<div class=scroll tabindex=0 role=group aria-label=\"Properties of " << type.name
             << "\"><table><caption>Properties</caption><thead><tr><th scope=col>Name<th scope=col>"
                "Type<th scope=col>Multiplicity<th scope=col>Default<th scope=col>Is"
                "<th scope=col>About<tbody>";
        for (Property const& property : type.properties) {
            writeProperty(type, property);
        }
        out_ << "</table></div>";
    }

    void writeProperty(Type const& type, Property const& property) {
        Package const& here = *type.package;
        out_ << "<tr id=" << idOf(type) << "." << property.name << "><th scope=row>"
             << property.name << "<td>";
        if (property.type != nullptr) {
            writeLink(here, *property.type);
        }
        out_ << "<td>" << multiplicity(property) << "<td>" << property.defaultValue << "<td>"
             << describe::joined(traits(property)) << "<td>";
        writeText(property.documentation);
        const auto nameHere = [&here](Property const* other) { return nameIn(here, *other); };
        if (property.opposite != nullptr) {
            out_ << "<p>opposite " << nameHere(property.opposite);
        }
        if (!property.redefined.empty()) {
            out_ << "<p>redefines " << describe::listOf(property.redefined, nameHere);
        }
        if (!property.subsetted.empty()) {
            out_ << "<p>subsets " << describe::listOf(property.subsetted, nameHere);
        }
    }

    void writeInherited(Type const& type) {
        bool isBegun = false;
        for (Type const* const ancestor : ancestorsOf(type)) {
            const std::vector<Property const*> properties = inheritedFrom(*ancestor, type);
            if (properties.empty()) {
                continue;
            }
            if (!isBegun) {
                out_ << "<dl>";
                isBegun = true;
            }
            out_ << "<dt>from ";
            writeLink(*type.package, *ancestor);
            out_ << "<dd>"
                 << describe::listOf(properties, [](Property const* each) { return each->name; });
        }
        if (isBegun) {
            out_ << "</dl>";
        }
    }

    std::vector<Type const*> types_;
    Out out_;
};

} // namespace

bool writeMetamodel(describe::Metamodel const& metamodel, Sink sink) {
    std::vector<Type const*> types;
    const std::vector<Package const*> packages = {
        &metamodel.types(), &metamodel.foundation(), &metamodel.kernel()};
    for (Package const* const package : packages) {
        for (auto const& some : {describe::classesOf(*package), describe::dataTypesOf(*package)}) {
            types.insert(types.end(), some.begin(), some.end());
        }
    }
    return MetamodelPage(std::move(types), std::move(sink)).write(packages);
}

bool writeMetamodel(describe::Type const& type, Sink sink) {
    return MetamodelPage({&type}, std::move(sink)).write({type.package});
}

} // namespace velum::html
