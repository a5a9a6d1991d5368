#include "commands/show_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "find/references.h"
#include "html/single_picture.h"
#include "model/addresses.h"
#include "model/dictionary.h"
#include "model/input_files.h"
#include "model/objects.h"
#include "report/printers.h"
#include "show/object_printer.h"
#include "show/selection.h"

#include <algorithm>
#include <iostream>
#include <unordered_map>

namespace velum::commands {

namespace {

/// The paths of what refers to an object, by the object.
using Users = std::unordered_map<void const*, std::vector<std::string>>;

Users usersIn(QOB::Model const& model) {
    model::Addresses addresses;
    const find::References references(model, addresses);
    Users users;
    for (QOB::ClassObject const& user : references.objects()) {
        for (void const* target : references.usedBy(user)) {
            if (target != user.get() && user.hasExternalId()) {
                users[target].push_back(model::pathOf(user));
            }
        }
    }
    return users;
}

/// "  used by /A, /B and 12 more"; nothing if there is none.
std::string usersText(std::vector<std::string> const& users) {
    constexpr std::size_t most = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(users.size(), most); ++i) {
        text += (i == 0 ? "  used by " : ", ") + report::inOneLine(users[i]);
    }
    if (users.size() > most) {
        text += " and " + std::to_string(users.size() - most) + " more";
    }
    return text.empty() ? text : text + "\n";
}

/// What has no path was made for something that has one, and is told there.
std::string textsOf(std::vector<QOB::ClassObject> const& objects, Users const& users) {
    std::string text;
    for (QOB::ClassObject const& object : objects) {
        if (model::pathOf(object).empty()) {
            continue;
        }
        text += show::objectText(object);
        if (const auto known = users.find(object.get()); known != users.end()) {
            text += usersText(known->second);
        }
    }
    return text;
}

} // namespace

void ShowCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("show", "Print the types that files hold");
    command
        ->add_option(
            "FILE",
            arguments_,
            std::string(whatFilesAre) +
                ", then what to show: paths (/A/B), patterns (/A*/**/Speed*), names (Speed)")
        ->required();
    command
        ->add_option(
            "--svg", picture_, "Write the picture of the curve or map at this path, as SVG")
        ->type_name("PATH");
    failOn_.addTo(*command);
}

int ShowCommand::drawPicture() const {
    model::Dictionary dictionary;
    arxml::Sources sources;
    arxml::Options options;
    options.sources = &sources;
    const report::Input input = load(arguments_, dictionary, options);
    const std::vector<QOB::ClassObject> objects = show::select(dictionary.model(), picture_);
    html::SinglePicture picture;
    if (objects.size() == 1) {
        picture = html::pictureOf(objects.front(), html::Constants(dictionary.model(), sources));
    } else {
        picture.fault = objects.empty() ? "Nothing in the files has this path."
                                        : "Several objects have this path; name one of them.";
    }
    if (!picture.fault.empty()) {
        std::cerr << "velum: " << velum::report::inOneLine(picture_) << ": " << picture.fault
                  << "\n";
        return inputAtFault;
    }
    if (!print(picture.svg)) {
        return failed;
    }
    return tellFailure(input, failOn_.value()) ? inputAtFault : done;
}

int ShowCommand::run() const {
    if (!picture_.empty()) {
        return drawPicture();
    }
    std::vector<std::string> files = {arguments_.front()};
    std::vector<std::string> wanted;
    for (std::size_t i = 1; i < arguments_.size(); ++i) {
        (arguments_[i] != "/" && model::isInput(arguments_[i]) ? files : wanted)
            .push_back(arguments_[i]);
    }
    model::Dictionary dictionary;
    const report::Input input = load(files, dictionary);
    const Users users = usersIn(dictionary.model());
    bool isAllThere = true;
    std::string text;
    if (wanted.empty()) {
        text = textsOf(model::objectsAt(dictionary.model(), ""), users);
    }
    for (std::string const& one : wanted) {
        const std::vector<QOB::ClassObject> objects = show::select(dictionary.model(), one);
        if (objects.empty()) {
            std::cerr << "velum: Nothing in the files has the path (" << report::inOneLine(one)
                      << "); \"velum find\" lists the paths.\n";
            isAllThere = false;
        }
        text += textsOf(objects, users);
    }
    if (!print(text)) {
        return failed;
    }
    const bool isInputAtFault = tellFailure(input, failOn_.value());
    return isAllThere && !isInputAtFault ? done : inputAtFault;
}

} // namespace velum::commands
