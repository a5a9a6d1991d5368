// A program of a user: only what the installed package offers.
#include "velum_types/types.h"

#include <cstdlib>
#include <iostream>

int main() {
    namespace types = Zorvane::metamodel::types;
    types::initialize();
    const QOB::Model model = types::NSInterface::FactoryIntf::createNewModel();
    const types::Integer integer = types::Integer::createWithId(model, 1);
    integer.setIsSigned(false);
    if (!integer.isValid() || integer.isSigned() != QOB::Boolean(false)) {
        std::cerr << "The object does not hold what was written to it.\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
