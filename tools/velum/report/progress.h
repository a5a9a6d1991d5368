#pragma once

#include <chrono>
#include <cstdint>

namespace velum::report {

/// Tells a person at a terminal how far a long import is, on the standard error. Silent for the
/// first second, and always where that is no terminal.
class Progress {
public:
    /// `total` is the size of all files in bytes, 0 if it is unknown.
    explicit Progress(std::uint64_t total);
    /// Wipes the line.
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// So many bytes were read so far.
    void show(std::uint64_t done);

private:
    using Clock = std::chrono::steady_clock;

    void print();

    std::uint64_t total_;
    std::uint64_t done_ = 0;
    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point next_; // when the line is due again
};

} // namespace velum::report
