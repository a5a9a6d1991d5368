#include "qob_store/store.h"

#include "database.h"
#include "follower.h"
#include "layout.h"
#include "qob/qob/nsinterface/factoryintf.h"
#include "qob/qob/transaction.h"
#include "reader.h"
#include "schema.h"
#include "writer.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace QOB {

using store::Database;

namespace {

/// Reads a file, and the version of its data at that time; failures name the file.
LoadReport read(Database& database,
                LoadOptions const& options,
                Model const& model,
                store::Reader::Into into,
                std::int64_t* dataVersion = nullptr) {
    store::Layout const layout;
    store::FileTransaction const transaction(database, Database::Use::Read);
    if (!store::isStore(database)) {
        database.fail("the file is empty");
    }
    store::Reader reader(database, layout, options, model, into);
    try {
        reader.read();
    } catch (StoreError const&) {
        throw;
    } catch (Exception const& failure) { // the model refuses what the file holds
        database.fail(failure.what());
    }
    if (dataVersion != nullptr) {
        *dataVersion = database.number("PRAGMA data_version");
    }
    return reader.takeReport();
}

/// A model that goes again unless it is kept.
class NewModel {
public:
    NewModel() : model_(NSInterface::FactoryIntf::createNewModel()) {}
    NewModel(NewModel const&) = delete;
    NewModel& operator=(NewModel const&) = delete;
    ~NewModel() {
        if (!isKept_) {
            model_.destroy();
        }
    }
    Model const& get() const noexcept { return model_; }
    Model keep() noexcept {
        isKept_ = true;
        return model_;
    }

private:
    Model model_;
    bool isKept_ = false;
};

/// A file that a save made goes again if that save fails.
class NewFile {
public:
    explicit NewFile(std::string const& path) : path_(path), isNew_(!exists(path)) {}
    NewFile(NewFile const&) = delete;
    NewFile& operator=(NewFile const&) = delete;
    ~NewFile() {
        std::error_code ignored;
        if (isNew_) {
            std::filesystem::remove(path_, ignored);
        }
    }
    void keep() noexcept { isNew_ = false; }

private:
    static bool exists(std::string const& path) {
        std::error_code ignored;
        return std::filesystem::exists(path, ignored);
    }

    std::string path_;
    bool isNew_;
};

} // namespace

void Store::save(Model const& model, std::string const& path) {
    store::Layout const layout;
    NewFile file(path); // goes after the database is closed
    Database database(path, Database::Use::Write);
    store::FileTransaction transaction(database, Database::Use::Write);
    if (store::isStore(database)) {
        store::clear(database);
    }
    store::createSchema(database, layout);
    store::Keys keys(model);
    store::Writer(database, layout, model, keys).writeAll();
    transaction.commit();
    file.keep();
}

Store::Store(Model const& model, std::string const& path) {
    NewFile file(path);
    follower_ = std::make_unique<store::Follower>(model, path);
    follower_->save();
    file.keep();
}

Store Store::open(std::string const& path, LoadOptions const& options, LoadReport* report) {
    Database database(path, Database::Use::Read);
    NewModel model;
    std::int64_t dataVersion = 0;
    LoadReport found =
        read(database, options, model.get(), store::Reader::Into::NewModel, &dataVersion);
    auto follower =
        std::make_unique<store::Follower>(model.get(), std::move(database), dataVersion);
    model.keep();
    if (!found.skipped.empty()) {
        follower->refuseSaves();
    }
    if (report != nullptr) {
        *report = std::move(found);
    }
    return Store(std::move(follower));
}

Store::Store(std::unique_ptr<store::Follower> follower) noexcept : follower_(std::move(follower)) {
}
Store::Store(Store&&) noexcept = default;
Store& Store::operator=(Store&&) noexcept = default;
Store::~Store() = default;

Model const& Store::model() const noexcept {
    return follower_->model();
}
bool Store::hasChanges() const noexcept {
    return follower_->hasChanges();
}
void Store::save() {
    follower_->save();
}

Model Store::load(std::string const& path, LoadOptions const& options, LoadReport* report) {
    Database database(path, Database::Use::Read);
    NewModel model;
    LoadReport found = read(database, options, model.get(), store::Reader::Into::NewModel);
    if (report != nullptr) {
        *report = std::move(found);
    }
    return model.keep();
}

void Store::loadInto(Model const& model,
                     std::string const& path,
                     LoadOptions const& options,
                     LoadReport* report) {
    Transaction transaction(model); // rolled back unless committed
    Database database(path, Database::Use::Read);
    LoadReport found = read(database, options, model, store::Reader::Into::PresentModel);
    transaction.commit();
    if (report != nullptr) {
        *report = std::move(found);
    }
}

} // namespace QOB
