#include "describe/class_tree.h"

#include "describe/words.h"

#include <algorithm>
#include <map>
#include <utility>

namespace velum::describe {

namespace {

class TreeBuilder {
public:
    explicit TreeBuilder(std::vector<Package const*> const& packages) {
        std::vector<Type const*> classes;
        for (Package const* package : packages) {
            const auto some = classesOf(*package);
            classes.insert(classes.end(), some.begin(), some.end());
        }
        std::sort(classes.begin(), classes.end(), [](Type const* a, Type const* b) {
            return a->name < b->name;
        });
        const auto isThere = [&packages](Type const* type) {
            return std::find(packages.begin(), packages.end(), type->package) != packages.end();
        };
        for (Type const* type : classes) {
            const auto super = std::find_if(type->supers.begin(), type->supers.end(), isThere);
            below_[super == type->supers.end() ? nullptr : *super].push_back(type);
        }
    }

    void add(Type const* super, std::size_t depth) {
        for (Type const* type : below_[super]) {
            tree.push_back({type, depth});
            add(type, depth + 1);
        }
    }

    std::vector<TreeEntry> tree;

private:
    std::map<Type const*, std::vector<Type const*>> below_; ///< Of null: the roots.
};

} // namespace

std::vector<TreeEntry> classTree(std::vector<Package const*> const& packages) {
    TreeBuilder builder(packages);
    builder.add(nullptr, 0);
    return std::move(builder.tree);
}

} // namespace velum::describe
