#pragma once

#include "reading/documents.h"

#include <string>
#include <string_view>
#include <vector>

namespace velum::check {

/// Where something stands in a file.
struct Origin {
    std::string file;
    arxml::Position position;
};

/// The files that objects were made of, by the paths of the objects.
class Sources {
public:
    /// Of objects that came from no file.
    Sources() = default;

    /// `files` are the names of the files by their ids; the documents must outlive this.
    Sources(arxml::Documents const& documents, std::vector<std::string> files);

    /// The element that has the path, the first one if there are several; empty if none was kept.
    arxml::Element elementAt(std::string_view path) const;

    /// Where the element stands.
    Origin originOf(arxml::Element element) const;
    Origin originOf(arxml::FileId file, arxml::Position position) const;

    /// Null if there are none.
    arxml::Documents const* documents() const { return documents_; }

private:
    arxml::Documents const* documents_ = nullptr;
    std::vector<std::string> files_;
    std::vector<arxml::ElementStore::Index> byPath_;
};

} // namespace velum::check
