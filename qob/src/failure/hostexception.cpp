#include "qob/qob/hostexception.h"

#include <cstdio>
#include <utility>

namespace host {

UserException::UserException(std::string message) : message_(std::move(message)) {
}
UserException::UserException(UserException const&) = default;
UserException& UserException::operator=(UserException const&) = default;
UserException::~UserException() noexcept = default;

char const* UserException::what() const noexcept {
    return message_.c_str();
}

boost::exception_detail::clone_base const* UserException::clone() const {
    return new UserException(*this);
}

void UserException::rethrow() const {
    throw UserException(*this);
}

int formatBounded(char* buffer, std::size_t limit, char const* format, std::va_list arguments) {
    int const written = std::vsnprintf(buffer, limit, format, arguments);
    if (written < 0) {
        return -1;
    }
    return static_cast<std::size_t>(written) < limit ? written : static_cast<int>(limit) - 1;
}

} // namespace host
