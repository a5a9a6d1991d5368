#pragma once

#include "qob/qob/export.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"

#include <iosfwd>
#include <vector>

namespace QOB {

/// In what two sides differ.
enum class DifferenceKind {
    Existence, ///< The object is on one side only.
    Class,     ///< The objects are of different classes; what they hold isn't compared.
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
/// pairs: those that are the only ones of their name in both lists, then those that are left, in
/// order. Other objects that a property refers to are the same if they are one object or a pair; in
/// different models also if they are of one class and have the same external id. Order counts where
/// the property is ordered. Where and under which id an object stands is no difference, and what
/// follows from other properties isn't looked at.
///
/// Raises QOB::Exception for an empty handle and for an object that doesn't exist in its deviant.
QOB_EXPORT std::vector<Difference> compare(ClassObject const& left, ClassObject const& right);

/// Compares all objects of two models, or of two deviants of one model, as seen by the two handles.
///
/// In two deviants every object is compared with itself. That costs a look at each object, and a
/// look at the properties of those only that don't share their state.
///
/// In two models objects that nothing contains are a pair if they have the same external id, and
/// those without one if they have the same class and name. Those with neither are a pair if the
/// same property of a pair refers to them; if nothing refers to them, by their class alone.
/// Contained objects are a pair if the same property of a pair owns them under the same name. Where
/// several have one name, or none, the first is paired with the first and so on; the value of a
/// single-valued property is paired whatever its name. An object without a partner is a difference;
/// what it contains is not reported. Order counts for every property; lists that only mirror the
/// references of other objects are left out.
///
/// Raises QOB::Exception for an empty handle.
QOB_EXPORT std::vector<Difference> compare(Model const& left, Model const& right);

} // namespace QOB
