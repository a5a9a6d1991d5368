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

/// Values of an object with commas between them.
void writeValues(Out& out,
                 Contents& contents,
                 QOB::ClassObject const& owner,
                 std::vector<QOB::Object> const& values) {
    for (std::size_t i = 0; i < std::min(values.size(), mostValues); ++i) {
        if (i > 0) {
            out << ", ";
        }
        const QOB::ClassObject object(values[i]);
        if (object.get() == nullptr) {
            out << model::textOf(values[i], contents.addresses());
            continue;
        }
        Entry const* const entry = contents.entryOf(object);
        const foundation::ValueType part(object);
        if (entry != nullptr && entry->object.get() == owner.get() && part.isValid() &&
            object.get() != owner.get() && model::nameOf(object).empty()) {
            out << show::typeText(part); // a type without a name has no section
            continue;
        }
        writeLink(out, contents, object);
    }
    if (values.size() > mostValues) {
        out << " and " << values.size() - mostValues << " more";
    }
}

/// Whether a property has nothing to say.
bool isSilent(QOB::Attribute const& attribute,
              std::vector<QOB::Object> const& values,
              Contents& contents) {
    if (values.empty()) {
        return true;
    }
    const model::ValueKind kind = model::kindOf(values.front());
    if (attribute.isMultiValued || kind == model::ValueKind::reference) {
        return false;
    }
    return kind == model::ValueKind::nothing ||
           isUsual(attribute.name.view(), model::textOf(values.front(), contents.addresses()));
}

/// The properties that no picture or table shows.
void writeProperties(Out& out, Contents& contents, QOB::ClassObject const& object) {
    bool isBegun = false;
    for (QOB::Attribute const& attribute : contents.addresses().attributes().of(object)) {
        if (isShownElsewhere(attribute, object) || attribute.ownsObjects) {
            continue;
        }
        const std::vector<QOB::Object> values = attribute.valuesOf(object);
        if (isSilent(attribute, values, contents)) {
            continue;
        }
        if (!isBegun) {
            out << "<dl>";
            isBegun = true;
        }
        out << "<dt>" << attribute.name.view() << "<dd>";
        writeValues(out, contents, object, values);
    }
    if (isBegun) {
        out << "</dl>";
    }
}

void writeLinks(Out& out, Contents const& contents, std::vector<std::size_t> const& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i > 0) {
            out << ", ";
        }
        writeLink(out, contents.entries()[places[i]]);
    }
}

/// Links to sections, behind a word: in sight if they are few.
void writeBy(Out& out,
             Contents const& contents,
             std::string_view word,
             std::vector<std::size_t> const& places) {
    if (places.size() > mostOpenLinks) {
        out << "<details class=by><summary>" << word << " " << places.size()
            << " objects</summary><p>";
        writeLinks(out, contents, places);
        out << "</details>";
    } else if (!places.empty()) {
        out << "<p class=by>" << word << " ";
        writeLinks(out, contents, places);
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
void writeSummary(Out& out, Sizes& sizes, QOB::ClassObject const& object) {
    if (const foundation::ValueType type(object); type.isValid()) {
        out << "<p>" << show::typeText(type);
        if (const auto bits = sizes.of(type); bits && types::Real(type).isValid()) {
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
    Entry const* const entry = contents.linkTo(object);
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

void beginSection(Out& out, Entry const& entry) {
    out << "<section id=" << entry.anchor << " data-c=" << entry.metaclass;
    if (const std::string unit = unitOfObject(entry.object); !unit.empty()) {
        out << " data-u=\"" << unit << "\"";
    }
    out << "><h4><a href=#" << entry.anchor << ">" << entry.name << "</a> <small>"
        << entry.metaclass;
}

void writeSection(Out& out, Subject const& subject, Entry const& entry) {
    beginSection(out, entry);
    out << "</small></h4>";
    writeFindings(out, entry);
    writeSummary(out, subject.sizes, entry.object);
    writeParts(out, subject, entry.object);
    writeProperties(out, subject.contents, entry.object);
    const std::vector<std::size_t> linked = subject.contents.takeLinked();
    std::vector<std::size_t> others; // without a link so far
    for (const std::size_t used : entry.uses) {
        if (std::find(linked.begin(), linked.end(), used) == linked.end()) {
            others.push_back(used);
        }
    }
    writeBy(out, subject.contents, "Uses", others);
    writeBy(out, subject.contents, "Used by", entry.usedBy);
    out << "</section>\n";
}

} // namespace velum::html
