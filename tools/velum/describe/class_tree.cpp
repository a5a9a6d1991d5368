#include "describe/class_tree.h"

#include "describe/words.h"

#include <algorithm>
#include <map>
#include <utility>

namespace velum::describe {

namespace {

class TreeBuilder {
public:
    explicit TreeBuilder(const std::vector<const Package*>& packages) {
        std::vector<const Type*> classes;
        for (const Package* package : packages) {
            const auto some = classesOf(*package);
            classes.insert(classes.end(), some.begin(), some.end());
        }
        std::sort(classes.begin(), classes.end(), [](const Type* a, const Type* b) {
            return a->name < b->name;
        });
        const auto isThere = [&packages](const Type* type) {
            return std::find(packages.begin(), packages.end(), type->package) != packages.end();
        };
        for (const Type* type : classes) {
            const auto super = std::find_if(type->supers.begin(), type->supers.end(), isThere);
            below_[super == type->supers.end() ? nullptr : *super].push_back(type);
        }
    }

    void add(const Type* super, std::size_t depth) {
        for (const Type* type : below_[super]) {
            tree.push_back({type, depth});
            add(type, depth + 1);
        }
    }

    std::vector<TreeEntry> tree;

private:
    std::map<const Type*, std::vector<const Type*>> below_; ///< Of null: the roots.
};

} // namespace

std::vector<TreeEntry> classTree(const std::vector<const Package*>& packages) {
    TreeBuilder builder(packages);
    builder.add(nullptr, 0);
    return std::move(builder.tree);
}

} // namespace velum::describe
