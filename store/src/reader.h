#pragma once

#include "database.h"
#include "layout.h"
#include "qob/qob/model.h"
#include "qob_store/store.h"

#include <functional>
#include <map>
#include <unordered_map>
#include <variant>
#include <vector>

namespace QOB::store {

/// Reads a file into a model.
class Reader {
public:
    enum class Into { NewModel, PresentModel };

    Reader(Database& database,
           Layout const& layout,
           LoadOptions const& options,
           Model model,
           Into into);
    Reader(Reader const&) = delete;
    Reader& operator=(Reader const&) = delete;
    ~Reader() = default;

    void read();
    LoadReport takeReport() { return std::move(report_); }

private:
    /// A class as the file knows it.
    struct StoredClass {
        std::string name;
        std::string table;
        bool isAbstract = false;
        ClassTable const* known = nullptr;
    };
    /// What is done with the values of a column.
    struct Setter {
        Field const* field = nullptr;
        ImmutableClass lastTarget{}; ///< a class whose objects the property takes
        Object lastValue{};          ///< of a value that has only its text, with that text
        std::string lastText{};
        /// What a new object has, which isn't set again.
        std::variant<std::monostate, std::int64_t, double, std::string> initial{};
    };

    void readClasses();
    void readModel();
    void readObjects();
    void createObject(std::int64_t key, std::int64_t storedClass);
    void readExternalIds();
    void readRows(std::int64_t id, StoredClass const& stored);
    std::vector<Setter> settersOf(std::int64_t id, StoredClass const& stored, std::string& columns);
    /// Notes what an object has before anything is set.
    static void noteInitial(ClassObject const& object, std::vector<Setter>& setters);
    static bool isInitial(Setter const& setter, Statement const& row, int column);
    void set(ClassObject const& object, Setter& setter, Statement const& row, int column);
    void readLists();
    void readList(StoredClass const& owner, std::string const& name, std::string const& table);
    void readToolInfos();
    void readStereotypes();
    void readForeign();
    void resolve(ClassObject const& owner, Field const& field, UnresolvedReference reference);

    /// The value of a column; empty if the setter can't take it.
    Object valueOf(Setter& setter, Statement const& row, int column);
    Object numberOf(Setter const& setter, Statement const& row, int column) const;
    ClassObject targetOf(Setter& setter, std::int64_t key);
    bool takes(Setter& setter, ClassObject const& target);

    /// Raises for a key that no object has; empty for one that was left out.
    ClassObject objectOf(std::int64_t key);
    /// The same for what is written beside objects; empty also for a model that isn't the file's.
    ClassObject notedObjectOf(std::int64_t key);
    void skip(std::string const& name, std::uint64_t count);
    [[noreturn]] void failAt(std::string const& table, std::int64_t key, std::string const& cause);

    Database& database_;
    Layout const& layout_;
    LoadOptions options_;
    LoadReport report_;
    Model model_;
    Into into_;
    bool keepsIds_; ///< An id of the file leads to the object in the model, too.
    std::map<std::int64_t, StoredClass> classes_;
    /// The objects to which no id of the file leads; empty handles stand for those that were left
    /// out.
    std::unordered_map<std::int64_t, ClassObject> others_;
};

} // namespace QOB::store
