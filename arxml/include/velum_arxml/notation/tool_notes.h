#pragma once

#include <optional>
#include <qob/qob.h>
#include <string>

/// What files say and no property has a place for, but a reader needs: kept on the objects as notes
/// of a tool, under these keys.
namespace velum::arxml::tool_note {

inline constexpr char displayName[] = "DisplayName"; ///< Of a unit, with raised and lowered parts.
inline constexpr char minValue[] = "minValue"; ///< A bound that a double can't hold, as written.
inline constexpr char maxValue[] = "maxValue";
inline constexpr char missingType[] = "missingType"; ///< What a reference that leads nowhere names.
inline constexpr char missingReference[] =
    "missingReference"; ///< The same of a table's or axis' values.

inline void set(QOB::ClassObject const& object, char const* key, std::string const& text) {
    object.setExternalToolInfo(QOB::ExternalToolInfo(QOB::String(key), QOB::String(text)));
}

/// None if there is no such note.
inline std::optional<std::string> get(QOB::ClassObject const& object, char const* key) {
    if (!object.hasExternalToolInfos()) {
        return std::nullopt;
    }
    const QOB::ExternalToolInfo note = object.getExternalToolInfo(QOB::String(key));
    return note.isValid() && note.getValue().isValid() ? std::optional(std::string(note.getValue()))
                                                       : std::nullopt;
}

} // namespace velum::arxml::tool_note
