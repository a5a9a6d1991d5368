#pragma once

#include "qob/qob/nsinterface/factoryobjectintf.h"
#include "qob/qob/object.h"

#include <utility>

namespace QOB {
class FactoryObject;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::FactoryObjectIntf,
            QOB::FactoryObject,
            QOB::FactoryObject,
            "qob/export/include/qob/qob/factoryobject.h")

namespace QOB {

/// What every handle on a factory offers; `Base` is a WriteHandle.
template <class Base>
class FactoryObjectWriting : public ClassObjectWriting<Base> {
public:
    using ClassObjectWriting<Base>::ClassObjectWriting;

    Object createFromString(String type) const {
        return (*this)->createFromString(this->getDeviant(), std::move(type));
    }
    Object createFromString(String type, String text) const {
        return (*this)->createFromString(this->getDeviant(), std::move(type), std::move(text));
    }
    Object createFromString(String type, Integer id) const {
        return (*this)->createFromString(this->getDeviant(), std::move(type), id);
    }
};

/// A factory as an element of its model.
class FactoryObject
    : public FactoryObjectWriting<
          WriteHandle<ClassObjectReading<ReadHandle<NSInterface::FactoryObjectIntf>>>> {
public:
    using FactoryObjectWriting::FactoryObjectWriting;
};

} // namespace QOB
