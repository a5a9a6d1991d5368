#include "commands/find_command.h"

#include "commands/class_names.h"
#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "find/query.h"
#include "model/dictionary.h"
#include "report/printers.h"

#include <nlohmann/json.hpp>

#include <iostream>

namespace velum::commands {

namespace {

std::string asText(std::vector<find::Found> const& found) {
    std::string text;
    for (find::Found const& each : found) {
        text += report::inOneLine(each.path) + "\n";
    }
    return text;
}

std::string asJson(std::vector<find::Found> const& found) {
    using Json = nlohmann::ordered_json;
    Json list = Json::array();
    for (find::Found const& each : found) {
        list.push_back({{"path", each.path}, {"class", each.metaclass}, {"name", each.name}});
    }
    Json const all = {{"found", std::move(list)}};
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// "NAME" or "NAME=VALUE".
find::PropertyFilter filterOf(std::string const& text) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos) {
        return {text, std::nullopt};
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

} // namespace

void FindCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "find", "Print the paths of the objects that fit all conditions, one a line");
    command->add_option("FILE", files_, whatFilesAre)->required();
    command->add_option("--name", name_, "By a pattern for the name, or for the path if it has a /")
        ->type_name("GLOB");
    command->add_option("--class", class_, "Of this class or one below it")->type_name("CLASS");
    command
        ->add_option(
            "--unit", unit_, "With this unit (name, path or symbol), or a method that has it")
        ->type_name("UNIT");
    command->add_option("--method", method_, "With this computation method (name or path)")
        ->type_name("METHOD");
    command
        ->add_option("--property",
                     properties_,
                     "With a value of this property, or with this one; may be given repeatedly")
        ->allow_extra_args(false)
        ->type_name("PROPERTY[=GLOB]");
    command->add_option("--used-by", usedBy_, "To which this object refers, or what it contains")
        ->type_name("PATH");
    command->add_option("--uses", uses_, "Which refer to this object, or to what it contains")
        ->type_name("PATH");
    command->add_flag("--unused", isUnused_, "To which nothing refers");
    command->add_flag(
        "--parts", withParts_, "Also what has no path of its own, as literals, axes and cells");
    command->add_flag("--json", isJson_, "Print path, class and name as JSON");
}

int FindCommand::run() const {
    find::Query query{.name = name_,
                      .unit = unit_,
                      .method = method_,
                      .usedBy = usedBy_,
                      .uses = uses_,
                      .isUnused = isUnused_,
                      .withParts = withParts_};
    std::vector<std::string> names;
    for (std::string const& text : properties_) {
        query.properties.push_back(filterOf(text));
        names.push_back(query.properties.back().property);
    }
    if (!areProperties(names) || !findClass(class_, query.metaclass)) {
        return wrongUsage;
    }
    model::Dictionary dictionary;
    tellFailure(load(files_, dictionary));
    find::Result const result = find::find(dictionary.model(), query);
    for (std::string const& name : result.unknown) {
        std::cerr << "velum: No object in the files has this name or path ("
                  << report::inOneLine(name) << ").\n";
    }
    if (!print(isJson_ ? asJson(result.found) : asText(result.found))) {
        return failed;
    }
    return result.found.empty() ? inputAtFault : done;
}

} // namespace velum::commands
