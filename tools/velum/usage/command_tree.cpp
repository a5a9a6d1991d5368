#include "usage/command_tree.h"

#include <CLI/CLI.hpp>

namespace velum::usage {

namespace {

/// What a check for "one of these" adds to the type: "TEXT:{json,csv}".
std::vector<std::string> choicesIn(std::string const& type) {
    std::size_t const open = type.find('{');
    std::size_t const close = type.rfind('}');
    if (open == std::string::npos || close == std::string::npos) {
        return {};
    }
    return CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
}

Option optionOf(CLI::Option const& declared) {
    Option option;
    option.isArgument = declared.get_positional();
    if (option.isArgument) {
        option.names.push_back(declared.get_name(true));
    }
    for (std::string const& name : declared.get_snames()) {
        option.names.push_back("-" + name);
    }
    for (std::string const& name : declared.get_lnames()) {
        option.names.push_back("--" + name);
    }
    std::string const type = declared.get_type_name();
    option.choices = choicesIn(type);
    bool const isFlag = declared.get_items_expected_max() == 0;
    option.value = isFlag ? "" : CLI::detail::split(type, ':').front();
    option.description = declared.get_description();
    option.isMany = declared.get_items_expected_max() > 1;
    option.isRequired = declared.get_required();
    return option;
}

} // namespace

Command commandTree(CLI::App const& app) {
    Command command{.name = app.get_name(),
                    .description = app.get_description(),
                    .footer = app.get_footer(),
                    .options = {},
                    .commands = {}};
    for (CLI::Option const* const option : app.get_options()) {
        command.options.push_back(optionOf(*option));
    }
    for (CLI::App const* const each : app.get_subcommands([](CLI::App const*) { return true; })) {
        command.commands.push_back(commandTree(*each));
    }
    return command;
}

} // namespace velum::usage
