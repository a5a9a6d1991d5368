#include "model/metaclasses.h"

#include <type_traits>
#include <unordered_map>

namespace velum::model {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

template <class Handle>
concept HasCreator = requires(const QOB::Model& model) {
    Handle::create(model);
};

template <class Handle>
Metaclass row(std::string_view name, unsigned properties, bool isOfTypes) {
    return {name,
            &Handle::Interface::sIntrospectiveMethods,
            properties,
            !HasCreator<Handle> && !std::is_same_v<Handle, types::Factory>, // made with its model
            isOfTypes};
}

template <class Handle>
Metaclass ofTypes(std::string_view name, unsigned properties) {
    return row<Handle>(name, properties, true);
}

template <class Handle>
Metaclass ofFoundation(std::string_view name, unsigned properties) {
    return row<Handle>(name, properties, false);
}

} // namespace

const std::vector<Metaclass>& metaclasses() {
    // A record tells neither the name of its class nor how many properties its table has.
    static const std::vector<Metaclass> all = {
        ofFoundation<foundation::Element>("Element", 3),
        ofFoundation<foundation::NamedElement>("NamedElement", 4),
        ofFoundation<foundation::Namespace>("Namespace", 3),
        ofFoundation<foundation::PackageableElement>("PackageableElement", 0),
        ofFoundation<foundation::Type>("Type", 0),
        ofFoundation<foundation::TypedElement>("TypedElement", 2),
        ofFoundation<foundation::ValueType>("ValueType", 1),
        ofFoundation<foundation::ValueSpecification>("ValueSpecification", 0),
        ofTypes<types::ApplicationValueSpecification>("ApplicationValueSpecification", 2),
        ofTypes<types::Axis>("Axis", 4),
        ofTypes<types::Boolean>("Boolean", 4),
        ofTypes<types::Cell>("Cell", 1),
        ofTypes<types::Complex>("Complex", 2),
        ofTypes<types::CompositeSpecification>("CompositeSpecification", 1),
        ofTypes<types::CompuMethod>("CompuMethod", 6),
        ofTypes<types::ConstantReference>("ConstantReference", 1),
        ofTypes<types::ConstantSpecification>("ConstantSpecification", 2),
        ofTypes<types::DataConstr>("DataConstr", 2),
        ofTypes<types::Dimension>("Dimension", 6),
        ofTypes<types::Enumeration>("Enumeration", 5),
        ofTypes<types::EnumerationLiteral>("EnumerationLiteral", 6),
        ofTypes<types::EnumerationLiteralReference>("EnumerationLiteralReference", 2),
        ofTypes<types::Factory>("Factory", 0),
        ofTypes<types::FixedPoint>("FixedPoint", 6),
        ofTypes<types::FloatingPoint>("FloatingPoint", 1),
        ofTypes<types::Integer>("Integer", 2),
        ofTypes<types::LiteralReal>("LiteralReal", 1),
        ofTypes<types::LookupTableSpecification>("LookupTableSpecification", 1),
        ofTypes<types::LookupTableType>("LookupTableType", 7),
        ofTypes<types::Matrix>("Matrix", 4),
        ofTypes<types::MatrixValueSpecification>("MatrixValueSpecification", 2),
        ofTypes<types::PrimitiveType>("PrimitiveType", 7),
        ofTypes<types::Real>("Real", 4),
        ofTypes<types::SharedAxisType>("SharedAxisType", 5),
        ofTypes<types::Slot>("Slot", 1),
        ofTypes<types::StructElement>("StructElement", 3),
        ofTypes<types::Structure>("Structure", 2),
        ofTypes<types::StructureValueSpecification>("StructureValueSpecification", 1),
        ofTypes<types::SwBaseType>("SwBaseType", 1),
        ofTypes<types::SwRecordLayout>("SwRecordLayout", 2),
        ofTypes<types::Unit>("Unit", 10),
        ofTypes<types::ValueElement>("ValueElement", 2),
        ofTypes<types::VoidPointer>("VoidPointer", 3),
    };
    return all;
}

const Metaclass* findMetaclass(const QOB::IntrospectiveMethods* record) {
    for (const Metaclass& metaclass : metaclasses()) {
        if (metaclass.record == record) {
            return &metaclass;
        }
    }
    return nullptr;
}

const Metaclass* findMetaclass(std::string_view name) {
    static const auto byName = [] {
        std::unordered_map<std::string_view, const Metaclass*> index;
        for (const Metaclass& metaclass : metaclasses()) {
            index.emplace(metaclass.name, &metaclass);
        }
        return index;
    }();
    const auto found = byName.find(shortName(name));
    return found == byName.end() ? nullptr : found->second;
}

std::vector<const Metaclass*> supersOf(const Metaclass& metaclass) {
    std::vector<const Metaclass*> supers;
    for (const QOB::SuperReference* super = metaclass.record->supers;
         super != nullptr && super->package != nullptr;
         ++super) {
        const QOB::PackageIntrospectiveMethods* const package = super->package();
        if (const Metaclass* const found = findMetaclass(package->classes[super->classIndex])) {
            supers.push_back(found);
        }
    }
    return supers;
}

std::vector<const QOB::MetaPropertyDescription*> propertiesOf(const Metaclass& metaclass) {
    QOB::MetaPropertyDescription** const byId = metaclass.record->properties;
    return {byId + 1, byId + 1 + metaclass.propertyCount};
}

std::string_view shortName(std::string_view dottedName) {
    dottedName.remove_prefix(dottedName.rfind('.') + 1);
    return dottedName;
}

} // namespace velum::model
