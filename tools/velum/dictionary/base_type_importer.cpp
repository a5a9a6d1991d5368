#include "dictionary/base_type_importer.h"

#include "arxml/fragment_account.h"
#include "dictionary/dictionary.h"
#include "dictionary/findings.h"
#include "dictionary/number.h"

#include <string>

namespace velum::dictionary {

namespace element = arxml::element;
using arxml::Fragment;
using report::Reason;

namespace {

std::optional<std::string_view> textOf(const Fragment& fragment, Fragment::Index element) {
    if (element == Fragment::none) {
        return std::nullopt;
    }
    return fragment.text(element);
}

} // namespace

void BaseTypeImporter::take(const Fragment& fragment) {
    report::FileReport& report = context_.fileReport(fragment.file());
    arxml::FragmentAccount account(fragment);
    if (const auto refusal = reasonAgainst(fragment, context_, byPath_)) {
        account.skipAll(report.tally, *refusal);
        return;
    }
    const Fragment::Index code = fragment.child(0, element::baseTypeEncoding);
    const Fragment::Index declaration = fragment.child(0, element::nativeDeclaration);
    const Encoding encoding = readEncoding(textOf(fragment, code), textOf(fragment, declaration));
    byPath_.emplace(fragment.path(0), baseTypes_.size());
    baseTypes_.push_back({fragment.path(0), encoding, std::nullopt});
    if (encoding.values != Encoding::Values::integer) {
        account.skipAll(report.tally, Reason::noClass);
        return;
    }
    if (encoding.isInferred) {
        reportInference(fragment, encoding);
    }
    account.hold(0);
    account.hold(fragment.child(0, element::shortName));
    if (encoding.isExact) {
        account.hold(code);
    }
    const Fragment::Index size = fragment.child(0, element::baseTypeSize);
    baseTypes_.back().bits = readSize(fragment, size);
    if (baseTypes_.back().bits) {
        account.hold(size);
    }
    if (encoding.isFromDeclaration) {
        account.hold(declaration);
    }
    account.settle(report.tally, Reason::noProperty);
}

std::optional<std::int32_t> BaseTypeImporter::readSize(const Fragment& fragment,
                                                       Fragment::Index size) const {
    if (size == Fragment::none) {
        return std::nullopt;
    }
    WholeNumber number = readWholeNumber(fragment.text(size));
    if (number.value && *number.value < 0) {
        number = {std::nullopt, Reason::outOfRange};
    }
    if (number.fault) {
        context_.fileReport(fragment.file())
            .find(placeOf(fragment, size),
                  *number.fault,
                  "The size (" + std::string(fragment.text(size)) + ") is no number of bits" +
                      (*number.fault == Reason::outOfRange ? " that an integer can have." : "."));
    }
    return number.value;
}

void BaseTypeImporter::reportInference(const Fragment& fragment, const Encoding& encoding) const {
    const Fragment::Index code = fragment.child(0, element::baseTypeEncoding);
    const std::string taken = std::string("; the values are taken as ") +
                              (encoding.isSigned ? "signed" : "unsigned") + " integers.";
    const bool isGiven = code != Fragment::none && !fragment.text(code).empty();
    const std::string cause =
        isGiven ? "The encoding (" + std::string(fragment.text(code)) + ") is not a known code"
                : std::string("The base type has no encoding");
    context_.fileReport(fragment.file())
        .find(
            placeOf(fragment, code == Fragment::none ? 0 : code), Reason::inferred, cause + taken);
}

void BaseTypeImporter::build(Dictionary& dictionary) {
    for (const BaseType& baseType : baseTypes_) {
        if (!baseType.isUsed && baseType.encoding.values == Encoding::Values::integer) {
            dictionary.addInteger(context_.index.paths().name(baseType.path),
                                  baseType.encoding.isSigned,
                                  baseType.bits);
        }
    }
}

BaseTypeImporter::BaseType* BaseTypeImporter::find(arxml::PathId path) {
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : &baseTypes_[found->second];
}

} // namespace velum::dictionary
