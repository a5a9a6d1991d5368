#pragma once

#include "qob/qob/exception.h"
#include "qob/qob/model.h"
#include "qob/qob/object.h"
#include "qob_store/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace QOB {

namespace store {
class Follower;
} // namespace store

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

    /// Opens a file for a model that is edited: writes the model whole, as save(model, path) does,
    /// and follows it from then on.
    Store(Model const& model, std::string const& path);
    /// Loads a file and follows its model. The model stays when the store goes.
    static Store
    open(std::string const& path, LoadOptions const& options = {}, LoadReport* report = nullptr);
    Store(Store&&) noexcept;
    Store& operator=(Store&&) noexcept;
    ~Store();

    /// In the deviant that is followed; empty once it has ended.
    Model const& model() const noexcept;
    /// Whether the model may differ from the file.
    bool hasChanges() const noexcept;
    /// Writes the objects that have changed since the last save, in one transaction of the file:
    /// the cost is that of the changed objects. After an object was bound to another id the file is
    /// written whole; so is one of an older metamodel or with objects without an id. Destroying
    /// objects to which properties without another end can lead takes a look at each row of these.
    ///
    /// Raises, with file and model as they were, while a transaction is open in the deviant, once
    /// the model has ended, after another program has written, moved or removed the file, and if
    /// the file has content that was skipped. Objects taken out of the model's list of objects, but
    /// not destroyed, stay in the file.
    void save();

private:
    explicit Store(std::unique_ptr<store::Follower> follower) noexcept;

    std::unique_ptr<store::Follower> follower_;
};

} // namespace QOB
