#include "box.h"

#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/kernel/containers/sequence/views/propertytosequenceproxy.h"

namespace sample {

namespace visitor = QOB::CooperativeVisitor::internal;
namespace property = QOB::property;
using QOB::Generic::SequenceRef;

namespace NSInterface {

namespace {

BoxIntf* boxOf(QOB::NSInterface::ObjectIntf* object) {
    return QOB::castObject<BoxIntf>(object);
}

template <class T>
QOB::Sequence<T> view(BoxIntf const* box, QOB::Deviant deviant, unsigned id) {
    return {new QOB::GenericDeviantSequence(
                const_cast<BoxIntf*>(box), deviant, &BoxIntf::sIntrospectiveMethods, id),
            deviant};
}

QOB::Sequence<Box> association(BoxIntf const* box,
                               QOB::Deviant deviant,
                               QOB::Sequence<Box> const& inner,
                               QOB::IntrospectiveMethods const* methods,
                               unsigned oppositeId,
                               bool oppositeIsSingle) {
    return {new QOB::GenericAssociationSequence(QOB::Object(const_cast<BoxIntf*>(box), deviant),
                                                inner.pointer(),
                                                methods,
                                                oppositeId,
                                                oppositeIsSingle),
            deviant};
}

QOB::Sequence<Box> lidOf(BoxIntf const* box, QOB::Deviant deviant) {
    return {new QOB::GenericPropertyToSequenceProxy(QOB::ImmutableClassObject(box, deviant),
                                                    &BoxIntf::sIntrospectiveMethods,
                                                    BoxIntf::LidId,
                                                    0),
            deviant};
}

QOB::Object getSingleValued(QOB::NSInterface::ObjectIntf* object, QOB::Deviant d, unsigned id) {
    return id == BoxIntf::LidId ? boxOf(object)->getLid(d) : boxOf(object)->getOwner(d);
}
bool hasSingleValued(QOB::NSInterface::ObjectIntf* object, QOB::Deviant d, unsigned id) {
    return getSingleValued(object, d, id).isValid();
}
void setOnlySingleValued(QOB::NSInterface::ObjectIntf* object,
                         QOB::Deviant d,
                         unsigned id,
                         QOB::Object const& value) {
    id == BoxIntf::LidId ? boxOf(object)->setLid(d, Box(value))
                         : boxOf(object)->setOnlyOwner(d, Box(value));
}
void removeOnlySingleValued(QOB::NSInterface::ObjectIntf* object, QOB::Deviant d, unsigned id) {
    id == BoxIntf::LidId ? boxOf(object)->setLid(d, Box())
                         : boxOf(object)->removeOnlyContainerQOB(d);
}
SequenceRef
getMultiValued(QOB::NSInterface::ObjectIntf* object, QOB::Deviant d, unsigned id, bool) {
    switch (id) {
    case BoxIntf::ItemsId:
        return boxOf(object)->getItems(d);
    case BoxIntf::PeersId:
        return boxOf(object)->getPeers(d);
    case BoxIntf::NumbersId:
        return boxOf(object)->getNumbers(d);
    default:
        return boxOf(object)->getNames(d);
    }
}
SequenceRef getOnlyMultiValued(QOB::NSInterface::ObjectIntf* object,
                               QOB::Deviant d,
                               unsigned id,
                               bool asObjects) {
    switch (id) {
    case BoxIntf::ItemsId:
        return boxOf(object)->getItemsWithoutAssociation(d);
    case BoxIntf::PeersId:
        return boxOf(object)->getPeersWithoutAssociation(d);
    default:
        return getMultiValued(object, d, id, asObjects);
    }
}

constexpr unsigned Many = QOB::PropertyMultiValued;
constexpr unsigned Unique = QOB::PropertyMultiValued | QOB::PropertyUnique;

QOB::MetaPropertyDescription items{.flags = Unique, .id = BoxIntf::ItemsId};
QOB::MetaPropertyDescription owner{.id = BoxIntf::OwnerId};
QOB::MetaPropertyDescription peers{.flags = Unique, .id = BoxIntf::PeersId};
QOB::MetaPropertyDescription lid{.id = BoxIntf::LidId};
QOB::MetaPropertyDescription numbers{.flags = Unique, .id = BoxIntf::NumbersId};
QOB::MetaPropertyDescription names{.flags = Many, .id = BoxIntf::NamesId};
QOB::MetaPropertyDescription* properties[] =
    {nullptr, &items, &owner, &peers, &lid, &numbers, &names};

} // namespace

QOB::IntrospectiveMethods BoxIntf::sIntrospectiveMethods{
    .getSingleValued = &getSingleValued,
    .hasSingleValued = &hasSingleValued,
    .setSingleValued = &setOnlySingleValued,
    .setOnlySingleValued = &setOnlySingleValued,
    .removeSingleValued = &removeOnlySingleValued,
    .removeOnlySingleValued = &removeOnlySingleValued,
    .getMultiValued = &getMultiValued,
    .getOnlyMultiValued = &getOnlyMultiValued,
    .properties = properties};

visitor::MethodInfo BoxIntf::getVisitMethod(visitor::MethodTable const& table) const {
    return visitor::visitMethod(this, table);
}
void* BoxIntf::cast(visitor::ClassInfo const& info) const {
    return visitor::castTo(this, info);
}

QOB::Sequence<Box> BoxIntf::getItems(QOB::Deviant d) const {
    return association(
        this, d, getItemsWithoutAssociation(d), &sIntrospectiveMethods, OwnerId, true);
}
QOB::Sequence<Box> BoxIntf::getItemsWithoutAssociation(QOB::Deviant d) const {
    return view<Box>(this, d, ItemsId);
}
QOB::Sequence<Box> BoxIntf::getPeers(QOB::Deviant d) const {
    return association(
        this, d, getPeersWithoutAssociation(d), &sIntrospectiveMethods, PeersId, false);
}
QOB::Sequence<Box> BoxIntf::getPeersWithoutAssociation(QOB::Deviant d) const {
    return view<Box>(this, d, PeersId);
}
QOB::Sequence<QOB::Integer> BoxIntf::getNumbers(QOB::Deviant d) const {
    return view<QOB::Integer>(this, d, NumbersId);
}
QOB::Sequence<QOB::String> BoxIntf::getNames(QOB::Deviant d) const {
    return view<QOB::String>(this, d, NamesId);
}
Box BoxIntf::getLid(QOB::Deviant d) const {
    return property::get<&BoxIntf::getLid>(this, d);
}
void BoxIntf::setLid(QOB::Deviant d, Box const& value) {
    property::setOnlyReference<&BoxIntf::getLid, &BoxIntf::setLid>(
        this, d, value, sIntrospectiveMethods, LidId);
}
Box BoxIntf::getOwner(QOB::Deviant d) const {
    return Box(QOB::Object(getContainerQOB(d)));
}
void BoxIntf::setOnlyOwner(QOB::Deviant d, Box const& value) {
    if (Box const old = getOwner(d); old.isValid() && old != value) {
        old->getItemsWithoutAssociation(d).removeAll(Box(this, d));
    }
    setOnlyContainerQOB(d, value);
}
QOB::Sequence<QOB::ClassObject> BoxIntf::getContainees(QOB::Deviant d) const {
    return QOB::SequenceCombination<QOB::ClassObject>(d, 2)
        .add(getItems(d))
        .add(association(this,
                         d,
                         lidOf(this, d),
                         &ClassObjectIntf::sIntrospectiveMethods,
                         ContainerQOBId,
                         true));
}
QOB::Sequence<QOB::ClassObject> BoxIntf::getContaineesWithoutAssociation(QOB::Deviant d) const {
    return QOB::SequenceCombination<QOB::ClassObject>(d, 2)
        .add(getItemsWithoutAssociation(d))
        .add(lidOf(this, d));
}
BoxIntf* BoxIntf::getReadDeviantI(QOB::Deviant, BoxIntf const*) const {
    return nullptr;
}
BoxIntf* BoxIntf::getWriteDeviantI(QOB::Deviant, BoxIntf const*) const {
    return nullptr;
}

} // namespace NSInterface

Box Box::create(QOB::Model const& model) {
    return QOB::createObject<Box, NSImplementation::BoxImpl>(model, model.allocateObjectId());
}

} // namespace sample
