#include "velum_types/version.h"

extern "C" {

const char* const velum_types_version = VELUM_VERSION;
const char* const velum_types_build_date = VELUM_BUILD_DATE;
}
