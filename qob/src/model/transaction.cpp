#include "qob/qob/transaction.h"

#include "model/modelcore.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/model.h"

namespace QOB {

using internal::DeviantData;

Transaction::Transaction(Model const& model)
    : deviant_(internal::accessedDeviant(model)),
      serial_(DeviantData::of(deviant_).history().begin()),
      level_(DeviantData::of(deviant_).history().depth()) {
}

Transaction::~Transaction() {
    if (isOpen()) {
        DeviantData::of(deviant_).history().rollback();
    }
}

bool Transaction::isOpen() const noexcept {
    return !ended_ && deviant_.isWithinTransaction() &&
           DeviantData::of(deviant_).history().isOpen(serial_);
}

void Transaction::requireOpen(char const* operation) const {
    if (!isOpen()) {
        QOB_FAIL("Cannot %s the transaction: it has ended%s.",
                 operation,
                 ended_ ? "" : " by the rollback of another one or with its deviant");
    }
}

void Transaction::commit() {
    requireOpen("commit");
    internal::History& history = DeviantData::of(deviant_).history();
    QOB_REQUIRE(history.depth() == level_,
                "Cannot commit the transaction: a transaction inside it is still open.");
    std::exception_ptr const raised = history.commit();
    ended_ = true;
    if (raised) {
        std::rethrow_exception(raised);
    }
}

void Transaction::rollback() {
    requireOpen("roll back");
    ended_ = true;
    DeviantData::of(deviant_).history().rollback();
}

} // namespace QOB
