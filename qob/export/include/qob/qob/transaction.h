#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/export.h"

#include <cstdint>

namespace QOB {

class Model;

/// A transaction on the deviant of a model handle. Until it ends, every object that is written
/// saves its old state once, so that everything can be taken back. One that is open when it goes
/// out of scope rolls back.
///
/// A transaction inside a transaction on the same deviant joins it: only the outermost commit
/// counts, and a rollback of an inner one takes everything back, so that the outer one can't commit
/// any more. Commit and rollback after the end raise QOB::Exception.
class QOB_EXPORT Transaction {
public:
    /// Raises if the handle is empty or its deviant is gone.
    explicit Transaction(Model const& model);
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;
    ~Transaction();

    /// Makes the changes final, and one step of undo if undo is enabled. Raises, with everything as
    /// it was, if an inner transaction is still open.
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
