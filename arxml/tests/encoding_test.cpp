#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <velum_arxml/notation/encoding.h>

namespace velum::arxml {

namespace {

using Values = Encoding::Values;

struct Row {
    std::optional<std::string_view> code;
    std::optional<std::string_view> declaration;
    Values values;
    bool isSigned;
    bool isExact;
    bool isInferred;
};

TEST(Encodings, TellTheValuesAndTheSign) {
    constexpr std::nullopt_t none = std::nullopt;
    const Row rows[] = {
        {"NONE", none, Values::integer, false, true, false},
        {"NONE", "signed char", Values::integer, false, true, false}, // the code is the truth
        {"2C", none, Values::integer, true, true, false},
        {"1C", none, Values::integer, true, false, false},
        {"SM", none, Values::integer, true, false, false},
        {"UTF-8", none, Values::integer, false, false, false},
        {"ISO-8859-15", none, Values::integer, false, false, false},
        {"IEEE754", none, Values::floatingPoint, false, true, false},
        {"BOOLEAN", none, Values::boolean, false, true, false},
        {"VOID", none, Values::nothing, false, true, false},
        {"BCD-P", none, Values::other, false, true, false},
        {"DSP-FRACTIONAL", none, Values::other, false, true, false},
        {"2c", none, Values::other, false, true, false},
        {none, none, Values::integer, false, true, true},
        {"", none, Values::integer, false, true, true},
        {"uint8", none, Values::integer, false, true, true},
        {"sint32", none, Values::integer, true, true, true},
        {"uint128", none, Values::other, false, true, false},
        {"uint16", "unsigned short", Values::integer, false, true, true},
        {"uint16", "short", Values::integer, true, true, true},
        {"uint16", "long unsigned int", Values::integer, false, true, true},
        {"sint8", "char", Values::integer, true, true, true}, // plain "char" says nothing
    };
    for (Row const& row : rows) {
        const Encoding encoding = readEncoding(row.code, row.declaration);
        SCOPED_TRACE(row.code.value_or("(none)"));
        EXPECT_EQ(encoding.values, row.values);
        EXPECT_EQ(encoding.isSigned, row.isSigned);
        EXPECT_EQ(encoding.isExact, row.isExact);
        EXPECT_EQ(encoding.isInferred, row.isInferred);
    }
}

} // namespace

} // namespace velum::arxml
