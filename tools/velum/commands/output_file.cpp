#include "commands/output_file.h"

#include "report/printers.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace velum::commands {

namespace fs = std::filesystem;

namespace {

/// What a new file may be used for if nothing else is asked for.
mode_t modeOfNewFiles() {
    mode_t const mask = umask(0);
    umask(mask);
    return mode_t(0666) & ~mask;
}

} // namespace

OutputFile::OutputFile(fs::path target) : target_(std::move(target)) {
    std::error_code none;
    fs::file_status const known = fs::status(target_, none);
    if (fs::exists(known) && !fs::is_regular_file(known)) {
        open(target_);
        return;
    }
    if (fs::is_symlink(target_, none)) {
        target_ = fs::weakly_canonical(target_, none); // the link stays
    }
    makeTemporary(known);
}

OutputFile::~OutputFile() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

bool OutputFile::write(std::string_view piece) {
    if (isGood_) {
        out_ << piece;
    }
    return check(!out_.fail());
}

bool OutputFile::close() {
    if (isGood_ && out_.is_open()) {
        out_.close();
    }
    return check(!out_.fail());
}

bool OutputFile::commit() {
    if (close() && !temporary_.empty() &&
        check(::rename(temporary_.c_str(), target_.c_str()) == 0)) {
        temporary_.clear();
    }
    return isGood_;
}

void OutputFile::open(fs::path const& path) {
    out_.open(path, std::ios::binary | std::ios::trunc);
    check(out_.is_open());
}

void OutputFile::makeTemporary(fs::file_status const& known) {
    std::string name = target_.string() + ".XXXXXX";
    int const descriptor = mkstemp(name.data());
    if (!check(descriptor >= 0)) {
        return;
    }
    temporary_ = name;
    open(temporary_);
    // Refused only by file systems that know no modes.
    static_cast<void>(
        fchmod(descriptor,
               fs::exists(known) ? static_cast<mode_t>(known.permissions()) : modeOfNewFiles()));
    ::close(descriptor);
}

/// Tells the first failure.
bool OutputFile::check(bool isDone) {
    if (isGood_ && !isDone) {
        isGood_ = false;
        std::cerr << "velum: " << report::inOneLine(target_.string())
                  << ": The file cannot be written (" << std::strerror(errno) << ").\n";
    }
    return isGood_;
}

} // namespace velum::commands
