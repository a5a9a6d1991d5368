// Random edits of objects of all classes, in several deviants, with transactions, undo, redo and
// merges. Each deviant is followed by a mirror that knows only what an observer is told: after each
// step it equals what the deviant shows, and each batch gave the old values that the mirror had.
//
//     observer_random_test [--sequences N] [--length L] [--seed S]

#include "qob/qob/observer.h"
#include "qob/qob/stereotypeobject.h"
#include "qob/qob/transaction.h"
#include "velum_types/tests/support/described.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string_view>

namespace {

using QOB::ClassObject;
using QOB::ImmutableProperty;
using QOB::Object;
using QOB::NSInterface::ClassObjectIntf;
using VelumTest::ConcreteClass;
using VelumTest::Property;

struct Fault {
    std::string text;
};

std::string textOf(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (std::string_view const part : parts) {
        text += part;
    }
    return text;
}

void require(bool holds, std::string const& text) {
    if (!holds) {
        throw Fault{text};
    }
}

std::string show(Object const& value) {
    ClassObject const object(value);
    return object.get() != nullptr ? "#" + std::to_string(std::size_t(object.get()) >> 4U)
                                   : VelumTest::show(value);
}

std::string show(std::vector<Object> const& values) {
    std::string text;
    for (Object const& value : values) {
        text += show(value) + " ";
    }
    return text;
}

ImmutableProperty live(Property const& property) {
    return {property.description->meta, property.description->meta->getRootDeviant()};
}

std::string nameOf(ImmutableProperty const& property) {
    return std::string(property.getOwningClass().getName()) + "." + std::string(property.getName());
}

/// A stored property, by its live element.
struct Watched {
    explicit Watched(Property const& of) : property(of), meta(live(of)), name(nameOf(meta)) {}

    Property property;
    ImmutableProperty meta;
    std::string name;
};

Property ofEvery(unsigned id) {
    auto const* const methods = &ClassObjectIntf::sIntrospectiveMethods;
    return {methods, methods->properties[id]};
}

std::vector<Watched> const& watchedOf(QOB::IntrospectiveMethods const* methods) {
    static std::map<void const*, std::vector<Watched>> known;
    auto const [entry, isNew] = known.try_emplace(methods);
    if (isNew) {
        for (Property const& property : VelumTest::propertiesOf(methods)) {
            if (!property.isDerived() && VelumTest::inPlaceOf(property, methods) == property &&
                property.methods != &ClassObjectIntf::sIntrospectiveMethods) {
                entry->second.emplace_back(property);
            }
        }
        for (unsigned const id : {ClassObjectIntf::ContainerQOBId,
                                  ClassObjectIntf::AppliedStereotypeInstanceId,
                                  ClassObjectIntf::ExternalIdId,
                                  ClassObjectIntf::ObjectIdId}) {
            entry->second.emplace_back(ofEvery(id));
        }
    }
    return entry->second;
}

std::vector<Watched> const& watchedOf(ClassObject const& object) {
    return watchedOf(object->getMetaClass(object.getDeviant())->internal_binding().methods);
}

/// What the object itself says.
std::string read(ClassObject const& object, Property const& property) {
    if (property.isMany()) {
        std::string text;
        for (Object const& element : property.elements(object)) {
            text += show(element) + " ";
        }
        return text;
    }
    Object const value = property.get(object);
    bool const isThere = property.isReference() ? value.get() != nullptr : property.isThere(object);
    return isThere ? show(value) + " " : "";
}

std::string toolInfos(ClassObject const& object) {
    std::string text;
    for (QOB::ExternalToolInfo const info : object.getExternalToolInfosWithoutAssociation()) {
        text += show(QOB::String(std::string(info.getKey()) + "=" + std::string(info.getValue()))) +
                " ";
    }
    return text;
}

/// Every object there has been. The list of a branch may lack what the root has made since.
class Known {
public:
    void add(QOB::Model const& model) {
        for (ClassObject const object : model.getRootObjectsWithoutAssociation()) {
            objects_.try_emplace(object.get(), object);
        }
    }
    std::map<ClassObjectIntf const*, ClassObject> const& objects() const { return objects_; }

private:
    std::map<ClassObjectIntf const*, ClassObject> objects_;
};

/// Of one deviant, from what is told.
class Mirror : public QOB::Observer {
public:
    using Values = std::map<std::string, std::string>;

    Mirror(QOB::Model const& model, Known const& known)
        : model_(model), known_(known), objects_(now()) {
        observe(model);
    }

    void changed(QOB::Changes const& changes) override {
        try {
            apply(changes);
        } catch (Fault const& fault) {
            fault_ = fault.text;
        } catch (QOB::Exception const& failure) {
            fault_ = failure.what();
        }
    }

    /// Raises what was found wrong when it was told, and if it differs now.
    void check() {
        require(!fault_, fault_.value_or(""));
        std::map<ClassObjectIntf const*, Values> const shown = now();
        for (auto const& [object, values] : shown) {
            auto const known = objects_.find(object);
            require(known != objects_.end(), "an object wasn't told: " + describe(object));
            for (auto const& [name, value] : values) {
                std::string const& has = known->second.at(name);
                require(has == value,
                        textOf({describe(object), ".", name, " is ", value, ", told was ", has}));
            }
        }
        require(shown.size() == objects_.size(), "the end of an object wasn't told");
    }

    int batches() const { return batches_; }

private:
    static std::string describe(ClassObjectIntf const* object) {
        return std::string(object->getLumvoName(false)) + " " +
               show(Object(const_cast<ClassObjectIntf*>(object), object->getRootDeviant()));
    }

    std::map<ClassObjectIntf const*, Values> now() const {
        std::map<ClassObjectIntf const*, Values> objects;
        for (auto const& [pointer, known] : known_.objects()) {
            ClassObject const object(known.get(), model_.getDeviant());
            if (!object.isValid()) {
                continue;
            }
            Values& values = objects[object.get()];
            for (Watched const& watched : watchedOf(object)) {
                values[watched.name] = read(object, watched.property);
            }
            values[nameOf(infos())] = toolInfos(object);
        }
        return objects;
    }

    static Values valuesOf(QOB::ObjectChange const& change,
                           std::vector<Object> (QOB::ObjectChange::*get)(ImmutableProperty const&)
                               const) {
        Values values;
        for (Watched const& watched : watchedOf(change.object())) {
            values[watched.name] = show((change.*get)(watched.meta));
        }
        values[nameOf(infos())] = show((change.*get)(infos()));
        return values;
    }
    static ImmutableProperty infos() { return live(ofEvery(ClassObjectIntf::ExternalToolInfoId)); }

    void apply(QOB::Changes const& changes) {
        ++batches_;
        require(!changes.empty(), "an empty batch");
        require(changes.model() == model_, "a batch of another model");
        std::set<void const*> seen;
        for (QOB::ObjectChange const& change : changes.created()) {
            require(seen.insert(change.object().get()).second, "an object appears twice");
            bool const isNew =
                objects_
                    .emplace(change.object().get(), valuesOf(change, &QOB::ObjectChange::newValues))
                    .second;
            require(isNew, "an object is created again");
        }
        for (QOB::ObjectChange const& change : changes.destroyed()) {
            require(seen.insert(change.object().get()).second, "an object appears twice");
            auto const known = objects_.find(change.object().get());
            require(known != objects_.end(), "an object ends that wasn't there");
            require(known->second == valuesOf(change, &QOB::ObjectChange::oldValues),
                    "the old values of one that ends differ: " + describe(known->first));
            objects_.erase(known);
        }
        for (QOB::ObjectChange const& change : changes.changed()) {
            require(seen.insert(change.object().get()).second, "an object appears twice");
            require(!change.properties().empty(), "a change of no property");
            if (change.object().get() != static_cast<void const*>(model_.get())) {
                auto const known = objects_.find(change.object().get());
                require(known != objects_.end(),
                        "an object changes that isn't there: " + describe(change.object().get()));
                applyTo(known->second, change);
            }
        }
    }

    static void applyTo(Values& values, QOB::ObjectChange const& change) {
        ImmutableProperty const container = live(ofEvery(ClassObjectIntf::ContainerQOBId));
        bool tellsContainer = false; // by a property of the class if it has one
        std::set<void const*> seen;
        for (ImmutableProperty const& property : change.properties()) {
            require(seen.insert(property.get()).second, "a property appears twice");
            std::string const name = nameOf(property);
            require(values.contains(name), name + " is told, but no stored property");
            std::string const old = show(change.oldValues(property));
            std::string const fresh = show(change.newValues(property));
            require(old == values.at(name),
                    textOf({describe(change.object().get()),
                            ".",
                            name,
                            " was ",
                            values.at(name),
                            ", told is ",
                            old}));
            require(old != fresh, textOf({name, " is told without a change: ", old}));
            values[name] = fresh;
            tellsContainer = tellsContainer || property.get() == container.get() ||
                             (property.hasOpposite() && property.getOpposite().isComposite());
        }
        // An id is told while a transaction is open, whose other changes aren't told yet.
        if (tellsContainer) {
            values[nameOf(container)] = show(change.newValues(container));
        }
    }

    QOB::Model model_;
    Known const& known_;
    std::map<ClassObjectIntf const*, Values> objects_;
    std::optional<std::string> fault_;
    int batches_ = 0;
};

/// A deviant, with what goes on in it.
struct View {
    QOB::Model model;
    std::unique_ptr<Mirror> mirror;
    std::unique_ptr<QOB::Transaction> transaction{};
    bool keepsUndo = false;
};

class Run {
public:
    explicit Run(unsigned seed) : random_(seed) {
        views_.push_back(std::make_unique<View>(view(world_.model)));
        for (ConcreteClass const& of : VelumTest::allClasses()) {
            foreign_.push_back({stranger_.create(of), &of});
        }
    }
    ~Run() {
        for (auto const& each : views_) {
            each->transaction.reset();
        }
    }

    void steps(int count) {
        for (int i = 0; i < count; ++i) {
            step();
            for (auto const& each : views_) {
                known_.add(each->model);
            }
            for (auto const& each : views_) {
                if (each->transaction == nullptr) {
                    each->mirror->check();
                }
            }
        }
    }
    int batches() const {
        int count = 0;
        for (auto const& each : views_) {
            count += each->mirror->batches();
        }
        return count;
    }

private:
    struct Made {
        ClassObject object;
        ConcreteClass const* of;
    };

    View view(QOB::Model const& model) const {
        return {model, std::make_unique<Mirror>(model, known_)};
    }

    unsigned below(std::size_t bound) {
        return static_cast<unsigned>(random_() % std::max<std::size_t>(bound, 1));
    }

    bool branchIsOpen() const {
        return std::any_of(views_.begin() + 1, views_.end(), [](auto const& each) {
            return each->transaction != nullptr;
        });
    }

    void step() {
        View& view = *views_[below(views_.size())];
        if (&view == views_[0].get() && branchIsOpen()) {
            return; // what the root changes then isn't told to the branch
        }
        try {
            unsigned const way = below(100);
            if (way < 20) {
                auto const& classes = VelumTest::allClasses();
                ConcreteClass const& of = classes[below(classes.size())];
                made_.push_back({of.create(view.model), &of});
            } else if (way < 75) {
                write(view);
            } else {
                manage(view, way);
            }
        } catch (QOB::Exception const&) { // refused
        }
    }

    void manage(View& view, unsigned way) {
        if (way < 83) {
            if (view.transaction && way < 82) {
                QOB::Transaction& open = *view.transaction;
                way < 80 ? open.commit() : open.rollback();
                view.transaction.reset();
            } else if (!view.transaction) {
                view.transaction = std::make_unique<QOB::Transaction>(view.model);
            }
        } else if (way < 91) {
            way % 2 == 0 ? view.model.undo() : view.model.redo();
        } else if (way < 93) {
            if (!view.transaction) {
                view.keepsUndo = !view.keepsUndo;
                view.model.setUndoEnabled(view.keepsUndo);
            }
        } else if (way < 96) {
            View const& source = *views_[below(views_.size())];
            view.model.mergeDeviant(source.model.getDeviant());
        } else if (way < 98 && views_.size() < 4) {
            views_.push_back(std::make_unique<View>(
                Run::view(world_.model.inDeviant(world_.model.createDeviant()))));
        } else if (way == 98 && views_.size() > 1) {
            views_.back()->transaction.reset();
            world_.model.removeDeviant(views_.back()->model.getDeviant());
            require(!views_.back()->mirror->isObserving(), "a removed deviant is observed");
            views_.pop_back();
        }
    }

    void write(View& view) {
        if (made_.empty()) {
            return;
        }
        Made const& made = made_[below(made_.size())];
        ClassObject const object(made.object.get(), view.model.getDeviant());
        if (!object.isValid()) {
            return;
        }
        unsigned const way = below(40);
        if (way == 0) {
            object.destroy();
        } else if (way == 1) {
            object.setExternalId("/" + std::to_string(below(3)));
        } else if (way == 2) {
            object.setExternalToolInfo({"key" + std::to_string(below(2)), "text"});
        } else if (way == 3) {
            object.getAppliedStereotypeInstances().push_back(
                QOB::StereotypeObject::create(view.model, "marked"));
        } else if (way == 4) {
            view.model.bindObjectId(object, view.model.allocateObjectId());
        } else if (way == 5) {
            view.model.setUri("urn:" + std::to_string(below(3)));
        } else {
            writeProperty(object, *made.of);
        }
    }

    void writeProperty(ClassObject const& object, ConcreteClass const& of) {
        auto const& all = watchedOf(of.methods);
        Property const& property = all[below(all.size())].property;
        if (property.methods == &ClassObjectIntf::sIntrospectiveMethods) {
            return;
        }
        Object const value = valueFor(object, of, property);
        bool const removes = value.get() == nullptr || below(6) == 0;
        if (!property.isMany()) {
            removes ? property.remove(object) : property.set(object, value);
            return;
        }
        auto const elements = property.elements(object);
        int const size = elements.size();
        if (!removes) {
            elements.insert(static_cast<int>(below(std::size_t(size) + 1)), value);
        } else if (below(4) == 0) {
            elements.clear();
        } else if (size != 0) {
            elements.erase(static_cast<int>(below(std::size_t(size))));
        }
    }

    Object valueFor(ClassObject const& object, ConcreteClass const& of, Property const& property) {
        if (!property.isReference()) {
            return VelumTest::sampleValue(property, static_cast<int>(below(2)));
        }
        bool const isForeign = below(10) == 0;
        auto const& candidates = isForeign ? foreign_ : made_;
        for (int tries = 0; tries < 30 && !candidates.empty(); ++tries) {
            Made const& candidate = candidates[below(candidates.size())];
            ClassObject const value(candidate.object.get(),
                                    isForeign ? stranger_.root : object.getDeviant());
            if (value.isValid() && VelumTest::takes(property, of.methods, *candidate.of)) {
                return value;
            }
        }
        return {};
    }

    VelumTest::World stranger_;
    VelumTest::World world_;
    std::mt19937 random_;
    Known known_;
    std::vector<std::unique_ptr<View>> views_;
    std::vector<Made> made_;
    std::vector<Made> foreign_;
};

long argument(int count, char** values, char const* name, long otherwise) {
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::strcmp(values[i], name) == 0) {
            return std::strtol(values[i + 1], nullptr, 10);
        }
    }
    return otherwise;
}

} // namespace

int main(int count, char** values) {
    long const sequences = argument(count, values, "--sequences", 60);
    long const length = argument(count, values, "--length", 400);
    auto const seed = static_cast<unsigned>(argument(count, values, "--seed", 1));
    long batches = 0;
    for (long i = 0; i < sequences; ++i) {
        unsigned const own = seed + static_cast<unsigned>(i);
        try {
            Run run(own);
            run.steps(static_cast<int>(length));
            batches += run.batches();
        } catch (Fault const& fault) {
            std::cerr << "--sequences 1 --length " << length << " --seed " << own << ": "
                      << fault.text << '\n';
            return 1;
        }
    }
    std::cout << batches << " batches\n";
    return batches > 0 ? 0 : 1;
}
