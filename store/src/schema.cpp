#include "schema.h"

#include "qob/qob/enumeration.h"
#include "qob/qob/sequence.h"

#include <algorithm>
#include <set>

namespace QOB::store {

namespace {

// Objects come first: whatever refers to one is refused while that isn't there.
constexpr char FixedTables[] = R"(
CREATE TABLE meta_format(version INTEGER NOT NULL);
CREATE TABLE meta_package(id INTEGER PRIMARY KEY, name TEXT NOT NULL, uri TEXT);
CREATE TABLE meta_class(
    id INTEGER PRIMARY KEY, package INTEGER NOT NULL REFERENCES meta_package,
    name TEXT NOT NULL, dotted_name TEXT NOT NULL UNIQUE, is_abstract INTEGER NOT NULL,
    table_name TEXT NOT NULL);
CREATE TABLE meta_super(
    class INTEGER NOT NULL REFERENCES meta_class, position INTEGER NOT NULL,
    super INTEGER NOT NULL REFERENCES meta_class,
    PRIMARY KEY(class, position)) WITHOUT ROWID;
CREATE TABLE meta_literal(
    type TEXT NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL,
    PRIMARY KEY(type, position)) WITHOUT ROWID;
CREATE TABLE meta_property(
    id INTEGER PRIMARY KEY, class INTEGER NOT NULL REFERENCES meta_class,
    name TEXT NOT NULL, type TEXT NOT NULL, lower INTEGER NOT NULL, upper INTEGER,
    default_value TEXT NOT NULL, is_composite INTEGER NOT NULL, is_derived INTEGER NOT NULL,
    is_ordered INTEGER NOT NULL, is_unique INTEGER NOT NULL, opposite TEXT,
    table_name TEXT);
CREATE TABLE meta_column(
    class INTEGER NOT NULL REFERENCES meta_class,
    property INTEGER NOT NULL REFERENCES meta_property, column_name TEXT NOT NULL,
    PRIMARY KEY(class, property)) WITHOUT ROWID;
CREATE TABLE object(
    id INTEGER PRIMARY KEY, class INTEGER NOT NULL REFERENCES meta_class,
    position INTEGER NOT NULL, external_id TEXT);
CREATE TABLE model(id INTEGER PRIMARY KEY REFERENCES object, uri TEXT);
CREATE TABLE tool_info(
    owner INTEGER NOT NULL REFERENCES object, position INTEGER NOT NULL,
    key TEXT NOT NULL, value TEXT, PRIMARY KEY(owner, position)) WITHOUT ROWID;
CREATE TABLE stereotype(
    owner INTEGER NOT NULL REFERENCES object, position INTEGER NOT NULL,
    value INTEGER REFERENCES object, PRIMARY KEY(owner, position)) WITHOUT ROWID;
CREATE TABLE foreign_reference(
    owner INTEGER NOT NULL REFERENCES object, property INTEGER NOT NULL REFERENCES meta_property,
    position INTEGER NOT NULL, uri TEXT NOT NULL, object_id INTEGER NOT NULL,
    PRIMARY KEY(owner, property, position)) WITHOUT ROWID;
)";

char const* typeOf(ValueKind kind) {
    switch (kind) {
    case ValueKind::Boolean:
    case ValueKind::Integer:
        return "INTEGER";
    case ValueKind::Real:
        return "REAL";
    case ValueKind::Reference:
        return "INTEGER REFERENCES object";
    default:
        return "TEXT";
    }
}

void createClassTable(Database& database, ClassTable const& table) {
    std::string sql = "CREATE TABLE " + sqlName(table.table) +
                      "(id INTEGER PRIMARY KEY REFERENCES object,"
                      " container INTEGER REFERENCES object";
    for (Field const& field : table.columns) {
        sql += ", " + sqlName(field.column) + " " + typeOf(field.kind);
    }
    database.run(sql + ")");
}

void createListTable(Database& database, Field const& list) {
    database.run("CREATE TABLE " + sqlName(list.column) +
                 "(owner INTEGER NOT NULL REFERENCES object, position INTEGER NOT NULL, value " +
                 typeOf(list.kind) + ", PRIMARY KEY(owner, position)) WITHOUT ROWID");
}

/// The tables with objects of a class or of those below it.
std::vector<ClassTable const*> tablesOf(Layout const& layout, ClassTable const& of) {
    IntrospectiveMethods const* const base = of.live.internal_binding().methods;
    std::vector<ClassTable const*> tables;
    for (ClassTable const& each : layout.classes()) {
        if (each.create() != nullptr && Layout::isA(each.live, base)) {
            tables.push_back(&each);
        }
    }
    return tables;
}

/// The column of a property, or of the one that stands in its place in the class.
Field const* columnOf(ClassTable const& table, ImmutableProperty const& property) {
    auto const isIt = [&](Field const& each) {
        if (each.property == property) {
            return true;
        }
        auto const redefined = each.property.getRedefinedProperties();
        return std::any_of(redefined.begin(), redefined.end(), [&](ImmutableProperty const& other) {
            return other == property;
        });
    };
    auto const found = std::find_if(table.columns.begin(), table.columns.end(), isIt);
    return found != table.columns.end() ? &*found : nullptr;
}

/// The columns that all objects of an abstract class have.
void createClassView(Database& database, Layout const& layout, ClassTable const& view) {
    std::string sql;
    for (ClassTable const* const table : tablesOf(layout, view)) {
        sql += sql.empty() ? "CREATE VIEW " + sqlName(view.table) + " AS SELECT "
                           : std::string(" UNION ALL SELECT ");
        sql += "id, '" + std::string(table->live.getName()) + "' AS class, container";
        for (Field const& field : view.columns) {
            Field const* const column = columnOf(*table, field.property);
            sql += ", " + (column != nullptr ? sqlName(column->column) : "NULL") + " AS " +
                   sqlName(field.column);
        }
        sql += " FROM " + sqlName(table->table);
    }
    if (!sql.empty()) {
        database.run(sql);
    }
}

/// A list that mirrors references, made of these.
void createMirror(Database& database, Layout const& layout, MirroredList const& mirror) {
    ImmutableProperty const opposite = mirror.property.getOpposite();
    ClassTable const* const others = layout.find(ImmutableClass(opposite.getOwningClass()).get());
    Field const* const column = others != nullptr ? columnOf(*others, opposite) : nullptr;
    if (column != nullptr) {
        std::string const name = sqlName(column->column);
        database.run("CREATE VIEW " + sqlName(mirror.view) + " AS SELECT " + name +
                     " AS owner, row_number() OVER (PARTITION BY " + name +
                     " ORDER BY id) - 1 AS position, id AS value FROM " + sqlName(others->table) +
                     " WHERE " + name + " IS NOT NULL");
    }
}

class MetamodelWriter {
public:
    MetamodelWriter(Database& database, Layout const& layout)
        : database_(database), layout_(layout) {}

    void write() {
        database_.run("INSERT INTO meta_format VALUES(" + std::to_string(FormatVersion) + ")");
        writePackages();
        writeClasses();
        writeProperties();
        writeColumns();
    }

private:
    void writePackages() {
        Statement row(database_, "INSERT INTO meta_package VALUES(?, ?, ?)");
        for (ImmutablePackage const& package : layout_.packages()) {
            std::string const name = dottedName(package);
            String const uri = package.getUri();
            int const id = static_cast<int>(packages_.size()) + 1;
            packages_.emplace(package.get(), id);
            row.bind(0, std::int64_t(id));
            row.bind(1, std::string_view(name));
            row.bind(2, uri.view());
            row.run();
            writeLiterals(package);
        }
    }

    void writeLiterals(ImmutablePackage const& package) {
        Statement row(database_, "INSERT INTO meta_literal VALUES(?, ?, ?)");
        for (ImmutableType const type : package.getOwnedTypes()) {
            ImmutableEnumeration const enumeration(type);
            std::int64_t position = 0;
            if (enumeration.isValid()) {
                std::string const name = dottedName(type);
                for (ImmutableEnumerationLiteral const each : enumeration.getOwnedLiterals()) {
                    String const text = each.getName();
                    row.bind(0, std::string_view(name));
                    row.bind(1, position++);
                    row.bind(2, text.view());
                    row.run();
                }
            }
        }
    }

    void writeClasses() {
        Statement row(database_, "INSERT INTO meta_class VALUES(?, ?, ?, ?, ?, ?)");
        for (ClassTable const& each : layout_.classes()) {
            String const name = each.live.getName();
            row.bind(0, std::int64_t(each.id));
            row.bind(1, std::int64_t(packages_.at(each.live.getPackage().get())));
            row.bind(2, name.view());
            row.bind(3, std::string_view(each.name));
            row.bind(4, std::int64_t(each.create() == nullptr));
            row.bind(5, std::string_view(each.table));
            row.run();
        }
        Statement super(database_, "INSERT INTO meta_super VALUES(?, ?, ?)");
        for (ClassTable const& each : layout_.classes()) {
            std::int64_t position = 0;
            for (ImmutableClass const base : each.live.getSupers()) {
                if (ClassTable const* const found = layout_.find(base.get()); found != nullptr) {
                    super.bind(0, std::int64_t(each.id));
                    super.bind(1, position++);
                    super.bind(2, std::int64_t(found->id));
                    super.run();
                }
            }
        }
    }

    void writeProperties() {
        Statement row(database_,
                      "INSERT INTO meta_property VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (ClassTable const& each : layout_.classes()) {
            for (ImmutableProperty const property : each.live.getOwnedAttributes()) {
                writeProperty(row, each, property);
            }
        }
    }

    void writeProperty(Statement& row, ClassTable const& of, ImmutableProperty const& property) {
        String const name = property.getName();
        String const defaultValue = property.getDefaultValue();
        std::string const type = dottedName(ImmutableType(property.getType()));
        String const opposite =
            property.hasOpposite() ? property.getOpposite().getName() : String();
        row.bind(0, std::int64_t(layout_.idOf(property)));
        row.bind(1, std::int64_t(of.id));
        row.bind(2, name.view());
        row.bind(3, std::string_view(type));
        row.bind(4, std::int64_t(int(property.getLower())));
        if (int const upper = property.getUpper(); upper == ImmutableProperty::Unbounded) {
            row.bindNull(5);
        } else {
            row.bind(5, std::int64_t(upper));
        }
        row.bind(6, defaultValue.view());
        row.bind(7, std::int64_t(property.isComposite()));
        row.bind(8, std::int64_t(property.isDerived()));
        row.bind(9, std::int64_t(property.isOrdered()));
        row.bind(10, std::int64_t(property.isUnique()));
        opposite.isValid() ? row.bind(11, opposite.view()) : row.bindNull(11);
        auto const list =
            std::find_if(layout_.lists().begin(), layout_.lists().end(), [&](Field const& field) {
                return field.property == property;
            });
        list != layout_.lists().end() ? row.bind(12, std::string_view(list->column))
                                      : row.bindNull(12);
        row.run();
    }

    void writeColumns() {
        Statement row(database_, "INSERT INTO meta_column VALUES(?, ?, ?)");
        for (ClassTable const& each : layout_.classes()) {
            for (Field const& field : each.columns) {
                row.bind(0, std::int64_t(each.id));
                row.bind(1, std::int64_t(field.id));
                row.bind(2, std::string_view(field.column));
                row.run();
            }
        }
    }

    Database& database_;
    Layout const& layout_;
    std::unordered_map<void const*, int> packages_;
};

} // namespace

bool isStore(Database& database) {
    std::int64_t const application = database.number("PRAGMA application_id");
    if (application == 0 && database.number("SELECT count(*) FROM sqlite_master") == 0) {
        return false;
    }
    if (application != ApplicationId) {
        database.fail("the file is no store");
    }
    std::int64_t const version = database.number("PRAGMA user_version");
    if (version != FormatVersion) {
        database.fail("its form is of version " + std::to_string(version) +
                      ", and this library knows version " + std::to_string(FormatVersion));
    }
    return true;
}

void clear(Database& database) {
    std::vector<std::string> drops;
    Statement names(database,
                    "SELECT type, name FROM sqlite_master WHERE type IN ('table', 'view') AND "
                    "name NOT LIKE 'sqlite_%' ORDER BY type = 'table', name IN ('object', "
                    "'meta_property', 'meta_class', 'meta_package'), rowid DESC");
    while (names.step()) {
        drops.push_back("DROP " + std::string(names.text(0)) + " " + sqlName(names.text(1)));
    }
    for (std::string const& drop : drops) {
        database.run(drop);
    }
}

void createSchema(Database& database, Layout const& layout) {
    database.run("PRAGMA application_id = " + std::to_string(ApplicationId));
    database.run("PRAGMA user_version = " + std::to_string(FormatVersion));
    database.run(FixedTables);
    for (ClassTable const& table : layout.classes()) {
        if (table.create() != nullptr) {
            createClassTable(database, table);
        }
    }
    for (Field const& list : layout.lists()) {
        if (!list.follows) {
            createListTable(database, list);
        }
    }
    for (ClassTable const& view : layout.classes()) {
        if (view.create() == nullptr) {
            createClassView(database, layout, view);
        }
    }
    for (MirroredList const& mirror : layout.mirroredLists()) {
        createMirror(database, layout, mirror);
    }
    MetamodelWriter(database, layout).write();
}

} // namespace QOB::store
