#pragma once

namespace QOB {

namespace NSInterface {
class ClassObjectIntf;
} // namespace NSInterface

namespace internal {

/// Notes an object whose model has ended while handles still count it, until it dies.
void noteOutliving(NSInterface::ClassObjectIntf* object);

/// Of the meta-registry, in steps and open transactions.
void forgetKeptParts() noexcept;

} // namespace internal
} // namespace QOB
