#include "html/section.h"
#include "html/table_section.h"
#include "html/type_pictures.h"
#include "model/objects.h"
#include "show/texts.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>
#include <velum_arxml/notation/number.h>
#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationcomment.h>

namespace velum::html {

namespace {

constexpr std::size_t mostRows = 2000;
constexpr std::size_t mostOpenRows = 40;
constexpr std::size_t mostCharacters = 2000;

std::string cut(std::string text) {
    if (text.size() > mostCharacters) {
        text.resize(mostCharacters);
        text += "...";
    }
    return text;
}

/// The row of a member: where it begins, how long it is, and what it is.
class Layout {
public:
    Layout(Out& out, Subject const& subject)
        : out_(out), contents_(subject.contents), sizes_(subject.sizes) {}

    void write(types::Structure const& structure) {
        total_ = sizes_.of(structure);
        out_ << "<table class=layout><caption>Members, at bytes from the beginning, packed without "
                "gaps</caption><thead><tr><th scope=col>At<th scope=col>Bits";
        if (total_) {
            out_ << "<th scope=col>Place";
        }
        out_ << "<th scope=col>Member<th scope=col>Type<tbody>";
        writeMembers(structure, "", 0);
        out_ << "</table>";
        if (rows_ > mostRows) {
            out_ << "<p class=note>There are more members; the first " << mostRows
                 << " are listed.";
        }
    }

private:
    void
    writeMembers(types::Structure const& structure, std::string const& outer, std::size_t depth) {
        for (const types::StructElement member : structure.getElementses()) {
            if (++rows_ > mostRows) {
                return;
            }
            const foundation::ValueType type = typeOf(member);
            const std::optional<std::int64_t> bits = sizes_.of(type);
            writeRow(member, type, outer, bits);
            const types::Structure inner(type);
            const bool isInside =
                member.hasInlineType() && inner.isValid() && depth < show::deepestType;
            const std::optional<std::int64_t> begin = at_;
            if (isInside) {
                writeMembers(inner, outer + show::nameOf(member) + ".", depth + 1);
            }
            at_ = begin && bits ? std::optional(*begin + *bits) : std::nullopt;
        }
    }

    void writeRow(types::StructElement const& member,
                  foundation::ValueType const& type,
                  std::string const& outer,
                  std::optional<std::int64_t> bits) {
        out_ << "<tr><td>";
        if (at_) {
            out_ << *at_ / 8;
            if (*at_ % 8 != 0) {
                out_ << "." << *at_ % 8;
            }
        } else {
            out_ << "?";
        }
        out_ << "<td>";
        if (bits) {
            out_ << *bits;
        } else {
            out_ << "?";
        }
        if (total_) {
            out_ << "<td>";
            drawPlace(bits.value_or(0));
        }
        out_ << "<td>" << outer << "<b>" << show::nameOf(member) << "</b><td>";
        if (!type.isValid()) {
            out_ << show::unknownTypeText(member);
        } else if (type.hasExternalId() && !member.hasInlineType()) {
            writeLink(out_, contents_, type);
            out_ << ": " << show::typeText(type);
        } else {
            out_ << show::typeText(type);
        }
    }

    void drawPlace(std::int64_t bits) {
        constexpr double width = 160;
        const auto whole = static_cast<double>(*total_);
        const double from = at_ ? double(*at_) / whole * width : 0.0;
        const double wide = std::max(1.0, double(bits) / whole * width);
        out_ << "<svg class=place width=160 height=10 aria-hidden=true><path d=\"M0 5h160\"/><rect "
                "x="
             << Px{from} << " width=" << Px{wide} << " height=10 /></svg>";
    }

    Out& out_;
    Contents& contents_;
    Sizes& sizes_;
    std::optional<std::int64_t> total_;
    std::optional<std::int64_t> at_ = 0;
    std::size_t rows_ = 0;
};

void writeLiterals(Out& out, types::Enumeration const& enumeration) {
    const auto literals = enumeration.getOwnedLiterals();
    const bool isLong = static_cast<std::size_t>(literals.size()) > mostOpenRows;
    if (isLong) {
        out << "<details><summary>" << literals.size() << " literals</summary>";
    }
    out << "<table><caption>Literals</caption><thead><tr><th scope=col>Value<th scope=col>Name"
           "<tbody>";
    for (const types::EnumerationLiteral literal : literals) {
        out << "<tr><td>" << static_cast<int>(literal.getValue()) << "<td>"
            << show::nameOf(literal);
    }
    out << "</table>";
    if (isLong) {
        out << "</details>";
    }
}

void writeAxis(Out& out, Contents& contents, types::Axis const& axis, int number) {
    const QOB::Integer points = axis.getDimensions();
    out << "<tr><th scope=row>" << number << "<td>";
    if (axis.hasSharedAxis()) {
        writeLink(out, contents, axis.getSharedAxis());
        out << "<td><td>";
        return;
    }
    out << show::nameOf(axis) << "<td>";
    if (points.isValid()) {
        out << static_cast<int>(points);
    }
    out << "<td>";
    if (axis.hasInputVariableType()) {
        writeLink(out, contents, axis.getInputVariableType());
        out << ": " << show::typeText(axis.getInputVariableType()) << " ";
    }
    if (axis.hasBaseType()) {
        out << show::typeText(axis.getBaseType());
    }
}

void beginAxes(Out& out) {
    out << "<table><caption>Axes</caption><thead><tr><th scope=col>Axis<th scope=col>Name or "
           "shared "
           "axis<th scope=col>Points<th scope=col>Type<tbody>";
}

void writeConstantTable(Out& out,
                        types::ConstantSpecification const& constant,
                        types::LookupTableType const& table) {
    if (const types::LookupTableSpecification values = tableIn(constant); values.isValid()) {
        writeTable(out, lookupOf(values, table));
    }
}

/// Links to the constants that fill a table: the pictures stand there.
void writeFilling(Out& out, Subject const& subject, types::LookupTableType const& table) {
    const std::vector<types::ConstantSpecification> filling = subject.constants.of(table);
    if (filling.empty()) {
        return;
    }
    out << "<p>Filled by ";
    for (std::size_t i = 0; i < filling.size(); ++i) {
        if (i > 0) {
            out << ", ";
        }
        writeLink(out, subject.contents, filling[i]);
    }
    out << (filling.size() > 1 ? "; the pictures are there." : "; the picture is there.");
}

void writeTableType(Out& out, Subject const& subject, types::LookupTableType const& table) {
    beginAxes(out);
    int number = 0;
    for (const types::Axis axis : table.getAxeses()) {
        writeAxis(out, subject.contents, axis, ++number);
    }
    out << "</table>";
    if (table.hasBaseType()) {
        out << "<p>Values: " << show::typeText(table.getBaseType());
    }
    writeFilling(out, subject, table);
}

void writeShared(Out& out, Contents& contents, types::SharedAxisType const& shared) {
    if (shared.hasAxis()) {
        beginAxes(out);
        writeAxis(out, contents, shared.getAxis(), 1);
        out << "</table>";
    }
}

void writeConstant(Out& out, Subject const& subject, types::ConstantSpecification const& constant) {
    const foundation::ValueSpecification value = constant.getConstantValue();
    if (const types::ConstantReference reference(value); reference.isValid()) {
        out << "<p>The value of ";
        if (reference.hasValue()) {
            writeLink(out, subject.contents, reference.getValue());
        } else {
            out << "an unknown constant";
        }
        return;
    }
    const types::LookupTableType table = subject.constants.tableOf(constant);
    if (table.isValid()) {
        out << "<p>Fills ";
        writeLink(out, subject.contents, table);
    }
    if (types::LookupTableSpecification(value).isValid()) {
        writeConstantTable(out, constant, table);
    } else if (value.isValid()) {
        out << "<p>" << cut(show::valueText(value));
    }
}

void writeUnit(Out& out, types::Unit const& unit) {
    const double factor = unit.getConvFactor();
    const double offset = unit.getConvOffset();
    out << "<p>Unit " << show::unitText(unit);
    if (unit.hasConvUnit()) {
        out << ": " << show::unitText(unit.getConvUnit()) << " = " << arxml::numberText(offset)
            << " + " << arxml::numberText(factor) << " × " << show::unitText(unit);
    }
}

void writeMethod(Out& out, types::CompuMethod const& method) {
    const std::string formula = formulaText(method);
    if (!formula.empty()) {
        out << "<p class=formula>" << formula;
    }
    drawMethod(out, method);
}

void writeComments(Out& out, foundation::Element const& element) {
    if (!element.isValid()) {
        return;
    }
    for (const foundation::Comment comment : element.getOwnedComments()) {
        const QOB::String body = comment.getBody();
        if (body.isValid() && !body.view().empty()) {
            out << "<p>" << cut(std::string(body));
        }
    }
}

/// An unnamed type has no section of its own.
void writeMatrix(Out& out, types::Matrix const& matrix) {
    const types::Real base(matrix.getBaseType());
    if (base.isValid() && !base.hasExternalId()) {
        if (const Limits limits = limitsOf(base); limits.areThere()) {
            out << "<p>Each value:";
            drawLimits(out, limits);
        }
    }
}

} // namespace

void writeParts(Out& out, Subject const& subject, QOB::ClassObject const& object) {
    writeComments(out, foundation::Element(object));
    if (const types::Structure structure(object); structure.isValid()) {
        Layout(out, subject).write(structure);
    } else if (const types::Enumeration enumeration(object); enumeration.isValid()) {
        writeLiterals(out, enumeration);
    } else if (const types::LookupTableType table(object); table.isValid()) {
        writeTableType(out, subject, table);
    } else if (const types::SharedAxisType shared(object); shared.isValid()) {
        writeShared(out, subject.contents, shared);
    } else if (const types::ConstantSpecification constant(object); constant.isValid()) {
        writeConstant(out, subject, constant);
    } else if (const types::CompuMethod method(object); method.isValid()) {
        writeMethod(out, method);
    } else if (const types::Matrix matrix(object); matrix.isValid()) {
        writeMatrix(out, matrix);
    } else if (const types::Unit unit(object); unit.isValid()) {
        writeUnit(out, unit);
    }
    if (const foundation::ValueType type(object); type.isValid() && type.hasInvalidValue()) {
        out << "<p>Invalid value: " << cut(show::valueText(type.getInvalidValue()));
    }
}

} // namespace velum::html
