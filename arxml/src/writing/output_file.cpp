#include "writing/output_file.h"

#include <cerrno>
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
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
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
    const int descriptor = std::exchange(descriptor_, -1);
    if (::close(descriptor) != 0) {
        fail("written");
    }
    std::error_code fault;
    fs::rename(temporary_, target_, fault);
    if (fault) {
        errno = fault.value();
        fail("replaced");
    }
    temporary_.clear();
}

void OutputFile::fail(char const* action) const {
    const std::string cause = std::strerror(errno);
    throw OutputError(target_.string() + ": The file cannot be " + action + " (" + cause + ").");
}

} // namespace velum::arxml
