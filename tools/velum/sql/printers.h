#pragma once

#include <functional>
#include <qob_store/query.h>
#include <string_view>

namespace velum::sql {

/// Takes the next piece of a text; false if it can't, which ends the printing.
using Sink = std::function<bool(std::string_view piece)>;

/// Prints the rows of a query under the titles of their columns, numbers to the right. A value that
/// isn't there is an empty cell. False if the sink fails, here and below.
bool printTable(QOB::StoreQuery& rows, Sink const& sink);

/// The same as an array of objects, one in each line. Of columns with one title, the later ones
/// are numbered: "Name", "Name:2".
bool printJson(QOB::StoreQuery& rows, Sink const& sink);

/// The same as comma-separated values (RFC 4180) with a row of titles.
bool printCsv(QOB::StoreQuery& rows, Sink const& sink);

} // namespace velum::sql
