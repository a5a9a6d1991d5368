#include "transaction.h"

namespace velum::python {

void Transaction::enter() {
    if (transaction_) {
        raise(errorType, "The transaction is open already.");
    }
    transaction_.emplace(view_.handle());
}

void Transaction::leave(bool isFailed) {
    view_.hold->requireThread();
    if (!isFailed && transaction_ && transaction_->isOpen()) {
        try {
            transaction_->commit();
        } catch (...) {
            transaction_.reset();
            throw;
        }
    }
    transaction_.reset(); // rolls back what is open
}

void Transaction::commit() {
    open().commit();
}

void Transaction::rollback() {
    open().rollback();
}

QOB::Transaction& Transaction::open() {
    view_.hold->requireThread();
    if (!transaction_) {
        raise(errorType, "The transaction isn't open: use it in a with statement.");
    }
    return *transaction_;
}

void addTransactions(py::module_& module) {
    py::class_<Transaction>(module, "Transaction", "The changes of a with statement, as one step.")
        .def("__enter__",
             [](py::object self) {
                 self.cast<Transaction&>().enter();
                 return self;
             })
        .def("__exit__",
             [](Transaction& transaction,
                py::object const& type,
                py::object const&,
                py::object const&) { transaction.leave(!type.is_none()); })
        .def("commit", &Transaction::commit, "Makes the changes final before the statement ends.")
        .def("rollback", &Transaction::rollback, "Takes the changes back.");
}

std::unique_ptr<Transaction> newTransaction(ModelView const& view) {
    view.hold->requireThread();
    return std::make_unique<Transaction>(view);
}

} // namespace velum::python
