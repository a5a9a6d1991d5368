#include "html/section.h"

#include "html/type_pictures.h"
#include "model/objects.h"
#include "model/values.h"
#include "show/texts.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <velum_types/types.h>

namespace velum::html {

namespace {

constexpr std::size_t mostValues = 24;
/// Beyond this many links a list is closed at first.
constexpr std::size_t mostOpenLinks = 12;

/// Shown elsewhere in the section: in its heading, in its picture or in the tables of its parts.
bool isShownElsewhere(QOB::Attribute const& attribute, QOB::ClassObject const& object) {
    const std::string_view name = attribute.name.view();
    if (attribute.isWayToOwner || attribute.isOtherEnd || name == "Name" || name == "ExternalId") {
        return true;
    }
    constexpr std::string_view limits[] = {"minValue", "maxValue", "isMinOpen", "isMaxOpen"};
    const bool isLimit = std::find(std::begin(limits), std::end(limits), name) != std::end(limits);
    return isLimit && types::Real(object).isValid();
}

/// Whether a value says no more than that nothing was said.
bool isUsual(std::string_view name, std::string_view text) {
    return (name == "Visibility" && text == "public") ||
           (name == "IsApplication" && text == "false") || (name == "isSparse" && text == "false");
}

void writeValue(Out& out, Contents& contents, QOB::Object const& value) {
    const QOB::ClassObject object(value);
    if (object.get() != nullptr) {
        writeLink(out, contents, object);
    } else {
        out << model::textOf(value, contents.addresses());
    }
}

void writeValues(Out& out, Contents& contents, std::vector<QOB::Object> const& values) {
    for (std::size_t i = 0; i < std::min(values.size(), mostValues); ++i) {
        if (i > 0) {
            out << ", ";
        }
        writeValue(out, contents, values[i]);
    }
    if (values.size() > mostValues) {
        out << " and " << values.size() - mostValues << " more";
    }
}

std::string unitOfObject(QOB::ClassObject const& object) {
    if (const types::Unit unit(object); unit.isValid()) {
        return show::unitText(unit);
    }
    if (const types::CompuMethod method(object); method.isValid()) {
        return method.hasUnit() ? show::unitText(method.getUnit()) : std::string();
    }
    return unitOf(types::PrimitiveType(object));
}

void writeLinks(Out& out, Contents& contents, std::vector<std::size_t> const& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i > 0) {
            out << ", ";
        }
        writeLink(out, contents.entries()[places[i]]);
    }
}

/// What the properties show of primitive types stands deep in the parts of the others.
void writeUses(Out& out, Contents& contents, Entry const& entry) {
    const bool isPlain = types::PrimitiveType(entry.object).isValid() ||
                         types::CompuMethod(entry.object).isValid() ||
                         types::Unit(entry.object).isValid();
    if (!isPlain && !entry.uses.empty()) {
        out << "<p class=by>Uses ";
        writeLinks(out, contents, entry.uses);
    }
}

void writeUsers(Out& out, Contents& contents, Entry const& entry) {
    if (entry.usedBy.size() > mostOpenLinks) {
        out << "<details class=by><summary>Used by " << entry.usedBy.size()
            << " objects</summary><p>";
        writeLinks(out, contents, entry.usedBy);
        out << "</details>";
    } else if (!entry.usedBy.empty()) {
        out << "<p class=by>Used by ";
        writeLinks(out, contents, entry.usedBy);
    }
}

void writeFindings(Out& out, Entry const& entry) {
    if (entry.findings.empty()) {
        return;
    }
    out << "<ul class=findings>";
    for (Finding const* const finding : entry.findings) {
        writeFinding(out, *finding);
    }
    out << "</ul>";
}

/// One line about the object, and the number line and bits of a type.
void writeSummary(Out& out, QOB::ClassObject const& object) {
    if (const foundation::ValueType type(object); type.isValid()) {
        out << "<p>" << show::typeText(type);
        if (const auto bits = bitsOf(type); bits && types::Real(type).isValid()) {
            out << " ";
            drawBits(out, *bits);
        } else if (bits) {
            out << ", " << *bits << " bits";
        }
    }
    if (const types::Real type(object); type.isValid()) {
        if (const Limits limits = limitsOf(type); limits.areThere()) {
            drawLimits(out, limits);
        }
    }
}

} // namespace

void writeLink(Out& out, Entry const& entry) {
    out << "<a href=#" << entry.anchor << ">" << entry.name << "</a>";
}

void writeLink(Out& out, Contents& contents, QOB::ClassObject const& object) {
    Entry const* const entry = contents.entryOf(object);
    if (entry == nullptr) {
        out << model::nameOf(object);
        return;
    }
    out << "<a href=#" << entry->anchor << ">";
    const std::string name = model::nameOf(object);
    if (entry->object.get() == object.get() || name.empty()) {
        out << entry->name;
    } else {
        out << entry->name << " " << name;
    }
    out << "</a>";
}

void writeFinding(Out& out, Finding const& finding) {
    out << "<li class=" << finding.severity << "><b>" << finding.severity << "</b> " << finding.rule
        << ": " << finding.text;
    if (!finding.place.empty()) {
        out << " <span class=place>" << finding.place << "</span>";
    }
}

void writeProperties(Out& out, Contents& contents, QOB::ClassObject const& object) {
    bool isBegun = false;
    for (QOB::Attribute const& attribute : contents.addresses().attributes().of(object)) {
        if (isShownElsewhere(attribute, object) || attribute.ownsObjects) {
            continue;
        }
        const std::vector<QOB::Object> values = attribute.valuesOf(object);
        if (values.empty()) {
            continue;
        }
        const bool isText = !attribute.isMultiValued &&
                            model::kindOf(values.front()) != model::ValueKind::reference;
        if (isText &&
            (model::kindOf(values.front()) == model::ValueKind::nothing ||
             isUsual(attribute.name.view(), model::textOf(values.front(), contents.addresses())))) {
            continue;
        }
        if (!isBegun) {
            out << "<dl>";
            isBegun = true;
        }
        out << "<dt>" << attribute.name.view() << "<dd>";
        writeValues(out, contents, values);
    }
    if (isBegun) {
        out << "</dl>";
    }
}

void writeSection(Out& out, Subject const& subject, Entry const& entry) {
    const std::string unit = unitOfObject(entry.object);
    out << "<section id=" << entry.anchor << " data-c=" << entry.metaclass;
    if (!unit.empty()) {
        out << " data-u=\"" << unit << "\"";
    }
    out << "><h4><a href=#" << entry.anchor << ">" << entry.name << "</a> <small>"
        << entry.metaclass << "</small></h4>";
    writeFindings(out, entry);
    writeSummary(out, entry.object);
    writeParts(out, subject, entry.object);
    writeProperties(out, subject.contents, entry.object);
    writeUses(out, subject.contents, entry);
    writeUsers(out, subject.contents, entry);
    out << "</section>\n";
}

} // namespace velum::html
