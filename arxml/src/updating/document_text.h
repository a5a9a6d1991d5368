#pragma once

#include "updating/large_buffer.h"
#include "updating/source_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// The text of a file, which may take much of the memory.
class DocumentText {
public:
    /// Raises InputError if the file can't be read.
    explicit DocumentText(std::string const& file);

    std::string_view view() const { return {bytes_.data(), bytes_.size()}; }

    /// Why it can't be changed in place; empty if it can.
    std::string obstacle() const;

    /// Makes all changes as `applied` does, in place. Nothing has changed if it raises.
    void apply(std::vector<TextEdit> edits);

private:
    LargeBuffer bytes_;
};

} // namespace velum::arxml
