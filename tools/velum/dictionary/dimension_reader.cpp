#include "dictionary/dimension_reader.h"

#include "dictionary/number.h"

namespace velum::dictionary {

namespace element = arxml::element;
using arxml::Element;
using report::Reason;

void addDimension(const ImportContext& context, const types::Matrix& matrix, Element size) {
    const auto dimensions = matrix.getDimensionses();
    if (const Element constant = size.child(element::syscRef)) {
        std::string_view name = constant.text();
        name.remove_prefix(name.rfind('/') + 1);
        context.find(
            size, Reason::symbolic, "The size is the system constant " + bracketed(name) + ".");
        dimensions.push_back(QOB::Integer(0));
        context.account.consume(size);
        const auto names = matrix.getSymbolicDimensionses();
        const auto before = names.size();
        names.push_back(toString(name));
        if (names.size() == before) {
            context.refuse(constant,
                           Reason::duplicateValue,
                           "The constant " + bracketed(name) + " is there already.");
        } else {
            context.account.consume(constant);
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

} // namespace velum::dictionary
