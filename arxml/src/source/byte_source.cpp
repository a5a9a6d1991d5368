#include "source/byte_source.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <system_error>
#include <unistd.h>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>
#include <zlib.h>

namespace velum::arxml {

namespace {

constexpr unsigned portion = 64 * 1024;

/// What the system says about `code`.
std::string systemFault(std::string const& what, int code) {
    return what + " (" + std::generic_category().message(code) + ").";
}

} // namespace

void ByteSource::Close::operator()(gzFile_s* file) const {
    gzclose_r(file);
}

ByteSource::ByteSource(std::string const& file) {
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored)) {
        throw InputError(file, "This is a directory, not a file.");
    }
    const int descriptor =
        file == standardInput ? dup(STDIN_FILENO) : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw InputError(file, systemFault("The file cannot be opened", errno));
    }
    file_.reset(gzdopen(descriptor, "rb"));
    if (!file_) {
        close(descriptor);
        throw std::bad_alloc();
    }
    gzbuffer(file_.get(), portion);
    begin();
}

ByteSource::~ByteSource() = default;

/// A file that isn't compressed comes through as it is.
std::size_t ByteSource::readRaw(char* buffer, std::size_t size) {
    if (fault_ || isAtEnd_) {
        return 0;
    }
    errno = 0;
    const int count =
        gzread(file_.get(), buffer, static_cast<unsigned>(std::min<std::size_t>(size, 1U << 30U)));
    if (count > 0) {
        return static_cast<std::size_t>(count);
    }
    int code = Z_OK;
    std::string said = gzerror(file_.get(), &code);
    said.erase(0, said.find(": ") == std::string::npos ? 0 : said.find(": ") + 2); // its own name
    if (code == Z_MEM_ERROR) {
        throw std::bad_alloc();
    }
    if (code == Z_BUF_ERROR) {
        fault_ = Fault{"The compressed data end too early; the file is cut off."};
    } else if (code == Z_ERRNO) {
        fault_ = Fault{systemFault("The file cannot be read", errno)};
    } else if (count < 0) {
        fault_ = Fault{"The compressed data are damaged (" + said + ")."};
    } else {
        isAtEnd_ = true;
    }
    return 0;
}

/// Looks at the first bytes: a file in UTF-16 need not say so.
void ByteSource::begin() {
    std::array<char, 4> start{};
    std::size_t size = 0;
    while (size < start.size()) {
        const std::size_t count = readRaw(start.data() + size, start.size() - size);
        if (count == 0) {
            break;
        }
        size += count;
    }
    if (const auto order = Utf16Decoder::detect({start.data(), size})) {
        decoder_.emplace(*order);
        decode(start.data(), size);
    } else {
        ready_.assign(start.data(), size);
    }
}

bool ByteSource::decode(char const* bytes, std::size_t size) {
    if (decoder_->decode({bytes, size}, ready_)) {
        return true;
    }
    fault_ = Fault{"The text is no valid UTF-16 from here on.", true};
    return false;
}

std::size_t ByteSource::read(char* buffer, std::size_t size) {
    while (decoder_ && taken_ == ready_.size() && !fault_ && !isAtEnd_) {
        ready_.clear();
        taken_ = 0;
        std::array<char, portion> raw{};
        const std::size_t count = readRaw(raw.data(), raw.size());
        if (count > 0) {
            decode(raw.data(), count);
        } else if (isAtEnd_ && !decoder_->isComplete()) {
            fault_ = Fault{"The file ends within a character of UTF-16.", true};
        }
    }
    std::size_t count = std::min(size, ready_.size() - taken_);
    if (count > 0) {
        std::memcpy(buffer, ready_.data() + taken_, count);
        taken_ += count;
    } else if (!decoder_) {
        count = readRaw(buffer, size);
    }
    delivered_ += count;
    return count;
}

std::uint64_t ByteSource::takeProgress() {
    const z_off_t offset = gzoffset(file_.get()); // -1 for what has no offset, such as a pipe
    const std::uint64_t position = offset < 0 ? delivered_ : static_cast<std::uint64_t>(offset);
    const std::uint64_t progress = position > reported_ ? position - reported_ : 0;
    reported_ += progress;
    return progress;
}

} // namespace velum::arxml
