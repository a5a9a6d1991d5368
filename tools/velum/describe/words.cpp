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

std::vector<const Type*> typesOf(const Package& package, bool areClasses) {
    std::vector<const Type*> types;
    for (const Type& type : package.types) {
        if (type.isClass() == areClasses) {
            types.push_back(&type);
        }
    }
    return types;
}

} // namespace

std::string multiplicity(const Property& property) {
    return std::to_string(property.lower) + ".." +
           (property.upper ? std::to_string(*property.upper) : "*");
}

std::vector<std::string> traits(const Property& property) {
    std::vector<std::string> words;
    const auto add = [&words](bool isTrue, const char* word) {
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

std::string_view shortName(const Package& package) {
    const std::string_view name = package.name;
    return name.substr(name.rfind('.') + 1);
}

std::string nameIn(const Package& here, const Type& type) {
    return type.package == &here ? type.name
                                 : std::string(shortName(*type.package)) + "." + type.name;
}

std::string nameIn(const Package& here, const Property& property) {
    return nameIn(here, *property.owner) + "." + property.name;
}

std::string_view kindOf(const Type& type) {
    switch (type.kind) {
    case Type::Kind::dataType:
        return "data type";
    case Type::Kind::enumeration:
        return "enumeration";
    default:
        return type.isAbstract ? "abstract class" : "class";
    }
}

std::string textOf(const Tag& tag) {
    return tag.value.empty() ? tag.name : tag.name + " = " + tag.value;
}

std::string sumOf(const Package& package) {
    const auto classes = classesOf(package);
    std::size_t properties = 0;
    for (const Type* metaclass : classes) {
        properties += metaclass->properties.size();
    }
    return counted(classes.size(), "class", "classes") + " with " +
           counted(properties, "property", "properties") + ", " +
           counted(package.types.size() - classes.size(), "data type", "data types");
}

std::string joined(const std::vector<std::string>& texts) {
    return listOf(texts, [](const std::string& text) -> const std::string& { return text; });
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

std::vector<const Type*> classesOf(const Package& package) {
    return typesOf(package, true);
}

std::vector<const Type*> dataTypesOf(const Package& package) {
    return typesOf(package, false);
}

} // namespace velum::describe
