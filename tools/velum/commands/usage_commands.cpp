#include "commands/usage_commands.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "model/metaclasses.h"
#include "usage/writers.h"

#include <set>
#include <string>
#include <velum_types/version.h>

namespace velum::commands {

namespace {

usage::Vocabulary vocabulary() {
    usage::Vocabulary words;
    std::set<std::string> properties;
    for (model::Metaclass const& metaclass : model::metaclasses()) {
        words.classes.push_back(metaclass.name);
        for (QOB::MetaPropertyDescription const* const property : model::propertiesOf(metaclass)) {
            properties.insert(property->name);
        }
    }
    words.properties.assign(properties.begin(), properties.end());
    return words;
}

} // namespace

void CompletionCommand::addTo(CLI::App& app) {
    app_ = &app;
    app.add_subcommand("completion", "Print the completion script for bash");
}

int CompletionCommand::run() const {
    return print(usage::bashCompletion(usage::commandTree(*app_), vocabulary())) ? done : failed;
}

void ManualCommand::addTo(CLI::App& app) {
    app_ = &app;
    app.add_subcommand("manual", "Print the manual page, for man(1)");
}

int ManualCommand::run() const {
    std::string const version = std::string("velum ") + velum_types_version;
    return print(usage::manualPage(usage::commandTree(*app_), version)) ? done : failed;
}

} // namespace velum::commands
