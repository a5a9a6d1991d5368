#pragma once

#include "qob/qob/model.h"
#include "qob/qob/object.h"

namespace QOB {

/// How a factory creates objects of one class for callers that know only its name.
struct NamedCreator {
    char const* name;
    char const* dottedName;
    Object (*create)(Model const& model, Integer const& id);
};

/// A data type whose values a factory creates for callers that know only its name.
struct NamedValue {
    char const* name;
    char const* dottedName;
};

/// The `create` of a class: an object with default values and the given id.
template <class Handle>
Object createAsObject(Model const& model, Integer const& id) {
    return Object(Handle::createWithId(model, id));
}

} // namespace QOB
