#include "updating/renaming.h"

namespace velum::arxml {

std::optional<std::string> renamed(std::string_view path, Renamings const& renamings) {
    for (auto const& [from, to] : renamings) {
        if (path.substr(0, from.size()) == from &&
            (path.size() == from.size() || path[from.size()] == '/')) {
            return to + std::string(path.substr(from.size()));
        }
    }
    return std::nullopt;
}

void Bases::addFrom(std::string_view text) {
    SourceText::Visitor visitor;
    visitor.onBase = [this](std::string const& package, SourceBase const& base) {
        add(package, base);
    };
    SourceText(text).visit(visitor);
}

std::string Bases::resolve(SourceRef const& reference) const {
    if (reference.text.substr(0, 1) == "/") {
        return std::string(reference.text);
    }
    const std::string folder = folderOf(reference);
    return folder.empty() ? std::string() : folder + '/' + std::string(reference.text);
}

// A base may be relative to another one; a longer chain is a circle.
std::string Bases::folderOf(SourceRef const& reference, int depth) const {
    constexpr int longestChain = 32;
    for (std::string package(reference.package);; package.resize(package.rfind('/'))) {
        const auto found = byPackage_.find(package);
        if (found != byPackage_.end()) {
            for (SourceBase const& base : found->second) {
                if (reference.base.empty() ? !base.isDefault : base.label != reference.base) {
                    continue;
                }
                if (base.isThisPackage || base.target.substr(0, 1) == "/") {
                    return base.isThisPackage ? package : base.target;
                }
                const std::string outer =
                    depth < longestChain
                        ? folderOf({base.target, 0, base.targetBase, package}, depth + 1)
                        : std::string();
                return outer.empty() ? outer : outer + '/' + base.target;
            }
        }
        if (package.rfind('/') == std::string::npos) {
            return {};
        }
    }
}

std::vector<TextEdit>
renamingEdits(std::string_view text, Renamings const& renamings, Bases const& bases) {
    std::vector<TextEdit> edits;
    SourceText::Visitor visitor;
    visitor.onNamed =
        [&](std::string const& path, std::size_t, std::size_t begin, std::size_t end) {
            for (auto const& [from, to] : renamings) {
                if (path == from) {
                    edits.push_back({begin, end, escaped(to.substr(to.rfind('/') + 1))});
                }
            }
        };
    visitor.onReference = [&](SourceRef const& reference) {
        const std::optional<std::string> now = renamed(bases.resolve(reference), renamings);
        if (!now) {
            return;
        }
        const bool isRelative = reference.text.substr(0, 1) != "/";
        const std::string folder = isRelative ? bases.folderOf(reference) + '/' : std::string();
        if (now->compare(0, folder.size(), folder) == 0) {
            edits.push_back({reference.begin,
                             reference.begin + reference.text.size(),
                             escaped(std::string_view(*now).substr(folder.size()))});
        }
    };
    SourceText(text).visit(visitor);
    return edits;
}

} // namespace velum::arxml
