#include "qob_store/store.h"

#include "database.h"
#include "layout.h"
#include "reader.h"
#include "schema.h"
#include "writer.h"

#include <filesystem>
#include <system_error>

namespace QOB {

using store::Database;

namespace {

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

Model Store::load(std::string const& path, LoadOptions const& options, LoadReport* report) {
    store::Layout const layout;
    Database database(path, Database::Use::Read);
    store::FileTransaction const transaction(database, Database::Use::Read);
    if (!store::isStore(database)) {
        database.fail("the file is empty");
    }
    store::Reader reader(database, layout, options);
    try {
        reader.read();
    } catch (StoreError const&) {
        throw;
    } catch (Exception const& failure) { // the model refuses what the file holds
        database.fail(failure.what());
    }
    if (report != nullptr) {
        *report = reader.takeReport();
    }
    return reader.takeModel();
}

} // namespace QOB
