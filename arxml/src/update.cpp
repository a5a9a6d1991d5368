#include "scratch_model.h"
#include "updating/document_text.h"
#include "updating/element_editor.h"
#include "updating/excerpt.h"
#include "updating/renaming.h"
#include "updating/verification.h"
#include "updating/written_elements.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <qob/qob/compare.h>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <velum_arxml/update.h>
#include <velum_arxml/writing/output_file.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;

/// Texts in files beside one, under names of their own as long as this object lives.
class Drafts {
public:
    explicit Drafts(std::string file) : file_(std::move(file)) {}
    ~Drafts() {
        for (std::string const& path : paths_) {
            std::error_code none;
            fs::remove(path, none);
        }
    }
    Drafts(Drafts const&) = delete;
    Drafts& operator=(Drafts const&) = delete;
    Drafts(Drafts&&) = delete;
    Drafts& operator=(Drafts&&) = delete;

    void add(std::string const& text) {
        std::string path = file_ + ".velum-draft-" + std::to_string(paths_.size()) + ".arxml";
        OutputFile draft(path);
        draft.write(text);
        draft.commit();
        paths_.push_back(std::move(path));
    }
    std::vector<std::string> const& paths() const { return paths_; }

private:
    std::string file_;
    std::vector<std::string> paths_;
};

/// Whether the objects are base dimensions of the international system: they come and go with the
/// exponents that a dimension has of them.
bool isImplied(QOB::Difference const& difference) {
    QOB::ClassObject const& object =
        difference.left.get() != nullptr ? difference.left : difference.right;
    const types::Dimension dimension(object);
    return dimension.isValid() && siDimensionOf(dimension) >= 0;
}

/// One change of one file.
class Update {
public:
    Update(std::string file, QOB::Model const& model, std::vector<std::string> beside)
        : file_(std::move(file)),
          text_(file_),
          obstacle_(text_.obstacle()),
          model_(model),
          beside_(std::move(beside)),
          now_(model) {}

    UpdateReport run() {
        UpdateReport report;
        report.refusal = obstacle_.empty() ? change() : obstacle_;
        if (!report.isRefused() && editCount_ > 0) {
            report.edits = editCount_;
            OutputFile output(file_);
            output.write(text_.view());
            output.commit();
        }
        return report;
    }

private:
    /// Changes the text; returns why it can't be done.
    std::string change() {
        std::vector<std::string> files = beside_;
        files.push_back(file_);
        const ScratchModel before(files);
        findChanges(before.model());
        if (differing_.empty() && renamings_.empty() && changed_.empty()) {
            return {};
        }
        readBeside();
        rename();
        std::vector<std::string_view> texts{text_.view()};
        for (DocumentText const& text : textsBeside_) {
            texts.push_back(text.view());
        }
        Excerpt excerpt(texts);
        std::string refusal = editAndVerify(excerpt, ElementEditor::Absent::isReported);
        if (!refusal.empty() && !missing_.empty() &&
            editAndVerify(excerpt, ElementEditor::Absent::isInserted).empty()) {
            refusal.clear();
        }
        if (refusal.empty()) {
            text_.apply(std::move(edits_));
        }
        return refusal;
    }

    std::string editAndVerify(Excerpt& excerpt, ElementEditor::Absent absent) {
        std::string refusal = edit(excerpt, absent);
        return refusal.empty() ? verify(excerpt) : refusal;
    }

    void readBeside() {
        for (std::string const& file : beside_) {
            DocumentText text(file);
            if (text.obstacle().empty()) {
                textsBeside_.push_back(std::move(text));
            } else {
                filesBeside_.push_back(file);
            }
        }
    }

    /// Objects with another name than their path has. They are renamed in the model of before too,
    /// so that its elements are those of the file after the renaming.
    void findRenamings(WrittenElements const& old) {
        if (now_.outline().areIds()) {
            return;
        }
        for (Outline::Entry const& entry : now_.outline().entries()) {
            if (!entry.object.hasExternalId() ||
                entry.object.getExternalId().view() == entry.path()) {
                continue;
            }
            const std::string id = externalIdOf(entry.object);
            if (Outline::Entry const* const known = old.at(id)) {
                renamings_.emplace_back(id, entry.path());
                foundation::NamedElement(known->object)
                    .setName(QOB::String(std::string(entry.name())));
            }
        }
    }

    /// The same with parts that have a path: they are on one side only as long as the names differ.
    bool findRenamedParts(std::vector<QOB::Difference> const& differences) {
        const auto isPart = [](QOB::ClassObject const& object) {
            return object.get() != nullptr && object.hasContainerQOB() && object.hasExternalId();
        };
        std::map<std::string, QOB::ClassObject> now;
        for (QOB::Difference const& difference : differences) {
            if (difference.kind == QOB::DifferenceKind::Existence && isPart(difference.right)) {
                now.emplace(externalIdOf(difference.right), difference.right);
            }
        }
        bool isAny = false;
        for (QOB::Difference const& difference : differences) {
            QOB::ClassObject const& old = difference.left;
            if (difference.kind != QOB::DifferenceKind::Existence || !isPart(old)) {
                continue;
            }
            const std::string id = externalIdOf(old);
            const auto found = now.find(id);
            const std::string name = found == now.end() ? std::string() : nameOf(found->second);
            if (!isIdentifier(name) || name == nameOf(old)) {
                continue;
            }
            foundation::NamedElement(old).setName(QOB::String(name));
            const std::string owner = id.substr(0, id.rfind('/'));
            // Before those around it, which the reference would follow otherwise.
            renamings_.emplace(
                renamings_.begin(), id, renamed(owner, renamings_).value_or(owner) + '/' + name);
            renamedOwners_.push_back(now_.pathAround(found->second));
            isAny = true;
        }
        return isAny;
    }

    /// Finds the objects that differ, and the elements whose texts do.
    void findChanges(QOB::Model const& before) {
        auto elements = std::make_unique<WrittenElements>(before);
        findRenamings(*elements);
        if (!renamings_.empty()) {
            elements = std::make_unique<WrittenElements>(before);
        }
        std::vector<QOB::Difference> differences = QOB::compare(before, model_);
        while (findRenamedParts(differences)) { // from the outside to the inside
            elements = std::make_unique<WrittenElements>(before);
            differences = QOB::compare(before, model_);
        }
        findChangedElements(*elements, differences);
    }

    void findChangedElements(WrittenElements const& old,
                             std::vector<QOB::Difference> const& differences) {
        std::set<std::string> candidates;
        bool areAllKnown = true;
        for (QOB::Difference const& difference : differences) {
            if (isImplied(difference)) {
                continue;
            }
            std::string path;
            if (difference.left.get() != nullptr) {
                areAllKnown = old.addDependent(difference.left, candidates) && areAllKnown;
                path = old.pathAround(difference.left);
            }
            if (difference.right.get() != nullptr) {
                areAllKnown = now_.addDependent(difference.right, candidates) && areAllKnown;
                path = path.empty() ? now_.pathAround(difference.right) : path;
            }
            differing_.try_emplace(path, lineOf(difference));
        }
        if (!areAllKnown) {
            for (auto const* const entries :
                 {&old.outline().entries(), &now_.outline().entries()}) {
                for (Outline::Entry const& entry : *entries) {
                    candidates.emplace(entry.path());
                }
            }
        }
        for (std::string const& path : candidates) {
            Texts texts{old.textAt(path), now_.textAt(path)};
            if (texts.before != texts.after) {
                changed_.emplace(path, std::move(texts));
            }
        }
    }

    void rename() {
        if (renamings_.empty()) {
            return;
        }
        Bases bases;
        bases.addFrom(text_.view());
        for (DocumentText const& text : textsBeside_) {
            bases.addFrom(text.view());
        }
        std::vector<TextEdit> edits = renamingEdits(text_.view(), renamings_, bases);
        renamingCount_ = edits.size();
        editCount_ = renamingCount_;
        text_.apply(std::move(edits));
    }

    /// Finds how the elements change in the text; returns why it can't be done.
    std::string edit(Excerpt const& excerpt, ElementEditor::Absent absent) {
        if (changed_.empty()) {
            return editCount_ == 0 ? refusalWithoutEdits() : std::string();
        }
        const SourceText source(text_.view());
        const auto packages = source.placesOf(packagesOfNew());
        ElementEditor editor(text_.view(), absent);
        for (auto const& [path, texts] : changed_) {
            const bool isNew = texts.before.empty();
            const auto package = packages.find(packageOf(path));
            const std::size_t place = !isNew                      ? excerpt.placeOf(path)
                                      : package != packages.end() ? package->second
                                                                  : std::string::npos;
            if (place == std::string::npos) {
                return isNew ? "The file has no package for the new " + path + "."
                             : "The changed " + path + " is not in this file.";
            }
            const SourceNode node = source.nodeAt(place);
            if (std::string refusal = editElement(editor, path, texts, node); !refusal.empty()) {
                return refusal;
            }
        }
        missing_ = editor.missing().empty() ? std::string() : editor.missing().front();
        edits_ = editor.edits();
        editCount_ = renamingCount_ + edits_.size();
        return editCount_ == 0 ? refusalOf(changed_.begin()->first) : std::string();
    }

    static std::string packageOf(std::string const& path) {
        return path.substr(0, path.rfind('/'));
    }
    std::unordered_set<std::string> packagesOfNew() const {
        std::unordered_set<std::string> packages;
        for (auto const& [path, texts] : changed_) {
            if (texts.before.empty()) {
                packages.insert(packageOf(path));
            }
        }
        return packages;
    }

    struct Texts {
        std::string before; ///< Empty of a new element.
        std::string after;  ///< Empty of one that is gone.
    };

    static std::string editElement(ElementEditor& editor,
                                   std::string const& path,
                                   Texts const& texts,
                                   SourceNode const& node) {
        if (texts.before.empty()) {
            SourceNode const* const list = node.child("ELEMENTS");
            if (list == nullptr) {
                return "The package of the new " + path + " has no elements in this file.";
            }
            editor.append(*list, texts.after);
        } else if (texts.after.empty()) {
            editor.remove(node);
        } else {
            editor.change(texts.before, texts.after, node);
        }
        return {};
    }

    /// Reads what of the new text the changes are about; returns where it isn't what the model
    /// says.
    std::string verify(Excerpt& excerpt) {
        std::vector<std::string> paths;
        std::vector<Excerpt::Added> added;
        for (auto const& [path, texts] : changed_) {
            paths.push_back(path);
            if (texts.before.empty()) {
                added.push_back({path, texts.after});
            }
        }
        for (auto const& [from, to] : renamings_) {
            paths.push_back(to);
        }
        paths.insert(paths.end(), renamedOwners_.begin(), renamedOwners_.end());
        excerpt.choose(paths, edits_, added);
        Drafts drafts(file_);
        for (std::size_t i = 0; i <= textsBeside_.size(); ++i) {
            drafts.add(excerpt.text(i));
        }
        std::vector<std::string> files = filesBeside_;
        files.insert(files.end(), drafts.paths().begin(), drafts.paths().end());
        const ScratchModel after(files);
        return compareWith(after.model(), excerpt.chosen());
    }

    std::string compareWith(QOB::Model const& after, std::vector<std::string> const& chosen) {
        if (const auto mismatch = Verification(now_, renamings_).mismatch(after, chosen)) {
            return refusalAt(mismatch->path, mismatch->what);
        }
        for (auto const& [path, line] : differing_) { // what no element tells
            if (!std::binary_search(chosen.begin(), chosen.end(), path)) {
                return refusalOf(line);
            }
        }
        return {};
    }

    /// Of an element that isn't what the model says, in what it isn't.
    std::string refusalAt(std::string const& path, std::string const& what) const {
        const bool isRenamed = std::any_of(renamings_.begin(),
                                           renamings_.end(),
                                           [&](auto const& each) { return each.second == path; });
        const bool isOwner =
            std::find(renamedOwners_.begin(), renamedOwners_.end(), path) != renamedOwners_.end();
        if (isRenamed || isOwner || differing_.contains(path) || changed_.contains(path)) {
            return refusalOf(what);
        }
        std::string cause = "One of the changes";
        if (differing_.size() + renamings_.size() == 1) {
            cause = differing_.empty() ? "The renaming of " + renamings_.front().first
                                       : "The change of " + differing_.begin()->second;
        }
        return cause + " can't be expressed in this file: it would change " + path + " too.";
    }

    std::string refusalWithoutEdits() const {
        return differing_.empty()
                   ? "The renamed " + renamings_.front().first + " is not in this file."
                   : refusalOf(differing_.begin()->second);
    }

    std::string refusalOf(std::string const& what) const {
        return "The change of " + what + " can't be expressed in this file" +
               (missing_.empty() ? "." : ": " + missing_ + ".");
    }

    std::string file_;
    DocumentText text_;
    std::string obstacle_;
    QOB::Model model_;
    std::vector<std::string> beside_;
    WrittenElements now_;
    Renamings renamings_;
    std::map<std::string, std::string> differing_; ///< Paths, and the first difference at each.
    std::map<std::string, Texts> changed_;         ///< By path.
    std::size_t renamingCount_ = 0;                ///< Of the edits.
    std::size_t editCount_ = 0;
    std::vector<DocumentText> textsBeside_;
    std::vector<std::string> filesBeside_; ///< The others, which are read as a whole.
    std::vector<TextEdit> edits_;
    std::string missing_;
    std::vector<std::string> renamedOwners_; ///< The elements with renamed parts.
};

} // namespace

UpdateReport
update(std::string const& file, QOB::Model const& model, std::vector<std::string> const& beside) {
    return Update(file, model, beside).run();
}

} // namespace velum::arxml
