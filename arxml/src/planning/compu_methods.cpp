#include "planning/compu_methods.h"

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

using Kind = CompuMethodPlan::Kind;

namespace {

/// The scales of one direction.
struct Scales {
    std::vector<Element> rational; // COMPU-RATIONAL-COEFFS
    std::vector<Element> text;     // COMPU-SCALE
};

Scales scalesOf(Element direction) {
    Scales scales;
    for (const Element scale : direction.child(element::compuScales).children()) {
        if (const Element coefficients = scale.child(element::compuRationalCoeffs)) {
            scales.rational.push_back(coefficients);
        }
        if (scale.child(element::compuConst)) {
            scales.text.push_back(scale);
        }
    }
    return scales;
}

class Reader {
public:
    Reader(ImportContext const& context, Element method)
        : context_(context),
          toPhysical_(scalesOf(method.child(element::compuInternalToPhys))),
          toInternal_(scalesOf(method.child(element::compuPhysToInternal))) {
        plan_.element = method;
    }

    CompuMethodPlan read() {
        readCategory();
        if (plan_.kind != Kind::none) {
            readTexts();
            readCoefficients();
        }
        return std::move(plan_);
    }

private:
    void readCategory() {
        static const std::unordered_map<std::string_view, Kind> kinds = {
            {"IDENTICAL", Kind::identical},
            {"LINEAR", Kind::linear},
            {"SCALE_LINEAR", Kind::linear},
            {"RAT_FUNC", Kind::rational},
            {"SCALE_RATIONAL", Kind::rational},
            {"TEXTTABLE", Kind::textTable},
            {"BITFIELD_TEXTTABLE", Kind::textTable},
            {"SCALE_LINEAR_AND_TEXTTABLE", Kind::linearAndTextTable},
            {"SCALE_RATIONAL_AND_TEXTTABLE", Kind::linearAndTextTable},
        };
        const std::string_view category = plan_.element.child(element::category).text();
        if (category.empty()) {
            inferCategory();
            return;
        }
        const auto found = kinds.find(category);
        plan_.kind = found == kinds.end() ? Kind::none : found->second;
        plan_.isBitField = category == "BITFIELD_TEXTTABLE";
    }

    void inferCategory() {
        std::vector<Element> const& rational = rationalScales();
        const bool hasText = !toPhysical_.text.empty() || !toInternal_.text.empty();
        char const* word = "IDENTICAL";
        plan_.kind = Kind::identical;
        if (hasText && !rational.empty()) {
            plan_.kind = Kind::linearAndTextTable;
            word = "SCALE_LINEAR_AND_TEXTTABLE";
        } else if (hasText) {
            plan_.kind = Kind::textTable;
            word = "TEXTTABLE";
        } else if (!rational.empty()) {
            const auto hasFew = [&](NameId list, int most) {
                int count = 0;
                for (const Element v : rational.front().child(list).children()) {
                    count += v.is(element::v) || v.is(element::vf) ? 1 : 0;
                }
                return count <= most;
            };
            const bool isLinear =
                hasFew(element::compuNumerator, 2) && hasFew(element::compuDenominator, 1);
            plan_.kind = isLinear ? Kind::linear : Kind::rational;
            word = isLinear ? "LINEAR" : "RAT_FUNC";
        }
        context_.find(plan_.element,
                      Reason::inferred,
                      "The computation method has no category; it is taken as " +
                          std::string(word) + ".");
    }

    /// The direction towards internal values is what the model holds, so it counts if it is there.
    std::vector<Element> const& rationalScales() const {
        return toInternal_.rational.empty() ? toPhysical_.rational : toInternal_.rational;
    }

    void readTexts() {
        if (plan_.isBitField) {
            return;
        }
        for (const Element scale : toPhysical_.text.empty() ? toInternal_.text : toPhysical_.text) {
            readText(scale);
        }
    }

    void readText(Element scale) {
        const Element symbol = scale.child(element::symbol);
        const Element text = scale.child(element::compuConst).child(element::vt);
        const Element lower = scale.child(element::lowerLimit);
        const Element upper = scale.child(element::upperLimit);
        if (!lower || !upper || (!symbol && !text)) {
            return;
        }
        const RealNumber low = readRealNumber(lower.text());
        const RealNumber high = readRealNumber(upper.text());
        for (auto const& [limit, number] : {std::pair(lower, low), std::pair(upper, high)}) {
            if (number.fault) {
                context_.refuseNumber(limit,
                                      *number.fault,
                                      "The limit " + bracketed(limit.text()) + " is no number.");
                return;
            }
        }
        if (*low.value != *high.value) {
            return; // a range is no literal
        }
        // The most negative number is the library's invalid value.
        if (std::trunc(*low.value) != *low.value ||
            std::abs(*low.value) > std::numeric_limits<std::int32_t>::max()) {
            context_.refuse(lower,
                            Reason::outOfRange,
                            "The value " + bracketed(lower.text()) +
                                " is none that a literal can have.");
            return;
        }
        const Element name = symbol && !symbol.text().empty() ? symbol : text;
        plan_.texts.push_back(
            {name.text(), static_cast<std::int32_t>(*low.value), name, lower, upper});
    }

    void readCoefficients() {
        const bool isWanted = plan_.kind == Kind::linear || plan_.kind == Kind::rational ||
                              plan_.kind == Kind::linearAndTextTable;
        if (!isWanted || rationalScales().empty()) {
            return;
        }
        if (rationalScales().size() > 1) {
            leaveOut(rationalScales().front(),
                     "The function has several pieces; the model holds none of them.");
            return;
        }
        const Element written = rationalScales().front();
        const std::optional<Coefficients> read = readPair(written);
        if (!read) {
            return;
        }
        const bool isLine = read->numerator.size() <= 2 && read->denominator.size() == 1;
        if (plan_.kind == Kind::linearAndTextTable && !isLine) {
            plan_.coefficientElements.clear();
            leaveOut(written, "Beside texts the model holds a straight line only; this is none.");
            return;
        }
        if (!toInternal_.rational.empty()) {
            plan_.toInternal = read;
            compareWithOther(*read);
            return;
        }
        const Coefficients turned = inverted(*read);
        if (turned.numerator.empty()) {
            context_.refuse(written,
                            Reason::notInvertible,
                            "The coefficients can't be turned into a function from physical to "
                            "internal values.");
            plan_.coefficientElements.clear();
            return;
        }
        plan_.toInternal = turned;
    }

    /// Says why coefficients are not held though nothing is wrong with them.
    void leaveOut(Element written, std::string text) {
        context_.find(written, Reason::noProperty, std::move(text));
    }

    /// The other direction must say the same; its elements are consumed then.
    void compareWithOther(Coefficients const& toInternal) {
        if (toPhysical_.rational.empty()) {
            return;
        }
        if (toPhysical_.rational.size() > 1) {
            context_.refuse(toPhysical_.rational.front(),
                            Reason::notInvertible,
                            "The function to physical values has several pieces; only the one from "
                            "physical to internal values is held.");
            return;
        }
        const std::size_t before = plan_.coefficientElements.size();
        const Element written = toPhysical_.rational.front();
        const std::optional<Coefficients> read = readPair(written);
        const Coefficients turned = read ? inverted(*read) : Coefficients();
        if (!turned.numerator.empty() && areEquivalent(turned, toInternal)) {
            return;
        }
        plan_.coefficientElements.resize(before);
        if (read) {
            context_.refuse(written,
                            Reason::notInvertible,
                            "This is not the inverse of the function from physical to internal "
                            "values, which counts; this direction is lost.");
        }
    }

    std::optional<Coefficients> readPair(Element written) {
        const Element numerator = written.child(element::compuNumerator);
        const Element denominator = written.child(element::compuDenominator);
        const std::size_t before = plan_.coefficientElements.size();
        Coefficients read;
        const bool isRead =
            readNumbers(numerator, read.numerator) && readNumbers(denominator, read.denominator);
        if (isRead && !read.numerator.empty() && !read.denominator.empty()) {
            read = trimmed(read);
            if (read.denominator != std::vector<double>{0.0}) {
                return read;
            }
        }
        plan_.coefficientElements.resize(before);
        if (isRead) {
            const bool isZero = !read.denominator.empty() && !read.numerator.empty();
            context_.refuse(written,
                            Reason::badNumber,
                            isZero ? "All coefficients of the denominator are zero."
                                   : std::string("There is no ") +
                                         (read.numerator.empty() ? "numerator." : "denominator."));
        }
        return std::nullopt;
    }

    bool readNumbers(Element list, std::vector<double>& numbers) {
        for (const Element v : list.children()) {
            if (!v.is(element::v) && !v.is(element::vf)) {
                continue;
            }
            const RealNumber number = readRealNumber(v.text());
            if (!number.value || !std::isfinite(*number.value)) {
                context_.refuseNumber(v,
                                      number.fault.value_or(Reason::badNumber),
                                      "The coefficient " + bracketed(v.text()) + " is no number.");
                return false;
            }
            if (number.isRounded) {
                context_.note(v,
                              Reason::outOfRange,
                              "The number " + bracketed(v.text()) + " is held rounded.");
            }
            numbers.push_back(*number.value);
            plan_.coefficientElements.push_back(v);
        }
        return true;
    }

    ImportContext context_;
    Scales toPhysical_;
    Scales toInternal_;
    CompuMethodPlan plan_;
};

} // namespace

CompuMethods::CompuMethods(ImportContext const& context, Catalogue const& catalogue) {
    for (const Element method : catalogue.ofKind(element::compuMethod)) {
        byElement_.emplace(method.index(), Reader(context, method).read());
    }
}

std::optional<Line> CompuMethods::lineOf(Element method) const {
    if (!method) {
        return std::nullopt;
    }
    CompuMethodPlan const& plan = at(method);
    Line line;
    const bool isLine = plan.kind == Kind::linear || plan.kind == Kind::linearAndTextTable;
    if (!isLine || !plan.toInternal || !readLine(*plan.toInternal, line)) {
        return std::nullopt;
    }
    return line;
}

} // namespace velum::arxml
