#pragma once

#include "making/made_objects.h"
#include "planning/catalogue.h"
#include "planning/references.h"

#include <array>
#include <vector>

namespace velum::arxml {

/// Makes `Dimension` of PHYSICAL-DIMENSION and `Unit` of UNIT.
class UnitImporter {
public:
    UnitImporter(ImportContext const& context, References& references, Objects& objects)
        : context_(context), references_(references), objects_(objects) {}

    void build(Catalogue const& catalogue);

    /// Makes the unit that the reference leads to, if there is one, that of an object.
    template <class Object>
    void setUnit(Object const& object, Element reference) {
        if (const Element target = references_.target(reference, {element::unit})) {
            object.setUnit(units_.find(target));
            context_.account.consume(reference);
        }
    }

private:
    struct Member {
        types::Unit unit;
        bool isSi; // factor 1 and offset 0
    };

    void buildDimension(Element element);
    void setExponents(types::Dimension const& dimension, Element element);
    types::Dimension baseDimension(std::size_t number);
    void buildUnit(Element element);
    bool setConversion(types::Unit const& unit, Element element);
    std::optional<double> readConversion(Element number, double missing);
    void relateUnits();

    ImportContext context_;
    References& references_;
    Objects& objects_;
    ObjectsOf<types::Dimension> dimensions_;
    ObjectsOf<types::Unit> units_;
    std::array<types::Dimension, 7> baseDimensions_;
    std::unordered_map<ElementStore::Index, std::vector<Member>> members_; // by dimension
    std::vector<Element> dimensionElements_;
};

} // namespace velum::arxml
