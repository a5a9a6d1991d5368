#pragma once

#include "qob/qob/export.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"

#include <iosfwd>
#include <vector>

namespace QOB {

/// A property in which two objects, or two states of one object, are not the same.
struct Difference {
    /// The object on either side, in its deviant. Empty where there is none: then the object itself
    /// is the difference.
    ClassObject left;
    ClassObject right;
    /// The name of the property; empty if the objects differ as a whole, because one is missing or
    /// because they are of different classes.
    String property;
    /// All values of the property on either side, in order.
    std::vector<Object> leftValues{};
    std::vector<Object> rightValues{};
};

/// One line: the object, the property, its values on the left, "->", its values on the right.
QOB_EXPORT std::ostream& operator<<(std::ostream& out, Difference const& difference);

/// Compares two objects of any class with all that they contain. Contained objects are compared in
/// pairs: those that are the only ones of their name in both lists, then those that are left, in
/// order. Other objects that a property refers to are the same if they are one object or a pair; in
/// different models also if they are of one class and have the same external id. Order counts where
/// the property is ordered. Where and under which id an object stands is no difference, and what
/// follows from other properties isn't looked at.
///
/// Raises QOB::Exception for an empty handle and for an object that doesn't exist in its deviant.
QOB_EXPORT std::vector<Difference> compare(ClassObject const& left, ClassObject const& right);

/// Compares two deviants of one model, as which it is seen by the two handles: every object with
/// itself. Costs a look at each object, and a look at the properties of those only that don't share
/// their state.
///
/// Raises QOB::Exception for an empty handle and for two models.
QOB_EXPORT std::vector<Difference> compare(Model const& left, Model const& right);

} // namespace QOB
