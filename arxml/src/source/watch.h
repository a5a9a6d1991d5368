#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <stop_token>
#include <utility>

namespace velum::arxml {

/// Raised where the caller's wish to stop is met; stays within the library.
class Stopped : public std::exception {};

/// Tells the caller how far a reading is, and looks whether it is to stop.
class Watch {
public:
    Watch(std::function<void(std::uint64_t)> onProgress, std::stop_token stop)
        : onProgress_(std::move(onProgress)), stop_(std::move(stop)) {}

    /// So many more bytes were read.
    void advance(std::uint64_t bytes) {
        check();
        bytes_ += bytes;
        if (onProgress_) {
            onProgress_(bytes_);
        }
    }

    /// Raises `Stopped` if the reading is to stop.
    void check() const {
        if (stop_.stop_requested()) {
            throw Stopped();
        }
    }

private:
    std::function<void(std::uint64_t)> onProgress_;
    std::stop_token stop_;
    std::uint64_t bytes_ = 0;
};

} // namespace velum::arxml
