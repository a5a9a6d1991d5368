#pragma once

#include <qob/qob.h>
#include <string>
#include <string_view>
#include <vector>

namespace velum::model {

/// The path that an object came from; empty if it has none.
std::string pathOf(const QOB::ClassObject& object);

/// The name of an object; empty if it has none.
std::string nameOf(const QOB::ClassObject& object);

/// All objects of a model that nothing contains, ordered by path, then by name and id.
std::vector<QOB::ClassObject> freeObjects(const QOB::Model& model);

/// Those with a path at or below `path`, contained ones too; if there is one at the path itself, it
/// alone. All free objects for an empty path.
std::vector<QOB::ClassObject> objectsAt(const QOB::Model& model, std::string_view path);

/// The objects that one contains.
std::vector<QOB::ClassObject> containedIn(const QOB::ClassObject& object);

/// The name of a class without its package.
std::string_view classOf(const QOB::ClassObject& object);

} // namespace velum::model
