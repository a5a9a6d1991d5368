#include "commands/describe_command.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "describe/metamodel.h"
#include "describe/printers.h"
#include "describe/words.h"
#include "html/metamodel_page.h"
#include "report/printers.h"

#include <iostream>

namespace velum::commands {

namespace {

/// What a page is written by.
template <class Described>
std::string pageOf(Described const& described) {
    std::string page;
    html::writeMetamodel(described, [&page](std::string_view piece) {
        page += piece;
        return true;
    });
    return page;
}

std::string describeAll(describe::Metamodel const& metamodel, std::string const& format) {
    if (format == "dot") {
        return printDot(metamodel.types());
    }
    if (format == "html") {
        return pageOf(metamodel);
    }
    return format == "md" ? printMarkdown(metamodel) : printText(metamodel.types());
}

std::string describeOne(describe::Type const& type, std::string const& format) {
    if (format == "dot") {
        return printDot(type);
    }
    if (format == "html") {
        return pageOf(type);
    }
    return format == "md" ? printMarkdown(type) : printText(type);
}

} // namespace

void DescribeCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "describe", "Print what the metamodel says of its classes, data types and properties");
    command->add_option(
        "CLASS", class_, "Only this class or data type, with or without its package");
    command
        ->add_option("--format",
                     format_,
                     "text, dot (a diagram for Graphviz), md (Markdown) or html (a page)")
        ->check(CLI::IsMember({"text", "dot", "md", "html"}));
}

int DescribeCommand::run() const {
    const describe::Metamodel metamodel;
    if (!class_) {
        return print(describeAll(metamodel, format_)) ? done : failed;
    }
    describe::Type const* const type = metamodel.find(*class_);
    if (type == nullptr) {
        std::cerr << "velum: There is no class or data type (" << report::inOneLine(*class_)
                  << ").";
        if (const auto names = metamodel.namesLike(*class_); !names.empty()) {
            std::cerr << " Like it: " << describe::joined(names) << ".";
        }
        std::cerr << "\n";
        return wrongUsage;
    }
    return print(describeOne(*type, format_)) ? done : failed;
}

} // namespace velum::commands
