#pragma once

#include "database.h"
#include "layout.h"
#include "qob/qob/model.h"
#include "qob/qob/observer.h"
#include "writer.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace QOB::store {

/// Follows a model that a file holds: notes which objects differ from the file, and writes these.
class Follower final : public Observer {
public:
    /// Of a model that the file doesn't hold yet.
    Follower(Model model, std::string const& path);
    /// Of a model that was loaded from the file at this version of its data.
    Follower(Model model, Database&& database, std::int64_t dataVersion);
    /// For content of a file that no library here knows: a save would lose it.
    void refuseSaves() noexcept { losesContent_ = true; }

    Model const& model() const noexcept { return model_; }
    bool hasChanges() const noexcept { return needsAll_ || modelChanged_ || !noted_.empty(); }
    void save();

    void changed(Changes const& changes) override;
    void ended() noexcept override;

private:
    /// An object that may differ from the file.
    struct Noted {
        ClassObject object;
        bool isInFile;
        bool hasOtherExternalId = false; ///< maybe
    };
    /// What a save writes, and what the follower knows after it.
    struct Plan {
        std::vector<ClassObject> gone{};
        std::vector<ClassObject> changed{};
        std::vector<ClassObject> renamed{}; ///< of these, the ones whose external id may differ
        std::vector<std::pair<ClassObject, std::int64_t>> created{}; ///< with positions
        std::int64_t nextPosition = 0;
    };
    using Owners = std::unordered_map<std::int64_t, std::vector<std::int64_t>>;

    Follower(Model model, Database&& database);

    void note(ClassObject const& object, bool isInFile, bool hasOtherExternalId);
    void requireUsable() const;
    void requireOwnFile();
    void writeAll();
    /// False if the file needs to be written whole.
    bool writeChanges();
    /// Empty if the objects can't be put in order without touching others.
    std::optional<Plan> plan();
    bool placeCreated(Plan& plan, std::vector<ClassObject> const& created);
    /// Adds the objects that refer to those that have gone, and those that did to those that are
    /// back.
    void addOwners(Plan& plan, Owners& owners);
    void addOwnersOf(std::string const& ownerColumn,
                     std::string const& column,
                     std::string const& table,
                     Owners& owners);
    bool mayRefer(Field const& field, std::vector<ImmutableClass> const& classes) const;
    ClassObject objectOf(std::int64_t key) const;

    Model model_;
    bool hasEnded_ = false;
    bool losesContent_ = false;
    std::unique_ptr<Layout> layout_;
    Database database_;
    std::unique_ptr<Keys> keys_;
    std::unique_ptr<Writer> writer_;
    std::int64_t dataVersion_ = 0;
    std::int64_t nextPosition_ = 0;

    bool needsAll_ = true;
    bool modelChanged_ = false;
    std::unordered_map<void const*, Noted> noted_;
    /// Where objects that have gone from the file stood in it: they may come back by undo.
    std::unordered_map<std::int64_t, std::int64_t> positions_;
    /// By the key of one that has gone: the objects that still refer to it.
    Owners owners_;
    bool losesKeys_ = false; ///< Some of these had no id.
};

/// Whether the tables of a file are those of a layout.
bool hasLayout(Database& database, Layout const& layout);

} // namespace QOB::store
