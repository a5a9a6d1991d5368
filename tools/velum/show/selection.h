#pragma once

#include <qob/qob.h>
#include <string>
#include <vector>

namespace velum::show {

/// The objects that a person asks for, by path:
///   "/A/B"              the object at the path, or else what lies below it; a slash at the end
///   does
///                       not matter
///   "/A*/**/Speed*"     a pattern of model/glob.h for the path; "/**/" stands for "/" too
///   "Speed", "B/Speed"  the end of the path, patterns included
std::vector<QOB::ClassObject> select(QOB::Model const& model, std::string asked);

} // namespace velum::show
