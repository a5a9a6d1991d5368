#include "describe/words.h"

#include <algorithm>

namespace velum::describe {

namespace {

std::string counted(std::size_t count, std::string_view noun, std::string_view plural) {
    std::string text = std::to_string(count);
    text += ' ';
    text += count == 1 ? noun : plural;
    return text;
}

std::vector<Type const*> typesOf(Package const& package, bool areClasses) {
    std::vector<Type const*> types;
    for (Type const& type : package.types) {
        if (type.isClass() == areClasses) {
            types.push_back(&type);
        }
    }
    return types;
}

} // namespace

std::string multiplicity(Property const& property) {
    return std::to_string(property.lower) + ".." +
           (property.upper ? std::to_string(*property.upper) : "*");
}

std::vector<std::string> traits(Property const& property) {
    std::vector<std::string> words;
    const auto add = [&words](bool isTrue, char const* word) {
        if (isTrue) {
            words.emplace_back(word);
        }
    };
    add(property.isComposite, "composite");
    add(property.isDerived, "derived");
    add(property.isReadOnly, "read-only");
    add(property.isOrdered, "ordered");
    add(property.mayRepeat, "non-unique");
    add(property.isPrivate, "private");
    return words;
}

std::string_view shortName(Package const& package) {
    const std::string_view name = package.name;
    return name.substr(name.rfind('.') + 1);
}

std::string nameIn(Package const& here, Type const& type) {
    return type.package == &here ? type.name
                                 : std::string(shortName(*type.package)) + "." + type.name;
}

std::string nameIn(Package const& here, Property const& property) {
    return nameIn(here, *property.owner) + "." + property.name;
}

std::string_view kindOf(Type const& type) {
    switch (type.kind) {
    case Type::Kind::dataType:
        return "data type";
    case Type::Kind::enumeration:
        return "enumeration";
    default:
        return type.isAbstract ? "abstract class" : "class";
    }
}

std::string textOf(Tag const& tag) {
    return tag.value.empty() ? tag.name : tag.name + " = " + tag.value;
}

std::string sumOf(Package const& package) {
    const auto classes = classesOf(package);
    std::size_t properties = 0;
    for (Type const* metaclass : classes) {
        properties += metaclass->properties.size();
    }
    return counted(classes.size(), "class", "classes") + " with " +
           counted(properties, "property", "properties") + ", " +
           counted(package.types.size() - classes.size(), "data type", "data types");
}

std::string joined(std::vector<std::string> const& texts) {
    return listOf(texts, [](std::string const& text) -> std::string const& { return text; });
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = text.find('\n', begin);
        lines.push_back(text.substr(begin, end - begin));
        if (end == std::string_view::npos) {
            return lines;
        }
        begin = end + 1;
    }
}

std::vector<Type const*> classesOf(Package const& package) {
    return typesOf(package, true);
}

std::vector<Type const*> dataTypesOf(Package const& package) {
    return typesOf(package, false);
}

} // namespace velum::describe
