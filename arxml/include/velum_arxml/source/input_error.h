#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <velum_arxml/source/export.h>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// A file as a whole cannot be read: nothing of it may be kept.
///
/// `what()` is the one line for the user: file, place (if there is one) and cause.
class VELUM_ARXML_EXPORT InputError : public std::runtime_error {
public:
    InputError(std::string const& file, std::string const& cause)
        : std::runtime_error(file + ": " + cause) {}

    InputError(std::string const& file, Position place, std::string const& cause)
        : std::runtime_error(file + ":" + std::to_string(place.line) + ":" +
                             std::to_string(place.column) + ": " + cause) {}
};

} // namespace velum::arxml
