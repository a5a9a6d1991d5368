#pragma once

#include "qob/qob/introspection.h"
#include "qob/qob/model.h"
#include "qob/qob/sequence.h"

#include <string>
#include <vector>

/// The metaclasses as their descriptions tell them, for tests that run over all of them: what a
/// test expects is worked out here from the tables, never from an object.
namespace VelumTest {

/// A class of which there can be objects.
struct ConcreteClass {
    char const* name;
    char const* dottedName;
    QOB::IntrospectiveMethods const* methods;
    QOB::ClassObject (*create)(QOB::Model const& model);
};

/// The metaclasses of the package but its factory.
std::vector<ConcreteClass> const& concreteClasses();
/// With those of the base metamodel, which are the types of its properties, and of the kernel,
/// which metamodels are made of.
std::vector<ConcreteClass> const& allClasses();

/// A property as its declaring class describes it.
struct Property {
    QOB::IntrospectiveMethods const* methods = nullptr;
    QOB::MetaPropertyDescription const* description = nullptr;

    unsigned id() const { return description->id; }
    bool has(QOB::PropertyFlag flag) const { return (description->flags & flag) != 0; }
    bool isMany() const { return has(QOB::PropertyMultiValued); }
    bool isDerived() const { return has(QOB::PropertyDerived); }
    bool isOptional() const { return description->lower == 0; }
    bool hasOpposite() const { return description->hasOpposite != 0; }
    /// The record of the property's type.
    QOB::IntrospectiveMethods const* type() const;
    /// Whether the values are objects.
    bool isReference() const { return type()->getSingleValued != nullptr; }
    /// Whether the object owns the values as objects.
    bool ownsObjects() const { return has(QOB::PropertyComposite) && isReference(); }
    /// Needs an opposite.
    Property opposite() const;
    /// Whether this is the way from an owned object to its owner: its value is the container.
    bool isWayToOwner() const { return hasOpposite() && opposite().ownsObjects(); }

    QOB::Object get(QOB::ClassObject const& object) const;
    bool isThere(QOB::ClassObject const& object) const;
    void set(QOB::ClassObject const& object, QOB::Object const& value) const;
    void remove(QOB::ClassObject const& object) const;
    /// The elements; a write keeps the other end in step. Values are boxed.
    QOB::Sequence<QOB::Object> elements(QOB::ClassObject const& object) const;
    /// The same of a root object or a state.
    QOB::Sequence<QOB::Object> elementsOf(QOB::NSInterface::ObjectIntf* object,
                                          QOB::Deviant deviant) const;

    friend bool operator==(Property const& a, Property const& b) {
        return a.description == b.description;
    }
};

/// Whether an object keeps the property, as one value.
inline bool isStoredSingle(Property const& property) {
    return !property.isMany() && !property.isDerived();
}
/// Whether a class is the other one or below it.
bool isA(QOB::IntrospectiveMethods const* methods, QOB::IntrospectiveMethods const* base);
/// Every property that a class has of this product's metamodels: its own, then those of its bases.
std::vector<Property> propertiesOf(QOB::IntrospectiveMethods const* methods);
/// How many properties the class itself declares; of those of every object none.
unsigned declaredBy(QOB::IntrospectiveMethods const* methods);
/// The property that stands in the place of another one in a class: the one that redefines it last.
Property inPlaceOf(Property const& property, QOB::IntrospectiveMethods const* methods);
/// Whether a property is the other one or a part of it, by what it redefines and subsets.
bool comesDownTo(Property const& property, char const* name);

/// A value of a data-typed property; two variants differ.
QOB::Object sampleValue(Property const& property, int variant);
/// What a data-typed property holds before it is set and after it is removed.
QOB::Object defaultValue(Property const& property);
/// Whether the property takes objects of the class on objects of class `owner`.
bool takes(Property const& property,
           QOB::IntrospectiveMethods const* owner,
           ConcreteClass const& candidate);
/// The lists by which objects of a class own others.
std::vector<Property> ownedLists(QOB::IntrospectiveMethods const* methods);
/// Whether objects of a class have a list for those of another one.
bool takesIn(QOB::IntrospectiveMethods const* owner, QOB::IntrospectiveMethods const* part);
/// Whether the property takes any object on objects of class `owner`: no owner has a list for some.
bool hasPartner(Property const& property, QOB::IntrospectiveMethods const* owner);
/// A class whose objects the property takes on objects of class `owner`.
ConcreteClass const& partnerClass(Property const& property, QOB::IntrospectiveMethods const* owner);

/// The text of a value: type and text of a box, the id of an object.
std::string show(QOB::Object const& value);
std::string showElements(QOB::Sequence<QOB::Object> const& elements);
/// All that a root object or a state says of itself, a line a property.
std::string print(QOB::NSInterface::ObjectIntf* object,
                  QOB::Deviant deviant,
                  std::vector<Property> const& properties);

/// A model and all objects that a test made in it.
class World {
public:
    World();
    World(World const&) = delete;
    World& operator=(World const&) = delete;
    /// Ends the model, if the test hasn't.
    ~World();

    QOB::ClassObject create(ConcreteClass const& of);
    /// An object that the property takes, or a value that it doesn't hold now.
    QOB::Object another(QOB::ClassObject const& object,
                        Property const& property,
                        QOB::IntrospectiveMethods const* of);
    /// An object whose every property holds something.
    QOB::ClassObject createFull(ConcreteClass const& of);
    /// Everything in a deviant.
    std::string print(QOB::Deviant deviant) const;

    QOB::Model model;
    QOB::Deviant root;

private:
    struct Made {
        QOB::ClassObject object;
        std::vector<Property> properties;
    };
    std::vector<Made> made_;
};

} // namespace VelumTest
