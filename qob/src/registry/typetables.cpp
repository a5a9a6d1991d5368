#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/datatype.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "registry/modulelife.h"
#include "tessel/encoding.h"
#include "tessel/type.h"
#include "values/valuetext.h"

#include <unordered_map>

namespace QOB {

namespace {

/// The description of one of the kernel's own values.
template <class Value>
class OwnType final : public Tessel::Type {
public:
    Tessel::any convertFromString(std::string const& text,
                                  Tessel::ErrorHolder& errors) const override {
        if constexpr (std::same_as<Value, String>) {
            return String(text);
        } else {
            Value value;
            if (!internal::readText(text, value)) {
                errors.setError(internal::refusal<Value>(text));
                return {};
            }
            return value;
        }
    }
    std::string convertToString(Tessel::any const& value) const override {
        auto const& own = Tessel::any_cast<Value const&>(value);
        if constexpr (std::same_as<Value, String>) {
            return own;
        } else {
            return own.toString();
        }
    }
    Tessel::any defaultConstruct() const override { return Value(); }
    bool isValid(Tessel::any const& value) const override { return value.type() == typeid(Value); }
    Tessel::Type* clone() const override { return new OwnType(*this); }
};

struct ValueType {
    Tessel::TypeInfo info;
    ValueObjectFactory::Boxer box;
};

/// Owned by the module objects of the kernel, which go when no model is left.
struct Tables {
    std::unordered_map<std::string, Tessel::TypeInfo> infos;
    std::unordered_map<std::string, ImmutableDataType> metaTypes;
    std::unordered_map<std::string, ValueType> values;

    static Tables& get();
};

template <class... Value>
void registerOwn() {
    ((TypeInfoRegistry::registerTypeInfo(Value::getTypeName(),
                                         Tessel::Type::CreateTypeInfo(new OwnType<Value>())),
      ValueObjectFactory::registerType<Value>(
          *TypeInfoRegistry::getTypeInfo(Value::getTypeName()))),
     ...);
}

Tables& Tables::get() {
    using Owner = Tessel::ModuleObjectImpl<Tables*, boost::checked_deleter<Tables>>;
    static Tables* tables = nullptr;
    if (tables == nullptr) {
        tables = new Tables;
        internal::moduleObjects().append(std::make_unique<Owner>(tables));
        registerOwn<Integer, Real, Boolean, String>();
    }
    return *tables;
}

ValueType const& findValueType(std::string const& typeName) {
    auto const& values = Tables::get().values;
    auto const found = values.find(typeName);
    if (found == values.end()) {
        QOB_FAIL("The name (%s) is none of a value type.", typeName.c_str());
    }
    return found->second;
}

template <class Table, class Entry>
void enter(Table& table, std::string const& name, Entry const& entry, char const* where) {
    if (!table.emplace(name, entry).second) {
        QOB_FAIL("The type name (%s) is in use in the %s.", name.c_str(), where);
    }
}

} // namespace

void internal::describeOwnType(char const* dottedName, ImmutableDataType const& element) {
    Tables::get().metaTypes.insert_or_assign(dottedName, element);
}

// TypeInfoRegistry -----------------------------------------------------------------------------

void TypeInfoRegistry::registerTypeInfo(std::string const& name, Tessel::TypeInfo const& info) {
    enter(Tables::get().infos, name, info, "registry of type infos");
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const& name) noexcept {
    Tables::get().infos.erase(name);
}

void TypeInfoRegistry::registerMetaType(std::string const& name,
                                        Tessel::TypeInfo const& info,
                                        ImmutableDataType const& metaType) {
    registerTypeInfo(name, info);
    Tables::get().metaTypes.insert_or_assign(name, metaType);
}

void TypeInfoRegistry::unregisterMetaType(std::string const& name) noexcept {
    Tables::get().metaTypes.erase(name);
    unregisterTypeInfo(name);
}

ImmutableDataType TypeInfoRegistry::getMetaType(std::string const& name) {
    auto const& metaTypes = Tables::get().metaTypes;
    auto const found = metaTypes.find(name);
    return found != metaTypes.end() ? found->second : ImmutableDataType();
}

bool TypeInfoRegistry::isRegistered(std::string const& name) {
    return Tables::get().infos.contains(name);
}

std::optional<Tessel::TypeInfo> TypeInfoRegistry::getTypeInfo(std::string const& name) {
    auto const& infos = Tables::get().infos;
    auto const found = infos.find(name);
    return found != infos.end() ? std::optional(found->second) : std::nullopt;
}

// ValueObjectFactory ---------------------------------------------------------------------------

ValueObject ValueObjectFactory::create(std::string const& typeName) {
    ValueType const& type = findValueType(typeName);
    return type.box(Tessel::Type::GetBaseType(type.info)->defaultConstruct());
}

ValueObject ValueObjectFactory::create(std::string const& typeName, Tessel::any const& value) {
    return findValueType(typeName).box(value);
}

ValueObject ValueObjectFactory::createFromString(std::string const& typeName, String const& text) {
    ValueType const& type = findValueType(typeName);
    Tessel::ErrorHolder errors;
    Tessel::any const value = type.info.convertFromString(text, errors);
    if (errors.hasError()) {
        QOB_FAIL("%s", errors.getError().c_str());
    }
    return type.box(value);
}

bool ValueObjectFactory::isValueObjectType(std::string const& typeName) {
    return Tables::get().values.contains(typeName);
}

void ValueObjectFactory::registerType(std::string const& typeName,
                                      Tessel::TypeInfo const& info,
                                      Boxer box) {
    enter(Tables::get().values, typeName, ValueType{info, box}, "factory of value objects");
}

void ValueObjectFactory::unregisterType(std::string const& typeName) noexcept {
    Tables::get().values.erase(typeName);
}

} // namespace QOB
