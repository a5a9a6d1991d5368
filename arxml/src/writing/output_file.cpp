#include "writing/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
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
    if (fs::is_symlink(target_, none)) {
        target_ = fs::weakly_canonical(target_, none); // the link stays
    }
    std::string name = target_.string() + ".XXXXXX";
    descriptor_ = mkstemp(name.data());
    if (descriptor_ < 0) {
        fail("made");
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
    while (!piece.empty()) {
        const ssize_t taken = ::write(descriptor_, piece.data(), piece.size());
        if (taken < 0 && errno != EINTR) {
            fail("written");
        }
        piece.remove_prefix(taken < 0 ? 0 : static_cast<std::size_t>(taken));
    }
}

void OutputFile::commit() {
    close();
    takeName();
}

void OutputFile::close() {
    const int descriptor = std::exchange(descriptor_, -1);
    if (descriptor >= 0 && ::close(descriptor) != 0) {
        fail("written");
    }
}

void OutputFile::takeName() {
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
        fail("replaced");
    }
    temporary_.clear();
    hasName_ = true;
}

/// Gives what has the name a second one. Where a file can't have two names, it is copied.
void OutputFile::keepOld() {
    std::error_code fault;
    if (!fs::exists(target_, fault)) {
        return;
    }
    const fs::path old = temporary_.string() + ".old";
    if (::link(target_.c_str(), old.c_str()) != 0) {
        fs::copy_file(target_, old, fault);
        if (fault) {
            errno = fault.value();
            fail("replaced");
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

void OutputFile::fail(char const* action) const {
    const std::string cause = std::strerror(errno);
    throw OutputError(target_.string() + ": The file cannot be " + action + " (" + cause + ").");
}

OutputFile& OutputFiles::add(fs::path const& target) {
    if (!files_.empty()) {
        files_.back()->close();
    }
    files_.push_back(std::make_unique<OutputFile>(target));
    return *files_.back();
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

} // namespace velum::arxml
