#include "commands/fail_on_option.h"

#include <stdexcept>

namespace velum::commands {

void FailOnOption::addTo(CLI::App& command) {
    const auto check = [](std::string const& list) {
        try {
            const report::FailOn known(list);
            return std::string();
        } catch (std::invalid_argument const& error) {
            return std::string(error.what());
        }
    };
    command
        .add_option_function<std::string>(
            "--fail-on",
            [this](std::string const& list) {
                list_ = list;
                isGiven_ = true;
            },
            "Exit with 1 for findings of these reasons (\"dangling,symbolic\" or \"none\"); "
            "without "
            "it for what makes an object wrong or incomplete")
        ->type_name("REASON,...")
        ->check(CLI::Validator(check, "{" + report::FailOn::knownReasons(",") + "}"));
}

} // namespace velum::commands
