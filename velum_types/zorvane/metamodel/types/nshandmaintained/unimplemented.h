#pragma once

#include "qob/qob/assert.h"

/// Raises QOB::UnImplementedException: the operation is declared and has no code yet.
#define VELUM_FAIL_UNIMPLEMENTED(text)                                                             \
    (::QOB::LocalFailure(__FILE__, __LINE__) =                                                     \
         ::QOB::AsserterEx<::QOB::UnImplementedException>(text))
