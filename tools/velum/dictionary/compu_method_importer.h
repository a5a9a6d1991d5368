#pragma once

#include "dictionary/compu_methods.h"
#include "dictionary/objects.h"
#include "dictionary/references.h"
#include "dictionary/unit_importer.h"

namespace velum::dictionary {

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
    types::CompuMethod find(arxml::Element element) const { return made_.find(element); }

    /// Gives an enumeration the texts of a method as its own literals.
    void addLiterals(const types::Enumeration& enumeration, arxml::Element method);

private:
    void build(const CompuMethodPlan& plan);
    void setCoefficients(const types::CompuMethod& method, const CompuMethodPlan& plan);

    ImportContext context_;
    const CompuMethods& methods_;
    UnitImporter& units_;
    Objects& objects_;
    ObjectsOf<types::CompuMethod> made_;
};

} // namespace velum::dictionary
