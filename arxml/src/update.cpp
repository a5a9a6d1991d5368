#include "updating/element_editor.h"
#include "writing/element_output.h"
#include "writing/output_file.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <qob/qob/compare.h>
#include <sstream>
#include <unordered_map>
#include <utility>
#include <velum_arxml/read.h>
#include <velum_arxml/update.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;

std::string contentOf(std::string const& file) {
    std::ifstream in(file, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in.good() && !in.eof()) {
        throw InputError(file, "The file cannot be read.");
    }
    return text;
}

/// Why the text of a file can't be changed in place; empty if it can.
std::string obstacleIn(std::string_view text) {
    if (text.size() >= 2 && (text.substr(0, 2) == "\x1F\x8B")) {
        return "The file is compressed.";
    }
    const std::string_view head =
        text.substr(0, std::min<std::size_t>(text.find("<AUTOSAR"), 4096));
    if (text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF" ||
        head.find('\0') != std::string_view::npos) {
        return "The file is written in UTF-16.";
    }
    const std::size_t encoding = head.find("encoding=");
    if (encoding != std::string_view::npos) {
        std::string name(head.substr(encoding + 10, 6));
        std::transform(name.begin(), name.end(), name.begin(), [](char c) {
            return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        });
        if (name.substr(0, 5) != "UTF-8" && name != "US-ASC") {
            return "The file is not written in UTF-8.";
        }
    }
    return head.find("<!DOCTYPE") == std::string_view::npos ? "" : "The file has a DOCTYPE.";
}

/// A model for a while.
class ScratchModel {
public:
    explicit ScratchModel(std::vector<std::string> const& files)
        : model_(types::NSInterface::FactoryIntf::createNewModel()) {
        try {
            read(files, model_);
        } catch (...) {
            model_.destroy();
            throw;
        }
    }
    ~ScratchModel() { model_.destroy(); }
    ScratchModel(ScratchModel const&) = delete;
    ScratchModel& operator=(ScratchModel const&) = delete;
    ScratchModel(ScratchModel&&) = delete;
    ScratchModel& operator=(ScratchModel&&) = delete;

    QOB::Model const& model() const { return model_; }

private:
    QOB::Model model_;
};

/// The elements of a model, each as a writer would write it, with its map.
using Elements = std::map<std::string, std::string>;

Elements elementsOf(QOB::Model const& model) {
    const WriteOptions options;
    std::vector<WriteFinding> findings;
    const Outline outline(model, options, findings);
    Elements elements;
    for (Outline::Entry const& entry : outline.entries()) {
        std::string text;
        XmlWriter xml([&text](std::string_view piece) { text += piece; });
        writeElement({xml, outline, findings, entry.path}, entry);
        xml.flush();
        text.erase(text.find_last_not_of('\n') + 1);
        elements.emplace(entry.path, std::move(text));
    }
    return elements;
}

/// What application types are mapped to, by path.
Elements mapsOf(QOB::Model const& model) {
    const WriteOptions options;
    std::vector<WriteFinding> findings;
    const Outline outline(model, options, findings);
    Elements maps;
    for (Outline::Entry const& entry : outline.entries()) {
        const types::PrimitiveType type(entry.object);
        if (type.isValid() && type.hasReference()) {
            Outline::Entry const* const target = outline.find(type.getReference());
            maps.emplace(entry.path, target == nullptr ? std::string() : target->path);
        }
    }
    return maps;
}

/// The first path at which two models differ, and how.
std::string firstDifference(QOB::Model const& wanted, QOB::Model const& got) {
    const auto differ = [](Elements const& a, Elements const& b) -> std::string {
        for (auto const& [path, text] : a) {
            const auto found = b.find(path);
            if (found == b.end() || found->second != text) {
                return path;
            }
        }
        return {};
    };
    const Elements a = elementsOf(wanted);
    const Elements b = elementsOf(got);
    for (std::string const& path : {differ(a, b),
                                    differ(b, a),
                                    differ(mapsOf(wanted), mapsOf(got)),
                                    differ(mapsOf(got), mapsOf(wanted))}) {
        if (!path.empty()) {
            return path;
        }
    }
    return {};
}

using Renamings = std::vector<std::pair<std::string, std::string>>; // from path, to path

/// The path after the renamings, of what stands at a path or below it.
std::optional<std::string> renamed(std::string_view path, Renamings const& renamings) {
    for (auto const& [from, to] : renamings) {
        if (path.substr(0, from.size()) == from &&
            (path.size() == from.size() || path[from.size()] == '/')) {
            return to + std::string(path.substr(from.size()));
        }
    }
    return std::nullopt;
}

/// Resolves references by the reference bases of a document.
class Bases {
public:
    void add(std::string const& package,
             std::string const& label,
             std::string const& target,
             bool isDefault) {
        byPackage_[package].push_back({label, target, isDefault});
    }

    /// The path that a reference names; empty if its base isn't known.
    std::string resolve(SourceRef const& reference) const {
        if (reference.text.substr(0, 1) == "/") {
            return std::string(reference.text);
        }
        const std::string folder = folderOf(reference);
        return folder.empty() ? std::string() : folder + '/' + std::string(reference.text);
    }

    std::string folderOf(SourceRef const& reference) const {
        for (std::string package(reference.package);; package.resize(package.rfind('/'))) {
            const auto found = byPackage_.find(package);
            if (found != byPackage_.end()) {
                for (Base const& base : found->second) {
                    if (reference.base.empty() ? base.isDefault : base.label == reference.base) {
                        return base.target.substr(0, 1) == "/" ? base.target : std::string();
                    }
                }
            }
            if (package.rfind('/') == std::string::npos) {
                return {};
            }
        }
    }

private:
    struct Base {
        std::string label;
        std::string target;
        bool isDefault;
    };
    std::unordered_map<std::string, std::vector<Base>> byPackage_;
};

/// The changes of a document that renamings ask for: of names, and of all references.
std::vector<TextEdit> renamingEdits(std::string_view text, Renamings const& renamings) {
    std::vector<TextEdit> edits;
    Bases bases;
    SourceText::Visitor first;
    first.onBase = [&](auto const& package, auto const& label, auto const& target, bool isDefault) {
        bases.add(package, label, target, isDefault);
    };
    first.onNamed = [&](std::string const& path, std::size_t, std::size_t begin, std::size_t end) {
        for (auto const& [from, to] : renamings) {
            if (path == from) {
                edits.push_back({begin, end, escaped(to.substr(to.rfind('/') + 1))});
            }
        }
    };
    SourceText(text).visit(first);
    SourceText::Visitor second;
    second.onReference = [&](SourceRef const& reference) {
        const std::string path = bases.resolve(reference);
        const std::optional<std::string> now = renamed(path, renamings);
        if (!now) {
            return;
        }
        const bool isRelative = reference.text.substr(0, 1) != "/";
        const std::string folder = isRelative ? bases.folderOf(reference) + '/' : std::string();
        if (now->compare(0, folder.size(), folder) == 0) {
            edits.push_back({reference.begin,
                             reference.begin + reference.text.size(),
                             escaped(std::string_view(*now).substr(folder.size()))});
        }
    };
    SourceText(text).visit(second);
    return edits;
}

/// The new text of a file beside it, under a name of its own as long as this object lives.
class Draft {
public:
    Draft(std::string const& file, std::string const& text) : path_(file + ".velum-draft.arxml") {
        OutputFile draft(path_);
        draft.write(text);
        draft.commit();
    }
    ~Draft() {
        std::error_code none;
        fs::remove(path_, none);
    }
    Draft(Draft const&) = delete;
    Draft& operator=(Draft const&) = delete;
    Draft(Draft&&) = delete;
    Draft& operator=(Draft&&) = delete;

    std::string const& path() const { return path_; }

private:
    std::string path_;
};

void replaceContent(std::string const& file, std::string const& text) {
    OutputFile output(file);
    output.write(text);
    output.commit();
}

/// One change of one file.
class Update {
public:
    Update(std::string file, QOB::Model model, std::vector<std::string> beside)
        : file_(std::move(file)), model_(std::move(model)), beside_(std::move(beside)) {}

    UpdateReport run() {
        std::string text = contentOf(file_);
        UpdateReport report;
        report.refusal = obstacleIn(text);
        if (report.isRefused()) {
            return report;
        }
        const ScratchModel before(with(file_));
        const Renamings renamings = findRenamings(before.model());
        if (!renamings.empty()) {
            const std::vector<TextEdit> edits = renamingEdits(text, renamings);
            report.edits += edits.size();
            text = applied(text, edits);
        }
        report.refusal = edit(before.model(), text, report.edits);
        if (!report.isRefused() && report.edits == 0) {
            report.refusal = faultOf(before.model(), renamings.empty());
        } else if (!report.isRefused()) {
            const Draft draft(file_, text);
            const ScratchModel after(with(draft.path()));
            report.refusal = faultOf(after.model(), renamings.empty());
        }
        if (report.isRefused()) {
            report.edits = 0;
        } else if (report.edits > 0) {
            replaceContent(file_, text);
        }
        return report;
    }

private:
    std::vector<std::string> with(std::string const& file) const {
        std::vector<std::string> files = beside_;
        files.push_back(file);
        return files;
    }

    /// Why what a file says isn't what the model says; empty if it is.
    std::string faultOf(QOB::Model const& got, bool hasSamePaths) const {
        std::string path = firstDifference(model_, got);
        if (path.empty() && hasSamePaths) { // what no file has a place for
            for (QOB::Difference const& difference : QOB::compare(got, model_)) {
                std::ostringstream line;
                line << difference;
                path = line.str();
                break;
            }
        }
        return path.empty() ? path
                            : "The change of " + path + " can't be expressed in this file" + hint();
    }

    std::string hint() const { return missing_.empty() ? "." : ": " + missing_ + "."; }

    /// Objects with another name than their path has. They are renamed in the model of before too,
    /// so that its elements are those of the file after the renaming.
    Renamings findRenamings(QOB::Model const& before) {
        Renamings renamings;
        const WriteOptions options;
        std::vector<WriteFinding> findings;
        std::unordered_map<std::string, QOB::ClassObject> known;
        const Outline old(before, options, findings);
        for (Outline::Entry const& entry : old.entries()) {
            known.emplace(entry.path, entry.object);
        }
        const Outline now(model_, options, findings);
        for (Outline::Entry const& entry : now.entries()) {
            const std::string id = externalIdOf(entry.object);
            const auto found = known.find(id);
            if (id != entry.path && found != known.end()) {
                renamings.emplace_back(id, entry.path);
                foundation::NamedElement(found->second)
                    .setName(QOB::String(std::string(entry.name())));
            }
        }
        return renamings;
    }

    /// Changes the text; returns why it can't be done.
    std::string edit(QOB::Model const& beforeModel, std::string& text, std::size_t& count) {
        const Elements before = elementsOf(beforeModel);
        const Elements after = elementsOf(model_);
        std::vector<std::string> changed;
        for (auto const& [path, element] : before) {
            const auto found = after.find(path);
            if (found == after.end() || found->second != element) {
                changed.push_back(path);
            }
        }
        for (auto const& [path, element] : after) {
            if (!before.contains(path)) {
                changed.push_back(path);
            }
        }
        if (changed.empty()) {
            return {};
        }
        std::unordered_map<std::string, std::size_t> places;
        SourceText::Visitor visitor;
        visitor.onNamed =
            [&](std::string const& path, std::size_t begin, std::size_t, std::size_t) {
                places.try_emplace(path, begin);
            };
        const SourceText source(text);
        source.visit(visitor);
        ElementEditor editor(text);
        for (std::string const& path : changed) {
            const auto was = before.find(path);
            const auto is = after.find(path);
            const bool isNew = was == before.end();
            const auto place = places.find(isNew ? path.substr(0, path.rfind('/')) : path);
            if (place == places.end()) {
                return isNew ? "The file has no package for the new " + path + "."
                             : "The changed " + path + " is not in this file.";
            }
            const SourceNode node = source.nodeAt(place->second);
            if (isNew) {
                SourceNode const* const list = node.child("ELEMENTS");
                if (list == nullptr) {
                    return "The package of the new " + path + " has no elements in this file.";
                }
                editor.append(*list, is->second);
            } else if (is == after.end()) {
                editor.remove(node);
            } else {
                editor.change(was->second, is->second, node);
            }
        }
        if (!editor.missing().empty()) {
            missing_ = editor.missing().front();
        }
        count += editor.edits().size();
        text = applied(text, editor.edits());
        return count == 0 ? "The change of " + changed.front() +
                                " can't be expressed in this file" + hint()
                          : std::string();
    }

    std::string file_;
    QOB::Model model_;
    std::vector<std::string> beside_;
    std::string missing_;
};

} // namespace

UpdateReport
update(std::string const& file, QOB::Model const& model, std::vector<std::string> const& beside) {
    return Update(file, model, beside).run();
}

UpdateReport
rename(std::vector<std::string> const& files, std::string const& path, std::string const& newName) {
    UpdateReport report;
    const std::string newPath = path.substr(0, path.rfind('/') + 1) + newName;
    bool isThere = false;
    bool isTaken = false;
    std::vector<std::pair<std::string, std::string>> texts;
    for (std::string const& file : files) {
        const std::string text = contentOf(file);
        if (const std::string obstacle = obstacleIn(text); !obstacle.empty()) {
            report.refusal = file;
            report.refusal += ": ";
            report.refusal += obstacle;
            return report;
        }
        SourceText::Visitor visitor;
        visitor.onNamed = [&](std::string const& named, std::size_t, std::size_t, std::size_t) {
            isThere = isThere || named == path;
            isTaken = isTaken || named == newPath;
        };
        SourceText(text).visit(visitor);
        const std::vector<TextEdit> edits = renamingEdits(text, {{path, newPath}});
        if (!edits.empty()) {
            report.edits += edits.size();
            texts.emplace_back(file, applied(text, edits));
        }
    }
    if (!isThere || isTaken) {
        report.refusal = isTaken ? "There is an element at " + newPath + " already."
                                 : "There is no element at " + path + ".";
        report.edits = 0;
        return report;
    }
    std::vector<std::unique_ptr<OutputFile>> outputs;
    for (auto const& [file, text] : texts) {
        outputs.push_back(std::make_unique<OutputFile>(file));
        outputs.back()->write(text);
    }
    for (auto const& output : outputs) {
        output->commit();
    }
    return report;
}

} // namespace velum::arxml
