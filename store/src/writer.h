#pragma once

#include "database.h"
#include "layout.h"
#include "qob/qob/model.h"

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace QOB::store {

/// The key of the model itself in the table of objects: above every id.
inline constexpr std::int64_t ModelKey = std::int64_t(1) << 32;

/// By what the objects of one model are known in a file: by their ids; those without one get a key
/// above all ids.
class Keys {
public:
    explicit Keys(Model model) : model_(std::move(model)) {}

    std::int64_t of(ClassObject const& object);
    /// An object without an id, by its key; empty if there is none.
    ClassObject find(std::int64_t key) const;
    /// Another object may have its place in memory later. Its key isn't given again.
    void forget(ClassObject const& object) { withoutId_.erase(object.get()); }

private:
    Model model_;
    std::unordered_map<NSInterface::ClassObjectIntf*, std::int64_t> withoutId_;
    std::int64_t next_ = ModelKey + 1;
};

/// Writes objects into the tables of an open transaction.
class Writer {
public:
    Writer(Database& database, Layout const& layout, Model const& model, Keys& keys);
    Writer(Writer const&) = delete;
    Writer& operator=(Writer const&) = delete;

    /// Everything, into empty tables.
    void writeAll();
    // An object that the file doesn't have: its row in the table of objects, for which the values
    // of others may ask, and then the values.
    void writeObject(ClassObject const& object, std::int64_t position);
    /// The row of a class and what stands in lists.
    void writeValues(ClassObject const& object);
    // An object that the file has.
    void rewriteValues(ClassObject const& object);
    void rewriteExternalId(ClassObject const& object);
    void rewriteModel();
    /// Takes an object out. Returns its position.
    std::int64_t erase(ClassObject const& object);

private:
    /// The statements of one class.
    struct ClassRows {
        Statement row;
        std::vector<Statement*> lists{};
    };
    struct Foreign {
        int property;
        int position;
        ClassObject object;
    };

    ClassTable const& tableOf(ClassObject const& object);
    ClassRows& rowsOf(ClassTable const& table);

    void writeModel();
    void writeRow(ClassTable const& table, ClassObject const& object, std::int64_t key);
    void writeLists(ClassTable const& table, ClassObject const& object, std::int64_t key);
    void writeList(Field const& list, Statement& row, ClassObject const& object, std::int64_t key);
    void writeNotes(ClassObject const& object, std::int64_t key);
    void writeForeign(std::int64_t key);
    /// What the file has of an object but for its row in the table of objects.
    void eraseValues(ClassTable const& table, std::int64_t key);
    void eraseNotes(std::int64_t key);
    /// A statement with one key, made once.
    Statement& withKey(std::string const& sql, std::int64_t key);

    void bindValue(Statement& row, int parameter, Field const& field, Object const& value);
    void bindText(Statement& row, int parameter, String const& text);
    void bindReal(Statement& row, int parameter, Real const& value);
    /// A reference to an object of another model is left out and noted.
    void bindReference(Statement& row,
                       int parameter,
                       int property,
                       int position,
                       ClassObject const& target);

    Database& database_;
    Layout const& layout_;
    Model model_;
    Deviant root_;
    Keys& keys_;
    Statement object_;
    Statement toolInfo_;
    Statement stereotype_;
    Statement foreign_;
    std::unordered_map<ClassTable const*, ClassRows> byClass_;
    /// Of the last object: the next one is mostly of the same class.
    NSInterface::ClassIntf const* lastClass_ = nullptr;
    ClassTable const* lastTable_ = nullptr;
    std::pair<ClassTable const*, ClassRows*> lastRows_{};
    std::unordered_map<Field const*, Statement> byList_;
    std::unordered_map<std::string, Statement> bySql_;
    std::vector<String> texts_; ///< of the row that is being written
    std::vector<Foreign> foreigns_;
};

} // namespace QOB::store
