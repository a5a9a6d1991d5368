#include "planning/import_context.h"

#include "planning/formula.h"

namespace velum::arxml {

void ImportContext::find(Element element, Reason reason, std::string text) const {
    logOf(element).find(spotOf(element), reason, std::move(text));
}

void ImportContext::note(Element element, Reason reason, std::string text) const {
    logOf(element).note(spotOf(element), reason, std::move(text));
}

void ImportContext::refuse(Element element, Reason reason, std::string text) const {
    find(element, reason, std::move(text));
    account.skip(element, reason);
}

void ImportContext::refuseNumber(Element element, Reason fault, std::string text) const {
    if (const auto formula = formulaOf(element)) {
        refuse(element, Reason::symbolic, "The number is " + formula->description() + ".");
    } else {
        refuse(element, fault, std::move(text));
    }
}

void ImportContext::refuseReference(Element reference, Reason reason, std::string text) const {
    logOf(reference).find(spotOf(reference), reason, std::move(text), reference.text());
    account.skip(reference, reason);
}

std::string ImportContext::whereabouts(Element element) const {
    return logOf(element).file + ":" + std::to_string(element.position().line) + ":" +
           std::to_string(element.position().column);
}

} // namespace velum::arxml
