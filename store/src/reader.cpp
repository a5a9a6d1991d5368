#include "reader.h"

#include "qob/qob/modelcache.h"
#include "qob/qob/sequence.h"
#include "qob/qob/stereotypeobject.h"
#include "qob/qob/valueobjectfactory.h"
#include "specialreals.h"
#include "writer.h"

#include <climits>

#include <algorithm>
#include <utility>

namespace QOB::store {

namespace {

bool isId(std::int64_t key) {
    return key > INT_MIN && key <= INT_MAX;
}

String textOf(std::string_view text) {
    return {std::string(text)};
}

/// Of the file's table of objects.
struct StoredObject {
    std::int64_t key;
    std::int32_t storedClass;
    std::int32_t position;
};

} // namespace

Reader::Reader(Database& database,
               Layout const& layout,
               LoadOptions const& options,
               Model model,
               Into into)
    : database_(database),
      layout_(layout),
      options_(options),
      model_(std::move(model)),
      into_(into),
      keepsIds_(model_.getRootObjectsWithoutAssociation().empty()) {
}

void Reader::read() {
    readClasses();
    readObjects();
    if (into_ == Into::NewModel) {
        readModel();
    }
    readExternalIds();
    for (auto const& [id, stored] : classes_) {
        if (!stored.isAbstract && stored.known != nullptr) {
            readRows(id, stored);
        }
    }
    readLists();
    readToolInfos();
    readStereotypes();
    readForeign();
}

void Reader::readClasses() {
    Statement rows(database_, "SELECT id, dotted_name, table_name, is_abstract FROM meta_class");
    while (rows.step()) {
        StoredClass& stored = classes_[rows.integer(0)];
        stored.name = rows.text(1);
        stored.table = rows.text(2);
        stored.known = layout_.find(std::string_view(stored.name));
        bool const hasObjects = stored.known != nullptr && stored.known->create() != nullptr;
        stored.isAbstract = rows.integer(3) != 0;
        if (!stored.isAbstract && !hasObjects) {
            stored.known = nullptr;
        }
    }
}

void Reader::readModel() {
    Statement row(database_, "SELECT uri FROM model");
    if (row.step() && row.isText(0)) {
        String const uri = textOf(row.text(0));
        model_.setUri(uri);
        std::wstring const wide = uri;
        if (!ModelCache::instance()->findModel(wide).isValid()) {
            ModelCache::instance()->bindModel(wide, model_);
        }
    }
}

void Reader::readObjects() {
    std::vector<StoredObject> objects;
    objects.reserve(static_cast<std::size_t>(
        std::clamp<std::int64_t>(database_.number("SELECT count(*) FROM object"), 0, INT_MAX)));
    Statement rows(database_, "SELECT id, class, position FROM object");
    while (rows.step()) {
        if (rows.integer(0) != ModelKey) {
            objects.push_back({rows.integer(0),
                               static_cast<std::int32_t>(rows.integer(1)),
                               static_cast<std::int32_t>(rows.integer(2))});
        }
    }
    auto const isEarlier = [](StoredObject const& a, StoredObject const& b) {
        return a.position < b.position;
    };
    if (!std::is_sorted(objects.begin(), objects.end(), isEarlier)) {
        std::stable_sort(objects.begin(), objects.end(), isEarlier);
    }
    for (StoredObject const& each : objects) {
        createObject(each.key, each.storedClass);
    }
}

void Reader::createObject(std::int64_t key, std::int64_t storedClass) {
    auto const found = classes_.find(storedClass);
    if (found == classes_.end()) {
        failAt("object", key, "it is of no class");
    }
    StoredClass const& stored = found->second;
    if (stored.known == nullptr) {
        skip(stored.name, 1);
        others_.emplace(key, ClassObject());
        return;
    }
    auto* const create = stored.known->create();
    if (create == nullptr) {
        failAt("object", key, "it is of the abstract class " + stored.name);
    }
    if (keepsIds_ && isId(key)) {
        create(model_, Integer(static_cast<int>(key)));
    } else {
        Integer const id = isId(key) ? model_.allocateObjectId() : Integer();
        others_.emplace(key, ClassObject(create(model_, id)));
    }
}

void Reader::readExternalIds() {
    Statement rows(database_, "SELECT id, external_id FROM object WHERE external_id IS NOT NULL");
    while (rows.step()) {
        if (ClassObject const object = notedObjectOf(rows.integer(0)); object.isValid()) {
            object.setExternalId(textOf(rows.text(1)));
        }
    }
}

void Reader::readRows(std::int64_t id, StoredClass const& stored) {
    std::string columns = "id";
    std::vector<Setter> setters = settersOf(id, stored, columns);
    Statement rows(database_, "SELECT " + columns + " FROM " + sqlName(stored.table));
    bool isFirst = true;
    while (rows.step()) {
        std::int64_t const key = rows.integer(0);
        ClassObject const object = objectOf(key);
        if (object.getMetaClass().get() != stored.known->live.get()) {
            failAt(stored.table, key, "the object is of another class");
        }
        if (std::exchange(isFirst, false)) {
            noteInitial(object, setters);
        }
        int column = 0;
        for (Setter& setter : setters) {
            if (!rows.isNull(++column)) {
                if (!isInitial(setter, rows, column)) {
                    set(object, setter, rows, column);
                }
            } else if (setter.field->isThereFirst) {
                PropertyBinding const& binding = setter.field->binding;
                binding.methods->removeSingleValued(object.get(), object.getDeviant(), binding.id);
            }
        }
    }
}

std::vector<Reader::Setter>
Reader::settersOf(std::int64_t id, StoredClass const& stored, std::string& columns) {
    std::vector<Setter> setters;
    Statement rows(database_,
                   "SELECT property.name, column_name FROM meta_column JOIN meta_property AS "
                   "property ON property.id = property WHERE meta_column.class = " +
                       std::to_string(id));
    while (rows.step()) {
        std::string const name(rows.text(0));
        auto const& known = stored.known->columns;
        auto const field = std::find_if(
            known.begin(), known.end(), [&](Field const& each) { return each.name == name; });
        std::string const column = sqlName(rows.text(1));
        if (field == known.end()) {
            skip(stored.name + "." + name,
                 static_cast<std::uint64_t>(database_.number("SELECT count(" + column + ") FROM " +
                                                             sqlName(stored.table))));
        } else if (!field->follows) {
            setters.push_back({&*field});
            columns += ", " + column;
        }
    }
    return setters;
}

void Reader::noteInitial(ClassObject const& object, std::vector<Setter>& setters) {
    for (Setter& setter : setters) {
        PropertyBinding const& binding = setter.field->binding;
        if (setter.field->kind == ValueKind::Reference ||
            !binding.methods->hasSingleValued(object.get(), object.getDeviant(), binding.id)) {
            continue;
        }
        Object const value =
            binding.methods->getSingleValued(object.get(), object.getDeviant(), binding.id);
        if (String const text = value.get() != nullptr ? value.toString() : String();
            !text.isValid() || text.view().empty()) {
            continue; // no value, or the invalid one
        }
        switch (setter.field->kind) {
        case ValueKind::Boolean:
            setter.initial = std::int64_t(Boolean(value) == true);
            break;
        case ValueKind::Integer:
            setter.initial = std::int64_t(static_cast<int const&>(Integer(value)));
            break;
        case ValueKind::Real:
            setter.initial = static_cast<double const&>(Real(value));
            break;
        default:
            setter.initial = std::string(value.toString().view());
        }
    }
}

bool Reader::isInitial(Setter const& setter, Statement const& row, int column) {
    if (auto const* const number = std::get_if<std::int64_t>(&setter.initial)) {
        return row.isInteger(column) && row.integer(column) == *number;
    }
    if (auto const* const number = std::get_if<double>(&setter.initial)) {
        return row.isReal(column) && row.real(column) == *number;
    }
    auto const* const text = std::get_if<std::string>(&setter.initial);
    return text != nullptr && row.isText(column) && row.text(column) == *text;
}

void Reader::set(ClassObject const& object, Setter& setter, Statement const& row, int column) {
    Field const& field = *setter.field;
    try {
        Object const value = valueOf(setter, row, column);
        if (field.kind == ValueKind::Real && row.isText(column)) {
            field.set(object,
                      Real(1.0)); // a zero isn't written over the other one, which equals it
        }
        if (value.get() != nullptr) {
            field.set(object, value);
        }
    } catch (StoreError const&) {
        throw;
    } catch (Exception const& failure) {
        failAt(object.getLumvoName(false), row.integer(0), field.name + ": " + failure.what());
    }
}

void Reader::readLists() {
    Statement rows(database_,
                   "SELECT meta_property.class, meta_property.name, meta_property.table_name FROM "
                   "meta_property JOIN sqlite_master AS made ON made.name = "
                   "meta_property.table_name AND made.type = 'table'");
    while (rows.step()) {
        auto const owner = classes_.find(rows.integer(0));
        if (owner == classes_.end()) {
            database_.fail("the list " + std::string(rows.text(2)) + " is of no class");
        }
        readList(owner->second, std::string(rows.text(1)), std::string(rows.text(2)));
    }
}

void Reader::readList(StoredClass const& owner, std::string const& name, std::string const& table) {
    auto const& lists = layout_.lists();
    auto const field = std::find_if(lists.begin(), lists.end(), [&](Field const& each) {
        return each.name == name && dottedName(each.property.getOwningClass()) == owner.name;
    });
    if (field == lists.end()) {
        skip(
            owner.name + "." + name,
            static_cast<std::uint64_t>(database_.number("SELECT count(*) FROM " + sqlName(table))));
        return;
    }
    Setter setter{&*field};
    Statement rows(database_,
                   "SELECT owner, value FROM " + sqlName(table) + " ORDER BY owner, position");
    std::int64_t last = -1;
    Generic::SequenceRef elements;
    bool isFirst = true;
    while (rows.step()) {
        std::int64_t const key = rows.integer(0);
        if (isFirst || key != last) {
            ClassObject const object = objectOf(key);
            isFirst = false;
            last = key;
            elements = object.isValid()
                           ? field->binding.methods->getMultiValued(
                                 object.get(), object.getDeviant(), field->binding.id, true)
                           : Generic::SequenceRef();
        }
        if (elements.isNull() || rows.isNull(1)) {
            continue;
        }
        try {
            Object const value = valueOf(setter, rows, 1);
            if (value.get() != nullptr) {
                elements.generic_push_back(field->kind == ValueKind::Reference
                                               ? Generic::toRef(ClassObject(value))
                                               : Generic::toRef(value));
            }
        } catch (StoreError const&) {
            throw;
        } catch (Exception const& failure) {
            failAt(table, key, failure.what());
        }
    }
}

void Reader::readToolInfos() {
    Statement rows(database_, "SELECT owner, key, value FROM tool_info");
    while (rows.step()) {
        if (ClassObject const object = notedObjectOf(rows.integer(0)); object.isValid()) {
            object.setExternalToolInfo(ExternalToolInfo(
                textOf(rows.text(1)), rows.isText(2) ? textOf(rows.text(2)) : String()));
        }
    }
}

void Reader::readStereotypes() {
    Statement rows(database_, "SELECT owner, value FROM stereotype");
    while (rows.step()) {
        ClassObject const object = notedObjectOf(rows.integer(0));
        ClassObject const value = objectOf(rows.integer(1));
        if (!object.isValid() || !value.isValid()) {
            continue;
        }
        StereotypeObject const applied(value);
        if (!applied.isValid()) {
            failAt("stereotype", rows.integer(0), "what is applied is no stereotype");
        }
        object.getAppliedStereotypeInstances().push_back(applied);
    }
}

void Reader::readForeign() {
    Statement rows(database_,
                   "SELECT owner, meta_property.name, position, uri, object_id FROM "
                   "foreign_reference JOIN meta_property ON meta_property.id = property");
    while (rows.step()) {
        ClassObject const owner = objectOf(rows.integer(0));
        if (!owner.isValid() || !isId(rows.integer(4))) {
            continue;
        }
        UnresolvedReference reference{owner,
                                      std::string(rows.text(1)),
                                      static_cast<int>(rows.integer(2)),
                                      std::string(rows.text(3)),
                                      static_cast<int>(rows.integer(4))};
        ClassTable const& table = *layout_.find(owner.getMetaClass().get());
        auto const column =
            std::find_if(table.columns.begin(), table.columns.end(), [&](Field const& each) {
                return each.name == reference.property;
            });
        auto const list =
            std::find_if(table.lists.begin(), table.lists.end(), [&](Field const* each) {
                return each->name == reference.property;
            });
        if (column != table.columns.end()) {
            resolve(owner, *column, std::move(reference));
        } else if (list != table.lists.end()) {
            resolve(owner, **list, std::move(reference));
        } else {
            skip(table.name + "." + reference.property, 1);
        }
    }
}

void Reader::resolve(ClassObject const& owner, Field const& field, UnresolvedReference reference) {
    Model const other = ModelCache::instance()->findModel(String(reference.uri));
    ClassObject const target = other.isValid() ? other.findObject(reference.id) : ClassObject();
    Setter setter{&field};
    if (!target.isValid() || field.targets == nullptr || !takes(setter, target)) {
        report_.unresolved.push_back(std::move(reference));
        return;
    }
    if (reference.position < 0) {
        field.set(owner, target);
        return;
    }
    Generic::SequenceRef const elements = field.binding.methods->getMultiValued(
        owner.get(), owner.getDeviant(), field.binding.id, true);
    elements.generic_insert(std::min(reference.position, elements.generic_size()),
                            Generic::toRef(target));
}

Object Reader::valueOf(Setter& setter, Statement const& row, int column) {
    switch (setter.field->kind) {
    case ValueKind::Reference:
        return targetOf(setter, row.integer(column));
    case ValueKind::Text:
        return textOf(row.text(column));
    case ValueKind::Value:
        if (std::string_view const text = row.text(column);
            setter.lastValue.get() == nullptr || text != setter.lastText) {
            setter.lastText = text;
            setter.lastValue = ValueObjectFactory::createFromString(setter.field->valueType,
                                                                    String(setter.lastText));
        }
        return setter.lastValue;
    default:
        return numberOf(setter, row, column);
    }
}

Object Reader::numberOf(Setter const& setter, Statement const& row, int column) const {
    std::int64_t const number = row.integer(column);
    switch (setter.field->kind) {
    case ValueKind::Boolean:
        return Boolean(number != 0);
    case ValueKind::Integer:
        if (!row.isInteger(column) || !isId(number)) {
            database_.fail("the property " + setter.field->name + " has a value (" +
                           std::string(row.text(column)) + ") that is no 32-bit number");
        }
        return Integer(static_cast<int>(number));
    default:
        if (row.isText(column)) {
            return row.text(column) == NegativeZero ? Real(-0.0)
                                                    : Real::fromString(textOf(row.text(column)));
        }
        return Real(row.real(column));
    }
}

ClassObject Reader::targetOf(Setter& setter, std::int64_t key) {
    ClassObject target = objectOf(key);
    if (target.isValid() && !takes(setter, target)) {
        database_.fail("the property " + setter.field->name + " doesn't take the object with key " +
                       std::to_string(key) + ", which is a " + target.getLumvoName(false));
    }
    return target;
}

bool Reader::takes(Setter& setter, ClassObject const& target) {
    ImmutableClass const live = target.getMetaClass();
    if (live == setter.lastTarget) {
        return true;
    }
    if (!Layout::isA(live, setter.field->targets)) {
        return false;
    }
    setter.lastTarget = live;
    return true;
}

ClassObject Reader::objectOf(std::int64_t key) {
    if (key == ModelKey) {
        return model_;
    }
    if (keepsIds_ && isId(key)) {
        if (ClassObject object = model_.findObject(static_cast<int>(key)); object.isValid()) {
            return object;
        }
    }
    auto const found = others_.find(key);
    if (found == others_.end()) {
        database_.fail("it refers to an object (" + std::to_string(key) + ") that it doesn't have");
    }
    return found->second;
}

ClassObject Reader::notedObjectOf(std::int64_t key) {
    return key == ModelKey && into_ == Into::PresentModel ? ClassObject() : objectOf(key);
}

void Reader::skip(std::string const& name, std::uint64_t count) {
    if (count == 0) {
        return;
    }
    if (!options_.skipUnknown) {
        database_.fail("it has content of " + name + ", which no library here declares");
    }
    auto const known = std::find_if(report_.skipped.begin(),
                                    report_.skipped.end(),
                                    [&](SkippedElement const& s) { return s.name == name; });
    if (known != report_.skipped.end()) {
        known->count += count;
    } else {
        report_.skipped.push_back({name, count});
    }
}

void Reader::failAt(std::string const& table, std::int64_t key, std::string const& cause) {
    database_.fail("table " + table + ", object " + std::to_string(key) + ": " + cause);
}

} // namespace QOB::store
