#include "dictionary/import.h"

#include "arxml/document_reader.h"
#include "dictionary/base_type_importer.h"
#include "dictionary/dictionary.h"
#include "dictionary/implementation_type_importer.h"

#include <array>
#include <stdexcept>

namespace velum::dictionary {

namespace {

/// Hands each element to the importer of its kind.
class Importers : public arxml::ElementSink {
public:
    explicit Importers(const ImportContext& context)
        : baseTypes_(context), implementationTypes_(context, baseTypes_) {}

    bool wants(arxml::NameId name) const override { return find(name) != nullptr; }
    void take(const arxml::Fragment& fragment) override { find(fragment.name(0))->take(fragment); }

    void build(Dictionary& dictionary) {
        for (KindImporter* importer : inOrder_) {
            importer->build(dictionary);
        }
    }

private:
    KindImporter* find(arxml::NameId name) const {
        for (KindImporter* importer : inOrder_) {
            if (importer->kind() == name) {
                return importer;
            }
        }
        return nullptr;
    }

    BaseTypeImporter baseTypes_;
    ImplementationTypeImporter implementationTypes_;
    // Base types come last: until then it is open which of them a type uses.
    std::array<KindImporter*, 2> inOrder_ = {&implementationTypes_, &baseTypes_};
};

} // namespace

Import::Import(const std::vector<std::string>& files, Dictionary& dictionary) {
    Importers importers({names_, index_, report_});
    for (const std::string& file : files) {
        const auto id = static_cast<arxml::FileId>(report_.files.size());
        report_.files.push_back({file, {}, {}});
        arxml::readDocument(file, id, names_, index_, importers, report_.files.back());
    }

    QOB::Transaction transaction(dictionary.model());
    importers.build(dictionary);
    transaction.commit();

    for (report::FileReport& file : report_.files) {
        file.sortFindings();
        if (!file.tally.isBalanced()) {
            throw std::logic_error("The elements of " + file.file + " are not all accounted for.");
        }
    }
    report_.integers = dictionary.integers();
}

} // namespace velum::dictionary
