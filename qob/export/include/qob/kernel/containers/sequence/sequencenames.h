#pragma once

#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/integer.h"
#include "qob/qob/object.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"

namespace QOB {

/// The four dotted names of the sequences of `T`: mutable or immutable sequence (first index),
/// mutable or immutable element (second). Specialise it with QOB_SEQUENCE_NAMES.
template <class T>
struct SequenceNames;

} // namespace QOB

/// Names the sequences of an element handle. At global scope, beside the handle's declaration:
///
///     QOB_SEQUENCE_NAMES(Zorvane::metamodel::types::Unit, "Zorvane.metamodel.types.", "Unit")
#define QOB_SEQUENCE_NAMES(Handle, package, name)                                                  \
    template <>                                                                                    \
    struct QOB::SequenceNames<Handle> {                                                            \
        static constexpr char const* names[2][2] = {                                               \
            {package "SequenceOf" name, package "SequenceOfImmutable" name},                       \
            {package "ImmutableSequenceOf" name, package "ImmutableSequenceOfImmutable" name}};    \
    };

/// Names the sequences of a value class, which has no immutable element form.
#define QOB_VALUE_SEQUENCE_NAMES(Value, package, name)                                             \
    template <>                                                                                    \
    struct QOB::SequenceNames<Value> {                                                             \
        static constexpr char const* names[2][2] = {                                               \
            {package "SequenceOf" name, package "SequenceOf" name},                                \
            {package "ImmutableSequenceOf" name, package "ImmutableSequenceOf" name}};             \
    };

QOB_VALUE_SEQUENCE_NAMES(QOB::Integer, "QOB.", "Integer")
QOB_VALUE_SEQUENCE_NAMES(QOB::Real, "QOB.", "Real")
QOB_VALUE_SEQUENCE_NAMES(QOB::String, "QOB.", "String")
QOB_VALUE_SEQUENCE_NAMES(QOB::ExternalToolInfo, "QOB.", "ExternalToolInfo")
QOB_SEQUENCE_NAMES(QOB::ClassObject, "QOB.", "ClassObject")
