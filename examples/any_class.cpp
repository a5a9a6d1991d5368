// What a tool does with objects of classes that it doesn't know: it walks over live properties,
// reads and writes them, prints objects and compares them.
#include <iostream>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

/// The properties that the class and its supers declare and that a person may see.
void printProperties(QOB::ImmutableClass const& of) {
    for (QOB::ImmutableClass const super : of.getSupers()) {
        printProperties(super);
    }
    for (QOB::ImmutableProperty const property : of.getOwnedAttributes()) {
        if (QOB::hasTag("qob_hide_in_lumvo", property) || property.isDerived()) {
            continue;
        }
        std::cout << "  " << of.getName() << "." << property.getName() << ": "
                  << property.getType().getName() << (property.isMultiValued() ? " *" : "") << "\n";
    }
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    // A factory makes objects by the name of their class.
    types::Factory const factory(types::NSInterface::FactoryIntf::createNewFactory(model),
                                 model.getDeviant());
    QOB::ClassObject const object(
        factory.createFromString("Zorvane.metamodel.types.StructElement"));
    std::cout << "A " << object.getMetaClass().getName() << " has\n";
    printProperties(object.getMetaClass());

    object.setOrAdd("Name", QOB::String("speed"));
    QOB::ClassObject const type(factory.createFromString("Zorvane.metamodel.types.Integer"));
    type.setOrAdd("Name", QOB::String("uint8"));
    type.setOrAdd("IsSigned", QOB::Boolean(false));
    object.setOrAdd("InlineType", type);
    QOB::print(std::cout, object);

    // The class checks what it is given.
    try {
        object.setOrAdd("InlineType", QOB::Integer(7));
    } catch (QOB::Exception const&) {
        std::cout << "A number is no type.\n";
    }

    // A view of the model in which something is tried out, and what has become of it.
    QOB::Model const trial = model.inDeviant(model.createDeviant());
    type.inDeviant(trial.getDeviant()).setOrAdd("IsSigned", QOB::Boolean(true));
    for (QOB::Difference const& difference : QOB::compare(model, trial)) {
        std::cout << difference << "\n";
    }
}
