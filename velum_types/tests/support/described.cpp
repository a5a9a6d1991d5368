#include "velum_types/tests/support/described.h"

#include "qob/qob/qob.h"
#include "qob/qob/valueobjectfactory.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundation.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationintrospection.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvisibilitykind.h"
#include "velum_types/tests/support/concreteclasses.h"
#include "velum_types/tests/support/packagetable.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace VelumTest {

namespace {

using QOB::IntrospectiveMethods;

template <class Handle>
QOB::ClassObject make(QOB::Model const& model) {
    return Handle::create(model);
}

// NOLINTBEGIN(bugprone-macro-parentheses): the names of namespaces
#define VELUM_ROW_OF(Namespace, dotted, Class)                                                     \
    ConcreteClass{#Class,                                                                          \
                  dotted #Class,                                                                   \
                  &Namespace::NSInterface::Class##Intf::sIntrospectiveMethods,                     \
                  &make<Namespace::Class>},
#define VELUM_ROW(Class) VELUM_ROW_OF(types, "Zorvane.metamodel.types.", Class)
#define VELUM_BASE_ROW(Class) VELUM_ROW_OF(foundation, "Zorvane.metamodel.foundation.", Class)
#define VELUM_KERNEL_ROW(Class) VELUM_ROW_OF(QOB, "QOB.", Class)
// NOLINTEND(bugprone-macro-parentheses)

IntrospectiveMethods const* recordOf(QOB::PackageFunction package, unsigned index) {
    return package()->classes[index];
}

// How many properties each class of the base metamodel declares, by its index; the tables don't say
// where they end.
constexpr unsigned BaseCounts[] = {0, 0, 0, 0, 0, 1, 3, 1, 4, 0, 0, 3,
                                   1, 1, 0, 0, 0, 0, 2, 0, 1, 0, 0, 0};

// The same for the kernel, without what every object has.
constexpr unsigned KernelCounts[] = {0, 1,  0, 1, 4, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 2,
                                     4, 13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};

Property propertyOf(QOB::PropertyReference const& reference) {
    IntrospectiveMethods const* const methods = recordOf(reference.package, reference.classIndex);
    if (methods->properties == nullptr) {
        return {methods, nullptr};
    }
    return {methods, methods->properties[reference.propertyId]};
}

/// The class and all above it, nearest first, each once.
void collect(IntrospectiveMethods const* methods, std::vector<IntrospectiveMethods const*>& found) {
    if (std::find(found.begin(), found.end(), methods) != found.end()) {
        return;
    }
    found.push_back(methods);
    for (auto const* super = methods->supers; super != nullptr && super->package != nullptr;
         ++super) {
        collect(recordOf(super->package, super->classIndex), found);
    }
}

std::vector<IntrospectiveMethods const*> classesOf(IntrospectiveMethods const* methods) {
    std::vector<IntrospectiveMethods const*> found;
    collect(methods, found);
    return found;
}

/// A value class by its place in the package of its description.
struct ValueType {
    QOB::PackageIntrospectiveMethods const* package;
    unsigned index;
    std::string name;
    QOB::Object (*sample)(int variant);
};

std::vector<ValueType> const& valueTypes() {
    auto const* const kernel = QOB::get_QOB_PackageIntrospectiveMethods();
    auto const* const base = foundation::get_foundation_PackageIntrospectiveMethods();
    auto const* const package = types::get_types_PackageIntrospectiveMethods();
    static std::vector<ValueType> const* const all = new std::vector<ValueType>{
        {kernel,
         QOB::BooleanIndex,
         QOB::Boolean::getTypeName(),
         [](int variant) -> QOB::Object { return QOB::Boolean(variant % 2 == 0); }},
        {kernel,
         QOB::IntegerIndex,
         QOB::Integer::getTypeName(),
         [](int variant) -> QOB::Object { return QOB::Integer(7 + variant); }},
        {kernel,
         QOB::RealIndex,
         QOB::Real::getTypeName(),
         [](int variant) -> QOB::Object { return QOB::Real(1.5 + variant); }},
        {kernel,
         QOB::StringIndex,
         QOB::String::getTypeName(),
         [](int variant) -> QOB::Object { return QOB::String(variant == 0 ? "one" : "two"); }},
        {base,
         9,
         foundation::VisibilityKind::getTypeName(),
         [](int variant) -> QOB::Object { return foundation::VisibilityKind(1 + variant); }},
        {package,
         8,
         types::DataSize::getTypeName(),
         [](int variant) -> QOB::Object {
             return types::DataSize(3 + variant, types::DataSizeUnitKind::byte);
         }},
        {package,
         11,
         types::FloatingPointKind::getTypeName(),
         [](int variant) -> QOB::Object { return types::FloatingPointKind(1 - variant); }},
        {package,
         33,
         types::CompuMethodCategory::getTypeName(),
         [](int variant) -> QOB::Object { return types::CompuMethodCategory(1 + variant); }},
    };
    return *all;
}

ValueType const& valueTypeOf(Property const& property) {
    for (ValueType const& type : valueTypes()) {
        if (type.package == property.description->package() &&
            type.index == property.description->typeIndex) {
            return type;
        }
    }
    throw std::logic_error(std::string(property.description->name) + " has an unknown type");
}

} // namespace

std::vector<ConcreteClass> const& concreteClasses() {
    static std::vector<ConcreteClass> const* const classes =
        new std::vector<ConcreteClass>{VELUM_CONCRETE_CLASSES(VELUM_ROW)};
    return *classes;
}

std::vector<ConcreteClass> const& allClasses() {
    static std::vector<ConcreteClass> const* const classes = [] {
        auto* const all = new std::vector<ConcreteClass>(concreteClasses());
        for (ConcreteClass const& each :
             {VELUM_BASE_ROW(Comment) VELUM_BASE_ROW(Dependency) VELUM_BASE_ROW(ElementImport)
                  VELUM_BASE_ROW(NamespaceImport) VELUM_KERNEL_ROW(StereotypeObject)
                      VELUM_KERNEL_ROW(Package) VELUM_KERNEL_ROW(DataType)
                          VELUM_KERNEL_ROW(Enumeration) VELUM_KERNEL_ROW(EnumerationLiteral)
                              VELUM_KERNEL_ROW(Class) VELUM_KERNEL_ROW(Property)}) {
            all->push_back(each);
        }
        return all;
    }();
    return *classes;
}

IntrospectiveMethods const* Property::type() const {
    return recordOf(description->package, description->typeIndex);
}

Property Property::opposite() const {
    return propertyOf(
        {description->oppositePackage, description->oppositeClass, description->oppositeId});
}

QOB::Object Property::get(QOB::ClassObject const& object) const {
    return methods->getSingleValued(object.get(), object.getDeviant(), id());
}
bool Property::isThere(QOB::ClassObject const& object) const {
    return methods->hasSingleValued(object.get(), object.getDeviant(), id());
}
void Property::set(QOB::ClassObject const& object, QOB::Object const& value) const {
    methods->setSingleValued(object.get(), object.getDeviant(), id(), value);
}
void Property::remove(QOB::ClassObject const& object) const {
    methods->removeSingleValued(object.get(), object.getDeviant(), id());
}
QOB::Sequence<QOB::Object> Property::elements(QOB::ClassObject const& object) const {
    return elementsOf(object.get(), object.getDeviant());
}
QOB::Sequence<QOB::Object> Property::elementsOf(QOB::NSInterface::ObjectIntf* object,
                                                QOB::Deviant deviant) const {
    using QOB::filtered_sequence_internal::GenericFilter;
    using QOB::filtered_sequence_internal::GenericFilteredSequence;
    auto const found = methods->getMultiValued(object, deviant, id(), true);
    if (!isReference()) {
        return QOB::Sequence<QOB::Object>(found); // boxed already
    }
    return {new GenericFilteredSequence(found.pointer(), GenericFilter::boxedObjects()), deviant};
}

bool isA(IntrospectiveMethods const* methods, IntrospectiveMethods const* base) {
    std::vector<IntrospectiveMethods const*> const classes = classesOf(methods);
    return std::find(classes.begin(), classes.end(), base) != classes.end();
}

unsigned declaredBy(IntrospectiveMethods const* methods) {
    auto const* const* const first = methods->package->classes;
    auto const index = std::find(first, first + methods->package->count, methods) - first;
    if (methods->package == types::get_types_PackageIntrospectiveMethods()) {
        return static_cast<unsigned>(PackageTable[index].properties);
    }
    bool const isBase =
        methods->package == foundation::get_foundation_PackageIntrospectiveMethods();
    return isBase ? BaseCounts[index] : KernelCounts[index];
}

std::vector<Property> propertiesOf(IntrospectiveMethods const* methods) {
    types::initialize(); // fills the tables
    std::vector<Property> found;
    for (IntrospectiveMethods const* declaring : classesOf(methods)) {
        for (unsigned id = 1; id <= declaredBy(declaring); ++id) {
            found.push_back({declaring, declaring->properties[id]});
        }
    }
    return found;
}

Property inPlaceOf(Property const& property, IntrospectiveMethods const* methods) {
    for (Property const& candidate : propertiesOf(methods)) {
        for (unsigned i = 0; i < candidate.description->redefinedCount; ++i) {
            if (propertyOf(candidate.description->redefined[i]) == property &&
                !property.isDerived()) {
                return candidate;
            }
        }
    }
    return property;
}

bool comesDownTo(Property const& property, char const* name) {
    if (property.description == nullptr) {
        return false;
    }
    if (std::strcmp(property.description->name, name) == 0) {
        return true;
    }
    for (unsigned i = 0; i < property.description->redefinedCount; ++i) {
        if (comesDownTo(propertyOf(property.description->redefined[i]), name)) {
            return true;
        }
    }
    for (unsigned i = 0; i < property.description->subsettedCount; ++i) {
        if (comesDownTo(propertyOf(property.description->subsetted[i]), name)) {
            return true;
        }
    }
    return false;
}

QOB::Object sampleValue(Property const& property, int variant) {
    return valueTypeOf(property).sample(variant);
}

QOB::Object defaultValue(Property const& property) {
    std::string const& type = valueTypeOf(property).name;
    if (!QOB::ValueObjectFactory::isValueObjectType(type)) {
        return foundation::VisibilityKind(0); // has no text either
    }
    char const* const text = property.description->defaultValue;
    return *text == '\0' ? QOB::Object(QOB::ValueObjectFactory::create(type))
                         : QOB::Object(QOB::ValueObjectFactory::createFromString(type, text));
}

std::vector<Property> ownedLists(IntrospectiveMethods const* methods) {
    std::vector<Property> lists;
    for (Property const& property : propertiesOf(methods)) {
        if (property.ownsObjects() && property.isMany() && !property.isDerived() &&
            inPlaceOf(property, methods) == property) {
            lists.push_back(property);
        }
    }
    return lists;
}

bool takesIn(IntrospectiveMethods const* owner, IntrospectiveMethods const* part) {
    if (isA(part, &QOB::NSInterface::StereotypeObjectIntf::sIntrospectiveMethods)) {
        return true; // every object has a list of those that are applied to it
    }
    std::vector<Property> const lists = ownedLists(owner);
    return std::any_of(lists.begin(), lists.end(), [part](Property const& list) {
        return isA(part, list.type());
    });
}

bool takes(Property const& property,
           IntrospectiveMethods const* owner,
           ConcreteClass const& candidate) {
    Property const valid = inPlaceOf(property, owner);
    // An owner has a list for the object, and a class that narrows the other end may not take it.
    return isA(candidate.methods, valid.type()) &&
           (!valid.isWayToOwner() || takesIn(candidate.methods, owner)) &&
           (!valid.hasOpposite() ||
            isA(owner, inPlaceOf(valid.opposite(), candidate.methods).type()));
}

namespace {

/// Null if there is none.
ConcreteClass const* findPartner(Property const& property, IntrospectiveMethods const* owner) {
    for (ConcreteClass const& candidate : allClasses()) {
        if (takes(property, owner, candidate)) {
            return &candidate;
        }
    }
    return nullptr;
}

} // namespace

bool hasPartner(Property const& property, IntrospectiveMethods const* owner) {
    return findPartner(property, owner) != nullptr;
}

ConcreteClass const& partnerClass(Property const& property, IntrospectiveMethods const* owner) {
    ConcreteClass const* const found = findPartner(property, owner);
    if (found == nullptr) {
        throw std::logic_error(std::string(property.description->name) + " takes no objects");
    }
    return *found;
}

std::string show(QOB::Object const& value) {
    if (value.get() == nullptr) {
        return "none";
    }
    if (QOB::ImmutableValueObject const box(value); box.get() != nullptr) {
        return box.getValueTypeName() + ":" + std::string(value.toString());
    }
    std::string text = "#";
    text += std::string(QOB::ClassObject(value).getObjectId().toString());
    text += value.isValid() ? "" : " gone";
    return text;
}

std::string showElements(QOB::Sequence<QOB::Object> const& elements) {
    std::string text;
    for (QOB::Object const& element : elements) {
        text += show(element);
        text += ' ';
    }
    return text;
}

std::string print(QOB::NSInterface::ObjectIntf* object,
                  QOB::Deviant deviant,
                  std::vector<Property> const& properties) {
    // A state knows only what it stores.
    bool const isState = !object->getRootDeviant().isNotNull();
    std::string text;
    for (Property const& property : properties) {
        if (property.isDerived() && (isState || !property.isMany())) {
            continue;
        }
        text += property.description->name;
        text += " = ";
        if (property.isMany()) {
            text += showElements(property.elementsOf(object, deviant));
        } else {
            text += property.methods->hasSingleValued(object, deviant, property.id()) ? "" : "- ";
            text += show(property.methods->getSingleValued(object, deviant, property.id()));
        }
        text += '\n';
    }
    return text;
}

World::World()
    : model(types::NSInterface::FactoryIntf::createNewModel()), root(model.getDeviant()) {
    // Defaults are made by the names of value classes, which the start of the library enters.
    types::initialize();
}

World::~World() {
    if (model.isValid()) {
        model.destroy();
    }
}

QOB::ClassObject World::create(ConcreteClass const& of) {
    made_.push_back({of.create(model), propertiesOf(of.methods)});
    return made_.back().object;
}

QOB::Object World::another(QOB::ClassObject const& object,
                           Property const& property,
                           IntrospectiveMethods const* of) {
    if (property.isReference()) {
        return create(partnerClass(property, of));
    }
    QOB::Object const first = sampleValue(property, 0);
    bool const isHeld = property.isMany() ? property.elements(object).contains(first)
                                          : show(property.get(object)) == show(first);
    return isHeld ? sampleValue(property, 1) : first;
}

QOB::ClassObject World::createFull(ConcreteClass const& of) {
    QOB::ClassObject object = create(of);
    for (Property const& property : propertiesOf(of.methods)) {
        // A redefined property is filled by the one in its place, a container by its owner.
        if (property.isDerived() || property.isWayToOwner() ||
            !(inPlaceOf(property, of.methods) == property)) {
            continue;
        }
        if (property.isMany()) {
            property.elements(object).push_back(another(object, property, of.methods));
            property.elements(object).push_back(another(object, property, of.methods));
        } else {
            property.set(object, another(object, property, of.methods));
        }
    }
    return object;
}

std::string World::print(QOB::Deviant deviant) const {
    std::string text;
    for (Made const& made : made_) {
        QOB::ClassObject const object(made.object.get(), deviant);
        text += show(object);
        text += '\n';
        if (object.isValid()) {
            text += VelumTest::print(object.get(), deviant, made.properties);
            text += "in ";
            text += show(object.getContainerQOB());
            text += '\n';
        }
    }
    return text;
}

} // namespace VelumTest
