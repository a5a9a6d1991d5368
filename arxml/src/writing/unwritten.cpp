#include "writing/unwritten.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

namespace {

/// Notes whose text is written at the place that they are about.
bool isWrittenNote(std::string_view key) {
    constexpr std::array known = {tool_note::displayName,
                                  tool_note::minValue,
                                  tool_note::maxValue,
                                  tool_note::missingType,
                                  tool_note::missingReference};
    return std::find(known.begin(), known.end(), key) != known.end();
}

/// What of one object isn't written.
class Unwritten {
public:
    Unwritten(QOB::ClassObject const& object, bool hasRelations)
        : object_(object), hasRelations_(hasRelations) {}

    std::vector<std::string> const& things() const { return things_; }

    void find() {
        if (object_.hasAppliedStereotypeInstances()) {
            add("stereotypes");
        }
        if (object_.hasExternalToolInfos()) {
            findNotes();
        }
        const foundation::NamedElement named(object_);
        const bool isNamed = named.isValid();
        if (isNamed && named.getVisibility() != foundation::VisibilityKind::PublicVisibility) {
            add("visibility");
        }
        if (hasRelations_) {
            findRelations();
        }
    }

private:
    void findNotes() {
        for (const QOB::ExternalToolInfo info : object_.getExternalToolInfos()) {
            if (!isWrittenNote(std::string(info.getKey()))) {
                add("note \"" + std::string(info.getKey()) + "\"");
            }
        }
    }

    void findRelations() {
        const foundation::Element element(object_);
        if (element.isValid() && !element.getOwnedComments().empty()) {
            add("comments");
        }
        const foundation::NamedElement named(object_);
        if (named.isValid() && !named.getClientDependencies().empty()) {
            add("dependencies");
        }
        const foundation::Namespace space(object_);
        if (space.isValid() &&
            (!space.getElementImports().empty() || !space.getNamespaceImports().empty())) {
            add("imports");
        }
    }

    void add(std::string what) { things_.push_back(std::move(what)); }

    QOB::ClassObject const& object_;
    bool hasRelations_; ///< There are such in the model.
    std::vector<std::string> things_;
};

} // namespace

void reportUnwritten(QOB::Model const& model,
                     Outline const& outline,
                     std::function<bool(Outline::Entry const&)> const& isWanted,
                     std::vector<WriteFinding>& findings) {
    const auto look = [&](QOB::ClassObject const& object) {
        Unwritten unwritten(object, outline.hasRelations());
        unwritten.find();
        if (unwritten.things().empty()) {
            return;
        }
        Outline::Entry const* const entry = outline.entryAround(object);
        if (entry == nullptr || (isWanted && !isWanted(*entry))) {
            return;
        }
        const std::string name = object.hasContainerQOB() ? nameOf(object) : std::string();
        for (std::string const& thing : unwritten.things()) {
            findings.push_back({Remark::noPlace,
                                std::string(entry->path()),
                                "The format has no place for the " + thing +
                                    (name.empty() ? "." : " of \"" + name + "\".")});
        }
    };
    if (!outline.hasRelations()) {
        std::for_each(outline.remarkable().begin(), outline.remarkable().end(), look);
        return;
    }
    for (const QOB::ClassObject object : model.getRootObjects()) {
        look(object);
    }
}

} // namespace velum::arxml
