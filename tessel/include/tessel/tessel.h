#pragma once

/// The whole interface of the type-info library.
#include "tessel/any.h"
#include "tessel/bytearray.h"
#include "tessel/encoding.h"
#include "tessel/enumtype.h"
#include "tessel/errorholder.h"
#include "tessel/export.h"
#include "tessel/moduleobject.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"
