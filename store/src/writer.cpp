#include "writer.h"

#include "qob/qob/sequence.h"
#include "qob/qob/stereotypeobject.h"
#include "qob_store/store.h"
#include "specialreals.h"

#include <algorithm>
#include <cmath>

namespace QOB::store {

namespace {

std::string placeholders(std::size_t count) {
    std::string text = "?";
    for (std::size_t i = 1; i < count; ++i) {
        text += ", ?";
    }
    return text;
}

std::string insertion(std::string const& table, std::size_t columns) {
    return "INSERT INTO " + sqlName(table) + " VALUES(" + placeholders(columns) + ")";
}

/// What the object shows in its handle's deviant. Reading it takes no look for the deviant, and no
/// view of a list.
NSInterface::ObjectIntf* stateOf(ClassObject const& object) {
    return object->getReadDeviantI(object.getDeviant(), object.get());
}

} // namespace

std::int64_t Keys::of(ClassObject const& object) {
    if (Integer const id = object.getObjectId();
        id.isValid() && object.get() != static_cast<void const*>(model_.get())) {
        return static_cast<int const&>(id);
    }
    if (ClassObject(model_) == object) {
        return ModelKey;
    }
    auto const [entry, isNew] = withoutId_.try_emplace(object.get(), next_);
    next_ += isNew ? 1 : 0;
    return entry->second;
}

ClassObject Keys::find(std::int64_t key) const {
    auto const found = std::find_if(withoutId_.begin(), withoutId_.end(), [key](auto const& each) {
        return each.second == key;
    });
    return found != withoutId_.end() ? ClassObject(found->first, model_.getDeviant())
                                     : ClassObject();
}

Writer::Writer(Database& database, Layout const& layout, Model const& model, Keys& keys)
    : database_(database),
      layout_(layout),
      model_(model),
      root_(model.getDeviant().getRootDeviant()),
      keys_(keys),
      object_(database, insertion("object", 4)),
      toolInfo_(database, insertion("tool_info", 4)),
      stereotype_(database, insertion("stereotype", 3)),
      foreign_(database, insertion("foreign_reference", 5)) {
}

void Writer::writeAll() {
    writeModel();
    Sequence<ClassObject> const objects = model_.getRootObjectsWithoutAssociation();
    std::int64_t position = 0;
    for (ClassObject const object : objects) {
        writeObject(object, position++);
    }
    for (ClassObject const object : objects) {
        writeValues(object);
    }
    writeNotes(model_, ModelKey);
}

void Writer::rewriteValues(ClassObject const& object) {
    eraseValues(tableOf(object), keys_.of(object));
    writeValues(object);
}

void Writer::rewriteModel() {
    Statement row(database_, "UPDATE model SET uri = ?");
    bindText(row, 0, model_.hasUri() ? model_.getUri() : String());
    row.run();
    texts_.clear();
    eraseNotes(ModelKey);
    rewriteExternalId(model_);
    writeNotes(model_, ModelKey);
}

std::int64_t Writer::erase(ClassObject const& object) {
    std::int64_t const key = keys_.of(object);
    Statement& row = withKey("SELECT position FROM object WHERE id = ?", key);
    std::int64_t const position = row.step() ? row.integer(0) : -1;
    row.step(); // to the end
    eraseValues(tableOf(object), key);
    withKey("DELETE FROM object WHERE id = ?", key).run();
    return position;
}

void Writer::eraseValues(ClassTable const& table, std::int64_t key) {
    withKey("DELETE FROM " + sqlName(table.table) + " WHERE id = ?", key).run();
    for (Field const* const list : table.lists) {
        withKey("DELETE FROM " + sqlName(list->column) + " WHERE owner = ?", key).run();
    }
    withKey("DELETE FROM foreign_reference WHERE owner = ?", key).run();
    eraseNotes(key);
}

void Writer::eraseNotes(std::int64_t key) {
    withKey("DELETE FROM tool_info WHERE owner = ?", key).run();
    withKey("DELETE FROM stereotype WHERE owner = ?", key).run();
}

void Writer::rewriteExternalId(ClassObject const& object) {
    Statement& row = withKey("UPDATE object SET external_id = ?2 WHERE id = ?1", keys_.of(object));
    bindText(row, 1, object.hasExternalId() ? object.getExternalId() : String());
    row.run();
    texts_.clear();
}

Statement& Writer::withKey(std::string const& sql, std::int64_t key) {
    auto const [entry, isNew] = bySql_.try_emplace(sql);
    if (isNew) {
        entry->second = Statement(database_, sql);
    }
    entry->second.bind(0, key);
    return entry->second;
}

ClassTable const& Writer::tableOf(ClassObject const& object) {
    NSInterface::ClassIntf const* const live = object.getMetaClass().get();
    if (lastTable_ == nullptr || live != lastClass_) {
        lastTable_ = layout_.find(live);
        lastClass_ = live;
    }
    if (lastTable_ == nullptr) {
        database_.fail("the model holds an object of the class " +
                       std::string(object.getLumvoName(false)) +
                       ", which is not in the meta-registry");
    }
    return *lastTable_;
}

Writer::ClassRows& Writer::rowsOf(ClassTable const& table) {
    if (lastRows_.first == &table) {
        return *lastRows_.second;
    }
    auto const [entry, isNew] = byClass_.try_emplace(&table);
    ClassRows& rows = entry->second;
    lastRows_ = {&table, &rows};
    if (!isNew) {
        return rows;
    }
    rows.row = Statement(database_, insertion(table.table, table.columns.size() + 2));
    for (Field const* const list : table.lists) {
        auto const [statement, isNewList] = byList_.try_emplace(list);
        if (isNewList) {
            statement->second = Statement(database_, insertion(list->column, 3));
        }
        rows.lists.push_back(&statement->second);
    }
    return rows;
}

void Writer::writeObject(ClassObject const& object, std::int64_t position) {
    object_.bind(0, keys_.of(object));
    object_.bind(1, std::int64_t(tableOf(object).id));
    object_.bind(2, position);
    bindText(object_, 3, object.hasExternalId() ? object.getExternalId() : String());
    object_.run();
    texts_.clear();
}

void Writer::writeModel() {
    writeObject(model_, -1);
    Statement row(database_, insertion("model", 2));
    row.bind(0, ModelKey);
    bindText(row, 1, model_.hasUri() ? model_.getUri() : String());
    row.run();
    texts_.clear();
}

void Writer::writeValues(ClassObject const& object) {
    ClassTable const& table = tableOf(object);
    std::int64_t const key = keys_.of(object);
    writeRow(table, object, key);
    writeLists(table, object, key);
    writeNotes(object, key);
    if (!foreigns_.empty()) {
        writeForeign(key);
    }
}

void Writer::writeRow(ClassTable const& table, ClassObject const& object, std::int64_t key) {
    Statement& row = rowsOf(table).row;
    Deviant const deviant = object.getDeviant();
    NSInterface::ObjectIntf* const state = stateOf(object);
    row.bind(0, key);
    ClassObject const container = object.getContainerQOB();
    container.isValid() ? row.bind(1, keys_.of(container)) : row.bindNull(1);
    int parameter = 2;
    for (Field const& field : table.columns) {
        IntrospectiveMethods const& methods = *field.binding.methods;
        if (!field.mayBeAbsent || methods.hasSingleValued(state, deviant, field.binding.id)) {
            bindValue(
                row, parameter++, field, methods.getSingleValued(state, deviant, field.binding.id));
        } else {
            row.bindNull(parameter++);
        }
    }
    row.run();
    texts_.clear();
}

void Writer::writeLists(ClassTable const& table, ClassObject const& object, std::int64_t key) {
    ClassRows const& rows = rowsOf(table);
    NSInterface::ObjectIntf* const state = stateOf(object);
    for (std::size_t i = 0; i != table.lists.size(); ++i) {
        PropertyBinding const& list = table.lists[i]->binding;
        if (!list.methods->getMultiValued(state, object.getDeviant(), list.id, false)
                 .generic_empty()) {
            writeList(*table.lists[i], *rows.lists[i], object, key);
        }
    }
}

void Writer::writeList(Field const& list,
                       Statement& row,
                       ClassObject const& object,
                       std::int64_t key) {
    Generic::SequenceRef const elements = list.binding.methods->getOnlyMultiValued(
        object.get(), object.getDeviant(), list.binding.id, true);
    int position = 0;
    row.bind(0, key);
    auto const write = [&](auto const& bindElement) {
        row.bind(1, std::int64_t(position));
        bindElement();
        row.run();
        texts_.clear();
        ++position;
    };
    if (list.kind == ValueKind::Reference) {
        for (ClassObject const target : Sequence<ClassObject>(elements)) {
            write([&] { bindReference(row, 2, list.id, position, target); });
        }
    } else {
        for (Object const value : Sequence<Object>(elements)) {
            write([&] { bindValue(row, 2, list, value); });
        }
    }
}

void Writer::writeNotes(ClassObject const& object, std::int64_t key) {
    std::int64_t position = 0;
    if (object.hasExternalToolInfos()) {
        for (ExternalToolInfo const info : object.getExternalToolInfosWithoutAssociation()) {
            toolInfo_.bind(0, key);
            toolInfo_.bind(1, position++);
            bindText(toolInfo_, 2, info.getKey());
            bindText(toolInfo_, 3, info.getValue());
            toolInfo_.run();
            texts_.clear();
        }
    }
    position = 0;
    if (object.hasAppliedStereotypeInstances()) {
        for (ClassObject const applied : object.getAppliedStereotypeInstancesWithoutAssociation()) {
            stereotype_.bind(0, key);
            stereotype_.bind(1, position++);
            stereotype_.bind(2, keys_.of(applied));
            stereotype_.run();
        }
    }
}

void Writer::writeForeign(std::int64_t key) {
    for (Foreign const& each : foreigns_) {
        Model const model = each.object.getModelQOB();
        String const uri = model.isValid() && model.hasUri() ? model.getUri() : String();
        Integer const id = each.object.getObjectId();
        if (!uri.isValid() || !id.isValid()) {
            database_.fail("an object (id " + std::to_string(key) +
                           ") refers to one of another model that has no URI or no id");
        }
        foreign_.bind(0, key);
        foreign_.bind(1, std::int64_t(each.property));
        foreign_.bind(2, std::int64_t(each.position));
        bindText(foreign_, 3, uri);
        foreign_.bind(4, std::int64_t(static_cast<int const&>(id)));
        foreign_.run();
        texts_.clear();
    }
    foreigns_.clear();
}

void Writer::bindValue(Statement& row, int parameter, Field const& field, Object const& value) {
    if (value.get() == nullptr) {
        row.bindNull(parameter);
        return;
    }
    switch (field.kind) {
    case ValueKind::Boolean: {
        Boolean const truth(value);
        truth.isValid() ? row.bind(parameter, std::int64_t(truth == true))
                        : row.bindNull(parameter);
        break;
    }
    case ValueKind::Integer: {
        Integer const number(value);
        number.isValid() ? row.bind(parameter, std::int64_t(static_cast<int const&>(number)))
                         : row.bindNull(parameter);
        break;
    }
    case ValueKind::Real:
        bindReal(row, parameter, Real(value));
        break;
    case ValueKind::Text:
        bindText(row, parameter, String(value));
        break;
    case ValueKind::Value:
        bindText(row, parameter, value.toString());
        break;
    case ValueKind::Reference:
        bindReference(row, parameter, field.id, -1, ClassObject(value));
        break;
    }
}

void Writer::bindText(Statement& row, int parameter, String const& text) {
    if (!text.isValid()) {
        row.bindNull(parameter);
        return;
    }
    texts_.push_back(text);
    row.bind(parameter, text.view());
}

void Writer::bindReal(Statement& row, int parameter, Real const& value) {
    if (!value.isValid()) {
        row.bindNull(parameter);
    } else if (std::isnan(value)) {
        row.bind(parameter, NotANumber);
    } else if (value == 0.0 && std::signbit(static_cast<double const&>(value))) {
        row.bind(parameter, NegativeZero);
    } else {
        row.bind(parameter, static_cast<double const&>(value));
    }
}

void Writer::bindReference(Statement& row,
                           int parameter,
                           int property,
                           int position,
                           ClassObject const& target) {
    bool const isThere = target.isValid();
    if (isThere && target->getRootDeviant() == root_) {
        row.bind(parameter, keys_.of(target));
        return;
    }
    if (isThere) {
        foreigns_.push_back({property, position, target});
    }
    row.bindNull(parameter);
}

} // namespace QOB::store
