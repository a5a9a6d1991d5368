#include "qob/qob/visitor.h"

#include "registry/modulelife.h"

#include <unordered_map>

namespace QOB {

Tessel::ModuleObjectDeleter& VisitationDomain::moduleObjects() {
    return internal::moduleObjects();
}

namespace CooperativeVisitor::internal {

namespace {

/// Tags by the names of types, since their descriptions go with their library and come again, and
/// names of classes. Never destroyed: objects are cast until the very end of the library.
struct TagRegistry {
    std::unordered_map<std::string, std::unordered_map<std::string, unsigned>> tags;
    std::unordered_map<std::string, ClassInfo> classes;
};

TagRegistry& registry() {
    static auto* const instance = new TagRegistry();
    return *instance;
}

} // namespace

unsigned GetTag(std::type_info const& what, std::type_info const& domain) {
    auto& tags = registry().tags[domain.name()];
    return tags.try_emplace(what.name(), static_cast<unsigned>(tags.size()) + 1).first->second;
}

void BindTagToName(char const* dottedName, ClassInfo const& info) {
    registry().classes.insert_or_assign(dottedName, info);
}

ClassInfo findClassByName(std::string const& dottedName) {
    auto const& classes = registry().classes;
    auto const found = classes.find(dottedName);
    return found != classes.end() ? found->second : ClassInfo();
}

void addAncestor(ClassMetaInfo& meta, ClassInfo const& info, CastFunction cast) {
    if (findCast(meta, info) != nullptr) {
        return;
    }
    meta.ancestors.push_back(info);
    meta.casts.grow(1); // entry 0 stays empty
    meta.casts.push_back(cast);
    meta.castIndex.grow(info.domain + std::size_t(1));
    meta.castIndex[info.domain].grow(info.tag + std::size_t(1));
    meta.castIndex[info.domain][info.tag] = meta.casts.size() - 1;
}

constinit unsigned goneLibraries = 0;

MethodInfo
findAncestorMethod(ClassMetaInfo const& meta, MethodTable const& table, void const* object) {
    for (ClassInfo const& ancestor : meta.ancestors) {
        if (Method const method = findMethod(table, ancestor); method != nullptr) {
            return MethodInfo{method, findCast(meta, ancestor)(object)};
        }
    }
    return {};
}

} // namespace CooperativeVisitor::internal
} // namespace QOB
