#include "reading/document_reader.h"

#include "reading/pull_reader.h"
#include "source/white_space.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace velum::arxml {

namespace {

bool isTrue(std::string_view text) {
    return text == "true" || text == "1";
}

/// Walks the document and knows what each open element is to the import.
class DocumentReader {
public:
    DocumentReader(std::string const& file,
                   FileId id,
                   Documents& documents,
                   IsWanted const& isWanted,
                   FileLog& log,
                   OnProgress const& onProgress)
        : reader_(file, documents.names, onProgress),
          id_(id),
          documents_(documents),
          store_(documents.store),
          isWanted_(isWanted),
          log_(log) {}

    void run() {
        for (;;) {
            switch (reader_.next()) {
            case PullReader::Event::start:
                start();
                break;
            case PullReader::Event::end:
                end();
                break;
            case PullReader::Event::text:
                text();
                break;
            case PullReader::Event::finished:
                return;
            }
        }
    }

private:
    enum class Role { document, packages, package, packageName, elements, collected, skipped };

    struct Frame {
        NameId name = 0;
        Role role = Role::skipped;
        Reason reason = Reason::noClass; // of a skipped one
        bool isNamed = false;
        bool isFormula = false; // with system constants in its text
        Position position;
        PathId path = PathTree::root;    // of the nearest named element, itself included
        PathId package = PathTree::root; // of the nearest package, itself included
        ElementStore::Index node = ElementStore::none;
        std::string text;
        std::size_t textBegin = std::string::npos; // behind the blanks that the text begins with
        // Of a skipped one that is a reference.
        std::optional<std::string> base;
    };

    /// Frames are kept and used again, so that their texts keep their memory.
    Frame& push() {
        if (depth_ == frames_.size()) {
            frames_.emplace_back();
        }
        return frames_[depth_++];
    }
    Frame& top() { return frames_[depth_ - 1]; }

    void start() {
        const NameId name = reader_.name();
        log_.tally.meet(name);
        if (depth_ == 0) {
            checkRoot();
        }
        Frame& frame = push();
        frame.name = name;
        frame.position = reader_.position();
        frame.isNamed = false;
        frame.isFormula = false;
        frame.node = ElementStore::none;
        frame.path = PathTree::root;
        frame.package = PathTree::root;
        frame.text.clear();
        frame.textBegin = std::string::npos;
        if (depth_ == 1) {
            frame.role = Role::document;
            return;
        }
        Frame const& parent = frames_[depth_ - 2];
        frame.path = parent.path;
        frame.package = parent.package;
        setRole(frame, parent);
        if (frame.role == Role::collected) {
            collect(frame, parent);
        } else if (isLooseReference(frame)) {
            frame.base.reset();
            for (PullReader::Attribute const& attribute : reader_.attributes()) {
                if (attribute.name == "BASE") {
                    frame.base = attribute.value;
                }
            }
        }
    }

    bool isLooseReference(Frame const& frame) const {
        return frame.role == Role::skipped && documents_.names.isReference(frame.name);
    }

    void checkRoot() const {
        if (reader_.localName() != documents_.names.text(element::autosar)) {
            reader_.refuse("The root element (" + std::string(reader_.localName()) +
                           ") is not AUTOSAR.");
        }
        if (reader_.namespaceUri() != schemaNamespace) {
            reader_.refuse("unsupported-schema: The namespace (" +
                           std::string(reader_.namespaceUri()) + ") of the root element is not " +
                           std::string(schemaNamespace) + ".");
        }
    }

    void setRole(Frame& frame, Frame const& parent) const {
        const auto skip = [&frame](Reason reason) {
            frame.role = Role::skipped;
            frame.reason = reason;
        };
        switch (parent.role) {
        case Role::document:
            if (frame.name == element::arPackages) {
                frame.role = Role::packages;
            } else {
                skip(Reason::noProperty);
            }
            break;
        case Role::packages:
            if (frame.name == element::arPackage) {
                frame.role = Role::package;
            } else {
                skip(Reason::noClass);
            }
            break;
        case Role::package:
            setRoleInPackage(frame, parent);
            break;
        case Role::elements:
            if (isWanted_(frame.name)) {
                frame.role = Role::collected;
            } else {
                skip(Reason::noClass);
            }
            break;
        case Role::collected:
            frame.role = Role::collected;
            break;
        case Role::packageName:
            skip(Reason::noProperty);
            break;
        case Role::skipped:
            skip(parent.reason);
            break;
        }
    }

    static void setRoleInPackage(Frame& frame, Frame const& parent) {
        if (frame.name == element::shortName && !parent.isNamed) {
            frame.role = Role::packageName;
        } else if (frame.name == element::elements) {
            frame.role = Role::elements;
        } else if (frame.name == element::arPackages) {
            frame.role = Role::packages;
        } else if (frame.name == element::referenceBases) {
            frame.role = Role::collected;
        } else {
            frame.role = Role::skipped;
            frame.reason = Reason::noProperty;
        }
    }

    void collect(Frame& frame, Frame const& parent) {
        if (parent.role != Role::collected) {
            store_.begin(id_, frame.package);
        }
        frame.node = store_.add(parent.node, frame.name, frame.position, frame.path);
        bool fits = frame.node != ElementStore::none;
        if (fits && parent.role == Role::collected) {
            placeInText(frame, frames_[depth_ - 2]);
        }
        for (PullReader::Attribute const& attribute : reader_.attributes()) {
            fits = fits && store_.addAttribute(attribute.name, attribute.value);
        }
        if (!fits) {
            refuseSize();
        }
    }

    /// A formula keeps its blanks, since constants stand between them.
    void placeInText(Frame const& frame, Frame& parent) {
        parent.isFormula = parent.isFormula || frame.name == element::syscRef;
        const std::size_t begin = parent.isFormula ? 0 : parent.textBegin;
        store_.setPlaceInText(frame.node,
                              begin == std::string::npos ? 0 : parent.text.size() - begin);
    }

    [[noreturn]] void refuseSize() const {
        reader_.refuse("The element around this one is larger than " +
                       std::to_string(ElementStore::mostElements) + " elements or " +
                       std::to_string(ElementStore::mostText) + " bytes of text.");
    }

    void text() {
        if (depth_ == 0) {
            return;
        }
        Frame& frame = top();
        if (frame.role == Role::collected || frame.name == element::shortName ||
            isLooseReference(frame)) {
            if (frame.text.size() + reader_.text().size() > ElementStore::mostText) {
                refuseSize();
            }
            if (frame.textBegin == std::string::npos) {
                const std::size_t space = leadingSpace(reader_.text());
                frame.textBegin =
                    space == reader_.text().size() ? std::string::npos : frame.text.size() + space;
            }
            frame.text += reader_.text();
        }
    }

    void end() {
        Frame& frame = top();
        const std::string_view text =
            frame.isFormula ? std::string_view(frame.text) : withoutOuterSpace(frame.text);
        if (frame.role == Role::collected && !text.empty() && !store_.setText(frame.node, text)) {
            refuseSize();
        }
        if (frame.name == element::shortName && depth_ > 1) {
            nameParent(text);
        }
        switch (frame.role) {
        case Role::package:
            if (!frame.isNamed) {
                log_.find(spotOf(frame), Reason::noName, "This package has no SHORT-NAME.");
            }
            log_.tally.consume(frame.name);
            break;
        case Role::document:
        case Role::packages:
        case Role::packageName:
        case Role::elements:
            log_.tally.consume(frame.name);
            break;
        case Role::skipped:
            log_.tally.skip(frame.name, frame.reason, spotOf(frame));
            if (!text.empty() && isLooseReference(frame)) {
                keepReference(frame, text);
            }
            break;
        case Role::collected:
            store_.end(frame.node);
            if (frame.name == element::referenceBases && !store_.at(frame.node).parent()) {
                readBases(store_.at(frame.node));
            }
            break;
        }
        --depth_;
    }

    static Spot spotOf(Frame const& frame) { return {frame.position, frame.path}; }

    /// The element around a SHORT-NAME gets its path.
    void nameParent(std::string_view name) {
        Frame& parent = frames_[depth_ - 2];
        const bool takesName = parent.role == Role::package || parent.role == Role::collected ||
                               parent.role == Role::skipped;
        if (!takesName || parent.isNamed || name.empty()) {
            return;
        }
        parent.isNamed = true;
        parent.path = documents_.index.paths().enter(parent.path, name);
        if (parent.role == Role::package) {
            parent.package = parent.path;
        }
        Frame& nameFrame = top();
        nameFrame.path = parent.path;
        reportLength(parent, name);
        if (parent.node != ElementStore::none) {
            store_.setPath(parent.node, parent.path);
            store_.setPath(nameFrame.node, parent.path);
        }
    }

    /// What lies below a path that is too long is counted and not reported again.
    void reportLength(Frame const& frame, std::string_view name) {
        constexpr std::size_t longestName = 128;
        const std::size_t size =
            static_cast<std::size_t>(std::count_if(name.begin(), name.end(), [](char c) {
                return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
            }));
        if (size > longestName) {
            log_.note(spotOf(frame),
                      Reason::longName,
                      "The name has " + std::to_string(size) + " characters; the format allows " +
                          std::to_string(longestName) + ".");
        }
        PathTree const& paths = documents_.index.paths();
        if (!paths.isTooLong(frame.path) || paths.isTooLong(paths.parent(frame.path))) {
            return;
        }
        const std::string text = "The path is longer than " +
                                 std::to_string(PathTree::longestPath) +
                                 " bytes; nothing at it or below it is known by its path.";
        if (frame.role == Role::skipped) {
            log_.note(spotOf(frame), Reason::longPath, text);
        } else {
            log_.find(spotOf(frame), Reason::longPath, text);
        }
    }

    void keepReference(Frame const& frame, std::string_view text) {
        LooseReference loose{id_, frame.name, frame.position, frame.path, {}};
        loose.reference.target = documents_.texts.keep(text);
        if (frame.base) {
            loose.reference.base = documents_.texts.keep(*frame.base);
        }
        loose.reference.package = frame.package;
        documents_.looseReferences.push_back(loose);
    }

    void readBases(Element bases) {
        for (const Element base : bases.children()) {
            if (!base.is(element::referenceBase)) {
                continue;
            }
            DocumentIndex::ReferenceBase read;
            read.label = base.child(element::shortLabel).text();
            read.isDefault = isTrue(base.child(element::isDefault).text());
            read.isThisPackage = isTrue(base.child(element::baseIsThisPackage).text());
            if (const Element package = base.child(element::packageRef)) {
                read.package = referenceAt(package);
            }
            documents_.index.addBase(bases.package(), read);
        }
    }

    PullReader reader_;
    FileId id_;
    Documents& documents_;
    ElementStore& store_;
    IsWanted const& isWanted_;
    FileLog& log_;
    std::vector<Frame> frames_;
    std::size_t depth_ = 0;
};

} // namespace

void readDocument(std::string const& file,
                  FileId id,
                  Documents& documents,
                  IsWanted const& isWanted,
                  FileLog& log,
                  OnProgress const& onProgress) {
    DocumentReader(file, id, documents, isWanted, log, onProgress).run();
}

} // namespace velum::arxml
