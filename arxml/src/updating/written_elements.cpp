#include "updating/written_elements.h"

namespace velum::arxml {

WrittenElements::WrittenElements(QOB::Model const& model) : outline_(model, {}, findings_) {
}

std::string WrittenElements::textAt(std::string_view path) const {
    Outline::Entry const* const entry = outline_.at(path);
    if (entry == nullptr) {
        return {};
    }
    std::string text;
    XmlWriter xml([&text](std::string_view piece) { text += piece; });
    writeElement({xml, outline_, findings_, entry->path()}, *entry);
    xml.flush();
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

std::string WrittenElements::mapAt(std::string_view path) const {
    Outline::Entry const* const entry = outline_.at(path);
    const types::PrimitiveType type(entry == nullptr ? QOB::ClassObject() : entry->object);
    if (!type.isValid() || !type.hasReference()) {
        return {};
    }
    Outline::Entry const* const target = outline_.find(type.getReference());
    return target == nullptr ? std::string("?") : std::string(target->path());
}

std::string WrittenElements::pathAround(QOB::ClassObject const& object) const {
    Outline::Entry const* const entry = outline_.entryAround(object);
    return entry == nullptr ? std::string() : std::string(entry->path());
}

bool WrittenElements::addDependent(QOB::ClassObject const& object,
                                   std::set<std::string>& paths) const {
    const std::string path = pathAround(object);
    if (path.empty()) {
        return false;
    }
    paths.insert(path);
    std::vector<QOB::ClassObject> open{outline_.at(path)->object, object};
    while (!open.empty()) {
        const QOB::ClassObject each = open.back();
        open.pop_back();
        addShared(each, paths);
        for (const QOB::ClassObject part : each.getContaineeQOBs()) {
            open.push_back(part);
        }
    }
    return true;
}

void WrittenElements::addShared(QOB::ClassObject const& object,
                                std::set<std::string>& paths) const {
    const types::Matrix matrix(object);
    if (matrix.isValid() && matrix.hasBaseType() &&
        outline_.ownerOf(matrix.getBaseType()) == matrix) {
        paths.insert(externalIdOf(matrix.getBaseType())); // an element without the matrix
    }
    const types::PrimitiveType type(object);
    if (!type.isValid()) {
        return;
    }
    const auto add = [&](QOB::ClassObject const& target) {
        if (Outline::Entry const* const entry =
                target.isValid() ? outline_.find(target) : nullptr) {
            paths.emplace(entry->path());
        }
    };
    add(type.getCompuMethod());
    add(type.getDataConstr());
    add(type.getSwBaseType());
}

} // namespace velum::arxml
