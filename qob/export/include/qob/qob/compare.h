#pragma once

#include "qob/qob/export.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"

#include <iosfwd>
#include <vector>

namespace QOB {

/// How two sides differ.
enum class DifferenceKind {
    Existence, ///< The object is on one side only.
    Class,     ///< The objects are of different classes; their properties aren't compared.
    Values,    ///< A property has other values.
    Order      ///< A property has the same values in another order.
};

/// One difference between two objects, or between two states of one object.
struct Difference {
    DifferenceKind kind;
    /// The object on either side, in its deviant; empty where there is none.
    ClassObject left;
    ClassObject right;
    /// The name of the property; empty if the objects differ as a whole.
    String property{};
    /// All values of the property on either side, in order.
    std::vector<Object> leftValues{};
    std::vector<Object> rightValues{};
};

/// One line: the object, the property, its values on the left, "->", its values on the right.
QOB_EXPORT std::ostream& operator<<(std::ostream& out, Difference const& difference);

/// Compares two objects of any class with all that they contain. Contained objects are compared in
/// pairs: first those whose name is unique in both lists, then the rest in order. Other objects
/// that a property refers to are the same if they are one object or a pair; in different models
/// also if they have the same class and external id. Order counts where the property is ordered. An
/// object's id and its place are not compared, and neither are derived properties.
///
/// Raises QOB::Exception for an empty handle and for an object that doesn't exist in its deviant.
QOB_EXPORT std::vector<Difference> compare(ClassObject const& left, ClassObject const& right);

/// Compares all objects of two models, or of two deviants of one model, as seen by the two handles.
///
/// In two deviants every object is compared with itself. The cost is one check per object, plus a
/// comparison of the properties of those objects whose state differs between the deviants.
///
/// In two models, objects without a container are paired by external id, or, if they have none, by
/// class and name. Those with neither are paired if the same property of a pair refers to them; if
/// nothing refers to them, by class alone. Contained objects are paired if the same property of a
/// pair owns them under the same name. If several have the same name, or none, they are paired in
/// order; the value of a single-valued property is paired whatever its name. An object without a
/// partner is a difference; its contents are not reported. Order counts for every property; lists
/// that only mirror the references of other objects are left out.
///
/// Raises QOB::Exception for an empty handle.
QOB_EXPORT std::vector<Difference> compare(Model const& left, Model const& right);

} // namespace QOB
