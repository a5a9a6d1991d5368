#pragma once

#include "source/utf16.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

struct gzFile_s;

namespace velum::arxml {

/// The bytes of one file as the parser needs them: without the compression of a gzip file, and in
/// UTF-8 where the file is in UTF-16.
class ByteSource {
public:
    /// Why there are no more bytes. A fault of what the bytes say has a place, that of the byte
    /// behind those handed out so far; one of the file as a whole has none.
    struct Fault {
        std::string cause;
        bool hasPlace = false;
    };

    /// Raises `InputError` if the file can't be opened.
    explicit ByteSource(std::string const& file);
    ~ByteSource();
    ByteSource(ByteSource const&) = delete;
    ByteSource& operator=(ByteSource const&) = delete;

    /// Reads up to `size` bytes; 0 at the end, and after a fault.
    std::size_t read(char* buffer, std::size_t size);

    std::optional<Fault> const& fault() const { return fault_; }
    bool isAtEnd() const { return isAtEnd_; }
    bool isUtf16() const { return decoder_.has_value(); }

    /// How many bytes of the file itself were read since the last call.
    std::uint64_t takeProgress();

private:
    struct Close {
        void operator()(gzFile_s* file) const;
    };

    std::size_t readRaw(char* buffer, std::size_t size);
    void begin();
    bool decode(char const* bytes, std::size_t size);

    std::unique_ptr<gzFile_s, Close> file_;
    std::optional<Fault> fault_;
    std::optional<Utf16Decoder> decoder_;
    std::string ready_; // read and not yet handed out
    std::size_t taken_ = 0;
    std::uint64_t reported_ = 0;
    std::uint64_t delivered_ = 0;
    bool isAtEnd_ = false;
};

} // namespace velum::arxml
