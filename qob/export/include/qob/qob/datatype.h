#pragma once

#include "qob/qob/nsinterface/datatypeintf.h"
#include "qob/qob/type.h"

namespace QOB {
class ImmutableDataType;
class DataType;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::DataTypeIntf,
            QOB::ImmutableDataType,
            QOB::DataType,
            "qob/export/include/qob/qob/datatype.h")

namespace QOB {

/// A type of values, for reading.
class ImmutableDataType : public TypeReading<ReadHandle<NSInterface::DataTypeIntf>> {
public:
    using TypeReading::TypeReading;
};

/// A type of values.
class DataType : public TypeWriting<WriteHandle<ImmutableDataType>> {
public:
    using TypeWriting::TypeWriting;

    /// A new data type in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT DataType create(Model const& model);
    static QOB_EXPORT DataType create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT DataType createWithId(Model const& model, Integer const& id);
};

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::DataType, "QOB.", "DataType")
