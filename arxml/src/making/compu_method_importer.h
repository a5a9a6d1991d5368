#pragma once

#include "making/objects.h"
#include "making/unit_importer.h"
#include "planning/compu_methods.h"
#include "planning/references.h"

namespace velum::arxml {

/// Makes `CompuMethod` of COMPU-METHOD.
class CompuMethodImporter {
public:
    CompuMethodImporter(const ImportContext& context,
                        const CompuMethods& methods,
                        UnitImporter& units,
                        Objects& objects)
        : context_(context), methods_(methods), units_(units), objects_(objects) {}

    void build(const Catalogue& catalogue);

    /// Empty for a category without a class.
    types::CompuMethod find(Element element) const { return made_.find(element); }

    /// Gives an enumeration the texts of a method as its own literals.
    void addLiterals(const types::Enumeration& enumeration, Element method);

private:
    void build(const CompuMethodPlan& plan);
    void setCoefficients(const types::CompuMethod& method, const CompuMethodPlan& plan);

    ImportContext context_;
    const CompuMethods& methods_;
    UnitImporter& units_;
    Objects& objects_;
    ObjectsOf<types::CompuMethod> made_;
};

} // namespace velum::arxml
