#include "commands/arxml_output.h"

#include "report/printers.h"

#include <iostream>
#include <velum_arxml/write.h>

namespace velum::commands {

void ArxmlOutput::addTo(CLI::App& command) {
    command
        .add_option("--layout", layout_, "Of arxml: one file, or one for each package in a folder")
        ->check(CLI::IsMember({"file", "packages"}));
    command
        .add_option("--schema", schema_, "Of arxml: the schema that the files name (AUTOSAR_00051)")
        ->type_name("NAME");
}

void ArxmlOutput::write(QOB::Model const& model, std::string const& target, bool isAsRead) const {
    arxml::WriteOptions options;
    options.isReadBack = !isAsRead;
    if (!schema_.empty()) {
        options.schema = schema_;
    }
    options.layout = layout_ == "packages" ? arxml::Layout::filePerPackage : arxml::Layout::oneFile;
    for (arxml::WriteFinding const& finding : arxml::write(model, target, options).findings) {
        std::cerr << "velum: " << code(finding.remark) << ": "
                  << report::inOneLine(finding.path + ": " + finding.text) << "\n";
    }
}

} // namespace velum::commands
