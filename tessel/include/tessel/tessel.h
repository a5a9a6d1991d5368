#pragma once

/// Everything that the type-info library offers.
#include "tessel/any.h"
#include "tessel/bytearray.h"
#include "tessel/encoding.h"
#include "tessel/enumtype.h"
#include "tessel/errorholder.h"
#include "tessel/export.h"
#include "tessel/moduleobject.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"
