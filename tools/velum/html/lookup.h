#pragma once

#include <cstddef>
#include <string>
#include <vector>
#include <velum_types/types.h>

namespace velum::html {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

/// The values of an axis or of a whole table: as their file writes them, and as numbers. What is no
/// number is NaN, and so is what is missing, which has no text either.
struct Values {
    std::vector<std::string> texts;
    std::vector<double> numbers;

    std::size_t size() const { return numbers.size(); }
    void add(std::string text);
};

struct LookupAxis {
    std::string name; ///< "Axis 1" if the axis has none.
    std::string unit; ///< Empty if it has none.
    Values points;    ///< The numbers from 1 if nothing gives the points.

    /// The name with the unit behind it.
    std::string title() const;
    /// Whether each point is above the one before, so that they can be drawn to scale.
    bool isRising() const;
};

/// A lookup table with the values that a constant fills it with.
struct Lookup {
    std::string name;             ///< Of what the values are.
    std::string unit;             ///< Of the values.
    std::vector<LookupAxis> axes; ///< One at least.
    Values values;                ///< One for each combination of points; the last axis is fastest.
    std::vector<std::string> surplus; ///< Values for which there is no place.
    std::vector<std::string> notes;   ///< Sentences: what doesn't fit, what the picture leaves out.
    std::string where{};              ///< Of a map out of a row of them: which one it is.

    std::string title() const;
};

/// The unit of a type, its own or that of its method; empty if it has none.
std::string unitOf(types::PrimitiveType const& type);

/// The unit of an object of any class, for who looks for all that has to do with it.
std::string unitOfObject(QOB::ClassObject const& object);

/// What a constant holds, in the axes of the type that it fills; `type` may be empty.
Lookup lookupOf(types::LookupTableSpecification const& values, types::LookupTableType const& type);

/// The maps of which a table of three or more axes is a row: the first two axes, for each
/// combination of points of the others; `where` tells which. One for a table of two axes.
std::vector<Lookup> mapsOf(Lookup const& table, std::size_t most);

/// How many points of an axis make one where it has more than `most`.
std::size_t blockOf(LookupAxis const& axis, std::size_t most);

/// A map or curve in which no axis has more than `most` points: each number stands for a block of
/// neighbours, of which it is the mean.
Lookup reduced(Lookup lookup, std::size_t most);

} // namespace velum::html
