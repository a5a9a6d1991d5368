#pragma once

#include "qob/qob/attributes.h"
#include "qob/qob/class.h"
#include "qob/qob/package.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Where the objects of each live class stand in a file. Everything follows from the live classes:
/// there is no code for any one of them.
namespace QOB::store {

/// How a value stands in a column.
enum class ValueKind {
    Boolean,  ///< 0 or 1
    Integer,  ///< a number
    Real,     ///< a number; "nan" and "negative zero", which SQL doesn't know, as texts
    Text,     ///< its bytes
    Value,    ///< the text of another data type's value
    Reference ///< the key of an object
};

/// A stored property, and its column or the table of its values.
struct Field {
    int id = 0;         ///< of the property, in the tables of the metamodel
    std::string name;   ///< of the property
    std::string column; ///< or table
    ValueKind kind = ValueKind::Text;
    std::string valueType{}; ///< the dotted name of the data type
    ImmutableProperty property{};
    PropertyBinding binding{};
    IntrospectiveMethods const* targets = nullptr; ///< the class to which a reference leads
    /// Follows from the other end: written for those who query, not read.
    bool follows = false;
    bool mayBeAbsent = false;  ///< It is asked for before a value is read; a reference may be none.
    bool isThereFirst = false; ///< of a new object, which has the default; it may be removed
    /// A reference without another end: set alone, so that no property that it is a part of is
    /// touched.
    bool isAlone = false;

    void set(ClassObject const& object, Object const& value) const {
        auto* const set =
            isAlone ? binding.methods->setOnlySingleValued : binding.methods->setSingleValued;
        set(object.get(), object.getDeviant(), binding.id, value);
    }
};

/// A list that mirrors the references of others: a view.
struct MirroredList {
    std::string view;
    ImmutableProperty property;
};

struct ClassTable {
    std::string name;  ///< dotted
    std::string table; ///< the table, or the view if the class is abstract
    ImmutableClass live;
    int id = 0;
    std::vector<Field> columns{};
    std::vector<Field const*> lists{};

    /// Null for an abstract class.
    decltype(IntrospectiveMethods::create) create() const {
        return live.internal_binding().methods->create;
    }
};

/// The dotted name of a package or of a type in it.
std::string dottedName(ImmutablePackage const& package);
std::string dottedName(ImmutableType const& type);

class Layout {
public:
    /// Of all classes that are live now.
    Layout();
    Layout(Layout const&) = delete;
    Layout& operator=(Layout const&) = delete;

    std::vector<ImmutablePackage> const& packages() const noexcept { return packages_; }
    std::deque<ClassTable> const& classes() const noexcept { return classes_; }
    std::deque<Field> const& lists() const noexcept { return lists_; }
    std::vector<MirroredList> const& mirroredLists() const noexcept { return mirrored_; }
    /// Null for a class without objects and for none.
    ClassTable const* find(NSInterface::ClassIntf const* live) const;
    ClassTable const* find(std::string_view dottedName) const;
    /// What stands for a property of a live class in the tables of the metamodel.
    int idOf(ImmutableProperty const& property) const { return properties_.at(property.get()); }
    /// Whether a class is the other one or below it.
    static bool isA(ImmutableClass const& live, IntrospectiveMethods const* base);

private:
    void addPackage(ImmutablePackage const& package);
    void addClass(ImmutableClass const& live);
    Field fieldOf(Attribute const& attribute) const;
    void addFields(ClassTable& table);
    void addList(ClassTable& table, Attribute const& attribute);
    std::string tableName(std::string const& wanted, std::string const& otherwise);

    Attributes attributes_;
    std::vector<ImmutablePackage> packages_;
    std::deque<ClassTable> classes_;
    std::deque<Field> lists_;
    std::vector<MirroredList> mirrored_;
    std::unordered_map<void const*, int> properties_;
    std::unordered_map<void const*, ClassTable const*> byClass_;
    std::unordered_map<void const*, Field const*> byListProperty_;
    std::unordered_map<std::string, bool> names_; ///< in small letters, as SQL compares them
};

} // namespace QOB::store
