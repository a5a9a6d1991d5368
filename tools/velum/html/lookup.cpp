#include "html/lookup.h"

#include "html/scale.h"
#include "show/texts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <velum_arxml/notation/number.h>

namespace velum::html {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
/// Of a file that gives sizes only, so that few bytes can't ask for much memory.
constexpr std::size_t mostNumbered = 4096;

Values valuesOf(types::ApplicationValueSpecification const& content) {
    Values values;
    for (const QOB::String text : content.getVs()) {
        values.add(text.isValid() ? std::string(text) : std::string());
    }
    return values;
}

Values numbered(std::size_t count) {
    Values values;
    for (std::size_t i = 1; i <= std::min(count, mostNumbered); ++i) {
        values.add(std::to_string(i));
    }
    return values;
}

std::vector<std::size_t> sizesOf(QOB::Sequence<QOB::Integer> const& sizes) {
    std::vector<std::size_t> all;
    for (const QOB::Integer size : sizes) {
        const int number = size.isValid() ? static_cast<int>(size) : 0;
        all.push_back(static_cast<std::size_t>(std::max(number, 0)));
    }
    return all;
}

/// A shared axis is described where it is shared from.
void describe(LookupAxis& axis, types::Axis const& type, int depth = 0) {
    if (!type.isValid() || depth > 8) {
        return;
    }
    if (type.hasSharedAxis()) {
        const types::SharedAxisType shared = type.getSharedAxis();
        describe(axis, shared.getAxis(), depth + 1);
        const std::string name = show::nameOf(shared);
        axis.name = name.empty() ? axis.name : name;
        return;
    }
    const types::PrimitiveType input = type.getInputVariableType();
    const types::PrimitiveType own = type.getBaseType();
    const std::string name = show::nameOf(input.isValid() ? input : own);
    axis.name = name.empty() ? axis.name : name;
    axis.unit = unitOf(input.isValid() ? input : own);
}

std::string sizesText(std::vector<std::size_t> const& sizes) {
    std::string text;
    for (const std::size_t size : sizes) {
        text += text.empty() ? "" : " x ";
        text += std::to_string(size);
    }
    return text;
}

std::size_t productOf(std::vector<std::size_t> const& sizes) {
    std::size_t product = 1;
    for (const std::size_t size : sizes) {
        product = size == 0 ? 0 : std::min(product * size, std::size_t{1} << 40U);
    }
    return product;
}

/// Reads a constant axis by axis.
class Reader {
public:
    Reader(types::LookupTableSpecification content, types::LookupTableType type)
        : content_(std::move(content)), type_(std::move(type)) {}

    Lookup read() {
        lookup_.values = valuesOf(types::ApplicationValueSpecification(content_));
        readValueType();
        readAxes();
        compareWithType();
        arrange();
        return std::move(lookup_);
    }

private:
    void readValueType() {
        if (!type_.isValid()) {
            lookup_.name = "Value";
            return;
        }
        const types::PrimitiveType values =
            type_.hasValueAxisDataType() ? type_.getValueAxisDataType() : type_.getBaseType();
        lookup_.name = show::nameOf(type_.hasValueAxisDataType() ? values : types::PrimitiveType());
        lookup_.name = lookup_.name.empty() ? show::nameOf(type_) : lookup_.name;
        lookup_.unit = unitOf(values);
    }

    void readAxes() {
        std::vector<types::Axis> described;
        if (type_.isValid()) {
            for (const types::Axis axis : type_.getAxeses()) {
                described.push_back(axis);
            }
        }
        std::vector<Values> points;
        for (const types::LookupTableSpecification axis : content_.getAxeses()) {
            points.push_back(valuesOf(types::ApplicationValueSpecification(axis)));
        }
        const std::vector<std::size_t> sizes = sizesOf(content_.getDimensionses());
        const std::size_t count =
            std::max(points.empty() ? sizes.size() : points.size(), std::size_t{1});
        for (std::size_t i = 0; i < count; ++i) {
            LookupAxis axis;
            axis.name = "Axis " + std::to_string(i + 1);
            describe(axis, i < described.size() ? described[i] : types::Axis());
            if (i < points.size()) {
                axis.points = std::move(points[i]);
            }
            if (axis.points.size() == 0) {
                const std::size_t size = i < sizes.size()       ? sizes[i]
                                         : count == 1           ? lookup_.values.size()
                                         : i < described.size() ? pointsOf(described[i])
                                                                : 0;
                axis.points = numbered(size);
            }
            lookup_.axes.push_back(std::move(axis));
        }
    }

    static std::size_t pointsOf(types::Axis const& axis) {
        const types::Axis own = axis.hasSharedAxis() ? axis.getSharedAxis().getAxis() : axis;
        const QOB::Integer size = own.isValid() ? own.getDimensions() : QOB::Integer();
        return size.isValid() && static_cast<int>(size) > 0
                   ? static_cast<std::size_t>(static_cast<int>(size))
                   : 0;
    }

    void compareWithType() {
        if (!type_.isValid()) {
            return;
        }
        std::vector<std::size_t> expected;
        for (const types::Axis axis : type_.getAxeses()) {
            expected.push_back(pointsOf(axis));
        }
        bool isOther = expected.size() != lookup_.axes.size();
        for (std::size_t i = 0; !isOther && i < expected.size(); ++i) {
            isOther = expected[i] != 0 && lookup_.axes[i].points.size() > expected[i];
        }
        if (isOther) {
            lookup_.notes.push_back("The constant does not fit the table " + show::nameOf(type_) +
                                    ": it has " + sizesText(sizes()) + " points, the table has " +
                                    (expected.empty() ? "no axis" : sizesText(expected)) + ".");
        }
    }

    std::vector<std::size_t> sizes() const {
        std::vector<std::size_t> all;
        for (LookupAxis const& axis : lookup_.axes) {
            all.push_back(axis.points.size());
        }
        return all;
    }

    /// Gives each combination of points its value.
    void arrange() {
        const std::size_t needed = productOf(sizes());
        const std::size_t held = lookup_.values.size();
        if (held != needed) {
            lookup_.notes.push_back("The axes have " + sizesText(sizes()) + " points, there are " +
                                    std::to_string(held) + " values.");
        } else if (isTransposed()) {
            transpose();
        }
        for (std::size_t i = needed; i < held; ++i) {
            lookup_.surplus.push_back(lookup_.values.texts[i]);
        }
        // Few values over long axes would make a picture of nothing.
        const std::size_t kept = std::min(needed, std::max(held * 4, mostNumbered));
        if (kept < needed) {
            lookup_.axes = {LookupAxis{"Value", "", numbered(held)}};
            lookup_.surplus.clear();
        }
        const std::size_t size = kept < needed ? lookup_.axes.front().points.size() : needed;
        lookup_.values.texts.resize(size);
        lookup_.values.numbers.resize(size, missing);
    }

    /// Groups of values may stand by the second axis; the dimensions tell, if they differ.
    bool isTransposed() const {
        const std::vector<std::size_t> dimensions = sizesOf(content_.getDimensionses());
        return dimensions.size() == 2 && lookup_.axes.size() == 2 && dimensions != sizes() &&
               dimensions == std::vector{sizes()[1], sizes()[0]};
    }

    void transpose() {
        Values arranged;
        const std::size_t columns = lookup_.axes[0].points.size();
        const std::size_t rows = lookup_.axes[1].points.size();
        for (std::size_t column = 0; column < columns; ++column) {
            for (std::size_t row = 0; row < rows; ++row) {
                arranged.texts.push_back(std::move(lookup_.values.texts[row * columns + column]));
                arranged.numbers.push_back(lookup_.values.numbers[row * columns + column]);
            }
        }
        lookup_.values = std::move(arranged);
    }

    types::LookupTableSpecification content_;
    types::LookupTableType type_;
    Lookup lookup_;
};

/// The mean of a block; what isn't finite makes all of it so.
double meanOf(std::vector<double> const& numbers) {
    double mean = 0.0;
    for (const double number : numbers) {
        mean += number / static_cast<double>(numbers.size());
    }
    return mean;
}

LookupAxis firstOfBlocks(LookupAxis const& axis, std::size_t block) {
    LookupAxis shorter{axis.name, axis.unit, {}};
    for (std::size_t i = 0; i < axis.points.size(); i += block) {
        shorter.points.texts.push_back(axis.points.texts[i]);
        shorter.points.numbers.push_back(axis.points.numbers[i]);
    }
    return shorter;
}

} // namespace

void Values::add(std::string text) {
    const arxml::RealNumber read = arxml::readRealNumber(text);
    numbers.push_back(read.value.value_or(missing));
    texts.push_back(std::move(text));
}

std::string LookupAxis::title() const {
    return unit.empty() ? name : name + " [" + unit + "]";
}

bool LookupAxis::isRising() const {
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double point = points.numbers[i];
        if (!std::isfinite(point) || (i > 0 && !(point > points.numbers[i - 1]))) {
            return false;
        }
    }
    return true;
}

std::string Lookup::title() const {
    return unit.empty() ? name : name + " [" + unit + "]";
}

std::string unitOf(types::PrimitiveType const& type) {
    if (!type.isValid()) {
        return {};
    }
    if (type.hasUnit()) {
        return show::unitText(type.getUnit());
    }
    const types::CompuMethod method = type.getCompuMethod();
    return method.isValid() && method.hasUnit() ? show::unitText(method.getUnit()) : std::string();
}

std::string unitOfObject(QOB::ClassObject const& object) {
    if (const types::Unit unit(object); unit.isValid()) {
        return show::unitText(unit);
    }
    if (const types::CompuMethod method(object); method.isValid()) {
        return method.hasUnit() ? show::unitText(method.getUnit()) : std::string();
    }
    return unitOf(types::PrimitiveType(object));
}

Lookup lookupOf(types::LookupTableSpecification const& values, types::LookupTableType const& type) {
    return Reader(values, type).read();
}

std::vector<Lookup> mapsOf(Lookup const& table, std::size_t most) {
    std::size_t inner = 1;
    for (std::size_t i = 2; i < table.axes.size(); ++i) {
        inner *= table.axes[i].points.size();
    }
    std::vector<Lookup> maps;
    for (std::size_t place = 0; place < std::min(inner, most); ++place) {
        Lookup map{table.name, table.unit, {table.axes[0], table.axes[1]}, {}, {}, {}};
        std::string where;
        std::size_t left = place;
        for (std::size_t i = table.axes.size(); i-- > 2;) {
            LookupAxis const& axis = table.axes[i];
            const std::size_t point = left % axis.points.size();
            left /= axis.points.size();
            std::string outer = axis.name;
            outer += " = ";
            outer += axis.points.texts[point];
            outer += axis.unit.empty() ? "" : " " + axis.unit;
            outer += where.empty() ? "" : ", ";
            where.insert(0, outer);
        }
        map.where = where;
        for (std::size_t i = place; i < table.values.size(); i += inner) {
            map.values.texts.push_back(table.values.texts[i]);
            map.values.numbers.push_back(table.values.numbers[i]);
        }
        maps.push_back(std::move(map));
    }
    return maps;
}

std::size_t blockOf(LookupAxis const& axis, std::size_t most) {
    return std::max((axis.points.size() + most - 1) / most, std::size_t{1});
}

Lookup reduced(Lookup lookup, std::size_t most) {
    const std::size_t wide = blockOf(lookup.axes[0], most);
    const std::size_t high = lookup.axes.size() > 1 ? blockOf(lookup.axes[1], most) : 1;
    if (wide <= 1 && high <= 1) {
        return lookup;
    }
    const std::size_t columns = lookup.axes[0].points.size();
    const std::size_t rows = lookup.axes.size() > 1 ? lookup.axes[1].points.size() : 1;
    Values means;
    for (std::size_t column = 0; column < columns; column += wide) {
        for (std::size_t row = 0; row < rows; row += high) {
            std::vector<double> block;
            for (std::size_t c = column; c < std::min(column + wide, columns); ++c) {
                for (std::size_t r = row; r < std::min(row + high, rows); ++r) {
                    block.push_back(lookup.values.numbers[c * rows + r]);
                }
            }
            means.numbers.push_back(meanOf(block));
            means.texts.push_back(labelText(means.numbers.back()));
        }
    }
    lookup.values = std::move(means);
    lookup.notes.push_back("There are " + std::to_string(columns) +
                           (rows > 1 ? " x " + std::to_string(rows) : std::string()) +
                           " values; each one here is the mean of " + std::to_string(wide) +
                           (rows > 1 ? " x " + std::to_string(high) : std::string()) +
                           " neighbours. \"velum export\" writes all of them.");
    lookup.axes[0] = firstOfBlocks(lookup.axes[0], wide);
    if (lookup.axes.size() > 1) {
        lookup.axes[1] = firstOfBlocks(lookup.axes[1], high);
    }
    return lookup;
}

} // namespace velum::html
