#include "velum_types/tests/registration/kerneledge.h"

#include "qob/kernel/meta/metaclasscreation.h"
#include "qob/qob/assert.h"
#include "qob/qob/clipboardmanager.h"
#include "qob/qob/datatype.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/sequencetype.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/visitor.h"
#include "tessel/type.h"

#include <dlfcn.h>
#include <string_view>
#include <utility>

namespace {

using QOB::NSInterface::NamedElementIntf;
using VelumTest::Call;

int depth = 0;
std::string_view failing;
std::string_view raisingFunction;
std::string_view raisingName;

/// Never freed: the library stops after everything of this program.
std::vector<Call>& calls() {
    static auto* const all = new std::vector<Call>;
    return *all;
}

/// The kernel's own function in whose place one of this file stands.
template <class Function>
Function* real(Function* own) {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(own), &info) == 0 || info.dli_sname == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, info.dli_sname));
}

/// Notes a call, if it comes from outside the kernel, for as long as it lasts.
class Note {
public:
    Note(char const* function,
         std::string name,
         std::string detail = {},
         NamedElementIntf const* element = nullptr) {
        if (function == raisingFunction && name == raisingName) {
            QOB_FAIL("%s doesn't work", function);
        }
        if (depth++ == 0) {
            bool const isInTransaction = QOB::DomainRegistry::instance()
                                             ->getMetaRegistry()
                                             .getDeviant()
                                             .isWithinTransaction();
            calls().push_back({function,
                               std::move(name),
                               std::move(detail),
                               element,
                               isInTransaction,
                               QOB::ClipboardManager::instance()->getContent().empty()});
        }
    }
    Note(Note const&) = delete;
    Note& operator=(Note const&) = delete;
    ~Note() { --depth; }
};

/// Whether it is this library's, and not the kernel's or the base metamodel's.
bool isOwn(std::string_view name) {
    constexpr std::string_view package = "Zorvane.metamodel.types.";
    return name.substr(0, package.size()) == package;
}

template <class Function, class... Argument>
auto noted(char const* function, Function* own, std::string const& name, Argument&&... argument) {
    if (!isOwn(name)) {
        return real(own)(std::forward<Argument>(argument)...);
    }
    Note const note(function, name);
    return real(own)(std::forward<Argument>(argument)...);
}

std::string describe(Tessel::TypeInfo const& info) {
    Tessel::Type* const type = Tessel::Type::GetBaseType(info);
    if (auto const* const iterator = dynamic_cast<QOB::IteratorType*>(type)) {
        return iterator->getElementType().isValid() ? "iterator of a type" : "iterator";
    }
    if (auto const* const sequence = dynamic_cast<QOB::SequenceType*>(type)) {
        return sequence->getElementType().isValid() ? "sequence of a type" : "sequence";
    }
    return "value";
}

} // namespace

namespace VelumTest {

std::vector<Call> takeCalls() {
    return std::exchange(calls(), {});
}

void failToCreate(char const* dottedName) {
    failing = dottedName != nullptr ? dottedName : "";
}

void raiseIn(char const* function, char const* name) {
    raisingFunction = name != nullptr ? function : "";
    raisingName = name != nullptr ? name : "";
}

} // namespace VelumTest

namespace QOB {

void CooperativeVisitor::internal::BindTagToName(char const* dottedName, ClassInfo const& info) {
    noted("BindTagToName", &BindTagToName, dottedName, dottedName, info);
}

void staticCreateMetaClass(NSInterface::ClassIntf*& result,
                           Factory const& factory,
                           Package const& package,
                           MetaPropertyDescription** properties,
                           unsigned count,
                           char const* name,
                           char const* dottedName,
                           bool isAbstract,
                           char const** const comments) {
    // Only the kernel's own classes have none.
    std::string_view const called = dottedName != nullptr ? dottedName : "";
    if (!called.empty() && called == failing) {
        result = nullptr;
        return;
    }
    if (!isOwn(called)) {
        real (&staticCreateMetaClass)(
            result, factory, package, properties, count, name, dottedName, isAbstract, comments);
        return;
    }
    std::string detail = name;
    detail += " " + std::to_string(count) + (isAbstract ? " abstract" : "");
    Note const note("staticCreateMetaClass", dottedName, detail);
    real (&staticCreateMetaClass)(
        result, factory, package, properties, count, name, dottedName, isAbstract, comments);
}

void staticUpdateMeta(NSInterface::ClassIntf* meta,
                      Factory const& factory,
                      Package const& package,
                      MetaPropertyDescription** properties,
                      unsigned count,
                      char const* name,
                      char const* dottedName,
                      IntrospectiveMethods const* methods) {
    noted("staticUpdateMeta",
          &staticUpdateMeta,
          dottedName,
          meta,
          factory,
          package,
          properties,
          count,
          name,
          dottedName,
          methods);
}

void staticDestroyMeta(NSInterface::ClassIntf* meta,
                       MetaPropertyDescription** properties,
                       unsigned count,
                       char const* name,
                       char const* dottedName) {
    noted("staticDestroyMeta",
          &staticDestroyMeta,
          dottedName,
          meta,
          properties,
          count,
          name,
          dottedName);
}

DynamicStereotypeObject applyTagToMetaElement(char const* tag,
                                              ImmutableNamedElement const& element) {
    Note const note("applyTagToMetaElement", tag, {}, element.get());
    return real(&applyTagToMetaElement)(tag, element);
}

void staticApplyTag(char const* tag, char const* value, NSInterface::NamespaceIntf* element) {
    Note const note("staticApplyTag", tag, value, element);
    real (&staticApplyTag)(tag, value, element);
}

void TypeInfoRegistry::registerTypeInfo(std::string const& name, Tessel::TypeInfo const& info) {
    if (!isOwn(name)) {
        real (&registerTypeInfo)(name, info);
        return;
    }
    Note const note("registerTypeInfo", name, describe(info));
    real (&registerTypeInfo)(name, info);
}

void TypeInfoRegistry::registerMetaType(std::string const& name,
                                        Tessel::TypeInfo const& info,
                                        ImmutableDataType const& metaType) {
    if (!isOwn(name)) {
        real (&registerMetaType)(name, info, metaType);
        return;
    }
    Note const note(
        "registerMetaType", name, describe(info) + " " + std::string(metaType.getName().view()));
    real (&registerMetaType)(name, info, metaType);
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const& name) noexcept {
    noted("unregisterTypeInfo", &unregisterTypeInfo, name, name);
}

void TypeInfoRegistry::unregisterMetaType(std::string const& name) noexcept {
    noted("unregisterMetaType", &unregisterMetaType, name, name);
}

} // namespace QOB
