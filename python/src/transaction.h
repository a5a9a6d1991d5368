#pragma once

#include "modelview.h"

#include <memory>
#include <optional>
#include <qob/qob.h>

namespace velum::python {

/// A transaction as a context manager: velum.Transaction. Opened by the with statement; its end
/// commits, or rolls back if an exception passes.
class Transaction {
public:
    explicit Transaction(ModelView view) : view_(std::move(view)) {}
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;

    void enter();
    void leave(bool isFailed);
    /// Before the end of the with statement.
    void commit();
    void rollback();

private:
    QOB::Transaction& open();

    ModelView view_;
    std::optional<QOB::Transaction> transaction_;
};

void addTransactions(py::module_& module);

std::unique_ptr<Transaction> newTransaction(ModelView const& view);

} // namespace velum::python
