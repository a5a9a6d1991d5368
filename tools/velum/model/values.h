#pragma once

#include <nlohmann/json_fwd.hpp>

#include <qob/qob.h>
#include <string>

namespace velum::model {

class Addresses;

/// What a boxed value is to a program that knows no classes.
enum class ValueKind { nothing, text, number, integer, truth, reference, other };

ValueKind kindOf(QOB::Object const& value);

/// A value as a person reads it: an object by its address, a number in its shortest exact form,
/// everything else by its own text, without quotes.
std::string textOf(QOB::Object const& value, Addresses& addresses);

/// The same for a program: numbers and truths as such, an object by its address. Infinite numbers
/// are the texts "INF" and "-INF", what is no number "NaN"; null stands for nothing.
nlohmann::ordered_json jsonOf(QOB::Object const& value, Addresses& addresses);

/// An object with all that it holds and contains: "class", "path" (its address) and "properties",
/// by name. Contained objects stand in place; a reference is an object with the member "ref".
nlohmann::ordered_json objectJson(QOB::ClassObject const& object, Addresses& addresses);

} // namespace velum::model
