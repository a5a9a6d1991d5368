#include "html/class_diagram.h"

#include "describe/words.h"
#include "html/pictures.h"

#include <algorithm>
#include <string>
#include <vector>

namespace velum::html {

namespace {

constexpr double boxHeight = 26;
constexpr double gapAcross = 16;
constexpr double gapDown = 40;
constexpr double mostAcross = 860;
constexpr double lineHeight = 17;

/// A class on paper.
struct ClassBox {
    std::string text;
    bool isAbstract = false;
    double left = 0;
    double top = 0;
    double width = 0;

    double middle() const { return left + width / 2; }
};

double widthOf(std::string const& text) {
    return static_cast<double>(text.size()) * 7.0 + 20;
}

double widthOfTitle(std::string const& text) {
    return static_cast<double>(text.size()) * 8.2 + 24;
}

ClassBox boxOf(describe::Type const& here, describe::Type const& type) {
    const std::string text = nameIn(*here.package, type);
    return {text, type.isAbstract, 0, 0, widthOfTitle(text)};
}

/// Rows of boxes, as many as have room beside each other; returns where they end.
double arrange(std::vector<ClassBox>& boxes, double top) {
    double left = 10;
    for (ClassBox& box : boxes) {
        if (left > 10 && left + box.width > mostAcross) {
            left = 10;
            top += boxHeight + 14;
        }
        box.left = left;
        box.top = top;
        left += box.width + gapAcross;
    }
    return boxes.empty() ? top : top + boxHeight;
}

std::string lineOf(describe::Type const& type, describe::Property const& property) {
    std::string text = property.isDerived ? "/" : "";
    text += property.name;
    if (property.type != nullptr) {
        text += ": " + nameIn(*type.package, *property.type);
    }
    return text + " [" + multiplicity(property) + "]";
}

void drawBox(Out& out, ClassBox const& box, double height) {
    out << "<rect class=\"box\" x=\"" << Px{box.left} << "\" y=\"" << Px{box.top} << "\" width=\""
        << Px{box.width} << "\" height=\"" << Px{height} << "\" rx=\"3\"/><text class=\"mid title";
    if (box.isAbstract) {
        out << " abstract";
    }
    out << "\" x=\"" << Px{box.middle()} << "\" y=\"" << Px{box.top + 17} << "\">" << box.text
        << "</text>";
}

/// A line from a class up to a super, with an empty arrowhead.
void drawInheritance(Out& out, ClassBox const& from, double to, double toAcross) {
    out << "<path class=\"axis\" d=\"M" << Px{from.middle()} << " " << Px{from.top} << "V"
        << Px{to + 24} << "H" << Px{toAcross} << "V" << Px{to + 10}
        << "\"/><path class=\"head\" d=\"M" << Px{toAcross} << " " << Px{to} << "l6 10h-12z\"/>";
}

class ClassDiagram {
public:
    explicit ClassDiagram(describe::Type const& type) : type_(type), own_(boxOf(type, type)) {
        for (describe::Type const* const super : type.supers) {
            supers_.push_back(boxOf(type, *super));
        }
        for (describe::Type const* const sub : type.subs) {
            subs_.push_back(boxOf(type, *sub));
        }
        for (describe::Property const& property : type.properties) {
            lines_.push_back(lineOf(type, property));
            own_.width = std::max(own_.width, widthOf(lines_.back()));
            if (property.type != nullptr && property.type->isClass() && property.type != &type) {
                ends_.push_back({&property, boxOf(type, *property.type)});
            }
        }
        place();
    }

    void draw(Out& out) const {
        beginPicture(out, width_, height_, "Class diagram of " + type_.name, false);
        out << ">";
        for (ClassBox const& super : supers_) {
            drawBox(out, super, boxHeight);
            drawInheritance(out, own_, super.top + boxHeight, super.middle());
        }
        for (ClassBox const& sub : subs_) {
            drawBox(out, sub, boxHeight);
        }
        if (!subs_.empty()) {
            drawTrunk(out);
        }
        drawOwn(out);
        for (End const& end : ends_) {
            drawEnd(out, end);
        }
        out << "</svg>";
    }

private:
    struct End {
        describe::Property const* property;
        ClassBox box;
    };

    void place() {
        const double above = arrange(supers_, 10);
        own_.left = 10;
        own_.top = supers_.empty() ? 10 : above + gapDown;
        ownHeight_ = boxHeight + (lines_.empty() ? 0 : 8 + lineHeight * double(lines_.size()));
        double label = 60;
        for (End const& end : ends_) {
            label = std::max(label, widthOf(end.property->name));
        }
        double down = own_.top;
        double right = own_.left + own_.width;
        for (End& end : ends_) {
            end.box.left = own_.left + own_.width + label + 24;
            end.box.top = down;
            down += boxHeight + 12;
            right = std::max(right, end.box.left + end.box.width);
        }
        ownHeight_ = std::max(ownHeight_, ends_.empty() ? 0.0 : down - own_.top - 12);
        const double bottom = own_.top + ownHeight_;
        height_ = arrange(subs_, bottom + gapDown) + 10;
        height_ = subs_.empty() ? bottom + 10 : height_;
        for (std::vector<ClassBox> const* const boxes : {&supers_, &subs_}) {
            for (ClassBox const& box : *boxes) {
                right = std::max(right, box.left + box.width);
            }
        }
        width_ = right + 12;
    }

    void drawOwn(Out& out) const {
        drawBox(out, own_, ownHeight_);
        if (lines_.empty()) {
            return;
        }
        out << "<path class=\"axis\" d=\"M" << Px{own_.left} << " " << Px{own_.top + boxHeight}
            << "h" << Px{own_.width} << "\"/>";
        double y = own_.top + boxHeight + 17;
        for (std::string const& line : lines_) {
            out << "<text x=\"" << Px{own_.left + 10} << "\" y=\"" << Px{y} << "\">" << line
                << "</text>";
            y += lineHeight;
        }
    }

    /// Subclasses in several rows hang on one line.
    void drawTrunk(Out& out) const {
        const double bottom = own_.top + ownHeight_;
        const double across = own_.left + 40;
        for (ClassBox const& sub : subs_) {
            out << "<path class=\"axis\" d=\"M" << Px{sub.middle()} << " " << Px{sub.top} << "V"
                << Px{sub.top - 7} << "H" << Px{across} << "V" << Px{bottom + 10} << "\"/>";
        }
        out << "<path class=\"head\" d=\"M" << Px{across} << " " << Px{bottom} << "l6 10h-12z\"/>";
    }

    void drawEnd(Out& out, End const& end) const {
        const double from = own_.left + own_.width;
        const double y = end.box.top + boxHeight / 2;
        drawBox(out, end.box, boxHeight);
        if (end.property->isComposite) {
            out << "<path class=\"owns\" d=\"M" << Px{from} << " " << Px{y} << "l8 -5l8 5l-8 5z\"/>"
                << "<path class=\"axis\" d=\"M" << Px{from + 16} << " " << Px{y} << "H"
                << Px{end.box.left} << "\"/>";
        } else {
            out << "<path class=\"axis\" d=\"M" << Px{from} << " " << Px{y} << "H"
                << Px{end.box.left} << "m-8 -5l8 5l-8 5\"/>";
        }
        out << "<text x=\"" << Px{from + 20} << "\" y=\"" << Px{y - 4} << "\">"
            << end.property->name << "</text>";
    }

    describe::Type const& type_;
    ClassBox own_;
    double ownHeight_ = boxHeight;
    std::vector<ClassBox> supers_;
    std::vector<ClassBox> subs_;
    std::vector<std::string> lines_;
    std::vector<End> ends_;
    double width_ = 0;
    double height_ = 0;
};

} // namespace

void drawClass(Out& out, describe::Type const& type) {
    ClassDiagram(type).draw(out);
}

} // namespace velum::html
