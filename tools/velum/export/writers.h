#pragma once

#include <functional>
#include <qob/qob.h>
#include <string>
#include <string_view>

namespace velum::exporting {

/// Takes the next piece of a document; false if it can't, which ends the writing.
using Sink = std::function<bool(std::string_view piece)>;

/// Writes all objects of a model with all their properties as one JSON document, in the order of
/// their paths, each that nothing contains in a line of its own; docs/export.schema.json describes
/// it. False if the sink fails.
bool writeJson(QOB::Model const& model, Sink const& sink);

/// Gives the sink of a table, by the name of its class.
using TableSink = std::function<bool(std::string_view metaclass, std::string_view piece)>;

/// Writes one table for each class of which there are objects, as comma-separated values (RFC 4180)
/// with a line of titles: the object's address, that of what contains it, then its properties, by
/// name. A cell with many values is a JSON array; an object is told by its address. An empty text
/// is
/// "" and a value that isn't there an empty cell. False if the sink fails.
bool writeTables(QOB::Model const& model, TableSink const& sink);

} // namespace velum::exporting
