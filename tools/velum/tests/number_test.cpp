#include "dictionary/number.h"

#include <gtest/gtest.h>

namespace velum::dictionary {

using report::Reason;

TEST(WholeNumbers, AreReadInEveryBaseOfTheSchema) {
    const std::pair<std::string_view, std::int32_t> rows[] = {{"0", 0},
                                                              {"32", 32},
                                                              {" 8\n", 8},
                                                              {"+7", 7},
                                                              {"-5", -5},
                                                              {"0x1F", 31},
                                                              {"0B101", 5},
                                                              {"017", 15},
                                                              {"2147483647", 2147483647}};
    for (const auto& [text, value] : rows) {
        EXPECT_EQ(readWholeNumber(text).value, value) << text;
        EXPECT_FALSE(readWholeNumber(text).fault.has_value()) << text;
    }
}

TEST(WholeNumbers, OtherTextsAreRefusedWithTheReason) {
    for (const std::string_view text :
         {"", " ", "eight", "8 bit", "1.5", "0x", "08", "0b2", "--1"}) {
        EXPECT_EQ(readWholeNumber(text).fault, Reason::badNumber) << text;
    }
    for (const std::string_view text :
         {"2147483648", "-2147483648", "99999999999999999999", "0xFFFFFFFFF"}) {
        EXPECT_EQ(readWholeNumber(text).fault, Reason::outOfRange) << text;
    }
}

} // namespace velum::dictionary
