#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/export.h"

#include <cstdint>

namespace QOB {

class Model;

/// A transaction on the deviant of a model handle. Until it ends, the first write to each object
/// saves its old state, so that all changes can be rolled back. A transaction that is still open
/// when it goes out of scope rolls back.
///
/// A transaction inside a transaction on the same deviant joins it: only the outermost commit
/// counts, and rolling back an inner one rolls back everything, so that the outer one can no longer
/// commit. Calling commit or rollback after the end raises QOB::Exception.
class QOB_EXPORT Transaction {
public:
    /// Raises if the handle is empty or its deviant is gone.
    explicit Transaction(Model const& model);
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;
    ~Transaction();

    /// Makes the changes final; they become one undo step if undo is enabled. Raises, and changes
    /// nothing, if an inner transaction is still open.
    void commit();
    void rollback();
    bool isOpen() const noexcept;

private:
    void requireOpen(char const* operation) const;

    Deviant deviant_;
    std::uint64_t serial_;
    int level_;
    bool ended_ = false;
};

} // namespace QOB
