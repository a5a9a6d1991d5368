#include "html/tree.h"

#include <algorithm>
#include <string_view>

namespace velum::html {

namespace {

/// Beyond this depth the rest of a path is one step, so that a page stays a page.
constexpr std::size_t deepest = 24;

std::vector<std::string_view> stepsOf(std::string_view package) {
    std::vector<std::string_view> steps;
    while (!package.empty()) {
        package.remove_prefix(package.front() == '/' ? 1 : 0);
        const std::size_t end = steps.size() + 1 == deepest
                                    ? package.size()
                                    : std::min(package.find('/'), package.size());
        steps.push_back(package.substr(0, end));
        package.remove_prefix(end);
    }
    return steps;
}

std::size_t countOfSame(std::vector<std::string_view> const& a,
                        std::vector<std::string_view> const& b) {
    std::size_t count = 0;
    while (count < std::min(a.size(), b.size()) && a[count] == b[count]) {
        ++count;
    }
    return count;
}

} // namespace

void writeTree(Out& out, std::vector<Entry> const& entries) {
    out << "<ul class=tree>";
    std::vector<std::string_view> open;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i == 0 || entries[i].package != entries[i - 1].package) {
            const std::vector<std::string_view> steps = stepsOf(entries[i].package);
            const std::size_t same = countOfSame(open, steps);
            for (std::size_t level = same; level < open.size(); ++level) {
                out << "</ul></details>";
            }
            for (std::size_t level = same; level < steps.size(); ++level) {
                out << "<li><details><summary>" << steps[level] << "</summary><ul>";
            }
            open = steps;
        }
        out << "<li><a href=#" << entries[i].anchor << ">" << entries[i].name << "</a>\n";
    }
    for (std::size_t level = 0; level < open.size(); ++level) {
        out << "</ul></details>";
    }
    out << "</ul>";
}

} // namespace velum::html
