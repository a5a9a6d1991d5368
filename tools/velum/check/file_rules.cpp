#include "check/file_rules.h"

#include <array>
#include <optional>
#include <string_view>
#include <velum_arxml/notation/encoding.h>
#include <velum_arxml/notation/number.h>

namespace velum::check {

using arxml::Encoding;
using arxml::SourceElement;

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

void checkBaseType(SourceElement baseType, Sink const& sink) {
    const SourceElement code = baseType.child("BASE-TYPE-ENCODING");
    const SourceElement native = baseType.child("NATIVE-DECLARATION");
    if (!code || !native) {
        return;
    }
    const Encoding encoding = arxml::readEncoding(code.text(), native.text());
    const std::string said = contradiction(
        encoding, readDeclaration(native.text()), baseType.child("BASE-TYPE-SIZE").text());
    if (!said.empty()) {
        sink.add("encoding-mismatch",
                 "The encoding " + inParentheses(code.text()) +
                     " contradicts the native declaration " + inParentheses(native.text()) + ": " +
                     said + ".");
    }
}

/// A type of values, or an element of one, over a base type that has none.
void checkValue(SourceElement type, arxml::Sources const& sources, Sink const& sink) {
    const SourceElement reference = type.child("SW-DATA-DEF-PROPS")
                                        .child("SW-DATA-DEF-PROPS-VARIANTS")
                                        .child("SW-DATA-DEF-PROPS-CONDITIONAL")
                                        .child("BASE-TYPE-REF");
    if (type.child("CATEGORY").text() != "VALUE") {
        return;
    }
    const auto target = sources.targetOf(reference);
    if (!target) {
        return;
    }
    const SourceElement baseType = sources.elementAt(*target);
    if (baseType.is("SW-BASE-TYPE") && baseType.child("BASE-TYPE-ENCODING").text() == "VOID") {
        sink.add("void-value",
                 "The base type " + inParentheses(*target) +
                     " of this type of values has the encoding VOID.");
    }
}

} // namespace

void checkBaseTypes(arxml::Sources const& sources, std::vector<Issue>& issues) {
    for (const SourceElement element : sources.elementsNamed(
             {"SW-BASE-TYPE", "IMPLEMENTATION-DATA-TYPE", "IMPLEMENTATION-DATA-TYPE-ELEMENT"})) {
        const std::string path = element.path();
        const std::size_t before = issues.size();
        const Sink sink(path, issues);
        if (element.is("SW-BASE-TYPE")) {
            checkBaseType(element, sink);
        } else {
            checkValue(element, sources, sink);
        }
        for (std::size_t issue = before; issue < issues.size(); ++issue) {
            issues[issue].place = element.origin();
        }
    }
}

std::vector<InitialValue> initialValues(arxml::Sources const& sources) {
    const std::vector<arxml::SourceReference> references =
        sources.referencesNamed({"TYPE-TREF", "CONSTANT-REF"});
    std::vector<InitialValue> values;
    arxml::SourceReference const* type = nullptr; // the last one
    for (arxml::SourceReference const& reference : references) {
        if (reference.name == "TYPE-TREF") {
            type = &reference;
            continue;
        }
        // A type and then a constant in one prototype.
        if (type != nullptr && type->path == reference.path &&
            type->origin.file == reference.origin.file && type->target && reference.target) {
            values.push_back({reference.path, *type->target, *reference.target, reference.origin});
        }
    }
    return values;
}

} // namespace velum::check
