#pragma once

#include "velum_types/export.h"

extern "C" {

/// The version of the library: four numbers joined by points.
extern VELUM_TYPES_EXPORT char const* const velum_types_version;

/// The date of the build: month as three letters, day, four-digit year.
extern VELUM_TYPES_EXPORT char const* const velum_types_build_date;
}
