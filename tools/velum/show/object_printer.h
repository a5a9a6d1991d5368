#pragma once

#include <qob/qob.h>
#include <string>

namespace velum::show {

/// One object as a person wants to read it: a line, and below it, indented, its parts. Whatever the
/// texts of the object are, they make no lines.
std::string objectText(QOB::ClassObject const& object);

} // namespace velum::show
