// What the library tells the kernel when it starts and stops, and in which order, as noted at the
// kernel's edge. One case after the other: they share the state of the process.

#include "qob/qob/clipboardmanager.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/sequencetype.h"
#include "qob/qob/tags.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "qob/qob/visitor.h"
#include "support/failure.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_types/tests/registration/kerneledge.h"
#include "velum_types/tests/support/packagetable.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/typeregistration.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypesmetapackage.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace meta = types::NSImplementation;
namespace visitor = QOB::CooperativeVisitor::internal;

using VelumTest::Call;
using VelumTest::messageOf;
using VelumTest::PackageEntry;
using VelumTest::PackageTable;
using VelumTest::takeCalls;
using visitor::ClassInfo;

namespace {

using Lines = std::vector<std::string>;

/// The classes in the order in which they are made and completed: bases first.
constexpr char const* CreationOrder[] = {"PrimitiveType",
                                         "Real",
                                         "FloatingPoint",
                                         "Complex",
                                         "Dimension",
                                         "LiteralReal",
                                         "FixedPoint",
                                         "Integer",
                                         "Unit",
                                         "Matrix",
                                         "EnumerationLiteral",
                                         "Enumeration",
                                         "Factory",
                                         "Boolean",
                                         "CompositeSpecification",
                                         "MatrixValueSpecification",
                                         "ValueElement",
                                         "Cell",
                                         "Structure",
                                         "StructureValueSpecification",
                                         "Slot",
                                         "EnumerationLiteralReference",
                                         "ConstantSpecification",
                                         "ConstantReference",
                                         "StructElement",
                                         "CompuMethod",
                                         "DataConstr",
                                         "SwBaseType",
                                         "LookupTableType",
                                         "SharedAxisType",
                                         "SwRecordLayout",
                                         "Axis",
                                         "VoidPointer",
                                         "ApplicationValueSpecification",
                                         "LookupTableSpecification"};

/// The order in which the data types are registered; the first two are no enumerations.
constexpr char const* DataTypes[] = {"DataSize",
                                     "Time",
                                     "FloatingPointKind",
                                     "DataSizeUnitKind",
                                     "TimeUnitKind",
                                     "CompuMethodCategory"};

/// The properties that hosts don't show, by their ids.
struct HiddenProperties {
    char const* name;
    std::vector<unsigned> ids;
};
HiddenProperties const Hidden[] = {{"PrimitiveType", {1, 6, 7}},
                                   {"Real", {1, 2, 3, 4}},
                                   {"FixedPoint", {6}},
                                   {"Boolean", {1, 2, 3, 4}},
                                   {"Enumeration", {2}},
                                   {"EnumerationLiteral", {2, 3, 6}},
                                   {"StructElement", {3}},
                                   {"LookupTableType", {2, 7}},
                                   {"SharedAxisType", {4, 5}},
                                   {"Axis", {1, 4}},
                                   {"SwRecordLayout", {1, 2}},
                                   {"Unit", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
                                   {"Dimension", {1, 2, 3, 4, 5, 6}},
                                   {"CompuMethod", {4, 5, 6}},
                                   {"SwBaseType", {1}},
                                   {"ConstantSpecification", {1}},
                                   {"EnumerationLiteralReference", {1}},
                                   {"CompositeSpecification", {1}},
                                   {"ValueElement", {1}},
                                   {"MatrixValueSpecification", {1, 2}},
                                   {"Cell", {1}},
                                   {"Slot", {1}},
                                   {"ApplicationValueSpecification", {1, 2}},
                                   {"LookupTableSpecification", {1}}};

std::string dotted(std::string const& name) {
    return "Zorvane.metamodel.types." + name;
}

/// Runs over the classes in the order of the package's table.
template <class Action>
void forEachClass(Action const& action) {
    for (PackageEntry const& entry : PackageTable) {
        if (entry.isClass()) {
            action(entry);
        }
    }
}

/// A line of each name, made by `line` of the name and of what stands under it.
template <class Line>
Lines forEveryName(Line const& line) {
    Lines lines = {line("Factory", "iterator")};
    for (std::string const name : DataTypes) {
        lines.push_back(line(name, "value"));
        lines.push_back(line(name + "Iterator", "iterator"));
        lines.push_back(line(name + "ImmutableIterator", "iterator"));
        lines.push_back(line("SequenceOf" + name, "sequence"));
        lines.push_back(line("ImmutableSequenceOf" + name, "sequence"));
    }
    forEachClass([&](PackageEntry const& entry) {
        for (char const* const iterator : {"ImmutableIterator", "Iterator"}) {
            for (char const* const element : {"Immutable", ""}) {
                lines.push_back(line(std::string(element) + entry.name + iterator, "iterator"));
            }
        }
        for (char const* const sequence : {"ImmutableSequenceOf", "SequenceOf"}) {
            for (char const* const element : {"Immutable", ""}) {
                lines.push_back(line(std::string(sequence) + element + entry.name, "sequence"));
            }
        }
    });
    EXPECT_EQ(lines.size(), 311U);
    return lines;
}

Lines registrations() {
    return forEveryName([](std::string const& name, std::string const& what) {
        return what == "value" ? "registerMetaType " + dotted(name) + " value " + name
                               : "registerTypeInfo " + dotted(name) + " " + what;
    });
}

Lines removals() {
    return forEveryName([](std::string const& name, std::string const& what) {
        return (what == "value" ? "unregisterMetaType " : "unregisterTypeInfo ") + dotted(name);
    });
}

Lines bindings() {
    Lines lines;
    forEachClass([&](PackageEntry const& entry) {
        for (std::string const immutable : {"Immutable", ""}) {
            lines.push_back("BindTagToName " + dotted(immutable + entry.name));
        }
    });
    return lines;
}

Lines creations() {
    Lines lines;
    for (std::string const name : CreationOrder) {
        auto const* const entry =
            std::find_if(std::begin(PackageTable) + 1,
                         std::end(PackageTable),
                         [&](PackageEntry const& each) { return each.name == name; });
        bool const isAbstract = name == "Real" || name == "PrimitiveType" ||
                                name == "ValueElement" || name == "CompositeSpecification";
        lines.push_back("staticCreateMetaClass " + dotted(name) + " " + name + " " +
                        std::to_string(entry->properties) + (isAbstract ? " abstract" : ""));
    }
    return lines;
}

Lines updates() {
    Lines lines;
    for (char const* const name : CreationOrder) {
        lines.push_back("staticUpdateMeta " + dotted(name));
    }
    return lines;
}

Lines destructions() {
    Lines lines;
    forEachClass([&](PackageEntry const& entry) {
        lines.push_back("staticDestroyMeta " + dotted(entry.name));
    });
    return lines;
}

/// In the order of their text: tags are applied in no particular one.
Lines tags() {
    Lines lines = {"applyTagToMetaElement qob_factory to Factory",
                   "staticApplyTag qob_metamodel Zorvane.metamodel.types to the package"};
    forEachClass([&](PackageEntry const& entry) {
        std::string const name = entry.name;
        lines.push_back("applyTagToMetaElement " +
                        std::string(name == "Axis" ? "qob_hide_in_lumvo" : "qob_metaclass") +
                        " to " + name);
    });
    int hidden = 0;
    for (HiddenProperties const& of : Hidden) {
        for (unsigned const id : of.ids) {
            ++hidden;
            lines.push_back("applyTagToMetaElement qob_hide_in_lumvo to " + std::string(of.name) +
                            " " + std::to_string(id));
        }
    }
    EXPECT_EQ(hidden, 56);
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// What there is now of the package that a tag can be applied to.
std::map<QOB::NSInterface::NamedElementIntf const*, std::string> elements() {
    std::map<QOB::NSInterface::NamedElementIntf const*, std::string> names = {
        {meta::staticGetTypesMetaPackage(), "the package"}};
    auto const* const package = types::get_types_PackageIntrospectiveMethods();
    for (unsigned index = 0; index != std::size(PackageTable); ++index) {
        PackageEntry const& entry = PackageTable[index];
        if (!entry.isClass()) {
            continue;
        }
        names.emplace(package->classes[index]->meta, entry.name);
        for (int id = 1; id <= entry.properties; ++id) {
            names.emplace(package->classes[index]->properties[id]->meta,
                          std::string(entry.name) + " " + std::to_string(id));
        }
    }
    return names;
}

std::string lineOf(Call const& call) {
    std::string line = call.function + " " + call.name;
    return call.detail.empty() ? line : line += " " + call.detail;
}

/// What was called since the last time, kind by kind; kinds must not mix.
class CallsByKind {
public:
    CallsByKind() {
        auto const known = elements();
        for (Call const& call : takeCalls()) {
            bool const isTag = call.element != nullptr;
            if (isTag && !known.contains(call.element)) {
                continue; // another package's
            }
            std::string line = lineOf(call);
            if (isTag) {
                line += " to " + known.at(call.element);
            }
            add(isTag ? "tag" : kindOf(call.function), line);
            EXPECT_EQ(call.inTransaction, kinds_.back() != "bind" && kinds_.back() != "name")
                << line;
        }
    }

    Lines const& kinds() const { return kinds_; }
    Lines of(std::string const& kind) const {
        Lines lines = lines_.contains(kind) ? lines_.at(kind) : Lines();
        if (kind == "tag") {
            std::sort(lines.begin(), lines.end());
        }
        return lines;
    }

private:
    static std::string kindOf(std::string const& function) {
        if (function == "BindTagToName") {
            return "bind";
        }
        bool const isOfClass = function.rfind("static", 0) == 0;
        return isOfClass ? function : "name";
    }
    void add(std::string const& kind, std::string const& line) {
        if (kinds_.empty() || kinds_.back() != kind) {
            EXPECT_FALSE(lines_.contains(kind)) << line;
            kinds_.push_back(kind);
        }
        lines_[kind].push_back(line);
    }

    Lines kinds_;
    std::map<std::string, Lines> lines_;
};

std::size_t typesInPackage() {
    return static_cast<std::size_t>(
        meta::staticGetTypesMetaModel(QOB::DomainRegistry::instance()->getMetaRegistry())
            .getOwnedTypes()
            .size());
}

/// Every pointer to a live element that the library has: all of the package or none.
std::vector<void const*> livePointers() {
    std::vector<void const*> pointers = {meta::staticGetTypesMetaPackage(),
                                         meta::staticGetUnitMeta(),
                                         meta::staticGetDataSizeMeta(),
                                         meta::staticGetTimeMeta(),
                                         meta::staticGetFloatingPointKindMeta(),
                                         meta::staticGetDataSizeUnitKindMeta(),
                                         meta::staticGetTimeUnitKindMeta(),
                                         meta::staticGetCompuMethodCategoryMeta()};
    auto const* const package = types::get_types_PackageIntrospectiveMethods();
    for (unsigned index = 1; index + 1 != package->count; ++index) {
        QOB::IntrospectiveMethods const& record = *package->classes[index];
        pointers.push_back(record.meta);
        for (int id = 1; id <= PackageTable[index].properties; ++id) {
            QOB::MetaPropertyDescription const* const property = record.properties[id];
            pointers.push_back(property != nullptr ? property->meta : nullptr);
        }
    }
    return pointers;
}

void expectNothingLive() {
    for (void const* const pointer : livePointers()) {
        EXPECT_EQ(pointer, nullptr);
    }
}

int objectsInRegistry() {
    return QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjects().size();
}

/// What is registered of the library's names.
std::size_t namesRegistered() {
    std::size_t count = 0;
    forEveryName([&](std::string const& name, std::string const& what) {
        count += QOB::TypeInfoRegistry::isRegistered(dotted(name)) ? 1U : 0U;
        count +=
            what == "value" && QOB::ValueObjectFactory::isValueObjectType(dotted(name)) ? 1U : 0U;
        return name;
    });
    return count;
}

/// What a create function fills is not there before.
void expectTablesToBeEmpty() {
    auto const* const package = types::get_types_PackageIntrospectiveMethods();
    for (unsigned index = 1; index + 1 != package->count; ++index) {
        QOB::IntrospectiveMethods const& record = *package->classes[index];
        PackageEntry const& entry = PackageTable[index];
        EXPECT_EQ(record.package, entry.isClass() ? package : nullptr) << entry.name;
        EXPECT_EQ(record.supers != nullptr, entry.isClass()) << entry.name;
        EXPECT_EQ(record.getSingleValued != nullptr, entry.isClass()) << entry.name;
        for (int id = 0; id <= entry.properties; ++id) {
            EXPECT_EQ(record.properties[id], nullptr) << entry.name << " " << id;
        }
    }
}

/// Places in a start at which the kernel may raise.
struct Fault {
    char const* function;
    char const* name;
};
Fault const Faults[] = {
    {"staticCreateMetaClass", "Zorvane.metamodel.types.PrimitiveType"},
    {"staticCreateMetaClass", "Zorvane.metamodel.types.Factory"},
    {"staticCreateMetaClass", "Zorvane.metamodel.types.LookupTableSpecification"},
    {"staticUpdateMeta", "Zorvane.metamodel.types.PrimitiveType"},
    {"staticUpdateMeta", "Zorvane.metamodel.types.LookupTableSpecification"},
    {"applyTagToMetaElement", "qob_hide_in_lumvo"},
    {"applyTagToMetaElement", "qob_factory"},
    {"staticApplyTag", "qob_metamodel"},
    {"registerTypeInfo", "Zorvane.metamodel.types.Factory"},
    {"registerMetaType", "Zorvane.metamodel.types.CompuMethodCategory"},
    {"registerTypeInfo", "Zorvane.metamodel.types.SequenceOfLookupTableSpecification"},
    {"BindTagToName", "Zorvane.metamodel.types.ImmutableFloatingPoint"},
    {"BindTagToName", "Zorvane.metamodel.types.LookupTableSpecification"}};

/// A start that fails, at each of the places and with a name that someone else has.
void expectFailedStartsToLeaveNothing() {
    meta::staticGetTypesMetaPackage();
    Zorvane::metamodel::NSImplementation::staticGetMetamodelMetaPackage(); // stays, once it is made
    int const before = objectsInRegistry();
    for (Fault const& fault : Faults) {
        VelumTest::raiseIn(fault.function, fault.name);
        EXPECT_EQ(messageOf([] { types::initialize(); }),
                  std::string(fault.function) + " doesn't work")
            << fault.name;
        expectNothingLive();
        EXPECT_EQ(objectsInRegistry(), before) << fault.function << " " << fault.name;
        EXPECT_EQ(namesRegistered(), 0U) << fault.function << " " << fault.name;
    }
    VelumTest::raiseIn(nullptr, nullptr);
    for (char const* const name : {"Factory", "Time", "SequenceOfLookupTableSpecification"}) {
        QOB::TypeInfoRegistry::registerTypeInfo(dotted(name),
                                                QOB::IteratorType::Create(QOB::Type()));
        EXPECT_NE(messageOf([] { types::initialize(); }).find("is in use"), std::string::npos);
        expectNothingLive();
        EXPECT_EQ(objectsInRegistry(), before) << name;
        EXPECT_EQ(namesRegistered(), 1U) << name;
        QOB::TypeInfoRegistry::unregisterTypeInfo(dotted(name));
    }
    takeCalls();
}

/// Ends with nothing live, and whatever was live forgotten.
class Registration : public testing::Test {
protected:
    Registration() {
        types::initialize();
        meta::unregisterTypes();
        meta::staticForgetTypesMetaPackage();
        takeCalls();
    }
    ~Registration() override { meta::unregisterTypes(); }

    QOB::Model registry = QOB::DomainRegistry::instance()->getMetaRegistry();
    QOB::Factory factory = QOB::DomainRegistry::instance()->getMetaRegistryFactory();
};

// The first case, since it sees the start of the library.
TEST(Start, AnnouncesEveryClassAndThenEveryNameOnceAfterStartsThatFailed) {
    QOB::NSInterface::PackageIntf*& package = meta::staticGetTypesMetaPackage();
    QOB::NSInterface::ClassIntf*& unit = meta::staticGetUnitMeta();
    expectNothingLive();
    expectTablesToBeEmpty();
    expectFailedStartsToLeaveNothing();
    EXPECT_TRUE(types::initialize());
    EXPECT_NE(package, nullptr);
    EXPECT_NE(unit, nullptr);

    CallsByKind const calls;
    EXPECT_EQ(calls.kinds(),
              (Lines{"staticCreateMetaClass", "staticUpdateMeta", "tag", "name", "bind"}));
    EXPECT_EQ(calls.of("bind"), bindings());
    EXPECT_EQ(calls.of("staticCreateMetaClass"), creations());
    EXPECT_EQ(calls.of("staticUpdateMeta"), updates());
    EXPECT_EQ(calls.of("tag"), tags());
    EXPECT_EQ(calls.of("name"), registrations());

    std::vector<ClassInfo> classes;
    forEachClass([&](PackageEntry const& entry) {
        ClassInfo const info = visitor::findClassByName(dotted(entry.name));
        EXPECT_EQ(visitor::findClassByName(dotted("Immutable" + std::string(entry.name))), info);
        EXPECT_EQ(std::find(classes.begin(), classes.end(), info), classes.end()) << entry.name;
        classes.push_back(info);
    });

    EXPECT_TRUE(types::initialize());
    EXPECT_TRUE(takeCalls().empty());
    meta::unregisterTypes();
}

TEST_F(Registration, StopEmptiesTheClipboardTakesOutTheNamesAndDestroysTheClasses) {
    meta::registerTypes();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    QOB::ClipboardManager::instance()->setContent({types::Unit::create(model)});
    takeCalls();
    meta::unregisterTypes();
    std::vector<Call> const calls = takeCalls();
    Lines expected = removals();
    std::size_t const names = expected.size();
    Lines const classes = destructions();
    expected.insert(expected.end(), classes.begin(), classes.end());
    Lines lines;
    for (Call const& call : calls) {
        EXPECT_TRUE(call.withEmptyClipboard) << lineOf(call);
        EXPECT_EQ(call.inTransaction, lines.size() >= names) << lineOf(call);
        lines.push_back(lineOf(call));
    }
    EXPECT_EQ(lines, expected);
    expectNothingLive();
    EXPECT_FALSE(registry.getDeviant().isWithinTransaction());
    model.destroy();
}

TEST_F(Registration, ASecondStartMakesTheClassesAgainButDoesNotCompleteThem) {
    meta::registerTypes();
    meta::unregisterTypes();
    takeCalls();
    meta::registerTypes();
    CallsByKind const calls;
    EXPECT_EQ(calls.kinds(), (Lines{"staticCreateMetaClass", "tag", "name"}));
    EXPECT_EQ(calls.of("staticCreateMetaClass"), creations());
    EXPECT_EQ(calls.of("tag"), tags());
    EXPECT_EQ(calls.of("name"), registrations());
    EXPECT_TRUE(QOB::ImmutableClass(types::Boolean::MetaClass()).getSupers().empty());
    // Once more in a row, only the tags are applied again.
    QOB::Transaction transaction(registry);
    QOB::NSInterface::PackageIntf* const before = meta::staticGetTypesMetaPackage();
    EXPECT_EQ(&meta::staticInitializeTypesMeta(), &meta::staticGetTypesMetaPackage());
    EXPECT_EQ(meta::staticGetTypesMetaPackage(), before);
    transaction.commit();
    EXPECT_EQ(CallsByKind().kinds(), Lines{"tag"});
    EXPECT_EQ(QOB::getTags(types::Axis::MetaClass()).size(), 1);
    EXPECT_EQ(QOB::getTags(types::Factory::MetaClass()).size(), 2);
}

TEST_F(Registration, AClassThatTheKernelFailsToMakeIsLeftOut) {
    VelumTest::failToCreate("Zorvane.metamodel.types.PrimitiveType");
    meta::registerTypes();
    VelumTest::failToCreate(nullptr);
    EXPECT_EQ(meta::staticGetPrimitiveTypeMeta(), nullptr);
    EXPECT_EQ(types::NSInterface::PrimitiveTypeIntf::sIntrospectiveMethods.meta, nullptr);
    EXPECT_EQ(typesInPackage(), 40U);
    CallsByKind const calls;
    EXPECT_EQ(calls.of("staticCreateMetaClass").size(), 34U);
    EXPECT_EQ(calls.of("name"), registrations());
    EXPECT_FALSE(types::PrimitiveType::MetaClass().isValid());
    EXPECT_TRUE(types::Real::MetaClass().isValid());
    meta::unregisterTypes();
    expectNothingLive();
}

TEST_F(Registration, EmptyHandlesAreRefusedAndWithoutAParentThePackageIsARootObject) {
    char const* const refusal = "Cannot access NULL ref. Use isValid() before calling methods";
    QOB::Transaction transaction(registry);
    EXPECT_EQ(messageOf([] { meta::staticCreateTypesMetaPackage(QOB::Factory(), QOB::Package()); }),
              refusal);
    EXPECT_EQ(messageOf([&] { meta::staticCreateUnitMeta(factory, QOB::Package()); }), refusal);
    expectNothingLive();

    meta::staticCreateTypesMetaPackage(factory, QOB::Package());
    QOB::Package const package = meta::staticGetTypesMetaModel(registry);
    EXPECT_FALSE(package.getParent().isValid());
    EXPECT_TRUE(registry.getRootObjects().contains(package));
    EXPECT_TRUE(registry.getContaineeQOBs().contains(package));
    EXPECT_EQ(package.getContainerQOB(), QOB::ClassObject(registry));
    EXPECT_EQ(typesInPackage(), 41U);
    QOB::Class const real(meta::staticGetRealMeta(), registry.getDeviant());
    EXPECT_TRUE(real.getSupers().empty()) << "that comes with the update";
    EXPECT_FALSE(QOB::hasTag("qob_metaclass", real));

    takeCalls();
    meta::staticCreateTypesMetaPackage(factory, QOB::Package());
    EXPECT_TRUE(takeCalls().empty());
    meta::staticDestroyTypesMetaPackage(factory, QOB::Package());
    meta::staticDestroyTypesMetaPackage(factory, QOB::Package());
    meta::staticTerminateTypesMeta();
    EXPECT_EQ(CallsByKind().of("staticDestroyMeta"), destructions());
    expectNothingLive();
    transaction.rollback();
}

TEST_F(Registration, ARollbackOfTheHostTakesPointersAndElementsBack) {
    meta::registerTypes();
    std::vector<void const*> const live = livePointers();
    int const objects = objectsInRegistry();
    {
        QOB::Transaction const around(registry);
        meta::unregisterTypes();
        expectNothingLive();
    }
    EXPECT_EQ(livePointers(), live);
    EXPECT_EQ(objectsInRegistry(), objects);
    // The classes are bound to their tables again.
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    types::Unit const unit = types::Unit::create(model, "metre");
    EXPECT_EQ(QOB::String(unit.getOne("Name")), "metre");
    EXPECT_EQ(QOB::ImmutableClass(types::Boolean::MetaClass()).getSupers().size(), 1);
    model.destroy();

    meta::unregisterTypes();
    meta::staticForgetTypesMetaPackage();
    int const without = objectsInRegistry();
    EXPECT_LT(without, objects);
    for (int round = 0; round != 2; ++round) { // the second finds no trace of the first
        QOB::Transaction const around(registry);
        meta::staticInitializeTypesMeta();
        EXPECT_EQ(typesInPackage(), 41U);
        EXPECT_EQ(QOB::ImmutableClass(types::Boolean::MetaClass()).getSupers().size(), 1);
    }
    expectNothingLive();
    EXPECT_EQ(objectsInRegistry(), without);
}

TEST_F(Registration, UndoAndRedoTakePointersAndElementsBackAndForth) {
    registry.setUndoEnabled(true);
    {
        QOB::Transaction transaction(registry);
        meta::staticInitializeTypesMeta();
        transaction.commit();
    }
    std::vector<void const*> const live = livePointers();
    for (int round = 0; round != 2; ++round) {
        EXPECT_TRUE(registry.undo());
        expectNothingLive();
        EXPECT_TRUE(registry.redo());
        EXPECT_EQ(livePointers(), live);
    }
    registry.undo();
    registry.setUndoEnabled(false);
    expectNothingLive();
}

TEST_F(Registration, AnEndThatIsRefusedChangesNothing) {
    meta::registerTypes();
    std::vector<void const*> const live = livePointers();
    registry.setReadOnly(true);
    EXPECT_NE(messageOf([] { meta::staticTerminateTypesMeta(); }), "");
    registry.setReadOnly(false);
    registry.setUndoEnabled(true); // writes need a transaction now
    EXPECT_NE(messageOf([] { meta::staticTerminateTypesMeta(); }), "");
    registry.setUndoEnabled(false);
    EXPECT_EQ(livePointers(), live);
    EXPECT_EQ(typesInPackage(), 41U);
    EXPECT_TRUE(types::Unit::MetaClass().isValid());
}

TEST_F(Registration, BoundsOfRealsAndBooleansDifferInTheirDefaults) {
    meta::registerTypes();
    auto const describe = [](QOB::ImmutableClass const& of) {
        std::string text;
        for (QOB::ImmutableProperty const& property : of.getOwnedAttributes()) {
            text += std::string(property.getName().view()) + "=" +
                    std::string(property.getDefaultValue().view()) + " ";
            for (QOB::ImmutableProperty const& redefined : property.getRedefinedProperties()) {
                text += "for " + std::string(redefined.getOwningClass().getName().view()) + "." +
                        std::string(redefined.getName().view()) + " ";
            }
        }
        return text;
    };
    EXPECT_EQ(describe(types::Real::MetaClass()),
              "minValue= maxValue= isMinOpen=true isMaxOpen=true ");
    EXPECT_EQ(describe(types::Boolean::MetaClass()),
              "minValue=0 for Real.minValue maxValue=1 for Real.maxValue isMinOpen=false for "
              "Real.isMinOpen isMaxOpen=false for Real.isMaxOpen ");
    EXPECT_TRUE(types::Factory::MetaClass().getOwnedAttributes().empty());
    EXPECT_TRUE(QOB::hasTag("qob_factory", types::Factory::MetaClass()));
    EXPECT_TRUE(QOB::hasTag("qob_metaclass", types::Factory::MetaClass()));
}

} // namespace
