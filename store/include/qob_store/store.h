#pragma once

#include "qob/qob/exception.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"
#include "qob_store/export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace QOB {

/// A file can't be written or read. The text is one line: the file, the place in it, the cause.
class QOB_STORE_EXPORT StoreError : public Exception {
public:
    explicit StoreError(std::string const& message);
    StoreError(StoreError const&);
    StoreError& operator=(StoreError const&);
    ~StoreError() noexcept override;

    clone_base const* clone() const override;
    void rethrow() const override;
};

struct LoadOptions {
    /// Leave out the objects of classes and the values of properties that no library in this
    /// process declares. Otherwise they are an error.
    bool skipUnknown = false;
};

/// What a file holds of a class or a property that no library in this process declares.
struct SkippedElement {
    std::string name; ///< dotted; of a property with its class in front
    std::uint64_t count = 0;
};

/// A reference to an object of another model that isn't there.
struct UnresolvedReference {
    ClassObject object; ///< that refers to it
    std::string property;
    int position = -1; ///< in a list, else -1
    std::string uri;   ///< of the other model
    int id = 0;        ///< of the object in that model
};

struct LoadReport {
    std::vector<SkippedElement> skipped{};
    std::vector<UnresolvedReference> unresolved{};
};

/// Models in files: SQLite databases with one table for each class. A file is complete or untouched
/// whatever happens while it is written. See docs/store.md for the tables.
///
/// Failures raise StoreError. A save that fails leaves the file and the model as they were; a load
/// that fails leaves no model.
class QOB_STORE_EXPORT Store {
public:
    /// Writes all objects of the model, as its handle's deviant shows them, in one transaction. A
    /// store that stands there is replaced; any other file is refused.
    static void save(Model const& model, std::string const& path);
    /// Reads a file into a new model, which is found by its URI from then on unless another model
    /// has that URI. References to other models are resolved if those models are there.
    static Model
    load(std::string const& path, LoadOptions const& options = {}, LoadReport* report = nullptr);
    /// Adds the objects of a file to a model, in one transaction. They keep their ids if the model
    /// has no objects, and get new ones otherwise. What the file says of its model itself, such as
    /// the URI, is left out.
    static void loadInto(Model const& model,
                         std::string const& path,
                         LoadOptions const& options = {},
                         LoadReport* report = nullptr);
};

} // namespace QOB
