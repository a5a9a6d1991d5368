#include "writing/circles.h"

#include <algorithm>
#include <string>

namespace velum::arxml {

using foundation::ValueSpecification;
using foundation::ValueType;

namespace {

using Entry = Outline::Entry;

/// Walks along the references from types to types and from constants to constants.
class CircleFinder {
public:
    CircleFinder(Outline const& outline, std::vector<WriteFinding>& findings)
        : outline_(outline), findings_(findings), states_(outline.entries().size()) {}

    void find() {
        for (Entry const& entry : outline_.entries()) {
            if (mayRefer(entry.kind) && stateOf(entry) == State::unseen) {
                walkFrom(entry);
            }
        }
    }

private:
    enum class State : unsigned char { unseen, open, done };
    struct Step {
        Entry const* entry;
        std::vector<Entry const*> targets;
    };

    /// Whether it may refer to others of its kind, and so to itself.
    static bool mayRefer(ElementKind kind) {
        return kind == ElementKind::constant || kind >= ElementKind::implementationType;
    }

    State& stateOf(Entry const& entry) {
        return states_[static_cast<std::size_t>(&entry - outline_.entries().data())];
    }

    void walkFrom(Entry const& first) {
        enter(first);
        while (!way_.empty()) {
            Step& last = way_.back();
            if (last.targets.empty()) {
                stateOf(*last.entry) = State::done;
                way_.pop_back();
                continue;
            }
            Entry const* const next = last.targets.back();
            last.targets.pop_back();
            if (stateOf(*next) == State::unseen) {
                enter(*next);
            } else if (stateOf(*next) == State::open) {
                report(*next);
            }
        }
    }

    void enter(Entry const& entry) {
        stateOf(entry) = State::open;
        targets_.clear();
        if (const types::ConstantSpecification constant(entry.object); constant.isValid()) {
            addValue(constant.hasConstantValue() ? constant.getConstantValue()
                                                 : ValueSpecification());
        } else if (const ValueType type(entry.object); type.isValid()) {
            addParts(type);
        }
        way_.push_back({&entry, targets_});
    }

    void report(Entry const& entry) {
        const auto isEntry = [&entry](Step const& step) { return step.entry == &entry; };
        std::string text = "It refers to itself: ";
        for (auto step = std::find_if(way_.begin(), way_.end(), isEntry); step != way_.end();
             ++step) {
            text += std::string(step->entry->path()) + ", ";
        }
        findings_.push_back({Remark::circle, std::string(entry.path()), text + "and back."});
    }

    void add(QOB::ClassObject const& target) {
        if (Entry const* const entry = outline_.find(target)) {
            targets_.push_back(entry);
        }
    }

    /// A type, or what is inside of one.
    void addType(ValueType const& type) {
        if (!type.isValid()) {
            return;
        }
        if (outline_.find(type) != nullptr) {
            add(type);
        } else {
            addParts(type);
        }
    }

    void addParts(ValueType const& type) {
        if (const types::PrimitiveType primitive(type); primitive.isValid()) {
            if (primitive.hasReference()) {
                add(primitive.getReference());
            }
        } else if (const types::Matrix matrix(type); matrix.isValid()) {
            addType(matrix.hasBaseType() ? matrix.getBaseType() : ValueType());
        } else if (const types::Structure structure(type); structure.isValid()) {
            for (const types::StructElement member : structure.getElementses()) {
                addType(member.hasInlineType()
                            ? member.getInlineType()
                            : member.getZorvane_metamodel_types_StructElement_Type());
            }
        }
    }

    void addValue(ValueSpecification const& value) {
        if (const types::ConstantReference reference(value); reference.isValid()) {
            if (reference.hasValue()) {
                add(reference.getValue());
            }
        } else if (const types::MatrixValueSpecification array(value); array.isValid()) {
            for (const types::Cell cell : array.getOwnedCells()) {
                addValue(cell.hasValue() ? cell.getValue() : ValueSpecification());
            }
        } else if (const types::StructureValueSpecification record(value); record.isValid()) {
            for (const types::Slot slot : record.getOwnedSlots()) {
                addValue(slot.hasValue() ? slot.getValue() : ValueSpecification());
            }
        }
    }

    Outline const& outline_;
    std::vector<WriteFinding>& findings_;
    std::vector<State> states_; ///< By the place of the entry.
    std::vector<Step> way_;
    std::vector<Entry const*> targets_;
};

} // namespace

void reportCircles(Outline const& outline, std::vector<WriteFinding>& findings) {
    CircleFinder(outline, findings).find();
}

} // namespace velum::arxml
