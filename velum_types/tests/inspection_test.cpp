// What is written for objects of any class: the printer and the comparison.

#include "freshmodel.h"
#include "qob/qob/compare.h"
#include "qob/qob/objecttext.h"
#include "qob/qob/stereotypeobject.h"
#include "qob/qob/transaction.h"
#include "tests/support/failure.h"
#include "velum_types/tests/support/concreteclasses.h"
#include "velum_types/tests/support/described.h"

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace types = Zorvane::metamodel::types;

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Object;
using VelumTest::ConcreteClass;
using VelumTest::Property;
using VelumTest::World;

namespace {

std::string printed(ClassObject const& object) {
    std::ostringstream out;
    QOB::print(out, object);
    return out.str();
}

/// A line for each difference.
template <class Side>
std::string differences(Side const& left, Side const& right) {
    std::ostringstream out;
    for (QOB::Difference const& difference : QOB::compare(left, right)) {
        out << difference << '\n';
    }
    return out.str();
}

class Inspection : public VelumTest::FreshModel {
protected:
    Inspection() { types::initialize(); }

    /// A structure with an element of a type elsewhere, one with a type of its own, and one that
    /// refers to the structure itself.
    types::Structure frame(QOB::Model const& in) const {
        types::Structure structure = types::Structure::create(in, "Frame");
        types::StructElement::create(in, structure, "speed").setType(number);
        auto const kinds = types::Enumeration::create(in);
        types::EnumerationLiteral const low = types::EnumerationLiteral::create(in);
        low.setName("low");
        kinds.getOwnedLiterals().push_back(low);
        types::StructElement::create(in, structure, "kind").setInlineType(kinds);
        types::StructElement::create(in, structure, "next").setType(structure);
        return structure;
    }
    static types::StructElement element(types::Structure const& of, int position) {
        return of.getElementses().at(position);
    }

    types::Integer const number = types::Integer::create(model, "uint\"8\"\n");
};

TEST_F(Inspection, PrintsWhatAnObjectHoldsAndContains) {
    auto const matrix = types::Matrix::create(model, number, "Samples");
    matrix.getDimensionses().push_back(2);
    matrix.getDimensionses().push_back(2);
    auto const structure = frame(model);
    element(structure, 1).getInlineType().destroy();
    element(structure, 1).setInlineType(matrix);
    structure.setExternalId("/P/Frame");
    structure.setExternalToolInfo({"editor", "folded"});
    auto const mark = QOB::StereotypeObject::create(model, "draft");
    mark.setValue("2");
    structure.getAppliedStereotypeInstances().push_back(mark);
    EXPECT_EQ("\n" + printed(structure), R"(
Structure #3 "Frame"
  Name: "Frame"
  Visibility: public
  Elements:
    StructElement #4 "speed"
      Name: "speed"
      Visibility: public
      Type: Integer #1 "uint\"8\"\n"
    StructElement #7 "kind"
      Name: "kind"
      Visibility: public
      InlineType:
        Matrix #2 "Samples"
          Name: "Samples"
          Visibility: public
          Dimensions: 2, 2
          BaseType: Integer #1 "uint\"8\"\n"
          IsApplication: false
    StructElement #8 "next"
      Name: "next"
      Visibility: public
      Type: Structure #3 "Frame"
  IsApplication: false
  ExternalId: "/P/Frame"
  ExternalToolInfo: "editor=folded"
  AppliedStereotypeInstance:
    StereotypeObject #9 "draft"
      StereotypeName: "draft"
      Value: "2"
)");
}

TEST_F(Inspection, PrintsCirclesOnceAndTellsWhatIsGone) {
    auto const structure = types::Structure::create(model, "s");
    auto const part = types::StructElement::create(model, structure, "e");
    part.setInlineType(structure);
    EXPECT_EQ("\n" + printed(structure), R"(
Structure #2 "s"
  Name: "s"
  Visibility: public
  Elements:
    StructElement #3 "e"
      Name: "e"
      Visibility: public
      InlineType:
        Structure #2 "s" (see above)
  IsApplication: false
)");

    part.destroy();
    EXPECT_EQ(QOB::toText(part), "StructElement #3 (gone)");
    EXPECT_EQ(QOB::toText(Object()), "nothing");
    EXPECT_EQ(QOB::toText(QOB::Real()), "nothing");
    EXPECT_EQ(QOB::toText(QOB::String()), "nothing");
    EXPECT_EQ(QOB::toText(QOB::String("")), "\"\"");
    EXPECT_THROW(printed(part), QOB::Exception);
    EXPECT_THROW(printed(ClassObject()), QOB::Exception);
}

TEST_F(Inspection, PrintsInTheDeviantOfTheHandleAndHoweverDeep) {
    Deviant const branch = model.createDeviant();
    number.inDeviant(branch).setName("there");
    EXPECT_NE(printed(number.inDeviant(branch)).find("\"there\""), std::string::npos);
    EXPECT_EQ(printed(number).find("there"), std::string::npos);

    types::Structure outer = types::Structure::create(model, "s");
    types::Structure const outermost = outer;
    constexpr int depth = 500;
    for (int i = 0; i != depth; ++i) {
        auto const inner = types::Structure::create(model, "s");
        types::StructElement::create(model, outer, "e").setInlineType(inner);
        outer = inner;
    }
    std::string const text = printed(outermost);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4 + 9 * depth);
}

TEST_F(Inspection, EqualTreesDoNotDiffer) {
    types::Structure const one = frame(model);
    EXPECT_EQ(differences<ClassObject>(one, one), "");
    EXPECT_EQ(differences<ClassObject>(one, frame(model)), "")
        << "parts are compared in pairs, also where a property refers to them";

    QOB::Model const other = types::NSInterface::FactoryIntf::createNewModel();
    types::Structure const far = frame(other);
    EXPECT_EQ(differences<ClassObject>(one, far), "");
    auto const sameNumber = types::Integer::create(other, "another name");
    element(far, 0).setType(sameNumber);
    EXPECT_NE(differences<ClassObject>(one, far), "");
    number.setExternalId("/uint8");
    sameNumber.setExternalId("/uint8");
    EXPECT_EQ(differences<ClassObject>(one, far), "");
    other.destroy();
}

TEST_F(Inspection, TreesDifferInValuesReferencesPartsAndOrder) {
    types::Structure const left = frame(model);
    types::Structure const right = frame(model);
    right.setIsApplication(true);
    element(right, 2).setType(left);
    types::Enumeration const kinds(element(right, 1).getInlineType());
    kinds.getOwnedLiterals().at(0).setName("high");
    EXPECT_EQ("\n" + differences<ClassObject>(left, right), R"(
Structure #2 "Frame": IsApplication: false -> true
EnumerationLiteral #5 "low": Name: "low" -> "high"
StructElement #7 "next": Type: Structure #2 "Frame" -> Structure #2 "Frame"
)");

    // By name a part is found wherever it stands.
    types::Structure const moved = frame(model);
    types::StructElement const last = element(moved, 2);
    moved.getElementses().erase(2);
    moved.getElementses().push_front(last);
    EXPECT_EQ(differences<ClassObject>(left, moved), "") << "the elements aren't ordered";
    types::StructElement::create(model, moved, "more");
    auto const found = QOB::compare(ClassObject(left), ClassObject(moved));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].property, "Elements");
    EXPECT_EQ(found[0].left, ClassObject(left));
    EXPECT_EQ(found[0].right, ClassObject(moved));
    EXPECT_EQ(found[0].leftValues.size(), 3U);
    EXPECT_EQ(found[0].rightValues.size(), 4U);

    auto const literal = [&](types::Enumeration const& of, char const* name) {
        auto const made = types::EnumerationLiteral::create(model);
        made.setName(name);
        of.getOwnedLiterals().push_back(made);
    };
    auto const ab = types::Enumeration::create(model);
    literal(ab, "a");
    literal(ab, "b");
    auto const ba = types::Enumeration::create(model);
    literal(ba, "b");
    literal(ba, "a");
    auto const order = QOB::compare(ClassObject(ab), ClassObject(ba));
    ASSERT_EQ(order.size(), 1U);
    EXPECT_EQ(order[0].property, "OwnedLiteral");

    auto const whole = QOB::compare(ClassObject(ab), ClassObject(left));
    ASSERT_EQ(whole.size(), 1U);
    EXPECT_FALSE(whole[0].property.isValid()) << "of two classes";
    EXPECT_THROW(QOB::compare(ClassObject(ab), ClassObject()), QOB::Exception);
    ClassObject const gone = ba;
    ba.destroy();
    EXPECT_THROW(QOB::compare(ClassObject(ab), gone), QOB::Exception);
}

TEST_F(Inspection, DeviantsDifferInObjectsAndProperties) {
    types::Structure const structure = frame(model);
    Deviant const branch = model.createDeviant();
    QOB::Model const there = model.inDeviant(branch);
    EXPECT_EQ(differences(model, there), "");
    number.inDeviant(branch).setName("uint8");
    number.inDeviant(branch).setIsSigned(false);
    element(structure, 2).inDeviant(branch).destroy();
    types::Unit::create(there, "metre");
    EXPECT_EQ("\n" + differences(model, there), R"(
Integer #1 "uint\"8\"\n": Name: "uint\"8\"\n" -> "uint8"
Integer #1 "uint\"8\"\n": IsSigned: true -> false
Structure #2 "Frame": Elements: StructElement #3 "speed", StructElement #6 "kind", StructElement #7 "next" -> StructElement #3 "speed", StructElement #6 "kind"
StructElement #7 "next" -> nothing
nothing -> Unit #8 "metre"
)");
    model.mergeDeviant(branch);
    EXPECT_EQ(differences(model, there), "");

    // While the root is open, a branch reads what was before.
    {
        QOB::Transaction transaction(model);
        number.setIsSigned(true);
        Deviant const other = model.createDeviant();
        QOB::Model const inOther = model.inDeviant(other);
        EXPECT_EQ(differences(inOther, model), "Integer #1 \"uint8\": IsSigned: false -> true\n");
        transaction.rollback();
        model.removeDeviant(other);
        EXPECT_THROW(QOB::compare(model, inOther), QOB::Exception);
    }
}

/// A model that ends with the test.
class SecondModel {
public:
    SecondModel() = default;
    SecondModel(SecondModel const&) = delete;
    SecondModel& operator=(SecondModel const&) = delete;
    ~SecondModel() { model.destroy(); }

    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
};

class TwoModels : public Inspection {
protected:
    TwoModels() {
        number.setExternalId("/number");
        left.setExternalId("/Frame");
        right.setExternalId("/Frame");
        farNumber.setExternalId("/number");
        element(right, 0).setType(farNumber);
    }

    /// Without the ids of the objects, which are others in each model.
    std::string found() const {
        return std::regex_replace(differences(model, second.model), std::regex(" #[0-9]+"), "");
    }
    void swapFirstElements() const {
        types::StructElement const first = element(right, 0);
        right.getElementses().erase(0);
        right.getElementses().insert(1, first);
    }

    SecondModel const second;
    types::Structure const left = frame(model);
    types::Structure const right = frame(second.model);
    types::Integer const farNumber = types::Integer::create(second.model, "uint\"8\"\n");
};

TEST_F(TwoModels, AreEqualByIdsAndNames) {
    EXPECT_EQ(found(), "");
    // Without an external id class and name tell, without a name the place.
    for (QOB::Model const& each : {second.model, model}) {
        types::Unit::create(each, "metre");
        types::Unit::create(each);
        types::Unit::create(each).setConvFactor(2);
    }
    EXPECT_EQ(found(), "");
    types::Dimension::create(model, "metre");
    EXPECT_EQ(found(), "Dimension \"metre\" -> nothing\n");
    EXPECT_THROW(QOB::compare(model, QOB::Model()), QOB::Exception);
}

TEST_F(TwoModels, DifferInObjectsClassesAndValues) {
    number.setExternalId("/old");
    auto const unit = types::Unit::create(model);
    unit.setExternalId("/u");
    types::Dimension::create(second.model).setExternalId("/u");
    right.setIsApplication(true);
    EXPECT_EQ("\n" + found(), R"(
Structure "Frame": IsApplication: false -> true
Unit -> Dimension
StructElement "speed": Type: Integer "uint\"8\"\n" -> Integer "uint\"8\"\n"
Integer "uint\"8\"\n" -> nothing
nothing -> Integer "uint\"8\"\n"
)");
}

TEST_F(TwoModels, TellPartsFromOrder) {
    swapFirstElements();
    auto order = QOB::compare(model, second.model);
    ASSERT_EQ(order.size(), 1U);
    EXPECT_EQ(order[0].kind, QOB::DifferenceKind::Order);
    EXPECT_EQ(order[0].property, "Elements");

    types::StructElement::create(second.model, right, "more");
    element(right, 2).destroy();
    types::Enumeration const kinds(element(right, 0).getInlineType());
    kinds.setName("Kinds");
    kinds.getOwnedLiterals().at(0).setName("high");
    EXPECT_EQ("\n" + found(), R"(
Structure "Frame": Elements: StructElement "speed", StructElement "kind", StructElement "next" -> StructElement "kind", StructElement "speed", StructElement "more"
Structure "Frame": Elements: StructElement "speed", StructElement "kind", StructElement "next" -> StructElement "kind", StructElement "speed", StructElement "more"
Enumeration: Name: nothing -> "Kinds"
Enumeration: OwnedLiteral: EnumerationLiteral "low" -> EnumerationLiteral "high"
StructElement "next" -> nothing
nothing -> StructElement "more"
EnumerationLiteral "low" -> nothing
nothing -> EnumerationLiteral "high"
)");
}

TEST_F(TwoModels, KnowObjectsWithoutAnIdByWhatRefersToThem) {
    auto const matrix = [](QOB::Model const& in, char const* name, bool isSigned) {
        auto const base = types::Integer::create(in);
        base.setIsSigned(isSigned);
        types::Matrix::create(in, base, name).setExternalId(name);
    };
    matrix(model, "/a", true);
    matrix(model, "/c", false);
    matrix(second.model, "/b", true);
    matrix(second.model, "/c", true);
    matrix(second.model, "/a", true);
    EXPECT_EQ("\n" + found(), R"(
Integer: IsSigned: false -> true
nothing -> Matrix "/b"
nothing -> Integer
)");
}

TEST_F(TwoModels, TellOrderedValuesApartFromOtherValues) {
    auto const method = types::CompuMethod::create(model);
    auto const far = types::CompuMethod::create(second.model);
    for (double const value : {1.0, 2.0}) {
        method.getCalToInternalCompuNumerators().push_back(value);
        far.getCalToInternalCompuNumerators().push_front(value);
    }
    auto const order = QOB::compare(model, second.model);
    ASSERT_EQ(order.size(), 1U);
    EXPECT_EQ(order[0].kind, QOB::DifferenceKind::Order);
    far.getCalToInternalCompuNumerators().push_back(3.0);
    auto const values = QOB::compare(model, second.model);
    ASSERT_EQ(values.size(), 1U);
    EXPECT_EQ(values[0].kind, QOB::DifferenceKind::Values);
}

ConcreteClass const* classOf(ClassObject const& object) {
    std::string const name = object.getLumvoName(false);
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        if (name == of.dottedName) {
            return &of;
        }
    }
    return nullptr;
}

std::string place(ClassObject const& object, std::string const& property) {
    return VelumTest::show(ClassObject(object.get(), object->getRootDeviant())) + " " + property;
}

std::vector<std::string> valuesOf(Property const& property, ClassObject const& object) {
    std::vector<std::string> values;
    if (property.isMany()) {
        for (Object const& element : property.elements(object)) {
            values.push_back(VelumTest::show(element));
        }
        if (!property.has(QOB::PropertyOrdered)) {
            std::sort(values.begin(), values.end());
        }
    } else if (property.isThere(object) && property.get(object).get() != nullptr) {
        values.push_back(VelumTest::show(property.get(object)));
    }
    return values;
}

/// The places at which two deviants differ, looked up one by one.
std::set<std::string> differingPlaces(World const& world, Deviant left, Deviant right) {
    std::set<std::string> places;
    for (ClassObject const& each : world.model.getRootObjects()) {
        ConcreteClass const* const of = classOf(each);
        if (of == nullptr) {
            continue;
        }
        ClassObject const a(each.get(), left);
        ClassObject const b(each.get(), right);
        for (Property const& property : VelumTest::propertiesOf(of->methods)) {
            bool const isStored =
                !property.isDerived() && VelumTest::inPlaceOf(property, of->methods) == property;
            if (isStored && valuesOf(property, a) != valuesOf(property, b)) {
                places.insert(place(each, property.description->name));
            }
        }
        if (a.getContainerQOB() != b.getContainerQOB()) {
            places.insert(place(each, "ContainerQOB"));
        }
    }
    return places;
}

/// Calls the function with each stored property of each class; returns how many there are.
template <class Function>
int forEachStoredProperty(Function const& function) {
    types::initialize();
    int count = 0;
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            bool const isStored =
                !property.isDerived() && VelumTest::inPlaceOf(property, of.methods) == property;
            if (isStored &&
                (!property.isReference() || VelumTest::hasPartner(property, of.methods))) {
                SCOPED_TRACE(std::string(of.name) + "." + property.description->name);
                function(of, property);
                ++count;
            }
        }
    }
    return count;
}

void change(Property const& property, ClassObject const& target, Object const& value) {
    if (property.isMany()) {
        property.elements(target).erase(0);
    } else {
        Deviant const deviant = property.isReference() ? target.getDeviant() : Deviant();
        property.set(target, {value.get(), deviant});
    }
}

std::set<std::string> placesOf(std::vector<QOB::Difference> const& differences) {
    std::set<std::string> places;
    for (QOB::Difference const& difference : differences) {
        if (difference.left.get() != nullptr && classOf(difference.left) != nullptr) {
            places.insert(place(difference.left, difference.property));
        }
    }
    return places;
}

TEST(CompareDeviants, TellsEveryPropertyOfEveryClassThatWasWritten) {
    int const written =
        forEachStoredProperty([](ConcreteClass const& of, Property const& property) {
            World world;
            ClassObject const object = world.createFull(of);
            Object const value = world.another(object, property, of.methods);
            Deviant const branch = world.model.createDeviant();
            QOB::Model const there = world.model.inDeviant(branch);
            EXPECT_EQ(differences(world.model, there), "");
            change(property, object.inDeviant(branch), value);
            std::set<std::string> const found = placesOf(QOB::compare(world.model, there));
            EXPECT_EQ(found, differingPlaces(world, world.root, branch));
            EXPECT_EQ(found.count(place(object, property.description->name)), 1U);
        });
    EXPECT_GT(written, 200);
}

/// What many objects refer to by a single reference is told where they do.
bool isMirror(Property const& property) {
    return property.isMany() && !property.ownsObjects() && property.hasOpposite() &&
           !property.opposite().isMany();
}

TEST(CompareModels, TellsEveryPropertyOfEveryClassThatIsOther) {
    forEachStoredProperty([](ConcreteClass const& of, Property const& property) {
        World left;
        World right;
        ClassObject const object = left.createFull(of);
        ClassObject const other = right.createFull(of);
        EXPECT_EQ(differences(left.model, right.model), "");
        change(property, other, right.another(other, property, of.methods));
        std::vector<QOB::Difference> const differences = QOB::compare(left.model, right.model);
        std::set<std::string> const found = placesOf(differences);
        // An object in another container, or of another name, has no partner; one of the same class
        // in place of another one, owned or referred to, is its partner. What was referred to is
        // still there.
        std::string const name = property.description->name;
        bool const isPlace = property.isReference() && !property.isMany();
        EXPECT_TRUE((isPlace && property.ownsObjects()) || !differences.empty());
        bool const isName = name == "Name" || name == "StereotypeName";
        if (!isMirror(property) && !property.isWayToOwner() && !isName && !isPlace) {
            EXPECT_EQ(found.count(place(object, name)), 1U);
        }
    });
}

} // namespace
