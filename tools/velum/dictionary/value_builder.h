#pragma once

#include "dictionary/constant_circles.h"
#include "dictionary/objects.h"
#include "dictionary/references.h"

#include <vector>

namespace velum::dictionary {

/// Makes the value objects of value specifications, of constants and of invalid values.
class ValueBuilder {
public:
    ValueBuilder(const ImportContext& context, References& references, Objects& objects)
        : context_(context), references_(references), objects_(objects), circles_(context) {}

    /// Makes all constants. They come first and are filled then, since they refer to each other.
    void buildConstants(const Catalogue& catalogue);

    /// The value that the first element in `holder` states, as a value of `type`, which may
    /// be empty. Empty, with the element skipped, if there is no class for it.
    foundation::ValueSpecification makeIn(arxml::Element holder, const foundation::ValueType& type);

private:
    foundation::ValueSpecification make(arxml::Element value, const foundation::ValueType& type);
    foundation::ValueSpecification makeNumber(arxml::Element value);
    foundation::ValueSpecification makeText(arxml::Element value,
                                            const foundation::ValueType& type);
    foundation::ValueSpecification makeReference(arxml::Element value);
    foundation::ValueSpecification makeArray(arxml::Element value,
                                             const foundation::ValueType& type);
    void addCells(const types::MatrixValueSpecification& matrix,
                  arxml::Element array,
                  const foundation::ValueType& elementType,
                  int depth,
                  int& position);
    foundation::ValueSpecification makeRecord(arxml::Element value,
                                              const foundation::ValueType& type);
    foundation::ValueSpecification makeApplication(arxml::Element value);
    void fillContent(const types::ApplicationValueSpecification& content, arxml::Element element);

    template <class Handle>
    Handle makeLabelled(arxml::Element value) {
        const arxml::Element label = value.child(arxml::element::shortLabel);
        context_.account.consume(value);
        context_.account.consume(label);
        return objects_.make<Handle>(label.text());
    }

    ImportContext context_;
    References& references_;
    Objects& objects_;
    ObjectsOf<types::ConstantSpecification> constants_;
    ConstantCircles circles_;
    arxml::Element owner_; // the constant being filled; empty for an invalid value
};

} // namespace velum::dictionary
