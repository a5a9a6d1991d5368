#include "follower.h"

#include "qob/qob/sequence.h"
#include "qob_store/store.h"
#include "schema.h"

#include <climits>

#include <algorithm>
#include <sqlite3.h>
#include <utility>

namespace QOB::store {

namespace {

/// Keys lead to nothing for the time of a save in which objects go: SQLite would look at every row
/// that could refer to one of them. Whatever refers to it is written by the save.
class WithoutForeignKeys {
public:
    explicit WithoutForeignKeys(Database& database) : database_(database) {
        database.run("PRAGMA foreign_keys = OFF");
    }
    WithoutForeignKeys(WithoutForeignKeys const&) = delete;
    WithoutForeignKeys& operator=(WithoutForeignKeys const&) = delete;
    ~WithoutForeignKeys() {
        sqlite3_exec(database_.handle(), "PRAGMA foreign_keys = ON", nullptr, nullptr, nullptr);
    }

private:
    Database& database_;
};

/// Whether a property of all objects has changed.
bool hasOther(unsigned id, ObjectChange const& change) {
    PropertyBinding const binding{&NSInterface::ClassObjectIntf::sIntrospectiveMethods, id};
    return std::any_of(
        change.properties().begin(), change.properties().end(), [&](auto const& property) {
            return property->internal_binding() == binding;
        });
}

} // namespace

Follower::Follower(Model model, Database&& database)
    : model_(std::move(model)),
      layout_(std::make_unique<Layout>()),
      database_(std::move(database), Database::Use::Write),
      keys_(std::make_unique<Keys>(model_)) {
    observe(model_);
}

Follower::Follower(Model model, std::string const& path)
    : Follower(std::move(model), Database(path, Database::Use::Write)) {
}

Follower::Follower(Model model, Database&& database, std::int64_t dataVersion)
    : Follower(std::move(model), std::move(database)) {
    dataVersion_ = dataVersion;
    nextPosition_ = database_.number("SELECT max(position) + 1 FROM object");
    // Objects without an id have other keys in the file.
    needsAll_ = !hasLayout(database_, *layout_) ||
                database_.number("SELECT max(id) FROM object") > ModelKey;
}

void Follower::note(ClassObject const& object, bool isInFile, bool hasOtherExternalId) {
    auto const entry = noted_.try_emplace(object.get(), Noted{object, isInFile}).first;
    entry->second.hasOtherExternalId |= hasOtherExternalId;
}

void Follower::changed(Changes const& changes) {
    if (needsAll_) {
        return;
    }
    // One that comes back may have another external id than the file.
    for (ObjectChange const& change : changes.created()) {
        note(change.object(), false, true);
    }
    for (ObjectChange const& change : changes.destroyed()) {
        note(change.object(), true, true);
    }
    for (ObjectChange const& change : changes.changed()) {
        if (hasOther(NSInterface::ClassObjectIntf::ObjectIdId, change)) { // whatever refers to it
            needsAll_ = true;
            noted_.clear();
            return;
        }
        if (change.object().get() == static_cast<void const*>(model_.get())) {
            modelChanged_ = true;
        } else {
            note(change.object(),
                 true,
                 hasOther(NSInterface::ClassObjectIntf::ExternalIdId, change));
        }
    }
}

void Follower::ended() noexcept {
    hasEnded_ = true;
    noted_.clear();
    writer_.reset();
    keys_.reset();
    model_ = Model();
}

void Follower::requireUsable() const {
    if (hasEnded_) {
        database_.fail("its model has ended");
    }
    if (model_.getDeviant().isWithinTransaction()) {
        database_.fail("a transaction is open in the model");
    }
    if (losesContent_) {
        database_.fail("the file has content that no library here knows and that would be lost; "
                       "save the model to another file");
    }
}

void Follower::requireOwnFile() {
    int isMoved = 0;
    sqlite3_file_control(database_.handle(), "main", SQLITE_FCNTL_HAS_MOVED, &isMoved);
    if (isMoved != 0) {
        database_.fail("the file has been moved or removed since it was opened");
    }
    if (database_.number("PRAGMA data_version") != dataVersion_) {
        database_.fail("another program has written it since it was opened; open it again");
    }
}

void Follower::save() {
    requireUsable();
    if (!hasChanges()) {
        return;
    }
    if (needsAll_ || !writeChanges()) {
        writeAll();
    }
    noted_.clear();
    modelChanged_ = false;
    needsAll_ = false;
    dataVersion_ = database_.number("PRAGMA data_version");
}

void Follower::writeAll() {
    auto layout = std::make_unique<Layout>();
    auto keys = std::make_unique<Keys>(model_);
    FileTransaction transaction(database_, Database::Use::Write);
    bool const isThere = isStore(database_);
    if (dataVersion_ != 0) {
        requireOwnFile();
    }
    writer_.reset();
    if (isThere) {
        clear(database_);
    }
    createSchema(database_, *layout);
    Writer(database_, *layout, model_, *keys).writeAll();
    transaction.commit();
    nextPosition_ = model_.getRootObjectsWithoutAssociation().size();
    positions_.clear();
    owners_.clear();
    losesKeys_ = false;
    layout_ = std::move(layout);
    keys_ = std::move(keys);
}

bool Follower::writeChanges() {
    std::optional<WithoutForeignKeys> free;
    if (std::any_of(noted_.begin(), noted_.end(), [](auto const& each) {
            return each.second.isInFile && !each.second.object.isValid();
        })) {
        free.emplace(database_);
    }
    FileTransaction transaction(database_, Database::Use::Write);
    requireOwnFile();
    std::optional<Plan> planned = plan();
    if (!planned) {
        return false;
    }
    Owners owners = owners_;
    addOwners(*planned, owners);
    if (writer_ == nullptr) {
        writer_ = std::make_unique<Writer>(database_, *layout_, model_, *keys_);
    }
    std::unordered_map<std::int64_t, std::int64_t> positions = positions_;
    for (ClassObject const& object : planned->gone) {
        positions[keys_->of(object)] = writer_->erase(object);
    }
    for (auto const& [object, position] : planned->created) {
        positions.erase(keys_->of(object));
        writer_->writeObject(object, position);
    }
    for (auto const& [object, position] : planned->created) {
        writer_->writeValues(object);
    }
    for (ClassObject const& object : planned->changed) {
        writer_->rewriteValues(object);
    }
    for (ClassObject const& object : planned->renamed) {
        writer_->rewriteExternalId(object);
    }
    if (modelChanged_) {
        writer_->rewriteModel();
    }
    transaction.commit();
    for (ClassObject const& object : planned->gone) {
        keys_->forget(object);
    }
    nextPosition_ = planned->nextPosition;
    positions_ = std::move(positions);
    owners_ = std::move(owners);
    return true;
}

std::optional<Follower::Plan> Follower::plan() {
    Plan plan{.nextPosition = nextPosition_};
    std::vector<ClassObject> created;
    for (auto const& [key, noted] : noted_) {
        if (layout_->find(noted.object.getMetaClass().get()) == nullptr) {
            return std::nullopt; // of a class that is newer than the file
        }
        bool const isThere = noted.object.isValid();
        if (isThere && !noted.isInFile && !noted.object.getObjectId().isValid() && losesKeys_) {
            return std::nullopt; // maybe one that is back, and what referred to it does again
        }
        if (!noted.isInFile) {
            if (isThere) {
                created.push_back(noted.object);
            }
            continue;
        }
        (isThere ? plan.changed : plan.gone).push_back(noted.object);
        if (isThere && noted.hasOtherExternalId) {
            plan.renamed.push_back(noted.object);
        }
    }
    if (!placeCreated(plan, created)) {
        return std::nullopt;
    }
    return plan;
}

/// New objects stand at the end of the model's list; those that an undo has brought back stand
/// where they were.
bool Follower::placeCreated(Plan& plan, std::vector<ClassObject> const& created) {
    std::unordered_set<void const*> open;
    for (ClassObject const& object : created) {
        open.insert(object.get());
    }
    auto const objects = model_.getRootObjectsWithoutAssociation();
    int first = objects.size();
    while (first != 0 && open.erase(objects.at(first - 1).get()) != 0) {
        --first;
    }
    for (int i = first; i != objects.size(); ++i) {
        plan.created.emplace_back(objects.at(i), plan.nextPosition++);
    }
    return std::all_of(created.begin(), created.end(), [&](ClassObject const& object) {
        if (!open.contains(object.get())) {
            return true;
        }
        auto const known = positions_.find(keys_->of(object));
        if (known == positions_.end() || !object.getObjectId().isValid()) {
            return false;
        }
        plan.created.emplace_back(object, known->second);
        return true;
    });
}

void Follower::addOwners(Plan& plan, Owners& owners) {
    std::unordered_set<void const*> known;
    for (auto const& [object, noted] : noted_) {
        known.insert(object);
    }
    auto const add = [&](std::vector<std::int64_t> const& keys) {
        for (std::int64_t const key : keys) {
            ClassObject const owner = objectOf(key);
            if (owner.isValid() && known.insert(owner.get()).second) {
                plan.changed.push_back(owner);
            }
        }
    };
    for (auto const& [object, position] : plan.created) {
        if (auto const found = owners.find(keys_->of(object)); found != owners.end()) {
            add(found->second);
            owners.erase(found);
        }
    }
    if (plan.gone.empty()) {
        return;
    }
    database_.run("CREATE TEMP TABLE IF NOT EXISTS gone(key INTEGER PRIMARY KEY); "
                  "DELETE FROM temp.gone");
    Statement row(database_, "INSERT INTO temp.gone VALUES(?)");
    std::vector<ImmutableClass> classes;
    for (ClassObject const& object : plan.gone) {
        row.bind(0, keys_->of(object));
        row.run();
        ImmutableClass const live = object.getMetaClass();
        if (std::find(classes.begin(), classes.end(), live) == classes.end()) {
            classes.push_back(live);
        }
    }
    Owners found;
    for (ClassTable const& table : layout_->classes()) {
        for (Field const& field : table.columns) {
            if (table.create() != nullptr && mayRefer(field, classes)) {
                addOwnersOf("id", field.column, table.table, found);
            }
        }
    }
    for (Field const& list : layout_->lists()) {
        if (!list.follows && mayRefer(list, classes)) {
            addOwnersOf("owner", "value", list.column, found);
        }
    }
    for (auto& [key, keys] : found) {
        losesKeys_ = losesKeys_ || key > ModelKey;
        add(keys);
        owners[key] = std::move(keys);
    }
}

/// Other ends are written because their objects have changed.
bool Follower::mayRefer(Field const& field, std::vector<ImmutableClass> const& classes) const {
    return field.kind == ValueKind::Reference && !field.property.hasOpposite() &&
           std::any_of(classes.begin(), classes.end(), [&](ImmutableClass const& live) {
               return Layout::isA(live, field.targets);
           });
}

void Follower::addOwnersOf(std::string const& ownerColumn,
                           std::string const& column,
                           std::string const& table,
                           Owners& owners) {
    Statement rows(database_,
                   "SELECT " + ownerColumn + ", " + sqlName(column) + " FROM " + sqlName(table) +
                       " WHERE " + sqlName(column) + " IN (SELECT key FROM temp.gone)");
    while (rows.step()) {
        owners[rows.integer(1)].push_back(rows.integer(0));
    }
}

ClassObject Follower::objectOf(std::int64_t key) const {
    return key <= INT_MAX ? model_.findObject(static_cast<int>(key)) : keys_->find(key);
}

// The tables of a file ------------------------------------------------------------------------

bool hasLayout(Database& database, Layout const& layout) {
    std::unordered_set<std::string> known;
    for (ClassTable const& table : layout.classes()) {
        known.insert(std::to_string(table.id) + " " + table.name + " " + table.table);
        for (Field const& field : table.columns) {
            known.insert(std::to_string(table.id) + " " + std::to_string(field.id) + " " +
                         field.column + " " + field.valueType);
        }
    }
    for (Field const& list : layout.lists()) {
        known.insert("list " + std::to_string(list.id) + " " + list.column);
    }
    std::size_t count = 0;
    Statement rows(
        database,
        "SELECT id || ' ' || dotted_name || ' ' || table_name FROM meta_class "
        "UNION ALL SELECT meta_column.class || ' ' || property || ' ' || column_name || "
        "' ' || CASE WHEN type IN (SELECT dotted_name FROM meta_class) THEN '' ELSE type "
        "END FROM meta_column JOIN meta_property ON meta_property.id = property "
        "UNION ALL SELECT 'list ' || id || ' ' || table_name FROM meta_property "
        "WHERE table_name IS NOT NULL");
    while (rows.step()) {
        if (!known.contains(std::string(rows.text(0)))) {
            return false;
        }
        ++count;
    }
    return count == known.size();
}

} // namespace QOB::store
