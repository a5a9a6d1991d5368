#pragma once

#include "model/addresses.h"

#include <qob/qob.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velum::merge {

/// The key of a part of the object at a path.
std::string keyOf(std::string const& path, std::string const& part);

/// One of the models that are merged, with its objects by the keys that the comparison names them
/// with: the path of the outermost object, and the place in it. Made once the model has its names;
/// objects that are made later are known if they are put in.
class Side {
public:
    explicit Side(QOB::Model model);

    QOB::Model const& model() const { return model_; }
    model::Addresses& addresses() { return addresses_; }

    std::string const& keyOf(QOB::ClassObject const& object) const;
    /// Empty if there is none.
    QOB::ClassObject find(std::string const& key) const;
    void put(std::string const& key, QOB::ClassObject const& object);

    /// The attribute of an object; null if it has none of that name.
    QOB::Attribute const* attribute(QOB::ClassObject const& object, std::string_view name);
    std::vector<QOB::Object> valuesOf(QOB::ClassObject const& object, std::string_view property);
    /// The keys of the parts that an object owns by a property; none of an empty handle.
    std::vector<std::string> partsOf(QOB::ClassObject const& object, std::string_view property);

private:
    QOB::Model model_;
    model::Addresses addresses_;
    std::unordered_map<std::string, QOB::ClassObject> byKey_;
    std::unordered_map<void const*, std::string> keys_;
};

/// All objects of a model, those that are contained behind what contains them.
std::vector<QOB::ClassObject> allObjects(QOB::Model const& model);

} // namespace velum::merge
