#pragma once

/// Sequences as users of a model meet them: the typed handles, and the untyped one.
#include "qob/kernel/containers/sequence/sequence.h"
