#include "commands/output_file.h"

#include "report/printers.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <utility>

namespace velum::commands {

OutputFile::OutputFile(std::filesystem::path path)
    : path_(std::move(path)), out_(path_, std::ios::binary | std::ios::trunc) {
    check();
}

bool OutputFile::write(std::string_view piece) {
    out_ << piece;
    return check();
}

bool OutputFile::close() {
    if (isGood_) {
        out_.close();
    }
    return check();
}

bool OutputFile::check() {
    if (isGood_ && !out_) {
        isGood_ = false;
        std::cerr << "velum: " << report::inOneLine(path_.string())
                  << ": The file cannot be written (" << std::strerror(errno) << ").\n";
    }
    return isGood_;
}

} // namespace velum::commands
