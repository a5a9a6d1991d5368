#pragma once

#include "planning/base_types.h"
#include "planning/compu_methods.h"
#include "planning/references.h"
#include "planning/type_form.h"
#include "planning/type_maps.h"

#include <unordered_map>

namespace velum::arxml {

/// What a type is, by the class of the object that is made of it.
enum class TypeKind {
    none,
    integer,
    fixedPoint,
    floatingPoint,
    boolean,
    enumeration,
    matrix,
    structure,
    voidPointer,
    lookupTable,
    sharedAxis,
};

/// What becomes of one type and what it is decided by.
struct TypePlan {
    TypeKind kind = TypeKind::none;
    Reason reason = Reason::noClass;    ///< of one that gets no object
    BaseType const* baseType = nullptr; ///< at the end of the references or of the map
    Element method;                     ///< its own, or that of the type it refers to
    Element constraint;                 ///< likewise
    Element target;                     ///< what it refers to, or what it is mapped to
    Element origin;                     ///< where the references that begin at `target` end

    bool isDecided = false;
};

/// Decides of which metaclass each type is, before any object is made: a type may refer to others
/// that stand behind it or in another file.
class TypePlanner {
public:
    TypePlanner(ImportContext const& context,
                References& references,
                BaseTypes const& baseTypes,
                CompuMethods const& methods,
                TypeMaps const& maps)
        : context_(context),
          references_(references),
          baseTypes_(baseTypes),
          methods_(methods),
          maps_(maps) {}

    /// The plan of a type, or of an element of an implementation type. It is made once; the
    /// reference stays valid.
    TypePlan const& plan(Element type);

    /// The plan of a type that exists only as a part of a table, an axis or a matrix: of what
    /// `properties`, the element around the references, refers to.
    TypePlan planOfPart(Element properties);

private:
    TypePlan& slot(Element type) { return plans_[type.index()]; }
    void planImplementation(Element type);
    bool step(Element type, TypePlan& plan);
    void planValue(Element type, TypePlan& plan);
    void finishReference(Element type, TypePlan& plan);
    void planApplicationPrimitive(Element type, TypePlan& plan);
    void planApplicationValue(TypePlan& plan);
    void inferCategory(Element type, char const* category) const;
    TypeKind kindOf(BaseType const& baseType, Element method) const;
    bool isEnumeration(Element method) const {
        return method && methods_.at(method).isEnumeration();
    }
    Element methodOf(Element properties);
    Element constraintOf(Element properties);

    ImportContext context_;
    References& references_;
    BaseTypes const& baseTypes_;
    CompuMethods const& methods_;
    TypeMaps const& maps_;
    std::unordered_map<ElementStore::Index, TypePlan> plans_;
};

} // namespace velum::arxml
