#include "html/table_section.h"

#include "html/pictures.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace velum::html {

namespace {

constexpr std::size_t mostMaps = 16;
constexpr std::size_t mostSurplus = 20;

using Places = std::set<std::size_t>;

/// What stands in a cell: the text of the file, or a word for what isn't there.
void writeValue(Out& out, std::string const& text) {
    if (text.empty()) {
        out << "<i>none</i>";
    } else {
        out << text;
    }
}

void writeBoth(Out& out, std::string const& before, std::string const& after) {
    out << "<del>";
    writeValue(out, before);
    out << "</del> <ins>";
    writeValue(out, after);
    out << "</ins>";
}

/// A cell with the value of the other release in front, if it differs.
void writeCell(Out& out, Drawn const& drawn, std::size_t place, Lookup const* before) {
    Values const& values = drawn.lookup.values;
    if (before != nullptr && drawn.changed.contains(place)) {
        out << "<td class=changed>";
        writeBoth(out, before->values.texts[place], values.texts[place]);
    } else if (std::isfinite(values.numbers[place])) {
        out << "<td>" << values.texts[place];
    } else {
        out << "<td class=bad>";
        writeValue(out, values.texts[place]);
    }
}

/// The heading of a row or column: a point of an axis.
void writePoint(Out& out,
                Drawn const& drawn,
                std::size_t axis,
                std::size_t place,
                Lookup const* before) {
    std::string const& point = drawn.lookup.axes[axis].points.texts[place];
    if (axis == 0 && drawn.lookup.axes.size() > 1) {
        out << "<th scope=col";
    } else {
        out << "<th scope=row";
    }
    if (before != nullptr && before->axes[axis].points.texts[place] != point) {
        out << " class=changed>";
        writeBoth(out, before->axes[axis].points.texts[place], point);
    } else {
        out << ">" << point;
    }
}

void writeCurveNumbers(Out& out, Drawn const& drawn, Lookup const* before) {
    Lookup const& curve = drawn.lookup;
    out << "<table class=num><caption>Values</caption><thead><tr><th scope=col>"
        << curve.axes[0].title() << "<th scope=col>" << curve.title() << "<tbody>";
    for (std::size_t i = 0; i < curve.values.size(); ++i) {
        out << "<tr>";
        writePoint(out, drawn, 0, i, before);
        writeCell(out, drawn, i, before);
    }
    out << "</table>";
}

/// Rows stand as in the picture: the last point of the second axis is the uppermost one.
void writeMapNumbers(Out& out, Drawn const& drawn, Lookup const* before) {
    Lookup const& map = drawn.lookup;
    const std::size_t columns = map.axes[0].points.size();
    const std::size_t rows = map.axes[1].points.size();
    out << "<table class=num><caption>Values: " << map.axes[1].title() << " down, "
        << map.axes[0].title() << " across</caption><thead><tr><td>";
    for (std::size_t column = 0; column < columns; ++column) {
        writePoint(out, drawn, 0, column, before);
    }
    out << "<tbody>";
    for (std::size_t row = rows; row-- > 0;) {
        out << "<tr>";
        writePoint(out, drawn, 1, row, before);
        for (std::size_t column = 0; column < columns; ++column) {
            writeCell(out, drawn, column * rows + row, before);
        }
    }
    out << "</table>";
}

void writeNotes(Out& out, Lookup const& lookup) {
    for (std::string const& note : lookup.notes) {
        out << "<p class=note>" << note;
    }
    if (!lookup.surplus.empty()) {
        out << "<p class=note>Without a place in the table: ";
        for (std::size_t i = 0; i < std::min(lookup.surplus.size(), mostSurplus); ++i) {
            out << lookup.surplus[i] << " ";
        }
        if (lookup.surplus.size() > mostSurplus) {
            out << "and " << lookup.surplus.size() - mostSurplus << " more";
        }
    }
}

/// What the pointer is at goes into the last paragraph.
void endFigure(Out& out, Drawn const& drawn, Lookup const* before) {
    out << "</div><div class=scroll tabindex=0 role=group aria-label=\"Values of "
        << drawn.lookup.title() << "\">";
    if (drawn.lookup.axes.size() == 1) {
        writeCurveNumbers(out, drawn, before);
    } else {
        writeMapNumbers(out, drawn, before);
    }
    out << "</div><p class=at aria-hidden=true>&nbsp;</figure>";
}

void drawEither(Out& out, Drawn const& drawn) {
    if (drawn.lookup.axes.size() == 1) {
        drawCurve(out, drawn);
    } else {
        drawMap(out, drawn);
    }
}

std::size_t mostOf(Lookup const& lookup) {
    return lookup.axes.size() == 1 ? mostCurvePoints : mostPoints;
}

/// Where the changed values stand in what is drawn, if that has fewer.
Places placesDrawn(Lookup const& lookup, Places const& changed) {
    const std::size_t wide = blockOf(lookup.axes[0], mostOf(lookup));
    const bool isMap = lookup.axes.size() > 1;
    const std::size_t high = isMap ? blockOf(lookup.axes[1], mostOf(lookup)) : 1;
    const std::size_t rows = isMap ? lookup.axes[1].points.size() : 1;
    Places drawn;
    for (const std::size_t place : changed) {
        drawn.insert(place / rows / wide * ((rows + high - 1) / high) + place % rows / high);
    }
    return drawn;
}

bool haveSameShape(Lookup const& before, Lookup const& after) {
    const auto isSame = [](LookupAxis const& a, LookupAxis const& b) {
        return a.points.size() == b.points.size();
    };
    return std::equal(
        before.axes.begin(), before.axes.end(), after.axes.begin(), after.axes.end(), isSame);
}

/// Which values differ; none if the tables have different shapes.
Places changedPlaces(Lookup const& before, Lookup const& after) {
    Places changed;
    if (!haveSameShape(before, after)) {
        return changed;
    }
    for (std::size_t i = 0; i < after.values.size(); ++i) {
        if (before.values.texts[i] != after.values.texts[i]) {
            changed.insert(i);
        }
    }
    return changed;
}

/// A curve or a map; `before` has as many axes. Without a scale it has one of its own.
void writeOne(Out& out,
              Lookup const& lookup,
              Lookup const* before,
              std::optional<Span> scale = std::nullopt) {
    const Lookup shown = reduced(lookup, mostOf(lookup));
    const Lookup older = before == nullptr ? Lookup() : reduced(*before, mostOf(*before));
    const Places changed =
        before == nullptr ? Places() : placesDrawn(lookup, changedPlaces(*before, lookup));
    const Span span = scale ? *scale : spanOfBoth(shown.values.numbers, older.values.numbers);
    const Drawn drawn{shown, changed, span};
    writeNotes(out, shown);
    if (before != nullptr && !haveSameShape(*before, lookup)) {
        out << "<p class=note>The number of points changed, so no value is marked.";
    }
    out << "<figure class=lookup><div class=side>";
    if (before == nullptr) {
        drawEither(out, drawn);
        if (shown.axes.size() > 1) {
            drawFamily(out, drawn);
        }
        endFigure(out, drawn, nullptr);
        return;
    }
    out << "<div class=both><div><p>Before</p>";
    drawEither(out, {older, changed, span});
    out << "</div><div><p>After</p>";
    drawEither(out, drawn);
    out << "</div></div>";
    endFigure(out, drawn, haveSameShape(*before, lookup) ? &older : nullptr);
}

void writeMaps(Out& out, Lookup const& lookup, Lookup const* before) {
    writeNotes(out, lookup);
    const std::vector<Lookup> maps = mapsOf(lookup, mostMaps);
    const std::vector<Lookup> older =
        before == nullptr ? std::vector<Lookup>() : mapsOf(*before, mostMaps);
    std::size_t count = 1;
    for (std::size_t i = 2; i < lookup.axes.size(); ++i) {
        count *= lookup.axes[i].points.size();
    }
    if (count > maps.size()) {
        out << "<p class=note>The first " << maps.size() << " of " << count
            << " maps are drawn. &quot;velum export&quot; writes all values.";
    }
    const Span scale = before == nullptr
                           ? spanOf(lookup.values.numbers)
                           : spanOfBoth(lookup.values.numbers, before->values.numbers);
    if (before == nullptr) {
        out << "<div class=row>";
    } else {
        out << "<div>";
    }
    for (std::size_t i = 0; i < maps.size(); ++i) {
        out << "<div><h5>" << maps[i].where << "</h5>";
        writeOne(out, maps[i], i < older.size() ? &older[i] : nullptr, scale);
        out << "</div>";
    }
    out << "</div>";
}

} // namespace

void writeTable(Out& out, Lookup const& lookup, Lookup const* before) {
    if (before != nullptr && before->axes.size() != lookup.axes.size()) {
        out << "<h5>Before</h5>";
        writeTable(out, *before);
        out << "<h5>After</h5>";
        before = nullptr;
    }
    if (lookup.axes.size() < 3) {
        writeOne(out, lookup, before);
    } else {
        writeMaps(out, lookup, before);
    }
}

bool writePicture(Out& out, Lookup const& lookup) {
    if (lookup.axes.size() > 2) {
        return false;
    }
    const Lookup shown = reduced(lookup, mostOf(lookup));
    const Places none;
    const Drawn drawn{shown, none, spanOf(shown.values.numbers)};
    if (shown.axes.size() == 1) {
        drawCurve(out, drawn, true);
    } else {
        drawMap(out, drawn, true);
    }
    out << "\n";
    return true;
}

} // namespace velum::html
