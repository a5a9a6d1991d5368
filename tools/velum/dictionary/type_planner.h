#pragma once

#include "dictionary/base_types.h"
#include "dictionary/compu_methods.h"
#include "dictionary/references.h"
#include "dictionary/type_form.h"
#include "dictionary/type_maps.h"

#include <unordered_map>

namespace velum::dictionary {

/// The metaclasses of types.
enum class Metaclass {
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

/// Whether the metaclass is one of primitive types.
constexpr bool isPrimitive(Metaclass metaclass) {
    return metaclass >= Metaclass::integer && metaclass <= Metaclass::enumeration;
}

/// What becomes of one type and what it is decided by.
struct TypePlan {
    Metaclass metaclass = Metaclass::none;
    report::Reason reason = report::Reason::noClass; ///< of one that gets no object
    const BaseType* baseType = nullptr;              ///< at the end of the references or of the map
    arxml::Element method;                           ///< its own, or that of the type it refers to
    arxml::Element constraint;                       ///< likewise
    arxml::Element target;                           ///< what it refers to, or what it is mapped to
    arxml::Element origin; ///< where the references that begin at `target` end

    bool isDecided = false;
};

/// Decides of which metaclass each type is, before any object is made: a type may refer to others
/// that stand behind it or in another file.
class TypePlanner {
public:
    TypePlanner(const ImportContext& context,
                References& references,
                const BaseTypes& baseTypes,
                const CompuMethods& methods,
                const TypeMaps& maps)
        : context_(context),
          references_(references),
          baseTypes_(baseTypes),
          methods_(methods),
          maps_(maps) {}

    /// The plan of a type, or of an element of an implementation type. It is made once; the
    /// reference stays valid.
    const TypePlan& plan(arxml::Element type);

    /// The plan of a type that exists only as a part of a table, an axis or a matrix: of what
    /// `properties`, the element around the references, refers to.
    TypePlan planOfPart(arxml::Element properties);

private:
    TypePlan& slot(arxml::Element type) { return plans_[type.index()]; }
    void planImplementation(arxml::Element type);
    bool step(arxml::Element type, TypePlan& plan);
    void planValue(arxml::Element type, TypePlan& plan);
    void finishReference(arxml::Element type, TypePlan& plan);
    void planApplicationPrimitive(arxml::Element type, TypePlan& plan);
    void planApplicationValue(TypePlan& plan);
    void inferCategory(arxml::Element type, const char* category) const;
    Metaclass metaclassOf(const BaseType& baseType, arxml::Element method) const;
    bool isEnumeration(arxml::Element method) const {
        return method && methods_.at(method).isEnumeration();
    }
    arxml::Element methodOf(arxml::Element properties);
    arxml::Element constraintOf(arxml::Element properties);

    ImportContext context_;
    References& references_;
    const BaseTypes& baseTypes_;
    const CompuMethods& methods_;
    const TypeMaps& maps_;
    std::unordered_map<arxml::ElementStore::Index, TypePlan> plans_;
};

} // namespace velum::dictionary
