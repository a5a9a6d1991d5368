#include "arxml/document_reader.h"

#include "arxml/fragment_account.h"
#include "arxml/pull_reader.h"

#include <utility>
#include <vector>

namespace velum::arxml {

namespace {

using report::Reason;

std::string_view withoutOuterSpace(std::string_view text) {
    constexpr std::string_view space = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(space);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(space) - begin + 1);
}

bool isTrue(std::string_view text) {
    return text == "true" || text == "1";
}

/// Walks the document and knows what each open element is to the import.
class DocumentReader {
public:
    DocumentReader(const std::string& file,
                   FileId id,
                   Names& names,
                   DocumentIndex& index,
                   ElementSink& sink,
                   report::FileReport& report)
        : reader_(file, names),
          id_(id),
          names_(names),
          index_(index),
          sink_(sink),
          report_(report) {}

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
        Position position;
        PathId path = PathTree::root;    // of the nearest named element, itself included
        PathId package = PathTree::root; // of the nearest package, itself included
        Fragment::Index node = Fragment::none;
        std::string text;
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
        report_.tally.meet(name);
        if (depth_ == 0) {
            checkRoot();
        }
        Frame& frame = push();
        frame.name = name;
        frame.position = reader_.position();
        frame.isNamed = false;
        frame.node = Fragment::none;
        frame.path = PathTree::root;
        frame.package = PathTree::root;
        frame.text.clear();
        if (depth_ == 1) {
            frame.role = Role::document;
            return;
        }
        const Frame& parent = frames_[depth_ - 2];
        frame.path = parent.path;
        frame.package = parent.package;
        setRole(frame, parent);
        if (frame.role == Role::collected) {
            collect(frame, parent);
        }
    }

    void checkRoot() const {
        if (reader_.localName() != names_.text(element::autosar)) {
            reader_.refuse("The root element (" + std::string(reader_.localName()) +
                           ") is not AUTOSAR.");
        }
        if (reader_.namespaceUri() != schemaNamespace) {
            reader_.refuse("The namespace (" + std::string(reader_.namespaceUri()) +
                           ") of the root element is not " + std::string(schemaNamespace) + ".");
        }
    }

    void setRole(Frame& frame, const Frame& parent) const {
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
            if (sink_.wants(frame.name)) {
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

    static void setRoleInPackage(Frame& frame, const Frame& parent) {
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

    void collect(Frame& frame, const Frame& parent) {
        if (parent.role != Role::collected) {
            fragment_.begin(id_, frame.package);
        }
        frame.node = static_cast<Fragment::Index>(fragment_.size());
        bool fits = fragment_.add(parent.node, frame.name, frame.position, frame.path);
        for (const PullReader::Attribute& attribute : reader_.attributes()) {
            fits = fits && fragment_.addAttribute(attribute.name, attribute.value);
        }
        if (!fits) {
            refuseSize();
        }
    }

    [[noreturn]] void refuseSize() const {
        reader_.refuse("The element around this one is larger than " +
                       std::to_string(Fragment::mostElements) + " elements or " +
                       std::to_string(Fragment::mostText) + " bytes of text.");
    }

    void text() {
        if (depth_ == 0) {
            return;
        }
        Frame& frame = top();
        if (frame.role == Role::collected || frame.name == element::shortName) {
            if (frame.text.size() + reader_.text().size() > Fragment::mostText) {
                refuseSize();
            }
            frame.text += reader_.text();
        }
    }

    void end() {
        Frame& frame = top();
        const std::string_view text = withoutOuterSpace(frame.text);
        if (frame.role == Role::collected && !text.empty() &&
            !fragment_.setText(frame.node, text)) {
            refuseSize();
        }
        if (frame.name == element::shortName && depth_ > 1) {
            nameParent(text);
        }
        switch (frame.role) {
        case Role::package:
            if (!frame.isNamed) {
                report_.find(placeOf(frame), Reason::noName, "This package has no SHORT-NAME.");
            }
            report_.tally.consume(frame.name);
            break;
        case Role::document:
        case Role::packages:
        case Role::packageName:
        case Role::elements:
            report_.tally.consume(frame.name);
            break;
        case Role::skipped:
            report_.tally.skip(frame.name, frame.reason, placeOf(frame));
            break;
        case Role::collected:
            if (frame.node == 0) {
                handOut(frame);
            }
            break;
        }
        --depth_;
    }

    static report::Place placeOf(const Frame& frame) { return {frame.position, frame.path}; }

    /// The element around a SHORT-NAME gets its path.
    void nameParent(std::string_view name) {
        Frame& parent = frames_[depth_ - 2];
        const bool takesName = parent.role == Role::package || parent.role == Role::collected ||
                               parent.role == Role::skipped;
        if (!takesName || parent.isNamed || name.empty()) {
            return;
        }
        parent.isNamed = true;
        parent.path = index_.paths().enter(parent.path, name);
        index_.declare(parent.path, {parent.name, id_, parent.position});
        if (parent.role == Role::package) {
            parent.package = parent.path;
        }
        Frame& nameFrame = top();
        nameFrame.path = parent.path;
        if (parent.node != Fragment::none) {
            fragment_.setPath(parent.node, parent.path);
            fragment_.setPath(nameFrame.node, parent.path);
        }
    }

    void handOut(const Frame& frame) {
        if (frame.name == element::referenceBases) {
            readBases();
        } else {
            sink_.take(fragment_);
        }
    }

    void readBases() {
        FragmentAccount account(fragment_);
        account.hold(0);
        for (auto base = fragment_.firstChild(0); base != Fragment::none;
             base = fragment_.nextSibling(base)) {
            if (fragment_.name(base) != element::referenceBase) {
                continue;
            }
            const auto held = [&](NameId name) {
                const Fragment::Index child = fragment_.child(base, name);
                account.hold(child);
                return child;
            };
            const auto isSet = [&](NameId name) {
                const Fragment::Index child = held(name);
                return child != Fragment::none && isTrue(fragment_.text(child));
            };
            account.hold(base);
            DocumentIndex::ReferenceBase read;
            if (const auto label = held(element::shortLabel); label != Fragment::none) {
                read.label = fragment_.text(label);
            }
            read.isDefault = isSet(element::isDefault);
            read.isThisPackage = isSet(element::baseIsThisPackage);
            if (const auto package = held(element::packageRef); package != Fragment::none) {
                read.package = referenceAt(fragment_, package);
            }
            // That everything of a kind lies in it says nothing about a reference that names it.
            const auto global = fragment_.child(base, element::isGlobal);
            if (global != Fragment::none && !isTrue(fragment_.text(global))) {
                account.hold(global);
            }
            index_.addBase(fragment_.package(), read);
        }
        account.settle(report_.tally, Reason::noProperty);
    }

    PullReader reader_;
    FileId id_;
    Names& names_;
    DocumentIndex& index_;
    ElementSink& sink_;
    report::FileReport& report_;
    std::vector<Frame> frames_;
    std::size_t depth_ = 0;
    Fragment fragment_;
};

} // namespace

void readDocument(const std::string& file,
                  FileId id,
                  Names& names,
                  DocumentIndex& index,
                  ElementSink& sink,
                  report::FileReport& report) {
    DocumentReader(file, id, names, index, sink, report).run();
}

} // namespace velum::arxml
