#pragma once

#include "qob/qob/nsinterface/factoryobjectintf.h"
#include "qob/qob/object.h"

#include <utility>

namespace QOB {

/// A factory as an element of its model.
class FactoryObject
    : public ClassObjectWriting<
          WriteHandle<ClassObjectReading<ReadHandle<NSInterface::FactoryObjectIntf>>>> {
public:
    using ClassObjectWriting::ClassObjectWriting;

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
