#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <velum_arxml/writing/output_file.h>
#include <velum_arxml/writing/write_report.h>

namespace velum::arxml {

namespace fs = std::filesystem;

namespace {

/// What a new file may be used for if nothing else is asked for.
mode_t newMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return mode_t(0666) & ~mask;
}

} // namespace

OutputFile::OutputFile(fs::path target) : target_(std::move(target)) {
    std::error_code none;
    fs::file_status const known = fs::status(target_, none);
    if (fs::exists(known) && !fs::is_regular_file(known)) {
        descriptor_ = ::open(target_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        if (descriptor_ < 0) {
            fail();
        }
        return;
    }
    if (fs::is_symlink(target_, none)) {
        target_ = fs::weakly_canonical(target_, none); // the link stays
    }
    openTemporary();
}

void OutputFile::openTemporary() {
    std::string name = target_.string() + ".XXXXXX";
    descriptor_ = mkstemp(name.data());
    if (descriptor_ < 0) {
        fail();
    }
    temporary_ = name;
    struct stat known = {};
    const bool isThere = stat(target_.c_str(), &known) == 0;
    // Refused only by file systems that know no modes.
    static_cast<void>(fchmod(descriptor_, isThere ? known.st_mode & mode_t(07777) : newMode()));
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    for (fs::path const* const path : {&temporary_, &old_}) {
        if (!path->empty()) {
            ::unlink(path->c_str());
        }
    }
}

void OutputFile::write(std::string_view piece) {
    constexpr std::size_t enough = std::size_t(1) << 16U;
    if (buffer_.size() + piece.size() < enough) {
        buffer_ += piece;
        return;
    }
    writeOut(buffer_);
    buffer_.clear();
    writeOut(piece);
}

void OutputFile::writeOut(std::string_view piece) const {
    while (!piece.empty()) {
        const ssize_t taken = ::write(descriptor_, piece.data(), piece.size());
        if (taken < 0 && errno != EINTR) {
            fail();
        }
        piece.remove_prefix(taken < 0 ? 0 : static_cast<std::size_t>(taken));
    }
}

void OutputFile::close() {
    if (descriptor_ < 0) {
        return;
    }
    writeOut(std::exchange(buffer_, {}));
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        fail();
    }
}

void OutputFile::commit() {
    close();
    takeName();
}

void OutputFile::takeName() {
    if (temporary_.empty()) {
        return;
    }
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
        fail();
    }
    temporary_.clear();
    hasName_ = true;
}

/// Gives what has the name a second one. Where a file can't have two names, it is copied.
void OutputFile::keepOld() {
    std::error_code fault;
    if (temporary_.empty() || !fs::exists(target_, fault)) {
        return;
    }
    const fs::path old = temporary_.string() + ".old";
    if (::link(target_.c_str(), old.c_str()) != 0) {
        fs::copy_file(target_, old, fault);
        if (fault) {
            errno = fault.value();
            fail();
        }
    }
    old_ = old;
}

void OutputFile::putBack() noexcept {
    if (!hasName_) {
        return;
    }
    if (old_.empty()) {
        ::unlink(target_.c_str());
    } else if (::rename(old_.c_str(), target_.c_str()) == 0) {
        old_.clear();
    }
}

void OutputFile::fail() const {
    const std::string cause = std::strerror(errno);
    throw OutputError(target_.string() + ": The file cannot be written (" + cause + ").");
}

OutputFile& OutputFiles::add(fs::path const& target) {
    return *files_.emplace_back(std::make_unique<OutputFile>(target));
}

void OutputFiles::commit() {
    for (auto const& file : files_) {
        file->close();
        file->keepOld();
    }
    try {
        for (auto const& file : files_) {
            file->takeName();
        }
    } catch (OutputError const&) {
        for (auto const& file : files_) {
            file->putBack();
        }
        throw;
    }
}

void makeOutputFolder(fs::path const& folder) {
    std::error_code fault;
    fs::create_directories(folder, fault);
    if (fault) {
        throw OutputError(folder.string() + ": The folder cannot be made (" + fault.message() +
                          ").");
    }
}

} // namespace velum::arxml
