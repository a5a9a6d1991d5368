#include "making/compu_method_importer.h"

namespace velum::arxml {

using Kind = CompuMethodPlan::Kind;

namespace {

types::CompuMethodCategory categoryOf(Kind kind) {
    using Category = types::CompuMethodCategory;
    switch (kind) {
    case Kind::linear:
        return Category::Linear;
    case Kind::rational:
        return Category::RatFunc;
    case Kind::textTable:
        return Category::TextTable;
    case Kind::linearAndTextTable:
        return Category::LinearAndTextTable;
    case Kind::identical:
    case Kind::none:
        break;
    }
    return Category::Identical;
}

/// The model's lists refuse a number that they hold already.
bool pushAll(QOB::Sequence<QOB::Real> const& list, std::vector<double> const& numbers) {
    for (const double number : numbers) {
        list.push_back(QOB::Real(number));
    }
    return static_cast<std::size_t>(list.size()) == numbers.size();
}

} // namespace

void CompuMethodImporter::build(Catalogue const& catalogue) {
    for (const Element method : catalogue.ofKind(element::compuMethod)) {
        CompuMethodPlan const& plan = methods_.at(method);
        if (plan.kind != Kind::none) {
            build(plan);
        } else {
            context_.logOf(method).omissions.push_back(
                {ImportContext::spotOf(method),
                 method.name(),
                 Reason::noClass,
                 "The model has no class for the category " +
                     bracketed(method.child(element::category).text()) + "."});
        }
    }
}

void CompuMethodImporter::build(CompuMethodPlan const& plan) {
    const auto method = objects_.makeOf<types::CompuMethod>(plan.element);
    made_.add(plan.element, method);
    method.setCategory(categoryOf(plan.kind));
    context_.account.consume(plan.element.child(element::category));
    if (const Element format = plan.element.child(element::displayFormat)) {
        method.setDisplayFormat(toString(format.text()));
        context_.account.consume(format);
    }
    units_.setUnit(method, plan.element.child(element::unitRef));
    if (plan.toInternal) {
        setCoefficients(method, plan);
    }
}

/// Half a function is worse than none: if one number is refused, nothing is held.
void CompuMethodImporter::setCoefficients(types::CompuMethod const& method,
                                          CompuMethodPlan const& plan) {
    const auto numerators = method.getCalToInternalCompuNumerators();
    const auto denominators = method.getCalToInternalCompuDenominators();
    if (pushAll(numerators, plan.toInternal->numerator) &&
        pushAll(denominators, plan.toInternal->denominator)) {
        for (const Element coefficient : plan.coefficientElements) {
            context_.account.consume(coefficient);
        }
        return;
    }
    numerators.clear();
    denominators.clear();
    const Element written = plan.coefficientElements.front().parent().parent();
    context_.refuse(written,
                    Reason::duplicateValue,
                    "Two coefficients are equal, which the model can't hold; none is held.");
}

void CompuMethodImporter::addLiterals(types::Enumeration const& enumeration, Element method) {
    if (!method) {
        return;
    }
    for (CompuMethodPlan::Text const& text : methods_.at(method).texts) {
        const auto literal = objects_.make<types::EnumerationLiteral>(text.name);
        literal.setValue(QOB::Integer(text.value));
        literal.setPvalue(QOB::Integer(text.value));
        literal.setPisUserDefined(QOB::Boolean(true));
        literal.setEnumeration(enumeration);
        context_.account.consume(text.nameElement);
        context_.account.consume(text.lower);
        context_.account.consume(text.upper);
    }
}

} // namespace velum::arxml
