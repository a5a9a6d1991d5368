#include "report/progress.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace velum::report {

namespace {

constexpr auto silence = std::chrono::seconds(1);
constexpr auto interval = std::chrono::milliseconds(200);
constexpr std::uint64_t megabyte = 1'000'000;

} // namespace

Progress::Progress(std::uint64_t total)
    : total_(total), isTerminal_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + silence) {
}

Progress::~Progress() {
    if (isShown_) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
    }
}

void Progress::show(std::uint64_t done) {
    done_ = done;
    if (isTerminal_ && Clock::now() >= next_) {
        print();
    }
}

void Progress::print() {
    std::string line = "\r\033[Kvelum: " + std::to_string(done_ / megabyte);
    if (total_ > 0) {
        line += " of " + std::to_string(total_ / megabyte);
    }
    line += total_ == 0 || done_ < total_ ? " MB read" : " MB read, making objects";
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    isShown_ = true;
    next_ = Clock::now() + interval;
}

} // namespace velum::report
