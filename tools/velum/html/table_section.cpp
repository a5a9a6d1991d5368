#include "html/table_section.h"

#include "html/pictures.h"

#include <algorithm>
#include <cmath>
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

/// A cell with the value of the other release in front, if there is one.
void writeCell(Out& out, Drawn const& drawn, std::size_t place, Values const* before) {
    const bool isBad = !std::isfinite(drawn.lookup.values.numbers[place]);
    if (drawn.changed.contains(place)) {
        out << "<td class=changed>";
        if (before != nullptr) {
            out << "<del>";
            writeValue(out, before->texts[place]);
            out << "</del> <ins>";
            writeValue(out, drawn.lookup.values.texts[place]);
            out << "</ins>";
            return;
        }
    } else if (isBad) {
        out << "<td class=bad>";
    } else {
        out << "<td>";
    }
    writeValue(out, drawn.lookup.values.texts[place]);
}

void writeCurveNumbers(Out& out, Drawn const& drawn, Values const* before) {
    Lookup const& curve = drawn.lookup;
    out << "<table class=num><caption>Values</caption><thead><tr><th scope=col>"
        << curve.axes[0].title() << "<th scope=col>" << curve.title() << "<tbody>";
    for (std::size_t i = 0; i < curve.values.size(); ++i) {
        out << "<tr><th scope=row>" << curve.axes[0].points.texts[i];
        writeCell(out, drawn, i, before);
    }
    out << "</table>";
}

/// Rows stand as in the picture: the last point of the second axis is the uppermost one.
void writeMapNumbers(Out& out, Drawn const& drawn, Values const* before) {
    Lookup const& map = drawn.lookup;
    const std::size_t columns = map.axes[0].points.size();
    const std::size_t rows = map.axes[1].points.size();
    out << "<table class=num><caption>Values: " << map.axes[1].title() << " down, "
        << map.axes[0].title() << " across</caption><thead><tr><td>";
    for (std::string const& point : map.axes[0].points.texts) {
        out << "<th scope=col>" << point;
    }
    out << "<tbody>";
    for (std::size_t row = rows; row-- > 0;) {
        out << "<tr><th scope=row>" << map.axes[1].points.texts[row];
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
void endFigure(Out& out, Drawn const& drawn, Values const* before) {
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

/// A curve or a map; `before` has as many axes.
void writeOne(Out& out, Lookup const& lookup, Lookup const* before) {
    const Lookup shown = reduced(lookup, mostOf(lookup));
    const Places changed =
        before == nullptr ? Places() : placesDrawn(lookup, changedPlaces(*before, lookup));
    const Drawn drawn{shown, changed};
    writeNotes(out, shown);
    out << "<figure class=lookup><div class=side>";
    if (before == nullptr) {
        drawEither(out, drawn);
        if (shown.axes.size() > 1) {
            drawFamily(out, drawn);
        }
        endFigure(out, drawn, nullptr);
        return;
    }
    const Lookup older = reduced(*before, mostOf(*before));
    out << "<div class=both><div><p>Before</p>";
    drawEither(out, {older, changed});
    out << "</div><div><p>After</p>";
    drawEither(out, drawn);
    out << "</div></div>";
    endFigure(out, drawn, &older.values);
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
    for (std::size_t i = 0; i < maps.size(); ++i) {
        out << "<h5>" << maps[i].where << "</h5>";
        writeOne(out, maps[i], i < older.size() ? &older[i] : nullptr);
    }
}

} // namespace

std::set<std::size_t> changedPlaces(Lookup const& before, Lookup const& after) {
    Places changed;
    if (before.axes.size() != after.axes.size() || before.values.size() != after.values.size()) {
        return changed;
    }
    for (std::size_t i = 0; i < before.axes.size(); ++i) {
        if (before.axes[i].points.size() != after.axes[i].points.size()) {
            return changed;
        }
    }
    for (std::size_t i = 0; i < before.values.size(); ++i) {
        if (before.values.texts[i] != after.values.texts[i]) {
            changed.insert(i);
        }
    }
    return changed;
}

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
    const Drawn drawn{shown, {}};
    if (shown.axes.size() == 1) {
        drawCurve(out, drawn, true);
    } else {
        drawMap(out, drawn, true);
    }
    out << "\n";
    return true;
}

} // namespace velum::html
