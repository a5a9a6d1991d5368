#include "writing/package_writer.h"

#include <algorithm>

namespace velum::arxml {

namespace {

std::vector<std::string> namesIn(std::string_view package) {
    std::vector<std::string> names;
    while (!package.empty()) {
        package.remove_prefix(1); // the slash
        const std::size_t end = std::min(package.find('/'), package.size());
        names.emplace_back(package.substr(0, end));
        package.remove_prefix(end);
    }
    return names;
}

/// Whether the element is an application type that has a map to another type.
bool isMapped(Outline::Entry const& entry) {
    if (entry.kind != ElementKind::applicationPrimitive) {
        return false;
    }
    const types::PrimitiveType type(entry.object);
    return type.isValid() && type.hasReference();
}

} // namespace

void PackageWriter::add(Outline::Entry const& entry) {
    if (entry.package() != package_) {
        leave();
        enter(entry);
    }
    writeElement({xml_, outline_, findings_, entry.path(), bases()}, entry);
    if (isMapped(entry)) {
        mapped_.push_back(&entry);
    }
}

void PackageWriter::finish() {
    leave();
    while (!open_.empty()) {
        closePackage();
    }
}

/// Opens the packages around an element, from the first one that isn't open.
void PackageWriter::enter(Outline::Entry const& first) {
    const std::vector<std::string> names = namesIn(first.package());
    const auto differs = std::mismatch(open_.begin(), open_.end(), names.begin(), names.end());
    const auto common = static_cast<std::size_t>(differs.first - open_.begin());
    while (open_.size() > common) {
        closePackage();
    }
    for (std::size_t i = common; i < names.size(); ++i) {
        openPackage(names[i]);
    }
    package_ = first.package();
    if (bases_) {
        findBases(first);
        bases_->write(xml_);
    }
    xml_.open("ELEMENTS");
}

/// Writes the elements of the package to nowhere, which tells what they refer to.
void PackageWriter::findBases(Outline::Entry const& first) {
    bases_->clear();
    XmlWriter nowhere([](std::string_view) {});
    std::vector<WriteFinding> none;
    Outline::Entry const* const end = outline_.entries().data() + outline_.entries().size();
    for (Outline::Entry const* entry = &first; entry != end && entry->package() == package_;
         ++entry) {
        if (!bases_->isInFile(*entry)) {
            continue;
        }
        const ElementOutput out{nowhere, outline_, none, entry->path(), bases()};
        writeElement(out, *entry);
        if (isMapped(*entry)) {
            out.reference("IMPLEMENTATION-DATA-TYPE-REF",
                          types::PrimitiveType(entry->object).getReference());
        }
        nowhere.flushIfFull();
        none.clear();
    }
}

/// Ends the elements of the open package.
void PackageWriter::leave() {
    if (!package_.empty()) {
        writeMaps();
        xml_.close("ELEMENTS");
        package_.clear();
    }
}

void PackageWriter::openPackage(std::string_view name) {
    if (!hasPackages_.empty() && !hasPackages_.back()) {
        xml_.open("AR-PACKAGES");
        hasPackages_.back() = true;
    }
    xml_.open("AR-PACKAGE");
    xml_.leaf("SHORT-NAME", name);
    open_.emplace_back(name);
    hasPackages_.push_back(false);
}

void PackageWriter::closePackage() {
    if (hasPackages_.back()) {
        xml_.close("AR-PACKAGES");
    }
    xml_.close("AR-PACKAGE");
    hasPackages_.pop_back();
    open_.pop_back();
}

/// A name that no element of the package has.
std::string PackageWriter::mapSetName() const {
    const auto isTaken = [this](std::string const& name) {
        return outline_.at(package_ + "/" + name) != nullptr;
    };
    std::string name = "DataTypeMappings";
    for (int number = 2; isTaken(name); ++number) {
        name = "DataTypeMappings_" + std::to_string(number);
    }
    return name;
}

/// The set of maps from the application types of the package to implementation types.
void PackageWriter::writeMaps() {
    if (mapped_.empty()) {
        return;
    }
    const OpenElement set(xml_, "DATA-TYPE-MAPPING-SET");
    xml_.leaf("SHORT-NAME", mapSetName());
    const OpenElement maps(xml_, "DATA-TYPE-MAPS");
    for (Outline::Entry const* const entry : mapped_) {
        const types::PrimitiveType target = types::PrimitiveType(entry->object).getReference();
        const ElementOutput out{xml_, outline_, findings_, entry->path(), bases()};
        Outline::Entry const* const known = outline_.find(target);
        if (known == nullptr || known->kind != ElementKind::implementationType) {
            out.noPlace("The type refers to one that is no implementation type.");
            continue;
        }
        const OpenElement map(xml_, "DATA-TYPE-MAP");
        out.reference("APPLICATION-DATA-TYPE-REF", entry->object);
        out.reference("IMPLEMENTATION-DATA-TYPE-REF", target);
    }
    mapped_.clear();
}

} // namespace velum::arxml
