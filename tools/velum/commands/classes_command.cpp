#include "commands/classes_command.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "model/metaclasses.h"

#include <algorithm>
#include <string>

namespace velum::commands {

namespace {

using model::Metaclass;

/// Prints one class and those that derive from it. A class with two supers stands below the first.
class TreePrinter {
public:
    explicit TreePrinter(bool withProperties) : withProperties_(withProperties) {}

    void print(const Metaclass& metaclass, std::size_t depth) {
        text_.append(2 * depth, ' ');
        text_ += metaclass.name;
        text_ += metaclass.isAbstract ? " (abstract)\n" : "\n";
        if (withProperties_) {
            printProperties(metaclass, depth + 1);
        }
        for (const Metaclass& other : model::metaclasses()) {
            const auto supers = model::supersOf(other);
            if (!supers.empty() && supers.front() == &metaclass) {
                print(other, depth + 1);
            }
        }
    }

    const std::string& text() const { return text_; }

private:
    void printProperties(const Metaclass& metaclass, std::size_t depth) {
        for (const QOB::MetaPropertyDescription* property : model::propertiesOf(metaclass)) {
            text_.append(2 * depth, ' ');
            text_ += "- ";
            text_ += property->name;
            text_ += ' ';
            text_ += std::to_string(property->lower);
            text_ += "..";
            text_ += property->upper == QOB::MetaPropertyDescription::Unbounded
                         ? "*"
                         : std::to_string(property->upper);
            if (const Metaclass* const type =
                    model::findMetaclass(property->package()->classes[property->typeIndex])) {
                text_ += ' ';
                text_ += type->name;
            }
            text_ += '\n';
        }
    }

    bool withProperties_;
    std::string text_;
};

} // namespace

void ClassesCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("classes", "Print the tree of metaclasses");
    command->add_flag("--properties", withProperties_, "Print the properties of each class too");
}

int ClassesCommand::run() const {
    TreePrinter printer(withProperties_);
    for (const Metaclass& metaclass : model::metaclasses()) {
        if (model::supersOf(metaclass).empty()) {
            printer.print(metaclass, 0);
        }
    }
    return commands::print(printer.text()) ? done : failed;
}

} // namespace velum::commands
