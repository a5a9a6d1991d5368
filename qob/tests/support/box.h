#pragma once

#include "qob/kernel/containers/sequence/sequencemember.h"
#include "qob/kernel/deviant/classobjectstate.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/sequence.h"
#include "thing.h"

/// A metaclass written by hand for the tests of sequences: a box holds boxes (and its items know
/// their owner), has peers (both ways), a lid (an owned box), distinct numbers and a list of names.
namespace sample {

class Box;

namespace NSInterface {

class BoxIntf : public QOB::NSInterface::ClassObjectIntf {
public:
    using VisitationDomain = sample::VisitationDomain;
    using VisitationBases =
        QOB::CooperativeVisitor::internal::Bases<QOB::NSInterface::ClassObjectIntf>;
    enum PropertyId : unsigned {
        ItemsId = 1,
        OwnerId = 2,
        PeersId = 3,
        LidId = 4,
        NumbersId = 5,
        NamesId = 6
    };
    static QOB::IntrospectiveMethods sIntrospectiveMethods;

    QOB::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(QOB::CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(QOB::CooperativeVisitor::internal::ClassInfo const& info) const override;

    virtual QOB::Sequence<Box> getItems(QOB::Deviant deviant) const;
    virtual QOB::Sequence<Box> getItemsWithoutAssociation(QOB::Deviant deviant) const;
    virtual QOB::Sequence<Box> getPeers(QOB::Deviant deviant) const;
    virtual QOB::Sequence<Box> getPeersWithoutAssociation(QOB::Deviant deviant) const;
    virtual QOB::Sequence<QOB::Integer> getNumbers(QOB::Deviant deviant) const;
    virtual QOB::Sequence<QOB::String> getNames(QOB::Deviant deviant) const;

    virtual Box getLid(QOB::Deviant deviant) const;
    virtual void setLid(QOB::Deviant deviant, Box const& value);

    // Not stored: the container, the items and the lid as one.
    Box getOwner(QOB::Deviant deviant) const;
    void setOnlyOwner(QOB::Deviant deviant, Box const& value);
    QOB::Sequence<QOB::ClassObject> getContainees(QOB::Deviant deviant) const;
    QOB::Sequence<QOB::ClassObject> getContaineesWithoutAssociation(QOB::Deviant deviant) const;

    using ClassObjectIntf::getReadDeviantI;
    using ClassObjectIntf::getWriteDeviantI;
    virtual BoxIntf* getReadDeviantI(QOB::Deviant deviant, BoxIntf const* tag) const;
    virtual BoxIntf* getWriteDeviantI(QOB::Deviant deviant, BoxIntf const* tag) const;
};

} // namespace NSInterface
} // namespace sample

QOB_HANDLES(sample::NSInterface::BoxIntf, sample::Box, sample::Box, "qob/tests/support/box.h")

namespace sample {

class Box : public QOB::RefBase<NSInterface::BoxIntf*> {
public:
    Box() noexcept = default;
    Box(NSInterface::BoxIntf* box, QOB::Deviant deviant) : RefBase(box, deviant) {}
    explicit Box(QOB::ImmutableObject const& object)
        : RefBase(QOB::castObject<NSInterface::BoxIntf>(object.get()), object.getDeviant()) {}

    static Box create(QOB::Model const& model);

    NSInterface::BoxIntf* operator->() const { return access(); }
    operator QOB::ClassObject() const { return {get(), getDeviant()}; }
    operator QOB::Object() const { return {get(), getDeviant()}; }

    Box in(QOB::Deviant deviant) const { return {get(), deviant}; }
    int count() const { return get()->numRef(); }

    QOB::Sequence<Box> getItems() const { return (*this)->getItems(getDeviant()); }
    QOB::Sequence<Box> getItemsWithoutAssociation() const {
        return (*this)->getItemsWithoutAssociation(getDeviant());
    }
    QOB::Sequence<Box> getPeers() const { return (*this)->getPeers(getDeviant()); }
    QOB::Sequence<QOB::Integer> getNumbers() const { return (*this)->getNumbers(getDeviant()); }
    QOB::Sequence<QOB::String> getNames() const { return (*this)->getNames(getDeviant()); }
    QOB::Sequence<QOB::ClassObject> getContainees() const {
        return (*this)->getContainees(getDeviant());
    }
    QOB::Sequence<QOB::ClassObject> getContaineesWithoutAssociation() const {
        return (*this)->getContaineesWithoutAssociation(getDeviant());
    }
    Box getOwner() const { return (*this)->getOwner(getDeviant()); }
    Box getLid() const { return (*this)->getLid(getDeviant()); }
    void setOnlyLid(Box const& lid) const { (*this)->setLid(getDeviant(), lid); }
    bool hasState(QOB::Deviant deviant) const {
        return QOB::isRealState(deviant.getStateOfObject(get()));
    }
};

} // namespace sample

QOB_SEQUENCE_NAMES(sample::Box, "sample.", "Box")
QOB_SEQUENCE_NAMES(sample::Thing, "sample.", "Thing")

namespace sample::NSImplementation {

class BoxDeviantImpl final : public QOB::ClassObjectState<BoxDeviantImpl, NSInterface::BoxIntf> {
public:
    struct Fields : QOB::ClassObjectFields {
        QOB::SequenceMember<QOB::MultiIndexImpl<Box>> items;
        QOB::MultiIndexImpl<Box> peers;
        QOB::CountedPointer<NSInterface::BoxIntf> lid;
        QOB::MultiIndexImpl<QOB::Integer> numbers;
        QOB::ListQImpl<QOB::String> names;
    };

    BoxDeviantImpl() { ++Alive::states; }
    BoxDeviantImpl(BoxDeviantImpl const& other) : ClassObjectState(other), fields_(other.fields_) {
        ++Alive::states;
    }
    BoxDeviantImpl& operator=(BoxDeviantImpl const&) = delete;
    ~BoxDeviantImpl() override { --Alive::states; }

    // To read, the items as they stand; to write, a container for them.
    QOB::Sequence<Box> getItems(QOB::Deviant deviant) const override {
        return {const_cast<QOB::MultiIndexImpl<Box>*>(&fields_.items.read()), deviant};
    }
    QOB::Sequence<Box> getItemsWithoutAssociation(QOB::Deviant deviant) const override {
        return {&fields_.items.write(), deviant};
    }
    QOB::Sequence<Box> getPeers(QOB::Deviant deviant) const override {
        return {&fields_.peers, deviant};
    }
    QOB::Sequence<Box> getPeersWithoutAssociation(QOB::Deviant deviant) const override {
        return {&fields_.peers, deviant};
    }
    QOB::Sequence<QOB::Integer> getNumbers(QOB::Deviant deviant) const override {
        return {&fields_.numbers, deviant};
    }
    QOB::Sequence<QOB::String> getNames(QOB::Deviant deviant) const override {
        return {&fields_.names, deviant};
    }
    Box getLid(QOB::Deviant deviant) const override { return {fields_.lid.get(), deviant}; }
    void setLid(QOB::Deviant, Box const& value) override {
        fields_.lid = QOB::CountedPointer(value.get());
    }

    mutable Fields fields_;
};

class BoxImpl final : public QOB::RootObject<NSInterface::BoxIntf, BoxDeviantImpl> {
    using BoxIntf = NSInterface::BoxIntf;

public:
    BoxImpl() { ++Alive::objects; }
    ~BoxImpl() override { --Alive::objects; }
    BoxImpl(BoxImpl const&) = delete;
    BoxImpl& operator=(BoxImpl const&) = delete;

    ObjectIntf* getReadDeviantI(QOB::Deviant deviant, ObjectIntf const*) const override {
        return readState(deviant);
    }
    ObjectIntf* getWriteDeviantI(QOB::Deviant deviant, ObjectIntf const*) const override {
        return writeState(deviant);
    }
    ClassObjectIntf* getReadDeviantI(QOB::Deviant deviant, ClassObjectIntf const*) const override {
        return readState(deviant);
    }
    ClassObjectIntf* getWriteDeviantI(QOB::Deviant deviant, ClassObjectIntf const*) const override {
        return writeState(deviant);
    }
    BoxIntf* getReadDeviantI(QOB::Deviant deviant, BoxIntf const*) const override {
        return readState(deviant);
    }
    BoxIntf* getWriteDeviantI(QOB::Deviant deviant, BoxIntf const*) const override {
        return writeState(deviant);
    }
};

} // namespace sample::NSImplementation
