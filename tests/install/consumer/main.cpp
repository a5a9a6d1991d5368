// A program of a user: only what the installed package offers.
#include "velum_types/types.h"

#include <cstdlib>
#include <iostream>
#include <string>

namespace types = Zorvane::metamodel::types;

namespace {

/// What is exported beside the classes can be named, and is there.
bool hasTables() {
    namespace meta = types::NSImplementation;
    return types::get_types_PackageIntrospectiveMethods() == &types::sPackageIntrospectiveMethods &&
           QOB::get_QOB_PackageIntrospectiveMethods() != nullptr &&
           Zorvane::metamodel::foundation::get_foundation_PackageIntrospectiveMethods() !=
               nullptr &&
           meta::staticGetTypesMetaPackage() != nullptr && meta::staticGetUnitMeta() != nullptr &&
           types::hash_value(types::DataSizeUnitKind(7)) == 7;
}

/// Failures that are compiled here name the library's headers, and no folder of this machine.
template <class Action>
bool failsAt(std::string const& header, Action const& action) {
    try {
        action();
    } catch (QOB::Exception const& failure) {
        std::string const text = failure.what();
        if (text.find(" at " + header + ":") != std::string::npos) {
            return true;
        }
        std::cerr << text << "\n";
    }
    return false;
}

bool nameHeaders() {
    std::string const sequences = "qob/export/include/qob/kernel/containers/sequence/";
    std::string const handles = "include/velum_types/zorvane/metamodel/types/zorvanemetamodeltypes";
    QOB::Sequence<QOB::Integer> const numbers = QOB::MakeSequence<QOB::Integer>();
    return failsAt(handles + "integer.h", [] { types::Integer().isSigned(); }) &&
           failsAt(handles + "integer.h", [] { types::Integer().setOnlyContainerQOB({}); }) &&
           failsAt("qob/export/include/qob/qob/model.h", [] { QOB::Model().undo(); }) &&
           failsAt(sequences + "sequenceref.h", [] { QOB::Sequence<types::Unit>().size(); }) &&
           failsAt(sequences + "sequenceintf.h", [&] { numbers.at(0); });
}

} // namespace

int main() {
    types::initialize();
    if (!hasTables() || !nameHeaders()) {
        std::cerr << "A name of the library, or the place of a failure, isn't what it should be.\n";
        return EXIT_FAILURE;
    }
    const QOB::Model model = types::NSInterface::FactoryIntf::createNewModel();
    const types::Integer integer = types::Integer::createWithId(model, 1);
    integer.setIsSigned(false);
    if (!integer.isValid() || integer.isSigned() != QOB::Boolean(false)) {
        std::cerr << "The object does not hold what was written to it.\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
