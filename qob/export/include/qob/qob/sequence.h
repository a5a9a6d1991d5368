#pragma once

/// The sequences that users of a model work with: the typed handles and the untyped one.
#include "qob/kernel/containers/sequence/sequence.h"
