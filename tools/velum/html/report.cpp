#include "html/report.h"

#include "check/rules.h"
#include "html/constants.h"
#include "html/page.h"
#include "html/section.h"
#include "html/tree.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace velum::html {

namespace {

std::string placeText(std::string const& file, arxml::Position position) {
    return file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
}

/// A finding at each of its places: an object shows what is said of it.
void addFindings(std::vector<Finding>& findings,
                 std::string const& file,
                 arxml::Finding const& finding) {
    std::string text = finding.text;
    if (finding.count > finding.places.size()) {
        text += " [" + std::to_string(finding.count) + " times, the first " +
                std::to_string(finding.places.size()) + " are listed]";
    }
    for (arxml::Place const& place : finding.places) {
        findings.push_back({finding.isFault ? "error" : "note",
                            std::string(code(finding.reason)),
                            place.path,
                            placeText(file, place.position),
                            text});
    }
}

/// A table of more rows is scrolled.
constexpr std::size_t mostCounts = 40;

/// How often something occurs, as a table.
void writeCounts(Out& out,
                 std::string_view caption,
                 std::string_view of,
                 std::map<std::string, std::size_t> const& counts) {
    if (counts.size() > mostCounts) {
        out << "<div class=scroll tabindex=0 role=group aria-label=\"" << caption << "\">";
    } else {
        out << "<div>";
    }
    out << "<table class=counts><caption>" << caption << "</caption><thead><tr><th scope=col>" << of
        << "<th scope=col>Objects<tbody>";
    for (auto const& [what, count] : counts) {
        out << "<tr><td>" << what << "<td>" << count;
    }
    out << "</table></div>";
}

void writeOverview(Out& out, Contents const& contents) {
    std::map<std::string, std::size_t> classes;
    std::map<std::string, std::size_t> packages;
    for (Entry const& entry : contents.entries()) {
        ++classes[std::string(entry.metaclass)];
        ++packages[entry.package.empty() ? "(no package)" : entry.package];
    }
    out << "<section id=overview><h2>Overview</h2><p>" << contents.entries().size() << " objects, "
        << contents.findings().size() << " findings.<div class=pair>";
    writeCounts(out, "By class", "Class", classes);
    writeCounts(out, "By package", "Package", packages);
    out << "</div></section>";
}

void writeChoice(Out& out,
                 std::string_view id,
                 std::string_view label,
                 std::set<std::string> const& choices) {
    out << "<label>" << label << " <select id=" << id << "><option value=\"\">all";
    for (std::string const& choice : choices) {
        out << "<option>" << choice;
    }
    out << "</select></label> ";
}

void writeFindingRow(Out& out, Contents const& contents, Finding const& finding) {
    out << "<tr data-s=" << finding.severity << " data-r=" << finding.rule
        << "><td><b class=" << finding.severity << ">" << finding.severity << "</b><td>"
        << finding.rule << "<td>";
    if (Entry const* const entry = contents.entryAt(finding.path)) {
        out << "<a href=#" << entry->anchor << ">" << finding.path << "</a>";
    } else {
        out << finding.path;
    }
    out << "<td>" << finding.text << "<td class=place>" << finding.place;
}

void writeFindings(Out& out, Contents const& contents) {
    if (contents.findings().empty()) {
        return;
    }
    std::set<std::string> rules;
    std::set<std::string> severities;
    for (Finding const& finding : contents.findings()) {
        rules.insert(finding.rule);
        severities.insert(finding.severity);
    }
    out << "<section id=findings><h2>Findings</h2><form id=filter hidden>";
    writeChoice(out, "severity", "Severity", severities);
    writeChoice(out, "rule", "Rule", rules);
    out << "<span role=status id=kept></span></form><div class=scroll tabindex=0 role=group "
           "aria-label=Findings><table id=list><caption>Of the checks and of the import</caption>"
           "<thead><tr><th scope=col>Severity<th scope=col>Rule<th scope=col>Object"
           "<th scope=col>Finding<th scope=col>Place<tbody>";
    for (Finding const& finding : contents.findings()) {
        writeFindingRow(out, contents, finding);
    }
    out << "</table></div></section>";
}

} // namespace

std::vector<Finding>
findingsOf(QOB::Model const& model, report::Input const& input, arxml::Sources const& sources) {
    std::vector<Finding> findings;
    for (check::Issue const& issue : check::checkModel(model, sources, input)) {
        findings.push_back({std::string(word(issue.rule->severity)),
                            std::string(issue.rule->id),
                            issue.path,
                            check::placeText(issue),
                            issue.text});
    }
    for (arxml::FileReport const& file : input.documents.files) {
        for (arxml::Finding const& finding : file.findings) {
            addFindings(findings, file.file, finding);
        }
    }
    return findings;
}

bool writeReport(QOB::Model const& model,
                 arxml::Sources const& sources,
                 std::vector<Finding> findings,
                 std::string const& said,
                 Sink sink) {
    Contents contents(model, std::move(findings));
    const Constants constants(model, sources);
    Sizes sizes;
    const Subject subject{contents, constants, sizes};
    Out out(std::move(sink));
    beginPage(out, "Data dictionary", said, objectHint);
    out << "<ul><li><a href=#overview>Overview</a>";
    if (!contents.findings().empty()) {
        out << "<li><a href=#findings>Findings</a>";
    }
    out << "</ul>";
    writeTree(out, contents.entries());
    beginMain(out);
    writeOverview(out, contents);
    writeFindings(out, contents);
    out << "<section id=objects><h2>Objects</h2>";
    std::string const* package = nullptr;
    for (Entry const& entry : contents.entries()) {
        if (package == nullptr || *package != entry.package) {
            package = &entry.package;
            writePackage(out, *package);
        }
        writeSection(out, subject, entry);
        if (!out.isGood()) {
            return false;
        }
    }
    out << "</section>";
    endPage(out);
    return out.isGood();
}

} // namespace velum::html
