#pragma once

#include "dictionary/catalogue.h"
#include "dictionary/compu_methods.h"
#include "dictionary/objects.h"
#include "dictionary/unit_importer.h"

#include <optional>
#include <string_view>

namespace velum::dictionary {

/// Makes `DataConstr` of DATA-CONSTR, and copies its limits into the types that refer to it: the
/// object itself has no place for them.
class Constraints {
public:
    Constraints(const ImportContext& context,
                const CompuMethods& methods,
                UnitImporter& units,
                Objects& objects)
        : context_(context), methods_(methods), units_(units), objects_(objects) {}

    void build(const Catalogue& catalogue);

    types::DataConstr find(arxml::Element element) const { return made_.find(element); }

    /// Gives a type the limits of a constraint: an implementation type those of its internal
    /// values; an application type those of its physical values, or else the internal ones through
    /// its method: an empty one takes them as they are, with an unknown one they aren't held.
    void setBounds(const types::Real& type,
                   arxml::Element constraint,
                   bool isApplication,
                   std::optional<arxml::Element> method);

private:
    /// One end of an interval.
    struct Limit {
        arxml::Element element;
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

    Plan read(arxml::Element constraint);
    std::optional<Limits> readLimits(arxml::Element constraints);
    Limit readLimit(arxml::Element element);
    std::optional<Limits> throughMethod(const Limits& internal,
                                        std::optional<arxml::Element> method) const;

    ImportContext context_;
    const CompuMethods& methods_;
    UnitImporter& units_;
    Objects& objects_;
    ObjectsOf<types::DataConstr> made_;
    std::unordered_map<arxml::ElementStore::Index, Plan> plans_;
};

} // namespace velum::dictionary
