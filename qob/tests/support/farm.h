#pragma once

#include "interfaceof.h"
#include "qob/kernel/containers/sequence/sequencemember.h"
#include "qob/kernel/deviant/classobjectstate.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/meta/metaclasscreation.h"
#include "qob/qob/real.h"
#include "thing.h"

/// Two metaclasses written by hand with live classes: an animal has a weight, a mate, sounds, a
/// mother and, at the other end, children; a hen is an animal with eggs, whose partner stands in
/// the place of an animal's mate.
namespace sample {

class Animal;
class Hen;

namespace NSInterface {

class AnimalIntf : public sample::InterfaceOf<AnimalIntf, QOB::NSInterface::ClassObjectIntf> {
public:
    using VisitationDomain = sample::VisitationDomain;
    enum PropertyId : unsigned {
        WeightId = 1,
        MateId = 2,
        MotherId = 3,
        ChildrenId = 4,
        SoundsId = 5,
        LegsId = 6
    };
    static QOB::IntrospectiveMethods sIntrospectiveMethods;

    QOB::ImmutableClass getMetaClass(QOB::Deviant deviant) const override;

    /// Does nothing: a weight is always there.
    virtual void removeWeight(QOB::Deviant deviant);
    virtual void setWeight(QOB::Deviant deviant, QOB::Real const& value);
    virtual QOB::Real getWeight(QOB::Deviant deviant) const;
    virtual bool hasMate(QOB::Deviant deviant) const;
    virtual void removeMate(QOB::Deviant deviant);
    virtual void setMate(QOB::Deviant deviant, Animal const& value);
    virtual Animal getMate(QOB::Deviant deviant) const;
    virtual bool hasMother(QOB::Deviant deviant) const;
    virtual void removeMother(QOB::Deviant deviant);
    virtual void setMother(QOB::Deviant deviant, Animal const& value);
    virtual Animal getMother(QOB::Deviant deviant) const;
    virtual void removeOnlyMother(QOB::Deviant deviant);
    virtual void setOnlyMother(QOB::Deviant deviant, Animal const& value);
    virtual QOB::Sequence<Animal> getChildren(QOB::Deviant deviant);
    virtual QOB::Sequence<Animal> getChildrenWithoutAssociation(QOB::Deviant deviant);
    virtual QOB::Sequence<QOB::String> getSounds(QOB::Deviant deviant);
    /// Derived and read-only.
    QOB::Integer getLegs(QOB::Deviant deviant) const;
};

class HenIntf : public sample::InterfaceOf<HenIntf, AnimalIntf> {
public:
    enum PropertyId : unsigned { EggsId = 1, PartnerId = 2 };
    static QOB::IntrospectiveMethods sIntrospectiveMethods;

    QOB::ImmutableClass getMetaClass(QOB::Deviant deviant) const override;

    virtual QOB::Sequence<QOB::Integer> getEggs(QOB::Deviant deviant);
    virtual bool hasPartner(QOB::Deviant deviant) const;
    virtual void removePartner(QOB::Deviant deviant);
    virtual void setPartner(QOB::Deviant deviant, Animal const& value);
    virtual Animal getPartner(QOB::Deviant deviant) const;
};

} // namespace NSInterface
} // namespace sample

QOB_HANDLES(sample::NSInterface::AnimalIntf,
            sample::Animal,
            sample::Animal,
            "qob/tests/support/farm.h")
QOB_HANDLES(sample::NSInterface::HenIntf, sample::Hen, sample::Hen, "qob/tests/support/farm.h")

namespace sample {

class Animal
    : public QOB::ClassObjectWriting<
          QOB::WriteHandle<QOB::ClassObjectReading<QOB::ReadHandle<NSInterface::AnimalIntf>>>> {
public:
    using ClassObjectWriting::ClassObjectWriting;
    static Animal create(QOB::Model const& model);
};

class Hen : public QOB::ClassObjectWriting<
                QOB::WriteHandle<QOB::ClassObjectReading<QOB::ReadHandle<NSInterface::HenIntf>>>> {
public:
    using ClassObjectWriting::ClassObjectWriting;
    static Hen create(QOB::Model const& model);
};

/// The live elements of both classes, in a package "farm" of the meta-registry.
struct Farm {
    static QOB::PackageIntrospectiveMethods const* table();

    QOB::Package package;
    QOB::NSInterface::ClassIntf* animal = nullptr;
    QOB::NSInterface::ClassIntf* hen = nullptr;

    void create();
    void destroy();

private:
    bool animalUpdated_ = false;
    bool henUpdated_ = false;
};

} // namespace sample

QOB_SEQUENCE_NAMES(sample::Animal, "sample.", "Animal")
