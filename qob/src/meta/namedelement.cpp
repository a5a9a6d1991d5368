#include "qob/qob/namedelement.h"

#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/reflective.h"

namespace QOB::NSInterface {

namespace {

struct NamedElementDescription {
    using Interface = NamedElementIntf;
    static constexpr char const* name = NamedElementIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties = reflective::List<reflective::Single<NamedElementIntf::NameId,
                                                           &NamedElementIntf::getName,
                                                           reflective::always,
                                                           &NamedElementIntf::setName,
                                                           &NamedElementIntf::removeName>>;
};

} // namespace

constinit IntrospectiveMethods NamedElementIntf::sIntrospectiveMethods =
    reflective::methodsOf<NamedElementDescription>();

bool NamedElementIntf::hasName(Deviant) const {
    return true;
}
void NamedElementIntf::removeName(Deviant) {
}
void NamedElementIntf::setName(Deviant deviant, String const& name) {
    property::setMandatory<&NamedElementIntf::getName, &NamedElementIntf::setName>(
        this, deviant, name);
}
String NamedElementIntf::getName(Deviant deviant) const {
    return property::get<&NamedElementIntf::getName>(this, deviant);
}

void NamedElementIntf::internal_deviationAssign(Deviant deviant,
                                                ObjectIntf* source,
                                                Deviant sourceDeviant) {
    property::assignBlocks<NamedElementIntf, NamedElementIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void NamedElementIntf::internal_assignBlock(Deviant deviant,
                                            NamedElementIntf const* source,
                                            Deviant sourceDeviant) {
    property::assignEach<
        property::AssignMandatory<&NamedElementIntf::getName, &NamedElementIntf::setName>>(
        this, deviant, source, sourceDeviant);
}

} // namespace QOB::NSInterface
