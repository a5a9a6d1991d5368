#include "usage/writers.h"

#include <string_view>

namespace velum::usage {

namespace {

/// A text that man(1) prints as it is.
std::string plain(std::string_view text) {
    std::string escaped;
    bool isAtStart = true;
    for (char const c : text) {
        if (isAtStart && (c == '.' || c == '\'')) {
            escaped += "\\&";
        }
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
        isAtStart = c == '\n';
    }
    return escaped;
}

std::string bold(std::string_view text) {
    return "\\fB" + plain(text) + "\\fR";
}
std::string italic(std::string_view text) {
    return "\\fI" + plain(text) + "\\fR";
}

/// "-o, --output PATH", "FILE..."
std::string optionText(Option const& option) {
    std::string text;
    for (std::string const& name : option.names) {
        text += (text.empty() ? "" : ", ") + (option.isArgument ? italic(name) : bold(name));
    }
    if (!option.isArgument && !option.value.empty()) {
        text += " " + italic(option.value);
    }
    return text + (option.isMany ? "..." : "");
}

/// "velum find [OPTION]... FILE..."
std::string synopsisOf(Command const& program, Command const& command) {
    std::string text = bold(program.name + " " + command.name);
    if (command.options.size() > 1) {
        text += " [" + italic("OPTION") + "]...";
    }
    for (Option const& option : command.options) {
        if (option.isArgument) {
            text += option.isRequired ? " " + optionText(option) : " [" + optionText(option) + "]";
        }
    }
    return text;
}

std::string optionsOf(Command const& command) {
    std::string text;
    for (Option const& option : command.options) {
        text += ".TP\n" + optionText(option) + "\n" + plain(option.description) + "\n";
    }
    return text;
}

} // namespace

std::string manualPage(Command const& program, std::string const& version) {
    std::string text = ".TH VELUM 1 \"\" \"" + plain(version) + "\" \"User Commands\"\n";
    text += ".SH NAME\n" + plain(program.name) + " \\- " + plain(program.description) + "\n";
    text += ".SH SYNOPSIS\n";
    for (Command const& command : program.commands) {
        text += synopsisOf(program, command) + "\n.br\n";
    }
    text += ".SH OPTIONS\n" + optionsOf(program) + ".SH COMMANDS\n";
    for (Command const& command : program.commands) {
        text += ".SS " + bold(program.name + " " + command.name) + "\n";
        text += plain(command.description) + "\n" + optionsOf(command);
        if (command.footer != program.footer) { // otherwise it is the program's
            text += ".PP\n" + plain(command.footer) + "\n";
        }
    }
    if (!program.footer.empty()) {
        text += ".SH EXIT STATUS\n" + plain(program.footer) + "\n";
    }
    return text;
}

} // namespace velum::usage
