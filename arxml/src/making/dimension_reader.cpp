#include "making/dimension_reader.h"

#include "planning/formula.h"

#include <velum_arxml/notation/number.h>

namespace velum::arxml {

void addDimension(ImportContext const& context, types::Matrix const& matrix, Element size) {
    const auto dimensions = matrix.getDimensionses();
    if (const auto formula = formulaOf(size)) {
        context.find(size, Reason::symbolic, "The size is " + formula->description() + ".");
        dimensions.push_back(QOB::Integer(0));
        context.account.consume(size);
        const auto names = matrix.getSymbolicDimensionses();
        const auto before = names.size();
        names.push_back(toString(formula->text));
        const bool isThere = names.size() == before;
        if (isThere) {
            context.find(formula->constants.front(),
                         Reason::duplicateValue,
                         "The size " + bracketed(formula->text) + " is there already.");
        }
        for (const Element constant : formula->constants) {
            if (isThere) {
                context.account.skip(constant, Reason::duplicateValue);
            } else {
                context.account.consume(constant);
            }
        }
        return;
    }
    const WholeNumber number = readCount(size.text());
    if (number.value) {
        dimensions.push_back(QOB::Integer(*number.value));
        context.account.consume(size);
        return;
    }
    dimensions.push_back(QOB::Integer()); // keeps the place of the others
    context.refuse(
        size, *number.fault, "The size " + bracketed(size.text()) + " is no number of elements.");
}

} // namespace velum::arxml
