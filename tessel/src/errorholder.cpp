#include "tessel/errorholder.h"

#include <utility>

namespace Tessel {

void ErrorHolder::setError(std::string text) {
    text_ = std::move(text);
}

std::string const& ErrorHolder::getError() const noexcept {
    static const std::string none;
    return text_.has_value() ? *text_ : none;
}

} // namespace Tessel
