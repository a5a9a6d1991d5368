#pragma once

#include "dictionary/catalogue.h"
#include "dictionary/objects.h"
#include "dictionary/references.h"

#include <array>
#include <vector>

namespace velum::dictionary {

/// Makes `Dimension` of PHYSICAL-DIMENSION and `Unit` of UNIT.
class UnitImporter {
public:
    UnitImporter(const ImportContext& context, References& references, Objects& objects)
        : context_(context), references_(references), objects_(objects) {}

    void build(const Catalogue& catalogue);

    /// Makes the unit that the reference leads to, if there is one, that of an object.
    template <class Object>
    void setUnit(const Object& object, arxml::Element reference) {
        if (const arxml::Element target = references_.target(reference, {arxml::element::unit})) {
            object.setUnit(units_.find(target));
            context_.account.consume(reference);
        }
    }

private:
    struct Member {
        types::Unit unit;
        bool isSi; // factor 1 and offset 0
    };

    void buildDimension(arxml::Element element);
    void setExponents(const types::Dimension& dimension, arxml::Element element);
    types::Dimension baseDimension(std::size_t number);
    void buildUnit(arxml::Element element);
    bool setConversion(const types::Unit& unit, arxml::Element element);
    std::optional<double> readConversion(arxml::Element number, double missing);
    void relateUnits();

    ImportContext context_;
    References& references_;
    Objects& objects_;
    ObjectsOf<types::Dimension> dimensions_;
    ObjectsOf<types::Unit> units_;
    std::array<types::Dimension, 7> baseDimensions_;
    std::unordered_map<arxml::ElementStore::Index, std::vector<Member>> members_; // by dimension
    std::vector<arxml::Element> dimensionElements_;
};

} // namespace velum::dictionary
