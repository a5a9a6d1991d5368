#include "commands/class_names.h"

#include "describe/metamodel.h"
#include "describe/words.h"
#include "model/metaclasses.h"
#include "report/printers.h"

#include <algorithm>
#include <iostream>

namespace velum::commands {

namespace {

bool isProperty(std::string const& name) {
    auto const& classes = model::metaclasses();
    return std::any_of(classes.begin(), classes.end(), [&](model::Metaclass const& each) {
        auto const properties = model::propertiesOf(each);
        return std::any_of(
            properties.begin(),
            properties.end(),
            [&](QOB::MetaPropertyDescription const* property) { return name == property->name; });
    });
}

} // namespace

bool findClass(std::string const& name, model::Metaclass const*& found) {
    found = name.empty() ? nullptr : model::findMetaclass(name);
    if (found != nullptr || name.empty()) {
        return true;
    }
    std::cerr << "velum: There is no class (" << report::inOneLine(name)
              << "); \"velum classes\" lists them.";
    if (auto const like = describe::Metamodel().namesLike(name); !like.empty()) {
        std::cerr << " Like it: " << describe::joined(like) << ".";
    }
    std::cerr << "\n";
    return false;
}

bool areProperties(std::vector<std::string> const& names) {
    for (std::string const& name : names) {
        if (!isProperty(name)) {
            std::cerr << "velum: No class has a property (" << report::inOneLine(name)
                      << "); \"velum classes --properties\" lists them.\n";
            return false;
        }
    }
    return true;
}

} // namespace velum::commands
