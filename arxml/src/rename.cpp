#include "updating/document_text.h"
#include "updating/renaming.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>
#include <velum_arxml/update.h>
#include <velum_arxml/writing/output_file.h>

namespace velum::arxml {

namespace {

/// The files in which something gets another name.
class Rename {
public:
    Rename(std::string path, std::string newPath)
        : path_(std::move(path)), newPath_(std::move(newPath)) {}

    /// False, with the refusal, for a file that can't be changed in place.
    bool add(std::string const& file) {
        DocumentText text(file);
        if (const std::string obstacle = text.obstacle(); !obstacle.empty()) {
            report_.refusal = file + ": ";
            report_.refusal += obstacle;
            return false;
        }
        SourceText::Visitor visitor;
        visitor.onNamed = [this](std::string const& named, auto...) {
            isThere_ = isThere_ || named == path_;
            isTaken_ = isTaken_ || named == newPath_;
        };
        visitor.onBase = [this](std::string const& package, SourceBase const& base) {
            bases_.add(package, base);
        };
        try {
            SourceText(text.view()).visit(visitor);
        } catch (std::runtime_error const& error) {
            throw InputError(file, error.what());
        }
        texts_.emplace_back(file, std::move(text));
        return true;
    }

    UpdateReport run() {
        if (!isThere_ || isTaken_) {
            report_.refusal = isTaken_ ? "There is an element at " + newPath_ + " already."
                                       : "There is no element at " + path_ + ".";
            return report_;
        }
        OutputFiles outputs;
        for (auto& [file, text] : texts_) {
            std::vector<TextEdit> edits = renamingEdits(text.view(), {{path_, newPath_}}, bases_);
            if (!edits.empty()) {
                report_.edits += edits.size();
                text.apply(std::move(edits));
                outputs.add(file).write(text.view());
            }
        }
        outputs.commit();
        return report_;
    }

    UpdateReport const& report() const { return report_; }

private:
    std::string path_;
    std::string newPath_;
    Bases bases_; ///< Of all files: a package may stand in several.
    bool isThere_ = false;
    bool isTaken_ = false;
    std::vector<std::pair<std::string, DocumentText>> texts_;
    UpdateReport report_;
};

} // namespace

UpdateReport
rename(std::vector<std::string> const& files, std::string const& path, std::string const& newName) {
    Rename rename(path, path.substr(0, path.rfind('/') + 1) + newName);
    for (std::string const& file : files) {
        if (!rename.add(file)) {
            return rename.report();
        }
    }
    return rename.run();
}

} // namespace velum::arxml
