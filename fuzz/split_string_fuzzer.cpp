#include "qob/qob/exception.h"
#include "qob/qob/serializer/datatypestringrepresenter.h"
#include "qob/qob/string.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using QOB::Serializer::DatatypeStringRepresenter;

// A text is refused by a QOB::Exception, or its parts combine to the very same text; the short way
// for plain pairs gives the same parts.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const narrow(reinterpret_cast<char const*>(data), size);
    DatatypeStringRepresenter const representer;
    std::string_view first;
    std::string_view second;
    bool const isPlainPair = DatatypeStringRepresenter::splitPlainPair(narrow, first, second);
    try {
        std::wstring const text = QOB::String(narrow);
        std::vector<std::wstring> const parts = representer.splitString(text);
        if (representer.combineStrings(parts) != text) {
            std::abort();
        }
        if (isPlainPair && (parts.size() != 2 || std::string(QOB::String(parts[0])) != first ||
                            std::string(QOB::String(parts[1])) != second ||
                            DatatypeStringRepresenter::combinePlainPair(first, second) != narrow)) {
            std::abort();
        }
    } catch (QOB::Exception const&) {
        if (isPlainPair) {
            std::abort();
        }
    }
    return 0;
}
