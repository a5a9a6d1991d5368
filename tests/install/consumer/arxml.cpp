// A program of a user that reads and writes files: only what the installed package offers.
#include <cstdlib>
#include <iostream>
#include <string>
#include <velum_arxml/read.h>
#include <velum_arxml/update.h>
#include <velum_arxml/write.h>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;
namespace arxml = velum::arxml;

int main(int count, char** arguments) {
    types::initialize();
    const QOB::Model model = types::NSInterface::FactoryIntf::createNewModel();
    arxml::Report const report = arxml::read({arguments + 1, arguments + count}, model);
    if (!report.isKept() || report.classes.empty() || model.getRootObjects().empty()) {
        std::cerr << "No objects are made of the files.\n";
        return EXIT_FAILURE;
    }
    arxml::WriteReport written;
    std::string const text = arxml::toText(model, written);
    if (written.objects == 0 || text.find("</AUTOSAR>") == std::string::npos ||
        !arxml::rename({arguments[1]}, "/No/Path", "Name").isRefused()) {
        std::cerr << "The objects are not written.\n";
        return EXIT_FAILURE;
    }
    try {
        arxml::read({"no such file.arxml"}, model);
    } catch (arxml::InputError const& error) {
        std::cout << error.what() << "\n";
        model.destroy();
        return EXIT_SUCCESS;
    }
    std::cerr << "A missing file is not reported.\n";
    return EXIT_FAILURE;
}
