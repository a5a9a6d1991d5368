#pragma once

#include "qob/kernel/deviant/classobjectstate.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/reference.h"
#include "qob/qob/model.h"

/// A metaclass written by hand for the kernel's tests, in the five forms that every metaclass has:
/// a number, a text, and a plain reference to another thing, in this model or in another.
namespace sample {

class Thing;

struct VisitationDomain {
    static Tessel::ModuleObjectDeleter& moduleObjects() {
        static Tessel::ModuleObjectDeleter deleter;
        return deleter;
    }
};

namespace NSInterface {

class ThingIntf : public QOB::NSInterface::ClassObjectIntf {
public:
    using VisitationDomain = sample::VisitationDomain;
    using VisitationBases =
        QOB::CooperativeVisitor::internal::Bases<QOB::NSInterface::ClassObjectIntf>;
    enum PropertyId : unsigned { LinkId = 3 };
    static QOB::IntrospectiveMethods sIntrospectiveMethods;

    QOB::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(QOB::CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(QOB::CooperativeVisitor::internal::ClassInfo const& info) const override;
    void internal_deviationAssign(QOB::Deviant deviant,
                                  ObjectIntf* source,
                                  QOB::Deviant sourceDeviant) override;

    virtual void setNumber(QOB::Deviant deviant, QOB::Integer const& value);
    virtual QOB::Integer getNumber(QOB::Deviant deviant) const;
    virtual void setText(QOB::Deviant deviant, QOB::String const& value);
    virtual QOB::String getText(QOB::Deviant deviant) const;
    virtual void removeLink(QOB::Deviant deviant);
    virtual void setLink(QOB::Deviant deviant, Thing const& value);
    virtual Thing getLink(QOB::Deviant deviant) const;

    using ClassObjectIntf::getReadDeviantI;
    using ClassObjectIntf::getWriteDeviantI;
    virtual ThingIntf* getReadDeviantI(QOB::Deviant deviant, ThingIntf const* tag) const;
    virtual ThingIntf* getWriteDeviantI(QOB::Deviant deviant, ThingIntf const* tag) const;
};

} // namespace NSInterface
} // namespace sample

QOB_HANDLES(sample::NSInterface::ThingIntf,
            sample::Thing,
            sample::Thing,
            "qob/tests/support/thing.h")

namespace sample {

class Thing : public QOB::RefBase<NSInterface::ThingIntf*> {
public:
    Thing() noexcept = default;
    Thing(NSInterface::ThingIntf* thing, QOB::Deviant deviant) : RefBase(thing, deviant) {}
    explicit Thing(QOB::ImmutableObject const& object)
        : RefBase(QOB::castObject<NSInterface::ThingIntf>(object.get()), object.getDeviant()) {}

    static Thing create(QOB::Model const& model, int number = 0);
    static Thing createWithId(QOB::Model const& model, QOB::Integer const& id);

    NSInterface::ThingIntf* operator->() const { return access(); }

    /// The same thing in another deviant.
    Thing in(QOB::Deviant deviant) const { return {get(), deviant}; }

    void setNumber(int value) const { (*this)->setNumber(getDeviant(), value); }
    int getNumber() const { return (*this)->getNumber(getDeviant()); }
    void setText(char const* value) const { (*this)->setText(getDeviant(), value); }
    QOB::String getText() const { return (*this)->getText(getDeviant()); }
    void setLink(Thing const& value) const { (*this)->setLink(getDeviant(), value); }
    Thing getLink() const { return (*this)->getLink(getDeviant()); }
    QOB::Integer getObjectId() const { return (*this)->getObjectId(getDeviant()); }
    void destroy() const { (*this)->destroy(getDeviant()); }
    int count() const { return get()->numRef(); }
};

namespace NSImplementation {

/// How many states and root objects are alive; every test ends with what it began with.
struct Alive {
    static int states;
    static int objects;
};

class ThingDeviantImpl final
    : public QOB::ClassObjectState<ThingDeviantImpl, NSInterface::ThingIntf> {
public:
    struct Fields : QOB::ClassObjectFields {
        QOB::Integer number = 0;
        QOB::String text = "";
        QOB::CountedPointer<NSInterface::ThingIntf> link;
    };

    ThingDeviantImpl() { ++Alive::states; }
    ThingDeviantImpl(ThingDeviantImpl const& other)
        : ClassObjectState(other), fields_(other.fields_) {
        ++Alive::states;
    }
    ThingDeviantImpl& operator=(ThingDeviantImpl const&) = delete;
    ~ThingDeviantImpl() override { --Alive::states; }

    void setNumber(QOB::Deviant, QOB::Integer const& value) override { fields_.number = value; }
    QOB::Integer getNumber(QOB::Deviant) const override { return fields_.number; }
    void setText(QOB::Deviant, QOB::String const& value) override { fields_.text = value; }
    QOB::String getText(QOB::Deviant) const override { return fields_.text; }
    void removeLink(QOB::Deviant) override { fields_.link = {}; }
    void setLink(QOB::Deviant, Thing const& value) override {
        fields_.link = QOB::CountedPointer(value.get());
    }
    Thing getLink(QOB::Deviant deviant) const override { return {fields_.link.get(), deviant}; }

    Fields fields_;
};

class ThingImpl final : public QOB::RootObject<NSInterface::ThingIntf, ThingDeviantImpl> {
    using ThingIntf = NSInterface::ThingIntf;

public:
    ThingImpl() { ++Alive::objects; }
    ~ThingImpl() override { --Alive::objects; }
    ThingImpl(ThingImpl const&) = delete;
    ThingImpl& operator=(ThingImpl const&) = delete;

    char const* getLumvoName(bool immutable) const override {
        return immutable ? "sample.ImmutableThing" : "sample.Thing";
    }

    static ThingDeviantImpl* createRootDeviation(QOB::Deviant deviant) {
        return RootObject::createRootDeviation(deviant, "ThingImpl");
    }

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
    ThingIntf* getReadDeviantI(QOB::Deviant deviant, ThingIntf const*) const override {
        return readState(deviant);
    }
    ThingIntf* getWriteDeviantI(QOB::Deviant deviant, ThingIntf const*) const override {
        return writeState(deviant);
    }

    // Hot: one virtual call with the state's field behind it.
    QOB::Integer getNumber(QOB::Deviant deviant) const override {
        return readState(deviant)->fields_.number;
    }
};

} // namespace NSImplementation
} // namespace sample
