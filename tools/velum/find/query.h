#pragma once

#include <optional>
#include <qob/qob.h>
#include <string>
#include <vector>

namespace velum::model {
struct Metaclass;
} // namespace velum::model

namespace velum::find {

/// A property with a value that an object is to have.
struct PropertyFilter {
    std::string property;
    std::optional<std::string> value; ///< A pattern; none if any value will do.
};

/// What is looked for: an object has to fit all that is set. Patterns are those of model/glob.h;
/// objects are named by a pattern for their path if it has a slash, else for their name.
struct Query {
    std::optional<std::string> name;
    model::Metaclass const* metaclass = nullptr; ///< This class or one below it.
    std::optional<std::string> unit; ///< Of the object or of its method; also by its symbol.
    std::optional<std::string> method;
    std::vector<PropertyFilter> properties{};
    std::optional<std::string> usedBy; ///< Something by this name, or in it, refers to the object.
    std::optional<std::string> uses;   ///< The object refers to something by this name, or in it.
    bool isUnused = false;             ///< Nothing refers to the object, and nothing contains it.
    bool withParts = false;            ///< Objects without a path too.
};

/// Something found.
struct Found {
    std::string path;
    std::string metaclass;
    std::string name;
};

/// What a query comes to.
struct Result {
    std::vector<Found> found;         ///< By path.
    std::vector<std::string> unknown; ///< Names in `usedBy` and `uses` that no object has.
};

/// Looks through all objects of a model.
Result find(QOB::Model const& model, Query const& query);

} // namespace velum::find
