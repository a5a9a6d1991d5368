#include "planning/base_types.h"

#include <string>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

namespace {

std::optional<std::string_view> textOf(Element element) {
    if (!element) {
        return std::nullopt;
    }
    return element.text();
}

/// Reads a number of bits; reports one that is none and takes none then.
std::optional<std::int32_t> readSize(ImportContext const& context, Element size) {
    if (!size) {
        return std::nullopt;
    }
    const WholeNumber number = readCount(size.text());
    if (number.fault) {
        const bool isTooLarge = *number.fault == Reason::outOfRange;
        context.refuse(size,
                       *number.fault,
                       "The size " + bracketed(size.text()) + " is no number of bits" +
                           (isTooLarge ? " that an integer can have." : "."));
    }
    return number.value;
}

void reportInference(ImportContext const& context, Element baseType, Encoding const& encoding) {
    const Element code = baseType.child(element::baseTypeEncoding);
    std::string text = code.text().empty()
                           ? std::string("The base type has no encoding")
                           : "The encoding " + bracketed(code.text()) + " is not a known code";
    text += "; the values are taken as ";
    text += encoding.isSigned ? "signed" : "unsigned";
    text += " integers.";
    context.find(code ? code : baseType, Reason::inferred, std::move(text));
}

} // namespace

BaseTypes::BaseTypes(ImportContext const& context, Catalogue const& catalogue) {
    for (const Element baseType : catalogue.ofKind(element::swBaseType)) {
        byElement_.emplace(baseType.index(), read(context, baseType));
    }
}

BaseType BaseTypes::read(ImportContext const& context, Element element) {
    BaseType read;
    read.element = element;
    read.encoding = readEncoding(textOf(element.child(element::baseTypeEncoding)),
                                 textOf(element.child(element::nativeDeclaration)));
    if (read.encoding.isInferred) {
        reportInference(context, element, read.encoding);
    }
    read.size = element.child(element::baseTypeSize);
    if (!read.size) {
        read.size = element.child(element::maxBaseTypeSize);
    }
    read.bits = readSize(context, read.size);
    return read;
}

void consumeBaseType(ImportContext const& context, BaseType const& baseType) {
    if (baseType.encoding.isExact) {
        context.account.consume(baseType.element.child(element::baseTypeEncoding));
    }
    const bool hasSize =
        baseType.isInteger() || baseType.encoding.values == Encoding::Values::floatingPoint;
    if (baseType.bits && hasSize) {
        context.account.consume(baseType.size);
    }
    if (baseType.encoding.isFromDeclaration) {
        context.account.consume(baseType.element.child(element::nativeDeclaration));
    }
}

} // namespace velum::arxml
