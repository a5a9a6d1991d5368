#include "qob/qob/objecttext.h"

#include "attributes.h"
#include "qob/kernel/containers/sequence/sequence.h"

#include <cstddef>
#include <ostream>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace QOB {

namespace {

/// In quotes, and in one line whatever the text holds.
std::string inQuotes(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (char const c : text) {
        auto const code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (c == '\n') {
            result += "\\n";
        } else if (c == '\t') {
            result += "\\t";
        } else if (code < ' ' || code == 0x7F) {
            result += "\\x";
            result += digits[code >> 4U];
            result += digits[code & 0xFU];
        } else {
            result += c;
        }
    }
    return result += '"';
}

std::string_view withoutPackage(std::string_view dottedName) {
    return dottedName.substr(dottedName.rfind('.') + 1);
}

std::string objectText(ClassObject const& object) {
    std::string text(withoutPackage(object.getLumvoName(false)));
    if (Integer const id = object.getObjectId(); id.isValid()) {
        text += " #" + std::string(id.toString());
    }
    if (!object.isValid()) {
        return text += " (gone)";
    }
    if (String const name = internal::nameOf(object); name.isValid() && !name.view().empty()) {
        text += ' ' + inQuotes(name.view());
    }
    return text;
}

/// Prints one object after the other without recursion, however deep they contain each other.
class Printer {
public:
    explicit Printer(std::ostream& out) : out_(out) {}

    void print(ClassObject const& object, unsigned depth) {
        begin(object, depth);
        while (!open_.empty()) {
            // `begin` may move the frames: what is needed of one is taken before.
            Frame& frame = open_.back();
            if (frame.nextPart < frame.parts.size()) {
                ClassObject const part(frame.parts[frame.nextPart++]);
                begin(part, frame.depth + 2);
            } else if (frame.nextAttribute < frame.attributes->size()) {
                printAttribute(frame, (*frame.attributes)[frame.nextAttribute++]);
            } else {
                open_.pop_back();
            }
        }
    }

private:
    struct Frame {
        ClassObject object;
        unsigned depth;
        std::vector<Attribute> const* attributes;
        std::size_t nextAttribute = 0;
        std::vector<Object> parts{}; ///< Still to be printed below the last attribute.
        std::size_t nextPart = 0;
    };

    std::ostream& line(unsigned depth) {
        for (unsigned i = 0; i != depth; ++i) {
            out_ << "  ";
        }
        return out_;
    }

    void begin(ClassObject const& object, unsigned depth) {
        bool const isNew = printed_.insert(object.get()).second;
        line(depth) << objectText(object) << (isNew ? "\n" : " (see above)\n");
        if (isNew && object.isValid()) {
            open_.push_back({object, depth, &attributes_.of(object)});
        }
    }

    void printAttribute(Frame& frame, Attribute const& attribute) {
        if (attribute.isWayToOwner) {
            return;
        }
        std::vector<Object> values = attribute.valuesOf(frame.object);
        if (values.empty()) {
            return;
        }
        line(frame.depth + 1) << attribute.name.view() << ':';
        if (attribute.ownsObjects) {
            out_ << '\n';
            frame.parts = std::move(values);
            frame.nextPart = 0;
            return;
        }
        char const* between = " ";
        for (Object const& value : values) {
            out_ << std::exchange(between, ", ") << toText(value);
        }
        out_ << '\n';
    }

    std::ostream& out_;
    Attributes attributes_;
    std::vector<Frame> open_;
    std::unordered_set<void const*> printed_;
};

} // namespace

std::string toText(Object const& value) {
    if (internal::isNothing(value)) {
        return "nothing";
    }
    if (ClassObject const object(value); object.get() != nullptr) {
        return objectText(object);
    }
    bool const isText = std::string_view(value.getLumvoName(false)) == String::getTypeName();
    String const text = value.toString();
    return isText ? inQuotes(text.view()) : std::string(text);
}

void print(std::ostream& out, ImmutableClassObject const& object, unsigned depth) {
    object->getContainerQOB(object.getDeviant()); // raises for one that isn't there
    Printer(out).print(
        {const_cast<NSInterface::ClassObjectIntf*>(object.get()), object.getDeviant()}, depth);
}

} // namespace QOB
