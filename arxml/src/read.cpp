
#include "findings/file_report.h"
#include "making/type_importer.h"
#include "reading/document_reader.h"
#include "reading/source_content.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>
#include <velum_arxml/read.h>

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

/// One reading, from the files to the report.
class Reading {
public:
    Reading(std::vector<std::string> files, QOB::Model const& model, Options const& options)
        : model_(model),
          options_(options),
          watch_(options.onProgress, options.stop),
          content_(std::make_shared<SourceContent>()) {
        content_->files = std::move(files);
    }

    Report run() {
        readFiles();
        QOB::Transaction transaction(model_); // rolled back unless committed
        Report report = makeObjects();
        if (options_.isAcceptable && !options_.isAcceptable(report)) {
            transaction.rollback();
            report.classes.clear();
            report.outcome = Outcome::refused;
        } else {
            transaction.commit();
        }
        if (options_.sources != nullptr) {
            content_->indexPaths();
            *options_.sources = Sources(content_);
        }
        return report;
    }

private:
    void readFiles() {
        for (std::string const& file : content_->files) {
            const auto id = static_cast<FileId>(logs_.size());
            logs_.emplace_back(file);
            readDocument(
                file, id, content_->documents, isWanted, logs_.back(), [this](std::uint64_t bytes) {
                    watch_.advance(bytes);
                });
        }
    }

    Report makeObjects() {
        Documents& documents = content_->documents;
        Account account(documents.store);
        Report report;
        report.classes = Builders({documents, account, logs_, watch_}, model_).build();
        settle(account);
        for (FileLog& log : logs_) {
            log.sort();
            if (!log.tally.isBalanced()) {
                throw std::logic_error("The elements of " + log.file +
                                       " are not all accounted for.");
            }
            report.files.push_back(reportOf(log, documents.names, documents.index.paths()));
        }
        return report;
    }

    /// Brings what became of the kept elements into the tallies of their files.
    void settle(Account& account) {
        account.settle();
        ElementStore const& store = content_->documents.store;
        for (ElementStore::Tree const& tree : store.trees()) {
            Tally& tally = logs_[tree.file].tally;
            for (ElementStore::Index i = tree.first; i < store.at(tree.first).end(); ++i) {
                const Element element = store.at(i);
                if (const auto reason = account.reason(i)) {
                    tally.skip(element.name(), *reason, ImportContext::spotOf(element));
                } else {
                    tally.consume(element.name());
                }
            }
        }
    }

    QOB::Model const& model_;
    Options const& options_;
    Watch watch_;
    std::shared_ptr<SourceContent> content_;
    std::vector<FileLog> logs_;
};

} // namespace

Report read(std::vector<std::string> files, QOB::Model const& model, Options const& options) {
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    try {
        return Reading(std::move(files), model, options).run();
    } catch (Stopped const&) {
        Report report;
        report.outcome = Outcome::stopped;
        return report;
    }
}

} // namespace velum::arxml
