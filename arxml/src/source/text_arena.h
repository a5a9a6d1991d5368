#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// Keeps texts in few large blocks; what it hands out stays where it is.
class TextArena {
public:
    /// A copy of the text that lives as long as the arena.
    std::string_view keep(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        if (text.size() > left_) {
            left_ = std::max(blockSize, text.size());
            blocks_.push_back(std::make_unique_for_overwrite<char[]>(left_));
            next_ = blocks_.back().get();
        }
        char* const kept = next_;
        std::memcpy(kept, text.data(), text.size());
        next_ += text.size();
        left_ -= text.size();
        return {kept, text.size()};
    }

private:
    static constexpr std::size_t blockSize = std::size_t(256) * 1024;

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
};

} // namespace velum::arxml
