#pragma once

#include "making/made_objects.h"
#include "making/unit_importer.h"
#include "planning/compu_methods.h"
#include "planning/references.h"

namespace velum::arxml {

/// Makes `CompuMethod` of COMPU-METHOD.
class CompuMethodImporter {
public:
    CompuMethodImporter(ImportContext const& context,
                        CompuMethods const& methods,
                        UnitImporter& units,
                        Objects& objects)
        : context_(context), methods_(methods), units_(units), objects_(objects) {}

    void build(Catalogue const& catalogue);

    /// Empty for a category without a class.
    types::CompuMethod find(Element element) const { return made_.find(element); }

    /// Gives an enumeration the texts of a method as its own literals.
    void addLiterals(types::Enumeration const& enumeration, Element method);

private:
    void build(CompuMethodPlan const& plan);
    void setCoefficients(types::CompuMethod const& method, CompuMethodPlan const& plan);

    ImportContext context_;
    CompuMethods const& methods_;
    UnitImporter& units_;
    Objects& objects_;
    ObjectsOf<types::CompuMethod> made_;
};

} // namespace velum::arxml
