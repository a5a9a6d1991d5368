#include "usage/writers.h"

#include <algorithm>
#include <string_view>

namespace velum::usage {

namespace {

constexpr std::string_view head = R"(# bash completion for velum, made by "velum completion".

_velum_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

# The last one of "a,b,c".
_velum_list() {
    local before=''
    if [[ $current == *,* ]]; then
        before=${current%,*},
    fi
    mapfile -t COMPREPLY < <(compgen -P "$before" -W "$1" -- "${current##*,}")
}

_velum_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(
        compgen -d -- "$current"
        compgen -f -X '!*.arxml' -- "$current"
        compgen -f -X '!*.arxml.gz' -- "$current"
        compgen -f -X '!*.velum' -- "$current"
    )
}

_velum_paths() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_velum() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} command='' i
    # "--format=csv" comes as three words.
    if [[ $current == = ]]; then
        current=''
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} != -* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    COMPREPLY=()
)";

std::string joined(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// The call that completes a value.
std::string valueCall(Option const& option) {
    if (!option.choices.empty()) {
        return (option.value.ends_with(",...") ? "_velum_list '" : "_velum_words '") +
               joined(option.choices) + "'";
    }
    std::string const& value = option.isArgument ? option.names.front() : option.value;
    if (value == "CLASS") {
        return "_velum_words \"$classes\"";
    }
    if (value.starts_with("PROPERTY")) {
        return "_velum_words \"$properties\"";
    }
    if (value != "FILE" && option.value != "FILE") {
        return "true";
    }
    bool const isDocument = option.isArgument || option.isMany;
    return isDocument ? "_velum_files" : "_velum_paths";
}

std::string namesOf(Command const& command) {
    std::vector<std::string> names;
    for (Option const& option : command.options) {
        if (!option.isArgument) {
            names.insert(names.end(), option.names.begin(), option.names.end());
        }
    }
    return joined(names);
}

/// What follows an option that takes a value.
std::string valueCases(Command const& command) {
    std::string cases;
    for (Option const& option : command.options) {
        if (option.isArgument || option.value.empty()) {
            continue;
        }
        std::string patterns;
        for (std::string const& name : option.names) {
            patterns += (patterns.empty() ? "'" : " | '") + command.name + " " + name + "'";
        }
        cases += "    " + patterns + ")\n        " + valueCall(option) + "\n        return\n" +
                 "        ;;\n";
    }
    return cases;
}

std::string argumentCase(Command const& command) {
    auto const argument = std::find_if(command.options.begin(),
                                       command.options.end(),
                                       [](Option const& option) { return option.isArgument; });
    std::string const call = argument == command.options.end() ? "true" : valueCall(*argument);
    return "    " + command.name + ")\n        if [[ $current == -* ]]; then\n" +
           "            _velum_words '" + namesOf(command) + "'\n        else\n            " +
           call + "\n        fi\n        ;;\n";
}

} // namespace

std::string bashCompletion(Command const& program, Vocabulary const& words) {
    std::string commandNames;
    std::string values;
    std::string arguments;
    for (Command const& command : program.commands) {
        commandNames += command.name + " ";
        values += valueCases(command);
        arguments += argumentCase(command);
    }
    std::string text(head);
    text += "    local classes='" + joined(words.classes) + "'\n";
    text += "    local properties='" + joined(words.properties) + "'\n";
    text += "    case \"$command $option\" in\n" + values + "    esac\n";
    text += "    case $command in\n    '')\n        _velum_words '" + commandNames +
            namesOf(program) + "'\n        ;;\n" + arguments + "    esac\n}\n\n";
    return text + "complete -F _velum velum\n";
}

} // namespace velum::usage
