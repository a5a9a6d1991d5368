#include "layout.h"

#include "qob/qob/domainregistry.h"
#include "qob/qob/sequence.h"

#include <algorithm>
#include <cctype>

namespace QOB::store {

namespace {

std::string inSmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
        return static_cast<char>(std::tolower(c));
    });
    return text;
}

ValueKind kindOf(MetaPropertyDescription const& description, ImmutableType const& type) {
    if (ImmutableClass(type).isValid()) {
        return ValueKind::Reference;
    }
    if (description.package == &get_QOB_PackageIntrospectiveMethods) {
        switch (description.typeIndex) {
        case BooleanIndex:
            return ValueKind::Boolean;
        case IntegerIndex:
            return ValueKind::Integer;
        case RealIndex:
            return ValueKind::Real;
        case StringIndex:
            return ValueKind::Text;
        default:
            break;
        }
    }
    return ValueKind::Value;
}

/// Whether the other end is a view of several lists: then the property is the container, which
/// every object has.
bool isContainer(Attribute const& attribute) {
    return attribute.isWayToOwner && attribute.property.getOpposite().isDerived();
}

} // namespace

std::string dottedName(ImmutablePackage const& package) {
    std::string name(package.getName());
    for (ImmutablePackage each = package; each.hasParent();) {
        each = each.getParent();
        name.insert(0, std::string(each.getName()) + ".");
    }
    return name;
}

std::string dottedName(ImmutableType const& type) {
    std::string const name(type.getName());
    return type.hasPackage() ? dottedName(ImmutablePackage(type.getPackage())) + "." + name : name;
}

Layout::Layout() {
    // What every file has beside the tables of the classes.
    for (char const* const name : {"model",
                                   "object",
                                   "tool_info",
                                   "stereotype",
                                   "foreign_reference",
                                   "meta_format",
                                   "meta_package",
                                   "meta_class",
                                   "meta_super",
                                   "meta_literal",
                                   "meta_property",
                                   "meta_column"}) {
        names_.emplace(name, true);
    }
    // The kernel's own classes come last: of two classes of one name, the other one's table has it.
    ImmutablePackage const kernel(ImmutableClass::MetaClass().getPackage());
    for (ClassObject const object :
         DomainRegistry::instance()->getMetaRegistry().getRootObjectsWithoutAssociation()) {
        ImmutablePackage const package(object);
        if (package.isValid() && !package.hasParent() && package != kernel) {
            addPackage(package);
        }
    }
    addPackage(kernel);
    for (ClassTable& table : classes_) {
        addFields(table);
    }
}

void Layout::addPackage(ImmutablePackage const& package) {
    packages_.push_back(package);
    for (ImmutableType const type : package.getOwnedTypes()) {
        if (ImmutableClass const live(type);
            live.isValid() && live.internal_binding().methods != nullptr) {
            addClass(live);
        }
    }
    for (ImmutablePackage const nested : package.getNestedPackages()) {
        addPackage(nested);
    }
}

void Layout::addClass(ImmutableClass const& live) {
    std::string const dotted = dottedName(live);
    ClassTable& table =
        classes_.emplace_back(ClassTable{.name = dotted,
                                         .table = tableName(std::string(live.getName()), dotted),
                                         .live = live,
                                         .id = static_cast<int>(classes_.size()) + 1});
    byClass_.emplace(live.get(), &table);
    for (ImmutableProperty const property : live.getOwnedAttributes()) {
        properties_.emplace(property.get(), static_cast<int>(properties_.size()) + 1);
    }
}

Field Layout::fieldOf(Attribute const& attribute) const {
    MetaPropertyDescription const& description =
        *attribute.binding.methods->properties[attribute.binding.id];
    ImmutableType const type = attribute.property.getType();
    Field field{.id = idOf(attribute.property),
                .name = attribute.name,
                .column = attribute.name,
                .kind = kindOf(description, type),
                .property = attribute.property,
                .binding = attribute.binding,
                .follows = attribute.isWayToOwner,
                .isThereFirst =
                    description.lower == 0 && !std::string_view(description.defaultValue).empty()};
    if (field.kind == ValueKind::Reference) {
        field.targets = ImmutableClass(type).internal_binding().methods;
        field.isAlone = attribute.isReference && !attribute.property.hasOpposite();
    } else {
        field.valueType = dottedName(type);
        field.mayBeAbsent = description.lower == 0;
    }
    return field;
}

void Layout::addFields(ClassTable& table) {
    std::unordered_map<std::string, bool> columns{{"id", true}, {"container", true}};
    for (Attribute const& attribute : attributes_.of(table.live)) {
        if (attribute.reader != nullptr || isContainer(attribute)) {
            continue;
        }
        if (attribute.isMultiValued) {
            addList(table, attribute);
            continue;
        }
        Field field = fieldOf(attribute);
        if (!columns.emplace(inSmallLetters(field.column), true).second) {
            field.column =
                std::string(attribute.property.getOwningClass().getName()) + "_" + field.name;
        }
        table.columns.push_back(std::move(field));
    }
}

void Layout::addList(ClassTable& table, Attribute const& attribute) {
    Field const*& known = byListProperty_[attribute.property.get()];
    bool const isNew = known == nullptr;
    if (isNew) {
        Field& field = lists_.emplace_back(fieldOf(attribute));
        ImmutableClass const owner = attribute.property.getOwningClass();
        field.follows = attribute.isOtherEnd;
        field.column = tableName(std::string(owner.getName()) + "_" + field.name,
                                 dottedName(owner) + "_" + field.name);
        known = &field;
        if (field.follows) {
            mirrored_.push_back({field.column, attribute.property});
        }
    }
    if (!known->follows) {
        table.lists.push_back(known);
    }
}

std::string Layout::tableName(std::string const& wanted, std::string const& otherwise) {
    return names_.emplace(inSmallLetters(wanted), true).second ? wanted : otherwise;
}

ClassTable const* Layout::find(NSInterface::ClassIntf const* live) const {
    auto const found = byClass_.find(live);
    return found != byClass_.end() ? found->second : nullptr;
}

ClassTable const* Layout::find(std::string_view dottedName) const {
    auto const found = std::find_if(classes_.begin(), classes_.end(), [&](ClassTable const& each) {
        return each.name == dottedName;
    });
    return found != classes_.end() ? &*found : nullptr;
}

bool Layout::isA(ImmutableClass const& live, IntrospectiveMethods const* base) {
    std::vector<ImmutableClass> open{live};
    while (!open.empty()) {
        ImmutableClass const next = open.back();
        open.pop_back();
        if (next.internal_binding().methods == base) {
            return true;
        }
        for (ImmutableClass const super : next.getSupers()) {
            open.push_back(super);
        }
    }
    return false;
}

} // namespace QOB::store
