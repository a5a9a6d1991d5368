#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velum::describe {

struct Package;
struct Type;

/// What is said of an element beside its properties; most tags have no value.
struct Tag {
    std::string name;
    std::string value;
};

/// A property of a metaclass. Texts that it doesn't have are empty.
struct Property {
    Type const* owner = nullptr;
    std::string name;
    Type const* type = nullptr; ///< Null if it has none.
    int lower = 0;
    std::optional<int> upper; ///< None for any number.
    std::string defaultValue;
    std::string documentation;
    Property const* opposite = nullptr; ///< The other end, if that is a property too.
    std::string associationName;
    std::string otherEndName; ///< Of an other end that is no property.
    bool isComposite = false;
    bool isDerived = false;
    bool isReadOnly = false;
    bool isOrdered = false;
    bool mayRepeat = false; ///< Several values, of which some may be equal.
    bool isPrivate = false;
    std::vector<Property const*> redefined;
    std::vector<Property const*> subsetted;
    std::vector<Tag> tags;
};

/// A metaclass, or a type of values.
struct Type {
    enum class Kind { metaclass, dataType, enumeration };

    Kind kind = Kind::metaclass;
    Package const* package = nullptr;
    std::string name;
    bool isAbstract = false;
    std::vector<Type const*> supers; ///< Direct ones only.
    std::vector<Type const*> subs;   ///< Those that name it as a super, by name.
    std::vector<std::string> comments;
    std::deque<Property> properties;    ///< Those that it declares itself, by id.
    std::vector<std::string> literals;  ///< Of an enumeration.
    std::vector<Property const*> users; ///< The properties that have this type, by class.
    std::vector<Tag> tags;

    bool isClass() const { return kind == Kind::metaclass; }
};

/// The supers of a class, theirs and so on, the nearest first, each once.
std::vector<Type const*> ancestorsOf(Type const& type);

/// What a class has from one ancestor, but for what a nearer class redefines.
std::vector<Property const*> inheritedFrom(Type const& ancestor, Type const& type);

struct Package {
    std::string name; ///< Dotted.
    std::string uri;
    std::vector<Tag> tags;
    std::deque<Type> types; ///< By name.
};

/// All that the meta-registry tells, read once of its live elements. Holds no handle on them: what
/// happens to them later isn't seen here. Whatever is pointed at belongs to this object.
class Metamodel {
public:
    Metamodel();
    Metamodel(Metamodel const&) = delete;
    Metamodel& operator=(Metamodel const&) = delete;

    /// The data-type metamodel, the one that it builds on, and the one that both are described in.
    Package const& types() const { return package("Zorvane.metamodel.types"); }
    Package const& foundation() const { return package("Zorvane.metamodel.foundation"); }
    Package const& kernel() const { return package("QOB"); }

    /// The type of a name without its package, or with it or with the end of it. Where several
    /// packages have one, the package counts that was made last: it builds on the others. Null if
    /// there is none.
    Type const* find(std::string_view name) const;

    /// The names that someone may have meant who wrote this one, the nearest first.
    std::vector<std::string> namesLike(std::string_view name) const;

private:
    Package const& package(std::string_view name) const;

    std::deque<Package> packages_; ///< In the order in which they were made.
};

} // namespace velum::describe
