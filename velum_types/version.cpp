#include "velum_types/version.h"

extern "C" {

char const* const velum_types_version = VELUM_VERSION;
char const* const velum_types_build_date = VELUM_BUILD_DATE;
}
