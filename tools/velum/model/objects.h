#pragma once

#include <qob/qob.h>
#include <string>
#include <string_view>
#include <vector>

namespace velum::model {

/// The path that an object came from; empty if it has none.
std::string pathOf(QOB::ClassObject const& object);

/// The name of an object; empty if it has none.
std::string nameOf(QOB::ClassObject const& object);

/// All objects of a model that nothing contains, ordered by path, then by name and id.
std::vector<QOB::ClassObject> freeObjects(QOB::Model const& model);

/// Those with a path at or below `path`, contained ones too; if there is one at the path itself, it
/// alone. All free objects for an empty path.
std::vector<QOB::ClassObject> objectsAt(QOB::Model const& model, std::string_view path);

/// The objects that one contains.
std::vector<QOB::ClassObject> containedIn(QOB::ClassObject const& object);

/// The name of a class without its package.
std::string_view classOf(QOB::ClassObject const& object);

} // namespace velum::model
