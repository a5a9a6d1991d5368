#include "writing/element_output.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/scripts.h>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

namespace {

/// One piece of a display name: plain text, or a raised or lowered part.
struct NamePiece {
    enum class Script { none, raised, lowered };
    Script script;
    std::string text;
};

/// Finds where the raised and lowered parts of a unit's name stand, from the name with the parts in
/// place: m/s² is "m/s" with a raised "2" at the end.
class DisplayName {
public:
    DisplayName(std::string plain, std::string whole)
        : plain_(std::move(plain)), whole_(std::move(whole)) {}

    void add(NamePiece::Script script, std::string text) {
        std::string shown =
            script == NamePiece::Script::raised ? superscript(text) : subscript(text);
        parts_.push_back({{script, std::move(text)}, std::move(shown)});
    }

    /// All pieces in order. Where the whole name doesn't tell the places, the parts follow the
    /// plain text; `isKnown` is false then.
    std::vector<NamePiece> pieces(bool& isKnown) {
        isKnown = match(0, 0);
        if (isKnown) {
            return found_;
        }
        std::vector<NamePiece> list = {{NamePiece::Script::none, plain_}};
        for (Part const& part : parts_) {
            list.push_back(part.piece);
        }
        return list;
    }

private:
    struct Part {
        NamePiece piece;
        std::string shown;
        bool isUsed = false;
    };

    bool match(std::size_t inPlain, std::size_t inWhole) {
        if (++steps_ > mostSteps) {
            return false;
        }
        if (inWhole == whole_.size()) {
            bool isWhole = inPlain == plain_.size();
            for (Part const& part : parts_) {
                isWhole = isWhole && part.isUsed;
            }
            return isWhole;
        }
        for (Part& part : parts_) {
            if (part.shown.empty() || whole_.compare(inWhole, part.shown.size(), part.shown) != 0) {
                continue;
            }
            const bool before = std::exchange(part.isUsed, true);
            found_.push_back(part.piece);
            if (match(inPlain, inWhole + part.shown.size())) {
                return true;
            }
            found_.pop_back();
            part.isUsed = before;
        }
        if (inPlain == plain_.size() || plain_[inPlain] != whole_[inWhole]) {
            return false;
        }
        const std::vector<NamePiece> before = found_;
        if (found_.empty() || found_.back().script != NamePiece::Script::none) {
            found_.push_back({NamePiece::Script::none, {}});
        }
        found_.back().text += plain_[inPlain];
        if (match(inPlain + 1, inWhole + 1)) {
            return true;
        }
        found_ = before;
        return false;
    }

    static constexpr int mostSteps = 10000;
    std::string plain_;
    std::string whole_;
    std::vector<Part> parts_;
    std::vector<NamePiece> found_;
    int steps_ = 0;
};

void writeDisplayName(ElementOutput const& out, types::Unit const& unit) {
    const std::string plain = unit.hasSymbol() ? std::string(unit.getSymbol()) : std::string();
    DisplayName name(plain, tool_note::get(unit, tool_note::displayName).value_or(plain));
    bool hasParts = false;
    for (const QOB::String text : unit.getSuperscripts()) {
        name.add(NamePiece::Script::raised, text);
        hasParts = true;
    }
    for (const QOB::String text : unit.getSubscripts()) {
        name.add(NamePiece::Script::lowered, text);
        hasParts = true;
    }
    if (!unit.hasSymbol() && !hasParts) {
        return;
    }
    bool isKnown = true;
    const std::vector<NamePiece> pieces = name.pieces(isKnown);
    if (!isKnown) {
        out.noPlace("Where the raised and lowered parts of the symbol stand is unknown; they are "
                    "written behind it.");
    }
    out.xml.beginMixed("DISPLAY-NAME");
    for (NamePiece const& piece : pieces) {
        if (piece.script == NamePiece::Script::none) {
            out.xml.text(piece.text);
        } else {
            out.xml.inlineLeaf(
                piece.script == NamePiece::Script::raised ? "SUP" : "SUB", {}, {}, piece.text);
        }
    }
    out.xml.endMixed("DISPLAY-NAME");
}

double neighbour(double number, int steps) {
    const double towards = steps < 0 ? -std::numeric_limits<double>::infinity()
                                     : std::numeric_limits<double>::infinity();
    for (int i = std::abs(steps); i > 0; --i) {
        number = std::nextafter(number, towards);
    }
    return number;
}

/// Of the numbers close to a guess that read back as wanted, the one with the shortest text.
template <class ReadsBack>
std::optional<double> shortestThat(double guess, ReadsBack const& readsBack) {
    constexpr int reach = 4;
    std::optional<double> best;
    for (int steps = -reach; steps <= reach; ++steps) {
        const double candidate = neighbour(guess, steps);
        if (readsBack(candidate) &&
            (!best || numberInFile(candidate).size() < numberInFile(*best).size())) {
            best = candidate;
        }
    }
    return best;
}

struct Conversion {
    double factor = 1.0;
    double offset = 0.0;
    bool isExact = true;
};

/// The file converts from the SI unit, the model to it.
Conversion conversionOf(double convFactor, double convOffset) {
    Conversion conversion;
    const auto factor =
        shortestThat(1.0 / convFactor, [&](double f) { return 1.0 / f == convFactor; });
    conversion.factor = factor.value_or(1.0 / convFactor);
    if (convOffset == 0.0) {
        conversion.isExact = factor.has_value();
        return conversion;
    }
    const auto offset = shortestThat(-convOffset * conversion.factor, [&](double o) {
        return -o / conversion.factor == convOffset;
    });
    conversion.offset = offset.value_or(-convOffset * conversion.factor);
    conversion.isExact = factor && offset;
    return conversion;
}

/// Whether a reader takes the numbers: it refuses those that it can't turn round.
bool isReadable(Conversion const& conversion) {
    return conversion.factor != 0.0 && std::isfinite(conversion.factor) &&
           std::isfinite(conversion.offset) && std::isfinite(1.0 / conversion.factor) &&
           std::isfinite(conversion.offset / conversion.factor);
}

void writeConversion(ElementOutput const& out, types::Unit const& unit) {
    const double convFactor = unit.getConvFactor();
    const double convOffset = unit.getConvOffset();
    const Conversion conversion = conversionOf(convFactor, convOffset);
    if (!isReadable(conversion)) {
        out.noPlace("The conversion by the factor " + numberText(convFactor) + " and the offset " +
                    numberText(convOffset) + " can't be written.");
        return;
    }
    if (!conversion.isExact) {
        out.noPlace("The conversion to the SI unit is written rounded.");
    }
    out.xml.leaf("FACTOR-SI-TO-UNIT", numberInFile(conversion.factor));
    out.xml.leaf("OFFSET-SI-TO-UNIT", numberInFile(conversion.offset));
}

} // namespace

void writeUnit(ElementOutput const& out, types::Unit const& unit) {
    writeDisplayName(out, unit);
    writeConversion(out, unit);
    if (unit.hasDimension()) {
        out.reference("PHYSICAL-DIMENSION-REF", unit.getDimension());
    }
}

void writeDimension(ElementOutput const& out, types::Dimension const& dimension) {
    std::array<std::optional<int>, 7> exponents;
    const auto bases = dimension.getBaseDimensions();
    const auto numbers = dimension.getBaseExponents();
    bool isWhole = bases.size() == numbers.size();
    auto number = numbers.begin();
    for (const types::Dimension base : bases) {
        const int place = siDimensionOf(base);
        if (place < 0 || !isWhole || exponents[static_cast<std::size_t>(place)] ||
            !QOB::Integer(*number).isValid()) {
            isWhole = false;
            break;
        }
        exponents[static_cast<std::size_t>(place)] = *number;
        ++number;
    }
    if (!isWhole) {
        out.noPlace("The format has exponents of the seven base dimensions only; none is written.");
        return;
    }
    for (std::size_t i = 0; i < exponents.size(); ++i) {
        if (exponents[i]) {
            out.xml.leaf(siDimensions()[i].exponentTag, std::to_string(*exponents[i]));
        }
    }
}

std::string numberInFile(double number) {
    if (std::isnan(number)) {
        return "NaN";
    }
    if (std::isinf(number)) {
        return number < 0 ? "-INF" : "INF";
    }
    constexpr double largestExact = 9007199254740992.0; // 2 to the power of 53
    if (std::abs(number) <= largestExact) {
        return numberText(number);
    }
    // Digits without an exponent would be read as a whole number of its own.
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(
        text.data(), text.data() + text.size(), number, std::chars_format::scientific);
    return {text.data(), end};
}

} // namespace velum::arxml
