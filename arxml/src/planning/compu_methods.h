#pragma once

#include "planning/catalogue.h"
#include "planning/import_context.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>
#include <velum_arxml/notation/coefficients.h>

namespace velum::arxml {

/// What one COMPU-METHOD says.
struct CompuMethodPlan {
    enum class Kind { identical, linear, rational, textTable, linearAndTextTable, none };

    /// One value with a text.
    struct Text {
        std::string_view name;
        std::int32_t value;
        Element nameElement;
        Element lower;
        Element upper;
    };

    Element element;
    Kind kind = Kind::none;                   ///< none: no object is made of it
    std::vector<Text> texts;                  ///< not those of a bit field
    std::optional<Coefficients> toInternal;   ///< as the model holds them
    std::vector<Element> coefficientElements; ///< what they were read from

    /// Whether the values of a type with this method are literals of an enumeration.
    bool isEnumeration() const { return kind == Kind::textTable && !isBitField; }
    bool isBitField = false;
};

/// Reads the computation methods.
class CompuMethods {
public:
    CompuMethods(ImportContext const& context, Catalogue const& catalogue);

    CompuMethodPlan const& at(Element element) const { return byElement_.at(element.index()); }

    /// The method's line from internal to physical values; none if it has no slope or is no line.
    std::optional<Line> lineOf(Element method) const;

private:
    std::unordered_map<ElementStore::Index, CompuMethodPlan> byElement_;
};

} // namespace velum::arxml
