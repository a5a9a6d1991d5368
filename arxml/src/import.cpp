#include "import.h"

#include "making/type_importer.h"

#include <algorithm>
#include <stdexcept>

namespace velum::arxml {

namespace {

/// The importers of all kinds, put together.
class Builders {
public:
    Builders(ImportContext const& context, QOB::Model const& model)
        : catalogue_(context),
          references_(context, catalogue_),
          objects_(model, context),
          baseTypes_(context, catalogue_),
          methods_(context, catalogue_),
          maps_(context, catalogue_, references_),
          planner_(context, references_, baseTypes_, methods_, maps_),
          units_(context, references_, objects_),
          methodObjects_(context, methods_, units_, objects_),
          constraints_(context, methods_, units_, objects_),
          maker_(context, methods_, methodObjects_, objects_),
          primitives_(context, references_, maker_, units_, methodObjects_, constraints_, objects_),
          values_(context, references_, objects_),
          types_(context, references_, planner_, maps_, maker_, primitives_, values_, objects_) {}

    /// Each kind after those that its objects refer to.
    std::vector<ClassCount> build() {
        primitives_.buildBaseTypes(catalogue_);
        units_.build(catalogue_);
        methodObjects_.build(catalogue_);
        constraints_.build(catalogue_);
        types_.build(catalogue_);
        values_.buildConstants(catalogue_);
        references_.reportRest();
        return objects_.counts();
    }

private:
    Catalogue catalogue_;
    References references_;
    Objects objects_;
    BaseTypes baseTypes_;
    CompuMethods methods_;
    TypeMaps maps_;
    TypePlanner planner_;
    UnitImporter units_;
    CompuMethodImporter methodObjects_;
    Constraints constraints_;
    TypeMaker maker_;
    PrimitiveBuilder primitives_;
    ValueBuilder values_;
    TypeImporter types_;
};

/// Brings what became of the kept elements into the tallies of their files.
void settle(ImportContext const& context) {
    context.account.settle();
    ElementStore const& store = context.documents.store;
    for (ElementStore::Tree const& tree : store.trees()) {
        Tally& tally = context.report.files[tree.file].tally;
        for (ElementStore::Index i = tree.first; i < store.at(tree.first).end(); ++i) {
            const Element element = store.at(i);
            if (const auto reason = context.account.reason(i)) {
                tally.skip(element.name(), *reason, ImportContext::placeOf(element));
            } else {
                tally.consume(element.name());
            }
        }
    }
}

} // namespace

Import::Import(std::vector<std::string> files,
               QOB::Model const& model,
               ImportOptions const& options) {
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    read(files, options.onProgress);
    build(model, options);
    for (FileReport& file : report_.files) {
        file.sort();
        if (!file.tally.isBalanced()) {
            throw std::logic_error("The elements of " + file.file + " are not all accounted for.");
        }
    }
}

void Import::read(std::vector<std::string> const& files, OnProgress const& onProgress) {
    for (std::string const& file : files) {
        const auto id = static_cast<FileId>(report_.files.size());
        report_.files.emplace_back(file);
        readDocument(file, id, documents_, isWanted, report_.files.back(), onProgress);
    }
}

void Import::build(QOB::Model const& model, ImportOptions const& options) {
    Account account(documents_.store);
    const ImportContext context{documents_, account, report_};
    QOB::Transaction transaction(model);
    report_.classes = Builders(context, model).build();
    if (options.isAcceptable && !options.isAcceptable(report_)) {
        transaction.rollback();
        report_.classes.clear();
        report_.isKept = false;
    } else {
        transaction.commit();
    }
    settle(context);
}

} // namespace velum::arxml
