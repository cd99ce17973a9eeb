#include <gtest/gtest.h>

#include "foundation/foundation.h"

TEST(Strings, NumericAndIntegerTestsAndConversions) {
    for (const char* text : {"12", "-3", "1.5", "-", ".", "-.", "5.", "007"})
        EXPECT_TRUE(slStringIsNumeric(text)) << text;
    for (const char* text : {"", "1e3", "+1", "1.2.3", "1-", "12a", " 1", "--1"})
        EXPECT_FALSE(slStringIsNumeric(text)) << text;
    EXPECT_FALSE(slStringIsNumeric(static_cast<const char*>(nullptr)));

    for (const char* text : {"12", "-3", "-"}) EXPECT_TRUE(slStringIsInteger(text)) << text;
    for (const char* text : {"", "1.0", "12.5", "+4", "4-"}) EXPECT_FALSE(slStringIsInteger(text)) << text;
    EXPECT_EQ(std::tuple(slStringToInt("42"), slStringToInt("-"), slStringToInt("12.5")),
              std::tuple(42, 0, 0));
    EXPECT_FLOAT_EQ(slStringToFloat("12.5"), 12.5f);
    EXPECT_FLOAT_EQ(slStringToFloat("-"), 0.0f);
    EXPECT_FLOAT_EQ(slStringToFloat("."), 0.0f);
    EXPECT_FLOAT_EQ(slStringToFloat("1e3"), 0.0f);
    EXPECT_EQ(std::tuple(slStringToBool("tRuE"), slStringToBool("1"), slStringToBool("FALSE"),
                         slStringIsBoolean("False"), slStringIsBoolean("yes")),
              std::tuple(true, false, false, true, false));
}

TEST(Strings, CaseChangesTouchOnlyAsciiLettersAndSeparateArgsAppendsPiecesAtEverySeparator) {
    std::string text = "abc-XYZ_9\xe9";
    slStringUpper(text);
    EXPECT_EQ(text, "ABC-XYZ_9\xe9");
    char lower[] = "MiXeD 1";
    slStringLower(lower);
    EXPECT_STREQ(lower, "mixed 1");
    slStringUpper(static_cast<char*>(nullptr));
    std::vector<std::string> args{"kept"};
    slSeparateArgs(
        " one\ttwo\r\nthree\x1b"
        "four\x08 five=six ",
        args);
    EXPECT_EQ(args, (std::vector<std::string>{"kept", "one", "two", "three", "four", "five=six"}));
    slSeparateArgs("", args);
    slSeparateArgs(static_cast<const char*>(nullptr), args);
    EXPECT_EQ(args.size(), 6u);
}
