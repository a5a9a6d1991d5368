#include "findings/file_report.h"

#include <algorithm>
#include <tuple>

namespace velum::arxml {

namespace {

Place placeAt(Spot const& spot, PathTree const& paths) {
    return {spot.position, paths.text(spot.path)};
}

std::vector<ConsumedElements> consumedIn(Tally const& tally, Names const& names) {
    std::vector<ConsumedElements> list;
    for (NameId name = 0; name < tally.endOfNames(); ++name) {
        if (const std::uint64_t count = tally.consumed(name); count > 0) {
            list.push_back({std::string(names.text(name)), count});
        }
    }
    std::sort(list.begin(), list.end(), [](auto const& a, auto const& b) {
        return a.element < b.element;
    });
    return list;
}

std::vector<SkippedElements>
skippedIn(Tally const& tally, Names const& names, PathTree const& paths) {
    std::vector<SkippedElements> list;
    list.reserve(tally.skips().size());
    for (auto const& [key, skip] : tally.skips()) {
        list.push_back({std::string(names.text(key.first)),
                        key.second,
                        skip.count,
                        placeAt(skip.first, paths)});
    }
    std::sort(list.begin(), list.end(), [](auto const& a, auto const& b) {
        return std::tie(a.element, a.reason) < std::tie(b.element, b.reason);
    });
    return list;
}

Finding findingOf(FileLog::Entry const& entry, PathTree const& paths) {
    Finding finding{entry.reason, entry.isFault, entry.text, entry.target, entry.count, {}};
    finding.places.reserve(entry.spots.size());
    for (Spot const& spot : entry.spots) {
        finding.places.push_back(placeAt(spot, paths));
    }
    return finding;
}

} // namespace

FileReport reportOf(FileLog const& log, Names const& names, PathTree const& paths) {
    FileReport report;
    report.file = log.file;
    report.consumed = consumedIn(log.tally, names);
    report.skipped = skippedIn(log.tally, names, paths);
    report.omissions.reserve(log.omissions.size());
    for (FileLog::Omitted const& omitted : log.omissions) {
        report.omissions.push_back({placeAt(omitted.spot, paths),
                                    std::string(names.text(omitted.element)),
                                    omitted.reason,
                                    omitted.text});
    }
    report.findings.reserve(log.entries().size());
    for (FileLog::Entry const& entry : log.entries()) {
        report.findings.push_back(findingOf(entry, paths));
    }
    report.elementCount = log.tally.met();
    report.consumedCount = log.tally.consumed();
    report.skippedCount = log.tally.skipped();
    return report;
}

} // namespace velum::arxml
