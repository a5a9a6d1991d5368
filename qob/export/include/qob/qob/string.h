#pragma once

#include "qob/qob/export.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace QOB {

class Object;
class ImmutableObject;
class ValueObject;
class ImmutableValueObject;

/// A text, or the invalid value. Copies share one counted block, so a copy allocates nothing. The
/// bytes are kept as given and read as UTF-8 when a wide form is requested.
class QOB_EXPORT String {
public:
    /// The invalid value; not the same as an empty text.
    String() noexcept = default;
    /// The bytes up to the closing zero. A null pointer gives the invalid value.
    String(char const* text);
    String(std::string const& text);
    /// Raises QOB::Exception if the text is not well-formed.
    String(std::wstring const& text);

    String(String const& other) noexcept : block_(other.block_) { retain(); }
    String(String&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    String& operator=(String const& other) noexcept {
        String(other).swap(*this);
        return *this;
    }
    String& operator=(String&& other) noexcept {
        String(std::move(other)).swap(*this);
        return *this;
    }
    ~String() { release(); }

    /// Unboxing. Raises QOB::Exception for a null handle and Tessel::bad_any_cast for another type.
    explicit String(Object const& object);
    explicit String(ImmutableObject const& object);
    explicit String(ValueObject const& object);
    explicit String(ImmutableValueObject const& object);
    /// Boxes a copy.
    operator Object() const;

    bool isValid() const noexcept { return block_ != nullptr; }

    /// The bytes; empty for the invalid value. Valid as long as this or a copy lives.
    std::string_view view() const noexcept;
    operator std::string() const { return std::string(view()); }
    /// Raises QOB::Exception if the bytes are not well-formed UTF-8.
    operator std::wstring() const;

    static std::string getTypeName();

    friend bool operator==(String const& a, String const& b) noexcept {
        return a.block_ == b.block_ || (a.isValid() == b.isValid() && a.view() == b.view());
    }
    /// By bytes; the invalid value stands before every text.
    friend std::strong_ordering operator<=>(String const& a, String const& b) noexcept {
        if (auto const order = a.isValid() <=> b.isValid(); order != 0) {
            return order;
        }
        return a.view() <=> b.view();
    }

    void swap(String& other) noexcept { std::swap(block_, other.block_); }

private:
    struct Block {
        int count;
        std::uint32_t size;
    };

    void retain() const noexcept {
        if (block_ != nullptr) {
            ++block_->count;
        }
    }
    void release() noexcept {
        if (block_ != nullptr && --block_->count == 0) {
            destroy(block_);
        }
    }
    static Block* allocate(std::string_view text);
    static void destroy(Block* block) noexcept;

    Block* block_ = nullptr;
};

QOB_EXPORT std::ostream& operator<<(std::ostream& out, String const& text);
QOB_EXPORT unsigned hash_value(String const& text) noexcept;

} // namespace QOB

template <>
struct std::hash<QOB::String> {
    std::size_t operator()(QOB::String const& text) const noexcept {
        return std::hash<std::string_view>()(text.view());
    }
};
