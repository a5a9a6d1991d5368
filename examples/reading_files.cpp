// Reads AUTOSAR files into a model, looks at the report, and undoes it all.
#include <cstdlib>
#include <iostream>
#include <stop_token>
#include <string>
#include <velum_arxml/read.h>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;
namespace arxml = velum::arxml;

int main(int count, char** arguments) {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    model.setUndoEnabled(true);
    std::string const folder = count > 1 ? arguments[1] : "examples/data";

    std::stop_source stop; // a cancel button would call stop.request_stop()
    std::uint64_t bytes = 0;
    arxml::Options options;
    options.stop = stop.get_token();
    options.onProgress = [&bytes](std::uint64_t soFar) { bytes = soFar; };
    try {
        arxml::Report const report =
            arxml::read({folder + "/platform.arxml", folder + "/gearbox.arxml"}, model, options);
        std::cout << bytes << " bytes read; the model holds, among others,\n";
        for (arxml::ClassCount const& row : report.classes) {
            if (row.count > 9) {
                std::cout << "  " << row.count << " of the class " << row.metaclass << "\n";
            }
        }
        for (arxml::FileReport const& file : report.files) {
            std::cout << file.file.substr(folder.size() + 1) << ": " << file.elementCount
                      << " elements, " << file.skippedCount << " skipped, " << file.findings.size()
                      << " findings\n";
        }
        arxml::Finding const& first = report.files.front().findings.front();
        arxml::Place const& place = first.places.front();
        std::cout << place.position.line << ":" << place.position.column << ": " << place.path
                  << ": " << code(first.reason) << ": " << first.text << "\n";
    } catch (arxml::InputError const& error) {
        std::cerr << error.what() << "\n";
        return EXIT_FAILURE;
    }
    std::cout << "Undone: " << (model.undo() && model.getRootObjects().empty()) << "\n";
    model.destroy();
    return EXIT_SUCCESS;
}
