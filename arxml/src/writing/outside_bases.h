#pragma once

#include "writing/outline.h"
#include "writing/xml_writer.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace velum::arxml {

/// The reference bases of a package: one for each package outside of the file that references in it
/// lead to. They are asked for twice: first to find which there are, then to write references.
class OutsideBases {
public:
    using IsInFile = std::function<bool(Outline::Entry const&)>;
    explicit OutsideBases(IsInFile isInFile) : isInFile_(std::move(isInFile)) {}

    bool isInFile(Outline::Entry const& entry) const { return isInFile_(entry); }

    /// The label of the base for a target outside of the file.
    std::string const& labelFor(Outline::Entry const& target);

    void clear() { labels_.clear(); }
    void write(XmlWriter& xml) const;

private:
    IsInFile isInFile_;
    std::map<std::string, std::string, std::less<>> labels_; ///< By package.
};

} // namespace velum::arxml
