#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// Takes the next piece of a document; raises if it can't.
using ByteSink = std::function<void(std::string_view)>;

/// Writes XML, indented, piece by piece. Whatever the texts, the document is well-formed: what XML
/// can't hold becomes U+FFFD, and `takeMended` reports it.
class XmlWriter {
public:
    explicit XmlWriter(ByteSink sink);

    void declaration(std::string_view schema);
    void open(std::string_view name) { open(name, {}, {}); }
    void open(std::string_view name, std::string_view attribute, std::string_view value);
    /// Writes nothing before something is written inside.
    void openIfUsed(std::string_view name) { pending_.push_back(name); }
    void close(std::string_view name);
    void empty(std::string_view name);
    void leaf(std::string_view name, std::string_view text) { leaf(name, {}, {}, text); }
    void leaf(std::string_view name,
              std::string_view attribute,
              std::string_view value,
              std::string_view text);

    struct Attribute {
        std::string_view name;
        std::string_view value;
    };
    void
    leaf(std::string_view name, std::initializer_list<Attribute> attributes, std::string_view text);

    /// An element with text and elements in it, in one line.
    void beginMixed(std::string_view name);
    void text(std::string_view text) { escape(text); }
    void inlineLeaf(std::string_view name,
                    std::string_view attribute,
                    std::string_view value,
                    std::string_view text);
    void endMixed(std::string_view name);

    /// Hands what is buffered to the sink, if it is enough to be worth it.
    void flushIfFull();
    void flush();

    /// Whether a text since the last call had characters that XML can't hold.
    bool takeMended() {
        const bool was = isMended_;
        isMended_ = false;
        return was;
    }
    std::uint64_t written() const { return written_ + buffer_.size(); }
    void setDepth(unsigned depth) { depth_ = depth; }

private:
    void indent();
    void openPending();
    void startTag(std::string_view name, std::string_view attribute, std::string_view value);
    void endTag(std::string_view name);
    void escape(std::string_view text);
    std::size_t escapeSpecial(std::string_view text, std::size_t at);

    ByteSink sink_;
    std::string buffer_;
    std::vector<std::string_view> pending_;
    std::uint64_t written_ = 0;
    unsigned depth_ = 0;
    bool isMended_ = false;
};

/// An element that is open as long as this object lives.
class OpenElement {
public:
    enum class When { always, ifUsed };

    OpenElement(XmlWriter& xml, std::string_view name, When when = When::always)
        : xml_(xml), name_(name) {
        if (when == When::always) {
            xml.open(name);
        } else {
            xml.openIfUsed(name);
        }
    }
    ~OpenElement() { xml_.close(name_); }
    OpenElement(OpenElement const&) = delete;
    OpenElement& operator=(OpenElement const&) = delete;
    OpenElement(OpenElement&&) = delete;
    OpenElement& operator=(OpenElement&&) = delete;

private:
    XmlWriter& xml_;
    std::string_view name_;
};

} // namespace velum::arxml
