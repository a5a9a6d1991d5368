#include "html/diff_report.h"

#include "diff/comparison.h"
#include "html/constants.h"
#include "html/contents.h"
#include "html/page.h"
#include "html/section.h"
#include "html/table_section.h"
#include "html/tree.h"
#include "html/type_pictures.h"
#include "model/objects.h"
#include "model/values.h"
#include "show/texts.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velum::html {

namespace {

constexpr std::size_t mostListed = 12;
constexpr std::size_t mostChanges = 200;

/// What is reported of one object.
struct Report {
    std::string_view kind; ///< "added", "removed", "renamed", "changed".
    std::string metaclass{};
    std::string to{}; ///< The new path of what was renamed.
    std::vector<diff::Change const*> changes{};
    QOB::ClassObject older{};
    QOB::ClassObject newer{};
};

/// One release with what its objects are called.
class Side {
public:
    explicit Side(Release const& release)
        : constants_(release.model, release.sources), release_(release) {}

    QOB::ClassObject at(std::string const& path) {
        if (objects_.empty()) {
            for (QOB::ClassObject const& object : model::freeObjects(release_.model)) {
                objects_.emplace(addresses.of(object), object);
            }
        }
        const auto found = objects_.find(path);
        return found == objects_.end() ? QOB::ClassObject() : found->second;
    }

    Lookup lookupAt(QOB::ClassObject const& object) const {
        const types::ConstantSpecification constant(object);
        return lookupOf(types::LookupTableSpecification(constant.getConstantValue()),
                        constants_.tableOf(constant));
    }

    model::Addresses addresses;

private:
    Constants constants_;
    Release const& release_;
    std::unordered_map<std::string, QOB::ClassObject> objects_;
};

class DiffReport {
public:
    DiffReport(Release const& before, Release const& after, Sink sink)
        : before_(before), after_(after), out_(std::move(sink)) {
        diff::Sides const sides{before_.addresses, after_.addresses};
        comparison_ = diff::compareModels(before.model, after.model, sides, {});
        for (diff::Single const& each : comparison_.added) {
            add(each.path, {"added", each.metaclass});
        }
        for (diff::Single const& each : comparison_.removed) {
            add(each.path, {"removed", each.metaclass});
        }
        for (diff::Renaming const& each : comparison_.renamed) {
            add(each.from, {"renamed", each.metaclass, each.to});
        }
        for (diff::Change const& change : comparison_.changed) {
            add(change.path, {"changed"}).changes.push_back(&change);
        }
        placeAll();
    }

    bool write(std::string const& said) {
        beginPage(out_, "Changes of a data dictionary", said, objectHint);
        out_ << "<ul><li><a href=#overview>Overview</a></ul>";
        writeTree(out_, entries_);
        beginMain(out_);
        writeOverview();
        out_ << "<section id=objects><h2>Objects</h2>";
        std::string const* package = nullptr;
        for (Entry const& entry : entries_) {
            if (package == nullptr || *package != entry.package) {
                package = &entry.package;
                writePackage(out_, *package);
            }
            writeObject(entry, reports_.at(entry.path));
            if (!out_.isGood()) {
                return false;
            }
        }
        out_ << "</section>";
        endPage(out_);
        return out_.isGood();
    }

private:
    Report& add(std::string const& path, Report report) {
        return reports_.try_emplace(path, std::move(report)).first->second;
    }

    /// An entry for each object that is reported, by package and name.
    void placeAll() {
        for (auto& [path, report] : reports_) {
            report.older = before_.at(path);
            report.newer = after_.at(report.to.empty() ? path : report.to);
            const bool wasThere = report.older.get() != nullptr;
            const bool isThere = report.newer.get() != nullptr;
            auto [package, name] = placed(wasThere ? report.older : report.newer, path);
            const QOB::ClassObject object = isThere ? report.newer : report.older;
            entries_.push_back(
                {object,
                 path,
                 std::move(package),
                 std::move(name),
                 wasThere || isThere ? model::classOf(object) : std::string_view(report.metaclass),
                 anchorOf(path)});
        }
        std::stable_sort(entries_.begin(), entries_.end(), isBefore);
    }

    void writeOverview() {
        std::map<std::string_view, std::size_t> counts;
        for (auto const& [path, report] : reports_) {
            ++counts[report.kind];
        }
        out_ << "<section id=overview><h2>Overview</h2><table class=counts><caption>Objects"
                "</caption><thead><tr><th scope=col>What<th scope=col>Objects<tbody>";
        for (auto const& [kind, count] : counts) {
            out_ << "<tr><td>" << kind << "<td>" << count;
        }
        out_ << "<tr><td>the same<td>" << comparison_.sameCount << "</table></section>";
    }

    void writeObject(Entry const& entry, Report const& report) {
        QOB::ClassObject const& older = report.older;
        QOB::ClassObject const& newer = report.newer;
        beginSection(out_, entry);
        out_ << ", <b class=" << report.kind << ">" << report.kind << "</b></small></h4>";
        if (!report.to.empty()) {
            out_ << "<p>Now " << report.to << ", with the same content.";
        }
        if (const foundation::ValueType type(entry.object); type.isValid()) {
            writeTypes(older, newer);
        }
        if (older.get() != nullptr && newer.get() != nullptr) {
            writeLimits(types::Real(older), types::Real(newer));
            writeTables(older, newer);
        }
        writeChanges(report);
        out_ << "</section>\n";
    }

    void writeTypes(QOB::ClassObject const& older, QOB::ClassObject const& newer) {
        const foundation::ValueType before(older);
        const foundation::ValueType after(newer);
        const std::string was = before.isValid() ? show::typeText(before) : std::string();
        const std::string is = after.isValid() ? show::typeText(after) : std::string();
        if (was == is || was.empty() || is.empty()) {
            out_ << "<p>" << (is.empty() ? was : is);
        } else {
            out_ << "<p><del>" << was << "</del><br><ins>" << is << "</ins>";
        }
    }

    void writeLimits(types::Real const& older, types::Real const& newer) {
        if (!older.isValid() || !newer.isValid()) {
            return;
        }
        const Limits before = limitsOf(older);
        const Limits after = limitsOf(newer);
        if (before != after && (before.areThere() || after.areThere())) {
            out_ << "<p>Limits before (above) " << before.text() << ", and after " << after.text();
            drawLimits(out_, after, &before);
        }
    }

    void writeTables(QOB::ClassObject const& older, QOB::ClassObject const& newer) {
        const types::ConstantSpecification before(older);
        const types::ConstantSpecification after(newer);
        if (!before.isValid() || !after.isValid() ||
            !types::LookupTableSpecification(before.getConstantValue()).isValid() ||
            !types::LookupTableSpecification(after.getConstantValue()).isValid()) {
            return;
        }
        const Lookup was = before_.lookupAt(older);
        writeTable(out_, after_.lookupAt(newer), &was);
    }

    void writeChanges(Report const& report) {
        if (report.changes.empty()) {
            return;
        }
        out_ << "<div class=scroll tabindex=0 role=group aria-label=Differences><table><caption>"
             << report.changes.size()
             << (report.changes.size() == 1 ? " difference" : " differences")
             << "</caption><thead><tr><th scope=col>Part<th scope=col>Property<th scope=col>Before"
                "<th scope=col>After<tbody>";
        for (std::size_t i = 0; i < std::min(report.changes.size(), mostChanges); ++i) {
            writeChange(*report.changes[i]);
        }
        out_ << "</table></div>";
        if (report.changes.size() > mostChanges) {
            out_ << "<p class=note>" << report.changes.size() - mostChanges
                 << " more; &quot;velum diff&quot; lists all.";
        }
    }

    void writeChange(diff::Change const& change) {
        using diff::ChangeKind;
        out_ << "<tr><td>" << change.part << "<td>" << change.property;
        if (change.kind == ChangeKind::order) {
            out_ << " (order)";
        } else if (change.kind == ChangeKind::added) {
            out_ << "added";
        } else if (change.kind == ChangeKind::removed) {
            out_ << "removed";
        }
        const bool isOfParts = change.kind == ChangeKind::added ||
                               change.kind == ChangeKind::removed ||
                               change.kind == ChangeKind::order;
        out_ << "<td class=old>";
        writeValues(change.oldValues, before_.addresses, isOfParts);
        out_ << "<td class=new>";
        writeValues(change.newValues, after_.addresses, isOfParts);
    }

    void writeValues(std::vector<QOB::Object> const& values,
                     model::Addresses& addresses,
                     bool isOfParts) {
        for (std::size_t i = 0; i < std::min(values.size(), mostListed); ++i) {
            if (i > 0) {
                out_ << ", ";
            }
            const QOB::ClassObject object(values[i]);
            const std::string name =
                isOfParts && object.get() != nullptr ? model::nameOf(object) : std::string();
            out_ << (name.empty() ? model::textOf(values[i], addresses) : name);
        }
        if (values.size() > mostListed) {
            out_ << " and " << values.size() - mostListed << " more";
        }
    }

    Side before_;
    Side after_;
    Out out_;
    diff::Comparison comparison_;
    std::map<std::string, Report> reports_; ///< By path.
    std::vector<Entry> entries_;
};

} // namespace

bool writeDiffReport(Release const& before, Release const& after, Sink sink) {
    return DiffReport(before, after, std::move(sink))
        .write("Before: " + before.said + ". After: " + after.said + ".");
}

} // namespace velum::html
