#include "thing.h"

namespace sample {

namespace visitor = QOB::CooperativeVisitor::internal;
namespace property = QOB::property;

namespace NSInterface {

QOB::IntrospectiveMethods ThingIntf::sIntrospectiveMethods;

visitor::MethodInfo ThingIntf::getVisitMethod(visitor::MethodTable const& table) const {
    return visitor::visitMethod(this, table);
}
void* ThingIntf::cast(visitor::ClassInfo const& info) const {
    return visitor::castTo(this, info);
}

void ThingIntf::internal_deviationAssign(QOB::Deviant deviant,
                                         ObjectIntf* source,
                                         QOB::Deviant sourceDeviant) {
    auto* const thing = QOB::castObject<ThingIntf>(source);
    try {
        setNumber(deviant, thing->getNumber(sourceDeviant));
    } catch (QOB::Exception const&) {
    }
    try {
        setText(deviant, thing->getText(sourceDeviant));
    } catch (QOB::Exception const&) {
    }
    try {
        Thing const link = thing->getLink(sourceDeviant);
        link.setDeviant(deviant);
        setLink(deviant, link);
    } catch (QOB::Exception const&) {
    }
}

void ThingIntf::setNumber(QOB::Deviant deviant, QOB::Integer const& value) {
    property::setMandatory<&ThingIntf::getNumber, &ThingIntf::setNumber>(this, deviant, value);
}
QOB::Integer ThingIntf::getNumber(QOB::Deviant deviant) const {
    return property::get<&ThingIntf::getNumber>(this, deviant);
}
void ThingIntf::setText(QOB::Deviant deviant, QOB::String const& value) {
    property::setMandatory<&ThingIntf::getText, &ThingIntf::setText>(this, deviant, value);
}
QOB::String ThingIntf::getText(QOB::Deviant deviant) const {
    return property::get<&ThingIntf::getText>(this, deviant);
}
void ThingIntf::removeLink(QOB::Deviant deviant) {
    property::removeOnlyReference<&ThingIntf::getLink, &ThingIntf::setLink>(
        this, deviant, sIntrospectiveMethods, LinkId);
}
void ThingIntf::setLink(QOB::Deviant deviant, Thing const& value) {
    property::setReference<&ThingIntf::getLink, &ThingIntf::setLink, &ThingIntf::removeLink>(
        this, deviant, value, sIntrospectiveMethods, LinkId);
}
Thing ThingIntf::getLink(QOB::Deviant deviant) const {
    return property::get<&ThingIntf::getLink>(this, deviant);
}
ThingIntf* ThingIntf::getReadDeviantI(QOB::Deviant, ThingIntf const*) const {
    return nullptr;
}
ThingIntf* ThingIntf::getWriteDeviantI(QOB::Deviant, ThingIntf const*) const {
    return nullptr;
}

} // namespace NSInterface

int NSImplementation::Alive::states = 0;
int NSImplementation::Alive::objects = 0;

Thing Thing::create(QOB::Model const& model, int number) {
    return QOB::createObject<Thing, NSImplementation::ThingImpl>(
        model, [number](Thing const& thing) { thing.setNumber(number); });
}

Thing Thing::createWithId(QOB::Model const& model, QOB::Integer const& id) {
    return QOB::createObject<Thing, NSImplementation::ThingImpl>(model, id);
}

} // namespace sample
