#pragma once

#include "updating/source_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// Carries the difference between two forms of an element, as a writer would write it before and
/// after a change, over to the same element as a file has it, which may be written otherwise.
class ElementEditor {
public:
    /// What is to do with a change of an element that the file doesn't have.
    enum class Absent { isReported, isInserted };

    explicit ElementEditor(std::string_view file, Absent absent = Absent::isReported);

    void change(std::string_view before, std::string_view after, SourceNode const& source);
    void remove(SourceNode const& source);
    /// A new element as the last one in a list of elements.
    void append(SourceNode const& list, std::string_view text);

    std::vector<TextEdit> const& edits() const { return edits_; }
    /// What of the difference has no counterpart in the file.
    std::vector<std::string> const& missing() const { return missing_; }

private:
    struct Side {
        std::string_view text;
        SourceNode const& node;
    };

    void changeNode(Side const& before, Side const& after, SourceNode const& source);
    void changeChildren(Side const& before, Side const& after, SourceNode const& source);
    SourceNode const*
    counterpartOf(SourceNode const& before, std::string const& key, SourceNode const& source) const;
    void bringTo(Side const& after, SourceNode const& source);
    void changeText(std::string const& before, std::string const& after, SourceNode const& source);
    void changeMixed(Side const& before, Side const& after, SourceNode const& source);
    void changeTag(std::string_view before, std::string_view after, SourceNode const& source);
    static SourceNode const* placeFor(SourceNode const& source,
                                      std::string_view name,
                                      std::vector<SourceNode const*> const& gone,
                                      SourceNode const* behind);
    void insert(SourceNode const& source, SourceNode const* behind, std::string_view text);
    std::string indented(std::string_view text, std::string_view indent) const;
    std::string_view indentAt(std::size_t begin) const;
    std::size_t endWithComment(std::size_t end) const;

    std::string_view file_;
    Absent absent_;
    std::string_view lineEnd_;
    std::vector<TextEdit> edits_;
    std::vector<std::string> missing_;
};

} // namespace velum::arxml
