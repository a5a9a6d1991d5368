#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <velum_arxml/source/export.h>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

struct SourceContent;

/// Where something stands in a file.
struct Origin {
    std::string file;
    Position position;
};

/// An element of a file as it is written. An empty one stands for an element that is not there and
/// has nothing. Valid as long as there are the sources, or a copy of them, that gave it.
class VELUM_ARXML_EXPORT SourceElement {
public:
    SourceElement() = default;

    explicit operator bool() const { return content_ != nullptr; }

    std::string_view name() const;
    bool is(std::string_view name) const { return content_ != nullptr && this->name() == name; }

    /// The text directly in the element, without white space at both ends.
    std::string_view text() const;

    /// The path of the element, or of the nearest one around it that has a name.
    std::string path() const;
    Origin origin() const;

    /// The first child of that name.
    SourceElement child(std::string_view name) const;
    /// All children in the order of the file.
    std::vector<SourceElement> children() const;

private:
    friend class Sources;
    SourceElement(SourceContent const* content, std::uint32_t index)
        : content_(content), index_(index) {}

    SourceContent const* content_ = nullptr;
    std::uint32_t index_ = 0;
};

/// A reference in an element that objects aren't made of.
struct SourceReference {
    std::string_view name; ///< Of the element that is the reference; valid as long as the sources.
    std::string path;      ///< Of the nearest element with a name.
    Origin origin;
    std::optional<std::string> target; ///< The path that it leads to; none if nothing is there.
};

/// The elements that objects were made of, as the files have them: for tools that look at what no
/// object holds. Copies share their content.
class VELUM_ARXML_EXPORT Sources {
public:
    /// Of objects that came from no file.
    Sources() = default;
    explicit Sources(std::shared_ptr<SourceContent const> content) : content_(std::move(content)) {}

    /// The element that has the path, the first one if there are several; empty if there is none.
    SourceElement elementAt(std::string_view path) const;

    /// All elements of these names, in the order of the files.
    std::vector<SourceElement> elementsNamed(std::initializer_list<std::string_view> names) const;

    /// The references of these names in elements that objects aren't made of, in the order of the
    /// files.
    std::vector<SourceReference>
    referencesNamed(std::initializer_list<std::string_view> names) const;

    /// The path that a reference leads to; none if nothing is there.
    std::optional<std::string> targetOf(SourceElement reference) const;

private:
    std::shared_ptr<SourceContent const> content_;
};

} // namespace velum::arxml
