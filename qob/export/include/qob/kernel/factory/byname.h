#pragma once

#include "qob/qob/model.h"
#include "qob/qob/object.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

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

/// What the factory of one package makes, by short and by dotted name.
class NamedTypes {
public:
    QOB_EXPORT NamedTypes(std::span<NamedCreator const> classes,
                          std::span<NamedValue const> values);

    /// A new object in the factory's model under the id, or a new value, made of the text if there
    /// is one; objects take none. Any library's value is known by its dotted name. Empty for a name
    /// that is not known. Raises QOB::Exception, before an object is made, if the deviant can't be
    /// written.
    QOB_EXPORT Object create(NSInterface::ClassObjectIntf const* factory,
                             Deviant deviant,
                             std::string const& type,
                             Integer const& id,
                             String const* text) const;

private:
    /// Objects of a class, or values of a data type.
    struct Made {
        NamedCreator const* ofClass = nullptr;
        NamedValue const* ofDataType = nullptr;
    };

    std::map<std::string_view, Made, std::less<>> byName_;
};

} // namespace QOB
