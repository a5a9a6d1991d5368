// Random sequences of what a host does to objects of the metaclasses, in several deviants, with
// transactions, undo and merges. After each step, in every deviant: both ends of each association
// agree, what an object contains knows it as its container, the model tells which others it refers
// to, the other deviants show what they showed before, undo, redo and rollback lead back to what
// was printed then, and a merge gave each object that its source changed the source's values.
//
//     frame_random_test [--sequences N] [--seed S] [--length L]
//
// A failure is shrunk and printed with the seed that repeats it.

#include "qob/qob/property.h"
#include "qob/qob/stereotypeobject.h"
#include "qob/qob/transaction.h"
#include "velum_types/tests/support/described.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace types = Zorvane::metamodel::types;

namespace {

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Object;
using VelumTest::ConcreteClass;
using VelumTest::Property;

enum class Action {
    Create,
    Write,
    Destroy,
    Branch,
    RemoveBranch,
    Begin,
    Commit,
    Rollback,
    Undo,
    Redo,
    Merge,
    UseRemoved ///< anything in a deviant that is gone
};
constexpr int ActionCount = 12;
char const* const ActionNames[ActionCount] = {"create",
                                              "write",
                                              "destroy",
                                              "branch",
                                              "removeBranch",
                                              "begin",
                                              "commit",
                                              "rollback",
                                              "undo",
                                              "redo",
                                              "merge",
                                              "useRemoved"};

/// One step; the numbers pick among what is there when it runs.
struct Command {
    int action;
    unsigned deviant;
    unsigned object;
    unsigned property;
    unsigned value;
    unsigned way;
};

[[maybe_unused]] void showValue(Command const& command, std::ostream& out) {
    out << ActionNames[command.action] << "(d" << command.deviant << ", object " << command.object
        << ", property " << command.property << ", value " << command.value << ", way "
        << command.way << ")";
}

} // namespace

template <>
struct rc::Arbitrary<Command> {
    static Gen<Command> arbitrary() {
        auto const action = gen::weightedOneOf<int>({
            {5, gen::just(static_cast<int>(Action::Create))},
            {20, gen::just(static_cast<int>(Action::Write))},
            {2, gen::just(static_cast<int>(Action::Merge))},
            {9, gen::inRange(0, ActionCount)},
        });
        return gen::build<Command>(gen::set(&Command::action, action),
                                   gen::set(&Command::deviant, gen::inRange(0U, 4U)),
                                   gen::set(&Command::object, gen::inRange(0U, 60U)),
                                   gen::set(&Command::property, gen::inRange(0U, 60U)),
                                   gen::set(&Command::value, gen::inRange(0U, 60U)),
                                   gen::set(&Command::way, gen::inRange(0U, 8U)));
    }
};

namespace {

/// Classes whose objects take part in one sequence.
using Cast = std::vector<char const*>;

/// Every kind of association and containment, few enough to meet often.
Cast const& dataDefinitions() {
    static Cast const names{"Integer",
                            "Enumeration",
                            "EnumerationLiteral",
                            "Structure",
                            "StructElement",
                            "CompuMethod",
                            "DataConstr",
                            "Dimension",
                            "Unit",
                            "StructureValueSpecification",
                            "Slot",
                            "LiteralReal",
                            "LookupTableType",
                            "Axis",
                            "SharedAxisType",
                            "SwRecordLayout"};
    return names;
}

/// What metamodels are made of, and what the base metamodel adds to any element.
Cast const& metamodels() {
    static Cast const names{"QOB.StereotypeObject",
                            "QOB.Package",
                            "QOB.DataType",
                            "QOB.Enumeration",
                            "QOB.EnumerationLiteral",
                            "QOB.Class",
                            "QOB.Property",
                            "Zorvane.metamodel.foundation.Comment",
                            "Zorvane.metamodel.foundation.Dependency",
                            "Zorvane.metamodel.foundation.ElementImport",
                            "Zorvane.metamodel.foundation.NamespaceImport"};
    return names;
}

/// A class with what a step may write; made once.
struct Kind {
    ConcreteClass of;
    std::vector<Property> all;
    std::vector<Property> writable;
    std::vector<Property> owning;
    std::vector<Property> ends;  ///< single, of an association
    std::vector<Property> lists; ///< their other ends
};

bool isAssociation(Property const& property) {
    return property.hasOpposite() && !property.isDerived() && !property.opposite().isDerived();
}

/// Owner, namespace or container: its other end is a view of the lists by which objects are owned.
bool isOwnerByView(Property const& property) {
    return property.isWayToOwner() && !isAssociation(property);
}

Property containerProperty() {
    using QOB::NSInterface::ClassObjectIntf;
    auto const* const methods = &ClassObjectIntf::sIntrospectiveMethods;
    return {methods, methods->properties[ClassObjectIntf::ContainerQOBId]};
}

std::vector<Kind> kindsOf(Cast const& cast) {
    std::vector<Kind> found;
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        if (std::none_of(cast.begin(), cast.end(), [&](std::string_view name) {
                return name == of.dottedName ||
                       (name == of.name &&
                        of.methods->package == types::get_types_PackageIntrospectiveMethods());
            })) {
            continue;
        }
        Kind kind{of, VelumTest::propertiesOf(of.methods), {}, {}, {}, {}};
        for (Property const& property : kind.all) {
            bool const inPlace = VelumTest::inPlaceOf(property, of.methods) == property;
            if (property.isDerived()) {
                continue;
            }
            kind.writable.push_back(property);
            if (property.ownsObjects() && inPlace) {
                kind.owning.push_back(property);
            }
            if (isAssociation(property)) {
                (property.isMany() ? kind.lists : kind.ends).push_back(property);
            }
        }
        kind.writable.push_back(containerProperty());
        found.push_back(std::move(kind));
    }
    return found;
}

class Run {
public:
    explicit Run(std::vector<Kind> const& kinds)
        : kinds_(kinds), model_(world_.model), outside_(stranger_.model.createDeviant()) {
        views_.push_back(std::make_unique<View>(View{model_, {}}));
        for (Kind const& kind : kinds_) {
            foreign_.push_back({kind.of.create(foreignWorld_.model), &kind});
            // Shown by their ids, they differ from all others.
            foreignWorld_.model->bindObjectId(foreignWorld_.root,
                                              foreign_.back().object,
                                              1000 + static_cast<int>(foreign_.size()));
        }
    }

    ~Run() = default;
    Run(Run const&) = delete;
    Run& operator=(Run const&) = delete;

    void step(Command const& command) {
        std::size_t const d = command.deviant % views_.size();
        std::vector<Snapshot> before;
        for (auto const& view : views_) {
            before.push_back(snapshot(*view));
        }
        std::size_t const removed = perform(command, d);
        if (removed != 0) {
            before.erase(before.begin() + static_cast<std::ptrdiff_t>(removed));
        }
        for (std::size_t i = 0; i < views_.size(); ++i) {
            check(*views_[i]);
            if (i != d && i < before.size() && removed == 0) {
                require(sameAsFarAs(before[i].size(), before[i], snapshot(*views_[i])),
                        "a write in one deviant shows in another");
            }
        }
    }

    /// Ends the model; nothing but the handles here may hold an object then.
    void end() {
        for (auto const& view : views_) {
            view->open.reset();
        }
        views_.clear();
        require(stranger_.model.getReferredModels().empty() &&
                    stranger_.model.inDeviant(outside_).getReferredModels().empty(),
                "something is entered in another model");
        model_.destroy();
        for (Thing const& thing : things_) {
            require(thing.object->numRef() == 1, "an object outlives its model");
        }
    }

private:
    using Snapshot = std::vector<std::string>; ///< of each object
    struct Step {
        Snapshot before;
        Snapshot after;
    };
    struct View {
        QOB::Model model;
        std::unique_ptr<QOB::Transaction> open;
        Snapshot atBegin{};
        std::vector<Step> done{};
        std::vector<Step> undone{};

        Deviant deviant() const { return model.getDeviant(); }
    };
    struct Thing {
        ClassObject object;
        Kind const* kind;
    };

    static void require(bool holds, std::string const& otherwise) {
        if (!holds) {
            RC_FAIL(otherwise);
        }
    }

    static bool sameAsFarAs(std::size_t count, Snapshot const& a, Snapshot const& b) {
        return std::equal(a.begin(),
                          a.begin() + static_cast<std::ptrdiff_t>(count),
                          b.begin(),
                          b.begin() + static_cast<std::ptrdiff_t>(count));
    }
    /// Objects that one of the two doesn't know yet don't exist in it.
    static bool same(Snapshot a, Snapshot b) {
        std::size_t const size = std::max(a.size(), b.size());
        a.resize(size, "gone");
        b.resize(size, "gone");
        return a == b;
    }

    ClassObject in(View const& view, Thing const& thing) const {
        return {thing.object.get(), view.deviant()};
    }

    Snapshot snapshot(View const& view) const {
        Snapshot texts;
        for (Thing const& thing : things_) {
            ClassObject const object = in(view, thing);
            if (!object.isValid()) {
                texts.emplace_back("gone");
                continue;
            }
            texts.push_back(VelumTest::print(object.get(), view.deviant(), thing.kind->all));
            texts.back() += VelumTest::show(object.getContainerQOB());
        }
        return texts;
    }

    // Steps -------------------------------------------------------------------------------------

    bool isAnyBranchOpen() const {
        return std::any_of(views_.begin() + 1, views_.end(), [](auto const& view) {
            return view->open != nullptr;
        });
    }

    /// When the root moves on, of the branches with an open transaction one only keeps what it has
    /// been reading: a host that wants both keeps them apart, as here.
    bool mayWrite(std::size_t d) const { return d != 0 || !isAnyBranchOpen(); }

    /// Runs a write in the open transaction, or in one of its own.
    template <class Write>
    void write(std::size_t d, Write const& action) {
        View& view = *views_[d];
        if (view.open != nullptr) {
            action();
            return;
        }
        begin(view);
        action();
        commit(d);
    }
    void begin(View& view) {
        view.model.setUndoEnabled(true);
        view.atBegin = snapshot(view);
        view.open = std::make_unique<QOB::Transaction>(view.model);
    }
    void commit(std::size_t d) {
        View& view = *views_[d];
        view.open->commit();
        view.open.reset();
        Snapshot after = snapshot(view);
        if (!same(view.atBegin, after)) {
            view.done.push_back({view.atBegin, std::move(after)});
            view.undone.clear();
        }
    }

    /// Steps that show nothing are gone through.
    void travel(std::size_t d, bool back) {
        View& view = *views_[d];
        Snapshot const before = snapshot(view);
        std::vector<Step>& from = back ? view.done : view.undone;
        std::vector<Step>& to = back ? view.undone : view.done;
        while (back ? view.model.undo() : view.model.redo()) {
            Snapshot const now = snapshot(view);
            if (same(now, before)) {
                continue;
            }
            require(!from.empty(), "there is a step that nothing made");
            require(same(now, back ? from.back().before : from.back().after),
                    back ? "undo leads elsewhere" : "redo leads elsewhere");
            to.push_back(from.back());
            from.pop_back();
            break;
        }
    }

    /// The number of a branch that the step removed, or 0.
    std::size_t perform(Command const& command, std::size_t d) {
        View& view = *views_[d];
        switch (static_cast<Action>(command.action)) {
        case Action::Create:
            if (mayWrite(d) && things_.size() < 24) {
                write(d, [&] { create(view, command); });
            }
            break;
        case Action::Write:
            if (Thing const* const thing = pick(view, command.object); thing && mayWrite(d)) {
                write(d, [&] { writeProperty(view, *thing, command); });
            }
            break;
        case Action::Destroy:
            if (Thing const* const thing = pick(view, command.object); thing && mayWrite(d)) {
                write(d, [&] { in(view, *thing).destroy(); });
            }
            break;
        case Action::Branch:
            if (views_.size() < 4) {
                views_.push_back(
                    std::make_unique<View>(View{model_.inDeviant(model_.createDeviant()), {}}));
            }
            break;
        case Action::RemoveBranch:
            if (d != 0) {
                view.open.reset();
                removed_.push_back(view.deviant());
                model_.removeDeviant(view.deviant());
                views_.erase(views_.begin() + static_cast<std::ptrdiff_t>(d));
                return d;
            }
            break;
        case Action::Begin:
            if (view.open == nullptr && mayWrite(d) && (d == 0 || views_[0]->open == nullptr)) {
                begin(view);
            }
            break;
        case Action::Commit:
            if (view.open != nullptr) {
                commit(d);
            }
            break;
        case Action::Rollback:
            if (view.open != nullptr) {
                view.open->rollback();
                view.open.reset();
                require(same(snapshot(view), view.atBegin), "rollback leads elsewhere");
            }
            break;
        case Action::Merge:
            if (mayWrite(d)) {
                merge(d, command.object % views_.size());
            }
            break;
        case Action::Undo:
        case Action::Redo:
            if (view.open == nullptr && mayWrite(d)) {
                travel(d, static_cast<Action>(command.action) == Action::Undo);
            }
            break;
        case Action::UseRemoved:
            if (Thing const* const thing = pick(view, command.object); thing && !removed_.empty()) {
                Snapshot const before = snapshot(view);
                require(raises([&] { useRemoved(*thing, command); }),
                        "a deviant that is gone can be used");
                require(same(snapshot(view), before), "a deviant that is gone acts elsewhere");
            }
            break;
        }
        return 0;
    }

    template <class Call>
    static bool raises(Call const& call) {
        try {
            call();
        } catch (QOB::Exception const&) {
            return true;
        }
        return false;
    }

    void useRemoved(Thing const& thing, Command const& command) const {
        Deviant const gone = removed_[command.deviant % removed_.size()];
        View const late{model_.inDeviant(gone), {}};
        ClassObject const object(Object(thing.object.get(), gone));
        switch (command.way % 4) {
        case 0:
            thing.kind->of.create(late.model);
            break;
        case 1:
            object.destroy();
            break;
        case 2:
            QOB::Transaction(late.model).commit();
            break;
        default:
            containerProperty().remove(object);
        }
    }

    void merge(std::size_t d, std::size_t source) {
        View const& from = *views_[source];
        View const& to = *views_[d];
        if (source == d || from.open != nullptr) {
            return;
        }
        std::vector<bool> changed;
        Snapshot const before = snapshot(to);
        for (Thing const& thing : things_) {
            changed.push_back(
                QOB::isRealState(thing.object->internal_getDeviation(from.deviant())));
        }
        write(d, [&] { to.model.mergeDeviant(from.deviant()); });
        Snapshot const after = snapshot(to);
        bool destroyed = false;
        for (std::size_t i = 0; i < things_.size(); ++i) {
            destroyed = destroyed || (before[i] != "gone" && after[i] == "gone");
        }
        for (std::size_t i = 0; i < things_.size(); ++i) {
            if (!changed[i]) {
                continue;
            }
            if (after[i] != "gone") {
                checkMerged(things_[i], from, to);
            } else {
                require(before[i] == "gone" || destroyed, "a merge destroyed an object");
            }
        }
    }

    void checkMerged(Thing const& thing, View const& from, View const& to) const {
        ClassObject const there = in(from, thing);
        ClassObject const here = in(to, thing);
        for (Property const& property : thing.kind->all) {
            if (!property.isDerived()) {
                std::string const expected = shown(property, there, to);
                std::string text = shown(property, here, to);
                bool const isEqual = text == expected;
                text.insert(0, " is ").insert(0, property.description->name);
                text.append(", but in the source ").append(expected);
                require(isEqual, text);
            }
        }
        ClassObject const container(there.getContainerQOB().get(), to.deviant());
        require(here.getContainerQOB() == (container.isValid() ? container : ClassObject()),
                "the container isn't that of the source");
    }

    /// The value of a property; of objects, those that exist in a view.
    static std::string
    shown(Property const& property, ClassObject const& object, View const& where) {
        if (!property.isReference()) {
            return property.isMany() ? VelumTest::showElements(property.elements(object))
                                     : VelumTest::show(property.get(object)) +
                                           (property.isThere(object) ? "" : " isn't there");
        }
        std::string text;
        for (ClassObject const& value : valuesOf(property, object)) {
            ClassObject const there(value.get(), where.deviant());
            text += there.isValid() ? VelumTest::show(there) + " " : "";
        }
        return text;
    }

    static std::vector<ClassObject> valuesOf(Property const& property, ClassObject const& object) {
        std::vector<ClassObject> values;
        if (property.isMany()) {
            for (Object const& element : property.elements(object)) {
                values.emplace_back(element);
            }
        } else if (ClassObject const value(property.get(object)); value.get() != nullptr) {
            values.push_back(value);
        }
        return values;
    }

    void create(View const& view, Command const& command) {
        Kind const& kind = kinds_[command.object % kinds_.size()];
        things_.push_back({kind.of.create(view.model), &kind});
    }

    Thing const* pick(View const& view, unsigned number) const {
        std::vector<Thing const*> present;
        for (Thing const& thing : things_) {
            if (in(view, thing).isValid()) {
                present.push_back(&thing);
            }
        }
        return present.empty() ? nullptr : present[number % present.size()];
    }

    static bool isInside(ClassObject part, ClassObject const& whole) {
        // Two deviants can put two objects into each other: merged, each lies in the other.
        for (int steps = 0; part.isValid() && steps != 100; ++steps) {
            if (part == whole) {
                return true;
            }
            part = part.getContainerQOB();
        }
        return part.isValid();
    }

    /// An object that the property takes; empty if there is none.
    Object pickValue(View const& view,
                     Thing const& owner,
                     Property const& property,
                     unsigned number) const {
        if (!property.isReference()) {
            return VelumTest::sampleValue(property, static_cast<int>(number % 2));
        }
        Property const valid = VelumTest::inPlaceOf(property, owner.kind->of.methods);
        std::vector<Object> fitting;
        for (Thing const& thing : things_) {
            ClassObject const value = in(view, thing);
            ClassObject const self = in(view, owner);
            auto const* const methods = thing.kind->of.methods;
            if (!value.isValid() || !VelumTest::isA(methods, valid.type())) {
                continue;
            }
            if (valid.hasOpposite() &&
                !VelumTest::isA(owner.kind->of.methods,
                                VelumTest::inPlaceOf(valid.opposite(), methods).type())) {
                continue;
            }
            // Nothing is put into itself, nor given by two properties to one owner.
            if (property.ownsObjects() && value.getContainerQOB() == self) {
                continue;
            }
            if ((property.ownsObjects() && isInside(self, value)) ||
                (property.isWayToOwner() && isInside(value, self))) {
                continue;
            }
            fitting.emplace_back(value);
        }
        for (Thing const& thing : foreign_) {
            if (!property.hasOpposite() && !property.ownsObjects() &&
                property.description->subsettedCount == 0 &&
                VelumTest::isA(thing.kind->of.methods, valid.type())) {
                fitting.emplace_back(thing.object);
            }
        }
        return fitting.empty() ? Object() : fitting[number % fitting.size()];
    }

    void writeProperty(View const& view, Thing const& thing, Command const& command) {
        std::vector<Property> const& properties = thing.kind->writable;
        Property const& property = properties[command.property % properties.size()];
        ClassObject const object = in(view, thing);
        Object const value = pickValue(view, thing, property, command.value);
        // A deviant of another model stands for the root.
        Deviant const deviant =
            command.way == 6 && &view == views_[0].get() ? outside_ : view.deviant();
        if (!property.isMany()) {
            writeSingle(
                view, thing, property, deviant, command.way == 0 ? Object() : value, command);
            return;
        }
        auto const elements = property.elementsOf(object.get(), deviant);
        int const size = elements.size();
        int const index = size == 0 ? 0 : static_cast<int>(command.value) % size;
        if (command.way == 0 && size != 0) {
            elements.erase(index);
        } else if (command.way == 1) {
            elements.clear();
        } else if (command.way == 2 && value.get() != nullptr) {
            elements.removeAll(value);
        } else if (command.way == 3 && value.get() != nullptr) {
            elements.insert(index, value);
        } else if (command.way == 4 && property.ownsObjects() && size != 0) {
            object.getContaineeQOBs().removeAll(ClassObject(elements.at(index)));
        } else if (value.get() != nullptr) {
            elements.push_back(value);
        }
    }

    /// By number, by name or by live element; an owner without a list for the object is refused.
    /// What is refused or there already changes nothing and makes no state.
    void writeSingle(View const& view,
                     Thing const& thing,
                     Property const& property,
                     Deviant deviant,
                     Object const& value,
                     Command const& command) {
        ClassObject const object = in(view, thing);
        if (value.get() == nullptr) {
            property.methods->removeSingleValued(object.get(), deviant, property.id());
            return;
        }
        bool const isSame = VelumTest::show(property.get(object)) == VelumTest::show(value) &&
                            isInItsList(property, thing, object, value);
        bool const isRefused =
            !isSame && isOwnerByView(property) &&
            !VelumTest::takesIn(kindOf(ClassObject(value))->of.methods, thing.kind->of.methods);
        Snapshot const before = snapshot(view);
        std::vector<QOB::NSInterface::ObjectIntf*> const states = statesIn(view);
        bool const raised = raises([&] {
            if (property.isReference() && command.way == 4) {
                object.setOrAdd(QOB::String(property.description->name), value);
            } else if (property.isReference() && command.way == 5) {
                auto* const meta = property.description->meta;
                object.setOrAdd(QOB::ImmutableProperty(meta, meta->getRootDeviant()), value);
            } else {
                property.methods->setSingleValued(object.get(), deviant, property.id(), value);
            }
        });
        require(raised == isRefused,
                std::string(property.description->name) +
                    (raised ? " is refused" : " takes what its owner has no list for"));
        if (isSame || isRefused) {
            require(statesIn(view) == states, "a write that changes nothing makes a state");
            require(same(snapshot(view), before),
                    std::string(isSame ? "the same value of " : "the refused value of ") +
                        property.description->name + " changes something");
        }
    }

    /// False for a reference that is also an element of a list, if the list has lost the value: a
    /// set brings it back.
    static bool isInItsList(Property const& property,
                            Thing const& thing,
                            ClassObject const& object,
                            Object const& value) {
        return std::all_of(
            thing.kind->all.begin(), thing.kind->all.end(), [&](Property const& list) {
                return !list.isMany() || !isAssociation(list) ||
                       !VelumTest::comesDownTo(property, list.description->name) ||
                       list.elements(object).contains(value);
            });
    }

    std::vector<QOB::NSInterface::ObjectIntf*> statesIn(View const& view) const {
        std::vector<QOB::NSInterface::ObjectIntf*> states;
        for (Thing const& thing : things_) {
            states.push_back(thing.object->internal_getDeviation(view.deviant()));
        }
        return states;
    }

    Kind const* kindOf(ClassObject const& object) const {
        auto const found = std::find_if(things_.begin(), things_.end(), [&](Thing const& thing) {
            return thing.object == object;
        });
        return found->kind;
    }

    // What must hold ----------------------------------------------------------------------------

    static int countOf(QOB::Sequence<Object> const& elements, ClassObject const& object) {
        int count = 0;
        for (Object const& element : elements) {
            count += ClassObject(element) == object ? 1 : 0;
        }
        return count;
    }

    void check(View const& view) const {
        for (Thing const& thing : things_) {
            ClassObject const object = in(view, thing);
            if (object.isValid()) {
                checkEnds(object, *thing.kind);
                checkContained(object, *thing.kind);
            }
        }
        checkReferredModels(view);
        for (ClassObject const& rootObject : view.model.getRootObjects()) {
            require(rootObject.isValid(), "the model lists an object that is gone");
        }
    }

    void checkReferredModels(View const& view) const {
        bool refers = false;
        for (Thing const& thing : things_) {
            ClassObject const object = in(view, thing);
            for (Property const& property : thing.kind->all) {
                if (!object.isValid() || !property.isReference() || property.isDerived()) {
                    continue;
                }
                for (ClassObject const& value : valuesOf(property, object)) {
                    refers = refers || value->getRootDeviant() == foreignWorld_.root;
                }
            }
        }
        std::vector<QOB::Model> expected;
        if (refers) {
            expected.push_back(foreignWorld_.model);
        }
        require(view.model.getReferredModels() == expected, "the model refers to other models");
    }

    static void checkEnds(ClassObject const& object, Kind const& kind) {
        for (Property const& end : kind.ends) {
            ClassObject const far(end.get(object));
            if (far.get() == nullptr) {
                continue;
            }
            require(far.isValid(), "an association leads to an object that is gone");
            require(countOf(end.opposite().elements(far), object) == 1,
                    std::string(end.description->name) + " leads to one that doesn't list it once");
        }
        for (Property const& list : kind.lists) {
            for (Object const& element : list.elements(object)) {
                require(element.isValid(), "an association lists an object that is gone");
                require(ClassObject(list.opposite().get(ClassObject(element))) == object,
                        std::string(list.description->name) + " lists one that leads elsewhere");
            }
        }
    }

    static void checkContained(ClassObject const& object, Kind const& kind) {
        std::vector<ClassObject> owned;
        for (Property const& property : kind.owning) {
            std::vector<ClassObject> const values = valuesOf(property, object);
            owned.insert(owned.end(), values.begin(), values.end());
        }
        for (QOB::StereotypeObject const& applied : object.getAppliedStereotypeInstances()) {
            owned.emplace_back(applied);
        }
        for (ClassObject const& part : owned) {
            require(part.isValid(), "an object contains one that is gone");
            require(part.getContainerQOB() == object, "a part has another container");
            require(std::count(owned.begin(), owned.end(), part) == 1, "a part is owned twice");
        }
        auto const shown = object.getContaineeQOBs();
        require(shown.size() == static_cast<int>(owned.size()), "the view shows another number");
        for (ClassObject const& part : shown) {
            require(std::count(owned.begin(), owned.end(), part) == 1,
                    "the view shows what no property owns");
        }
        ClassObject const container = object.getContainerQOB();
        require(container.get() == nullptr || container.getContaineeQOBs().contains(object),
                "the container doesn't show its part");
    }

    std::vector<Kind> const& kinds_;
    VelumTest::World world_;
    VelumTest::World stranger_;
    VelumTest::World foreignWorld_; ///< another model, with one object of each kind
    QOB::Model model_;
    Deviant outside_;
    std::vector<Deviant> removed_;
    std::vector<std::unique_ptr<View>> views_;
    std::vector<Thing> things_;
    std::vector<Thing> foreign_;
};

bool holds(char const* what, Cast const& cast) {
    std::vector<Kind> const kinds = kindsOf(cast);
    return rc::check(what, [&kinds](std::vector<Command> const& commands) {
        Run run(kinds);
        for (Command const& command : commands) {
            run.step(command);
        }
        run.end();
    });
}

} // namespace

int main(int argc, char** argv) {
    std::string seed = "20261121";
    std::string sequences = "100";
    std::string length = "150";
    for (int i = 1; i < argc; i += 2) {
        std::string const option = argv[i];
        std::string* const value = option == "--seed"        ? &seed
                                   : option == "--sequences" ? &sequences
                                   : option == "--length"    ? &length
                                                             : nullptr;
        if (value == nullptr || i + 1 == argc) {
            std::cerr << "usage: " << argv[0] << " [--seed S] [--sequences N] [--length L]\n";
            return 2;
        }
        *value = argv[i + 1];
    }
    // The environment wins, so that the line which a failure prints can be used as it stands.
    std::string params = "seed=";
    params.append(seed)
        .append(" max_success=")
        .append(sequences)
        .append(" max_size=")
        .append(length);
    setenv("RC_PARAMS", params.c_str(), 0);
    bool const inModels =
        holds("data definitions keep both ends in step in every deviant", dataDefinitions());
    bool const inMetamodels =
        holds("metamodels keep both ends in step in every deviant", metamodels());
    return inModels && inMetamodels ? 0 : 1;
}
