#include "commands/classes_command.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "describe/class_tree.h"
#include "describe/metamodel.h"
#include "describe/words.h"

#include <string>

namespace velum::commands {

namespace {

/// "- name multiplicity", and the type if that is a class of the two packages.
std::string propertyText(describe::Metamodel const& metamodel, describe::Property const& property) {
    std::string text = "- " + property.name + " " + multiplicity(property);
    describe::Type const* const type = property.type;
    if (type != nullptr && type->isClass() &&
        (type->package == &metamodel.types() || type->package == &metamodel.foundation())) {
        text += " " + type->name;
    }
    return text + "\n";
}

} // namespace

void ClassesCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("classes", "Print the tree of metaclasses");
    command->add_flag("--properties", withProperties_, "Print the properties of each class too");
}

int ClassesCommand::run() const {
    const describe::Metamodel metamodel;
    std::string text;
    for (auto const& [type, depth] :
         describe::classTree({&metamodel.foundation(), &metamodel.types()})) {
        text.append(2 * depth, ' ');
        text += type->name;
        text += type->isAbstract ? " (abstract)\n" : "\n";
        if (withProperties_) {
            for (describe::Property const& property : type->properties) {
                text.append(2 * (depth + 1), ' ');
                text += propertyText(metamodel, property);
            }
        }
    }
    return commands::print(text) ? done : failed;
}

} // namespace velum::commands
