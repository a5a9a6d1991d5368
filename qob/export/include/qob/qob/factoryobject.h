#pragma once

#include "qob/kernel/handle/conversion.h"
#include "qob/qob/nsinterface/factoryobjectintf.h"

#include <utility>

namespace QOB {

/// A factory as an element of its model.
class FactoryObject : public RefBase<NSInterface::FactoryObjectIntf*> {
public:
    FactoryObject() noexcept = default;
    FactoryObject(NSInterface::FactoryObjectIntf* factory, Deviant deviant)
        : RefBase(factory, deviant) {}
    /// Empty if the object is no factory; implicit from the factory of a package.
    template <ConvertibleMutableHandle<FactoryObject> Handle>
    explicit(!extends<Handle, NSInterface::FactoryObjectIntf>) FactoryObject(Handle const& other)
        : RefBase(castObject<NSInterface::FactoryObjectIntf>(other.get()), other.getDeviant()) {}

    NSInterface::FactoryObjectIntf* operator->() const { return access(__FILE__, __LINE__); }
    operator ClassObject() const { return {get(), getDeviant()}; }

    Object createFromString(String type) const {
        return (*this)->createFromString(getDeviant(), std::move(type));
    }
    Object createFromString(String type, String text) const {
        return (*this)->createFromString(getDeviant(), std::move(type), std::move(text));
    }
    Object createFromString(String type, Integer id) const {
        return (*this)->createFromString(getDeviant(), std::move(type), id);
    }
};

} // namespace QOB

template <>
struct std::hash<QOB::FactoryObject> : QOB::HandleHash<QOB::FactoryObject> {};
