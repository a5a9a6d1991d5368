#pragma once

#include "making/made_objects.h"
#include "planning/constant_circles.h"
#include "planning/references.h"

#include <vector>

namespace velum::arxml {

/// Makes the value objects of value specifications, of constants and of invalid values.
class ValueBuilder {
public:
    ValueBuilder(ImportContext const& context, References& references, Objects& objects)
        : context_(context), references_(references), objects_(objects), circles_(context) {}

    /// Makes all constants. They come first and are filled then, since they refer to each other.
    void buildConstants(Catalogue const& catalogue);

    /// The value that the first element in `holder` states, as a value of `type`, which may
    /// be empty. Empty, with the element skipped, if there is no class for it.
    foundation::ValueSpecification makeIn(Element holder, foundation::ValueType const& type);

private:
    foundation::ValueSpecification make(Element value, foundation::ValueType const& type);
    foundation::ValueSpecification makeNumber(Element value);
    foundation::ValueSpecification makeText(Element value, foundation::ValueType const& type);
    foundation::ValueSpecification makeReference(Element value);
    foundation::ValueSpecification makeArray(Element value, foundation::ValueType const& type);
    void addCells(types::MatrixValueSpecification const& matrix,
                  Element array,
                  foundation::ValueType const& elementType,
                  int depth,
                  int& position);
    foundation::ValueSpecification makeRecord(Element value, foundation::ValueType const& type);
    foundation::ValueSpecification makeApplication(Element value);
    void fillContent(types::ApplicationValueSpecification const& content, Element element);

    template <class Handle>
    Handle makeLabelled(Element value) {
        const Element label = value.child(element::shortLabel);
        context_.account.consume(value);
        context_.account.consume(label);
        return objects_.make<Handle>(label.text());
    }

    ImportContext context_;
    References& references_;
    Objects& objects_;
    ObjectsOf<types::ConstantSpecification> constants_;
    ConstantCircles circles_;
    Element owner_; // the constant being filled; empty for an invalid value
};

} // namespace velum::arxml
