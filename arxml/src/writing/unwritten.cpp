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
    explicit Unwritten(QOB::ClassObject const& object) : object_(object) {}

    std::vector<std::string> const& things() const { return things_; }

    void find() {
        if (object_.hasAppliedStereotypeInstances()) {
            add("stereotypes");
        }
        if (object_.hasExternalToolInfos()) {
            findNotes();
        }
        const foundation::Element element(object_);
        if (element.isValid() && !element.getOwnedComments().empty()) {
            add("comments");
        }
        if (const foundation::NamedElement named(object_); named.isValid()) {
            if (named.getVisibility() != foundation::VisibilityKind::PublicVisibility) {
                add("visibility");
            }
            if (!named.getClientDependencies().empty()) {
                add("dependencies");
            }
        }
        if (const foundation::Namespace space(object_); space.isValid()) {
            if (!space.getElementImports().empty() || !space.getNamespaceImports().empty()) {
                add("imports");
            }
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

    void add(std::string what) { things_.push_back(std::move(what)); }

    QOB::ClassObject const& object_;
    std::vector<std::string> things_;
};

/// The element that an object is in; null if it is in none.
Outline::Entry const* entryAround(Outline const& outline, QOB::ClassObject const& object) {
    QOB::ClassObject outer = object;
    while (outline.find(outer) == nullptr && outer.hasContainerQOB()) {
        outer = outer.getContainerQOB();
    }
    return outline.find(outer);
}

} // namespace

void reportUnwritten(QOB::Model const& model,
                     Outline const& outline,
                     std::function<bool(Outline::Entry const&)> const& isWanted,
                     std::vector<WriteFinding>& findings) {
    for (const QOB::ClassObject object : model.getRootObjects()) {
        Unwritten unwritten(object);
        unwritten.find();
        if (unwritten.things().empty()) {
            continue;
        }
        Outline::Entry const* const entry = entryAround(outline, object);
        if (entry == nullptr || (isWanted && !isWanted(*entry))) {
            continue;
        }
        const std::string name = object.hasContainerQOB() ? nameOf(object) : std::string();
        for (std::string const& thing : unwritten.things()) {
            findings.push_back({Remark::noPlace,
                                entry->path,
                                "The format has no place for the " + thing +
                                    (name.empty() ? "." : " of \"" + name + "\".")});
        }
    }
}

} // namespace velum::arxml
