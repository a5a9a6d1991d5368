#include "diff/printers.h"
#include "model/objects.h"
#include "model/values.h"
#include "report/printers.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace velum::diff {

namespace {

using model::Addresses;
using model::ValueKind;
using Values = std::vector<QOB::Object>;

/// Of a longer list only its beginning is printed.
constexpr std::size_t mostValues = 8;

std::string valueText(QOB::Object const& value, Addresses& addresses) {
    std::string const text = report::inOneLine(model::textOf(value, addresses));
    return model::kindOf(value) == ValueKind::text ? '"' + text + '"' : text;
}

template <class Text>
std::string listText(Values const& values, Text const& text) {
    std::string all;
    for (std::size_t i = 0; i != std::min(values.size(), mostValues); ++i) {
        all += (i == 0 ? "" : ", ") + text(values[i]);
    }
    if (values.size() > mostValues) {
        all += ", ... (" + std::to_string(values.size()) + " values)";
    }
    return all.empty() ? "nothing" : all;
}

/// Parts by name, others by address.
std::string namesText(Values const& values, Addresses& addresses) {
    return listText(values, [&](QOB::Object const& value) {
        std::string const name = model::nameOf(QOB::ClassObject(value));
        return name.empty() ? valueText(value, addresses) : report::inOneLine(name);
    });
}

std::string changeText(Change const& change, Sides const& sides) {
    std::string const part = report::inOneLine(change.part);
    std::string const place = part + (part.empty() ? "" : " ") + change.property + ": ";
    switch (change.kind) {
    case ChangeKind::added:
        return part + ": added, " +
               partText(QOB::ClassObject(change.newValues.front()), sides.right);
    case ChangeKind::removed:
        return part + ": removed, " +
               partText(QOB::ClassObject(change.oldValues.front()), sides.left);
    case ChangeKind::renamed:
        return part + ": renamed, " + valueText(change.oldValues.front(), sides.left) + " -> " +
               valueText(change.newValues.front(), sides.right);
    case ChangeKind::order:
        return place + "in another order, " + namesText(change.oldValues, sides.left) + " -> " +
               namesText(change.newValues, sides.right);
    case ChangeKind::metaclass:
        return place + model::textOf(change.oldValues.front(), sides.left) + " -> " +
               model::textOf(change.newValues.front(), sides.right);
    case ChangeKind::value:
        break;
    }
    return place + valuesText(change.oldValues, sides.left) + " -> " +
           valuesText(change.newValues, sides.right);
}

std::pair<std::string, std::string> packageAndName(std::string const& path) {
    std::size_t const slash = path.rfind('/', path.find('#'));
    return slash == std::string::npos ? std::pair{std::string(), path}
                                      : std::pair{path.substr(0, slash), path.substr(slash + 1)};
}

/// What is told of the objects of each package, by their names.
class Packages {
public:
    std::string& at(std::string const& path) {
        auto const [package, name] = packageAndName(path);
        return byPackage_[package][name];
    }
    static std::string nameIn(std::string const& path) {
        return report::inOneLine(packageAndName(path).second);
    }
    std::string text() const {
        std::string all;
        for (auto const& [package, objects] : byPackage_) {
            all += (package.empty() ? "/" : report::inOneLine(package)) + "\n";
            for (auto const& [name, text] : objects) {
                all += text;
            }
            all += "\n";
        }
        return all;
    }

private:
    std::map<std::string, std::map<std::string, std::string>> byPackage_;
};

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + ' ' + std::string(what) + (count == 1 ? "" : "s");
}

} // namespace

std::string valuesText(Values const& values, Addresses& addresses) {
    return listText(values, [&](QOB::Object const& value) { return valueText(value, addresses); });
}

std::string partText(QOB::ClassObject const& part, Addresses& addresses) {
    std::string text(model::classOf(part));
    for (QOB::Attribute const& attribute : addresses.attributes().of(part)) {
        bool const isTold = !attribute.isMultiValued && !attribute.isWayToOwner &&
                            attribute.name != "Name" && attribute.name != "Visibility" &&
                            attribute.name != "ExternalId" && isOwnFact(attribute);
        Values const values = isTold ? attribute.valuesOf(part) : Values();
        if (!values.empty()) {
            text += ", " + std::string(attribute.name) + ": ";
            text += attribute.ownsObjects ? std::string(model::classOf(QOB::ClassObject(values[0])))
                                          : valueText(values[0], addresses);
        }
    }
    return text;
}

std::string printText(Comparison const& comparison, Sides const& sides) {
    Packages packages;
    for (Single const& each : comparison.added) {
        packages.at(each.path) +=
            "  added    " + Packages::nameIn(each.path) + ": " + each.metaclass + "\n";
    }
    for (Single const& each : comparison.removed) {
        packages.at(each.path) +=
            "  removed  " + Packages::nameIn(each.path) + ": " + each.metaclass + "\n";
    }
    for (Renaming const& each : comparison.renamed) {
        packages.at(each.from) += "  renamed  " + Packages::nameIn(each.from) + " -> " +
                                  report::inOneLine(each.to) + ": " + each.metaclass +
                                  " of the same content\n";
    }
    for (Change const& change : comparison.changed) {
        std::string& text = packages.at(change.path);
        if (text.empty()) {
            text = "  changed  " + Packages::nameIn(change.path) + "\n";
        }
        text += "    " + changeText(change, sides) + "\n";
    }
    return packages.text() + summaryText(comparison);
}

std::string summaryText(Comparison const& comparison) {
    std::string const same = counted(comparison.sameCount, "object");
    if (comparison.isSame()) {
        return "No difference in " + same + ".\n";
    }
    return std::to_string(comparison.added.size()) + " added, " +
           std::to_string(comparison.removed.size()) + " removed, " +
           std::to_string(comparison.renamed.size()) + " renamed, " +
           std::to_string(comparison.changedCount()) + " changed (" +
           counted(comparison.changed.size(), "difference") + "), " + same + " the same.\n";
}

} // namespace velum::diff
