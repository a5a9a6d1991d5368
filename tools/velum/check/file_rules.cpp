#include "check/file_rules.h"

#include <array>
#include <optional>
#include <string_view>
#include <velum_arxml/notation/encoding.h>
#include <velum_arxml/notation/number.h>

namespace velum::check {

namespace element = arxml::element;
using arxml::Element;
using arxml::Encoding;

namespace {

/// What a declaration in C says about its values; what it leaves open is not set.
struct Declaration {
    enum class Kind { integer, real, nothing };
    std::optional<Kind> kind;
    std::optional<bool> isSigned;
    std::optional<int> bits;
};

/// "uint16_t", "sint8": the number of bits in the name of an integer type; none of other words.
std::optional<int> bitsIn(std::string_view word) {
    for (const std::string_view start : {"uint", "sint", "int"}) {
        if (word.substr(0, start.size()) != start) {
            continue;
        }
        std::string_view size = word.substr(start.size());
        size = size.substr(0, size.find('_'));
        for (const int bits : {8, 16, 32, 64}) {
            if (size == std::to_string(bits)) {
                return bits;
            }
        }
        return std::nullopt;
    }
    return std::nullopt;
}

void readWord(std::string_view word, Declaration& declaration) {
    using Kind = Declaration::Kind;
    if (word == "float" || word == "double" || word == "float32" || word == "float64") {
        declaration.kind = Kind::real;
    } else if (word == "void") {
        declaration.kind = Kind::nothing;
    } else if (word == "unsigned" || word == "signed") {
        declaration.kind = Kind::integer;
        declaration.isSigned = word == "signed";
    } else if (word == "short" || word == "int" || word == "long") {
        // Beside "double" it says something else.
        declaration.kind = declaration.kind.value_or(Kind::integer);
        declaration.isSigned = declaration.isSigned.value_or(true);
    } else if (const auto bits = bitsIn(word)) {
        declaration.kind = Kind::integer;
        declaration.isSigned = word.front() != 'u';
        declaration.bits = bits;
    }
}

Declaration readDeclaration(std::string_view text) {
    Declaration declaration;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (word.find('*') != std::string_view::npos) {
            return {}; // of a pointer, which says nothing about its values
        }
        readWord(word, declaration);
    }
    return declaration;
}

std::string inParentheses(std::string_view text) {
    return "(" + std::string(text) + ")";
}

/// What the two don't agree in; empty if there is nothing.
std::string
contradiction(Encoding const& encoding, Declaration const& declaration, std::string_view size) {
    using Values = Encoding::Values;
    const bool isInteger = encoding.values == Values::integer;
    const bool isReal = encoding.values == Values::floatingPoint;
    if (!declaration.kind || encoding.isInferred || (!isInteger && !isReal)) {
        return {};
    }
    if (*declaration.kind == Declaration::Kind::nothing) {
        return "the declaration is one of no values";
    }
    if (isInteger != (*declaration.kind == Declaration::Kind::integer)) {
        return isInteger ? "the encoding is one of integers, the declaration is not"
                         : "the encoding is one of floating-point numbers, the declaration is not";
    }
    if (isInteger && encoding.isExact && declaration.isSigned &&
        *declaration.isSigned != encoding.isSigned) {
        return encoding.isSigned ? "the encoding is signed, the declaration is not"
                                 : "the declaration is signed, the encoding is not";
    }
    if (isInteger && declaration.bits && !size.empty() &&
        arxml::readWholeNumber(size).value != declaration.bits) {
        return "the size is " + std::string(size) + " bits";
    }
    return {};
}

void checkBaseType(Element baseType, Sink const& sink) {
    const Element code = baseType.child(element::baseTypeEncoding);
    const Element native = baseType.child(element::nativeDeclaration);
    if (!code || !native) {
        return;
    }
    const Encoding encoding = arxml::readEncoding(code.text(), native.text());
    const std::string said = contradiction(
        encoding, readDeclaration(native.text()), baseType.child(element::baseTypeSize).text());
    if (!said.empty()) {
        sink.add("encoding-mismatch",
                 "The encoding " + inParentheses(code.text()) +
                     " contradicts the native declaration " + inParentheses(native.text()) + ": " +
                     said + ".");
    }
}

/// A type of values, or an element of one, over a base type that has none.
void checkValue(Element type,
                arxml::Documents const& documents,
                Sources const& sources,
                Sink const& sink) {
    const Element reference = type.child(element::swDataDefProps)
                                  .child(element::swDataDefPropsVariants)
                                  .child(element::swDataDefPropsConditional)
                                  .child(element::baseTypeRef);
    if (type.child(element::category).text() != "VALUE" || reference.text().empty()) {
        return;
    }
    const auto target = documents.index.resolve(arxml::referenceAt(reference)).path;
    if (!target) {
        return;
    }
    const Element baseType = sources.elementAt(documents.index.paths().text(*target));
    if (baseType.is(element::swBaseType) &&
        baseType.child(element::baseTypeEncoding).text() == "VOID") {
        sink.add("void-value",
                 "The base type " + inParentheses(documents.index.paths().text(*target)) +
                     " of this type of values has the encoding VOID.");
    }
}

} // namespace

void checkBaseTypes(Sources const& sources, std::vector<Issue>& issues) {
    if (sources.documents() == nullptr) {
        return;
    }
    arxml::Documents const& documents = *sources.documents();
    for (arxml::ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        const Element element = documents.store.at(i);
        const bool isBaseType = element.is(element::swBaseType);
        if (!isBaseType && !element.is(element::implementationDataType) &&
            !element.is(element::implementationDataTypeElement)) {
            continue;
        }
        const std::string path = documents.index.paths().text(element.path());
        const std::size_t before = issues.size();
        const Sink sink(path, issues);
        if (isBaseType) {
            checkBaseType(element, sink);
        } else {
            checkValue(element, documents, sources, sink);
        }
        for (std::size_t issue = before; issue < issues.size(); ++issue) {
            issues[issue].place = sources.originOf(element);
        }
    }
}

std::vector<InitialValue> initialValues(Sources const& sources) {
    if (sources.documents() == nullptr) {
        return {};
    }
    arxml::Documents const& documents = *sources.documents();
    arxml::PathTree const& paths = documents.index.paths();
    std::vector<InitialValue> values;
    arxml::LooseReference const* type = nullptr; // the last one
    for (arxml::LooseReference const& loose : documents.looseReferences) {
        if (loose.name == element::typeTref) {
            type = &loose;
        }
        // A type and then a constant in one prototype.
        if (loose.name != element::constantRef || type == nullptr || type->path != loose.path ||
            type->file != loose.file) {
            continue;
        }
        const auto typePath = documents.index.resolve(type->reference).path;
        const auto constantPath = documents.index.resolve(loose.reference).path;
        if (typePath && constantPath) {
            values.push_back({paths.text(loose.path),
                              paths.text(*typePath),
                              paths.text(*constantPath),
                              sources.originOf(loose.file, loose.position)});
        }
    }
    return values;
}

} // namespace velum::check
