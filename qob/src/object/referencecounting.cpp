#include "qob/qob/referencecounting.h"

#include "qob/qob/assert.h"

namespace QOB {

namespace {
int openMetaRegistrySections = 0;
} // namespace

void Cleanup::beginMetaRegistrySection() {
    ++openMetaRegistrySections;
}
void Cleanup::endMetaRegistrySection() {
    --openMetaRegistrySections;
}
bool Cleanup::isInMetaRegistrySection() noexcept {
    return openMetaRegistrySections > 0;
}

ReferenceCountingIntf::~ReferenceCountingIntf() = default;
void ReferenceCountingIntf::incRef() const {
    ++referenceCount_;
}
void ReferenceCountingIntf::decRef() const {
    --referenceCount_;
}
int ReferenceCountingIntf::numRef() const {
    return referenceCount_;
}
ListOfReferences* ReferenceCountingIntf::getListOfReferences() const {
    return nullptr;
}

CooperativeVisitor::internal::MethodInfo
ReferenceCountingIntf::getVisitMethod(CooperativeVisitor::internal::MethodTable const&) const {
    return {};
}

void* ReferenceCountingIntf::cast(CooperativeVisitor::internal::ClassInfo const&) const {
    return nullptr;
}

void internal::releaseCounted(int& count, ReferenceCountingIntf const* object) {
    QOB_INVARIANT(count > 0, "Decrementing the ref count of a ref with count already 0");
    if (--count == 0) {
        DeletionQueue::schedule(object);
    }
}

void DeletionQueue::schedule(ReferenceCountingIntf const* object) {
    // Plain pointers to what outlives main; null whenever no deletion is under way.
    static std::vector<ReferenceCountingIntf const*>* pending = nullptr;
    if (object->pendingDeletion_) {
        return;
    }
    if (pending != nullptr) {
        object->pendingDeletion_ = true;
        pending->push_back(object);
        return;
    }
    std::vector<ReferenceCountingIntf const*> queue;
    pending = &queue;
    delete object;
    while (!queue.empty()) {
        ReferenceCountingIntf const* const next = queue.back();
        queue.pop_back();
        next->pendingDeletion_ = false;
        if (next->numRef() == 0) {
            delete next;
        }
    }
    pending = nullptr;
}

} // namespace QOB
