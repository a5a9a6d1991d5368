#pragma once

#include "qob/qob/model.h"
#include "qob/qob/object.h"

namespace QOB {

/// How a factory makes the objects of one class for who knows only its name.
struct NamedCreator {
    char const* name;
    char const* dottedName;
    Object (*create)(Model const& model, Integer const& id);
};

/// A data type whose values a factory makes for who knows only its name.
struct NamedValue {
    char const* name;
    char const* dottedName;
};

/// The `create` of a class: an object in the defaults, under the given id.
template <class Handle>
Object createAsObject(Model const& model, Integer const& id) {
    return Object(Handle::createWithId(model, id));
}

} // namespace QOB
