#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"

#include "kindimpl.h"

namespace Zorvane::metamodel::types {

void CompuMethodCategoryLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

template class Kind<CompuMethodCategory, CompuMethodCategoryLiterals>;

} // namespace Zorvane::metamodel::types
