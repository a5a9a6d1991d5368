#pragma once

#include "database.h"
#include "layout.h"

namespace QOB::store {

/// What marks a file as a store, and the version of its form.
inline constexpr std::int64_t ApplicationId = 0x514F4253;
inline constexpr std::int64_t FormatVersion = 1;

/// Whether the file is a store; false for one without any content. Raises for any other file, and
/// for a store of a later version.
bool isStore(Database& database);

/// Drops every table and view, in the open transaction.
void clear(Database& database);

/// Makes the tables and views, and fills those of the metamodel.
void createSchema(Database& database, Layout const& layout);

} // namespace QOB::store
