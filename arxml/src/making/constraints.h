#pragma once

#include "making/made_objects.h"
#include "making/unit_importer.h"
#include "planning/catalogue.h"
#include "planning/compu_methods.h"

#include <optional>
#include <string_view>

namespace velum::arxml {

/// Makes `DataConstr` of DATA-CONSTR, and copies its limits into the types that refer to it: the
/// object itself has no place for them.
class Constraints {
public:
    Constraints(ImportContext const& context,
                CompuMethods const& methods,
                UnitImporter& units,
                Objects& objects)
        : context_(context), methods_(methods), units_(units), objects_(objects) {}

    void build(Catalogue const& catalogue);

    types::DataConstr find(Element element) const { return made_.find(element); }

    /// Gives a type the limits of a constraint: an implementation type those of its internal
    /// values; an application type those of its physical values, or else the internal ones through
    /// its method: an empty one takes them as they are, with an unknown one they aren't held.
    void setBounds(types::Real const& type,
                   Element constraint,
                   bool isApplication,
                   std::optional<Element> method);

private:
    /// One end of an interval.
    struct Limit {
        Element element;
        std::optional<double> value; // none: without bound
        bool isOpen = true;
        std::string_view exact{}; // as written, if the value is rounded
    };
    struct Limits {
        Limit lower;
        Limit upper;
    };
    struct Plan {
        std::optional<Limits> internal;
        std::optional<Limits> physical;
    };

    Plan read(Element constraint);
    std::optional<Limits> readLimits(Element constraints);
    Limit readLimit(Element element);
    std::optional<Limits> throughMethod(Limits const& internal,
                                        std::optional<Element> method) const;

    ImportContext context_;
    CompuMethods const& methods_;
    UnitImporter& units_;
    Objects& objects_;
    ObjectsOf<types::DataConstr> made_;
    std::unordered_map<ElementStore::Index, Plan> plans_;
};

} // namespace velum::arxml
