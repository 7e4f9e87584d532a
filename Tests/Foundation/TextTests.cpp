#include <cmath>
#include <limits>

#include "Platform/Foundation/LocaleServices.h"
#include "Platform/Foundation/StringFormat.h"
#include "Platform/Foundation/StringTable.h"
#include "Platform/Foundation/TextTools.h"

using namespace zornic;
using namespace std::string_literals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string textOf(const StringTable& table, std::string_view key) {
    const auto* text = table.textForKey(key);
    return text ? *text : "(none)";
}

}  // namespace

TEST(StringTableTest, ReadsEntriesCommentsAndEscapes) {
    std::vector<StringTable::Problem> problems;
    const auto table = StringTable::parse(
        "\xEF\xBB\xBF/* Two\n lines */ \"OK\" = \"OK\"; // shown in alerts\r\n"
        "\"quote \\\"1\\\"\"=\"a\\\\b\\n\\tc // no comment\";\r"
        "\"unicode\" = \"\\U00e4 \\uD83D\\ude00 \\UD83D.\"; \"same line\" = \"\";",
        problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(table.count(), 4U);
    EXPECT_EQ(textOf(table, "OK"), "OK");
    EXPECT_EQ(textOf(table, "quote \"1\""), "a\\b\n\tc // no comment");
    EXPECT_EQ(textOf(table, "unicode"), "ä 😀 \uFFFD.");
    EXPECT_EQ(textOf(table, "same line"), "");
}

TEST(StringTableTest, NamesEachBadLineAndReadsTheOthers) {
    std::vector<StringTable::Problem> problems;
    const auto table = StringTable::parse(
        "\"a\" = \"1\"\r\n"       // no semicolon, but readable
        "\"b\" = \"2;\r\n"        // no end
        "\"c\"\r\n"               // no text
        "d = \"4\";\r\n"          // no quotes
        "\"e\" = \"5\\q\\U12\";"  // two unknown escapes
        "\n\"a\" = \"6\xFF\";\n"  // malformed, and the key again
        "\"f\" = \"7\";\n/* no end \"g\" = \"8\";\n",
        problems);
    std::vector<std::size_t> lines;
    for (const auto& problem : problems) lines.push_back(problem.line);
    EXPECT_EQ(lines, (std::vector<std::size_t>{1, 2, 3, 4, 5, 5, 6, 6, 8}));
    EXPECT_EQ(table.count(), 3U);
    EXPECT_EQ(textOf(table, "a"), "6\uFFFD");
    EXPECT_EQ(textOf(table, "e"), "5qU12");
    EXPECT_EQ(textOf(table, "f"), "7");
}

TEST(StringTableTest, AnyBytesMayBeCutAnywhere) {
    const std::string whole =
        "/*x*/ \"k\\U0041\\\"\" = \"v\\UD83D\\UDE00\\\\\xC3\xA4\xF0\x9F\" ; // end\r\n\0\x80"s;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        std::vector<StringTable::Problem> problems;
        const std::vector<char> exact(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const auto table = StringTable::parse({exact.data(), exact.size()}, problems);
        EXPECT_EQ(table.count() == 1, whole.substr(0, length).find("\x9F\"") != std::string::npos) << length;
    }
}

TEST(StringFormatTest, FillsPlaceholdersWithAnyKindOfArgument) {
    const struct {
        std::string format;
        std::vector<FormatArgument> arguments;
        std::string expected;
    } cases[] = {
        {"Part %@ of %@: Chapter %@", {"1"s, std::int64_t{2}}, "Part 1 of 2: Chapter "},
        {"%2$@, %1$@ and %@", {"a"s, "b"s}, "b, a and a"},
        {"%9$@%1000000000000000000000$@.", {"a"s}, "."},
        {"%d:%02ld:%05lld|%4u|",
         {std::int64_t{1}, std::int64_t{2}, std::int64_t{-3}, std::uint64_t{4}},
         "1:02:-0003|   4|"},
        {"%u", {std::numeric_limits<std::uint64_t>::max()}, "18446744073709551615"},
        {"%.1f %f %@ %d", {1.25, std::int64_t{2}, 0.1, -2.9}, "1.2 2.000000 0.1 -2"},
        {"%d %f", {"text"s, "more"s}, "text more"},
        {"%d %@ %f", {infinity, -infinity, std::nan("")}, "0 -inf nan"},
        {"100% of %@, %5 %x %", {"all"s}, "100% of all, %5 %x %"},
        {"100%% %0$@ %.2d %l@ %1", {"all"s}, "100% %0$@ %.2d %l@ %1"},
    };
    for (const auto& [format, arguments, expected] : cases) EXPECT_EQ(formatted(format, arguments), expected);
    EXPECT_EQ(formatted("%99999999999999999999d", {std::int64_t{7}}).size(), 64U);
    EXPECT_EQ(formatted("%.99999f", {std::numeric_limits<double>::max()}).size(), 309U + 1 + 20);
}

TEST(TextToolsTest, EveryMalformedByteBecomesAReplacement) {
    EXPECT_EQ(validUtf8("ä€😀"), "ä€😀");
    const std::string bad = "\uFFFD";
    const std::pair<std::string, int> cases[] = {
        {"\x80", 1},     {"\xC3", 1},         {"\xC0\x80", 2},
        {"\xE2\x82", 2}, {"\xED\xA0\x80", 3}, {"\xF4\x90\x80\x80", 4},
        {"\xFF", 1},
    };
    for (const auto& [text, count] : cases) {
        std::string expected = "a";
        for (int at = 0; at < count; ++at) expected += bad;
        EXPECT_EQ(validUtf8("a" + text + "b"), expected + "b");
        EXPECT_EQ(validUtf8("a" + text), expected);
    }
    EXPECT_EQ(encodedUtf8(std::u32string{0xD800, 0x110000}), bad + bad);
    EXPECT_EQ(replacingAll("#a##b", "#", "##"), "##a####b");
    EXPECT_EQ(replacingAll("ab", "", "x"), "ab");
    EXPECT_EQ(joined(splitted(",a,,b,", ','), "|"), "|a||b|");
    EXPECT_EQ(splitted("", ',').size(), 1U);
}

TEST(LocaleServicesTest, ComparesAndLowersLettersOfSeveralScripts) {
    const LocaleServices english;
    EXPECT_EQ(english.lowercased("ÀÖ×Þß ŁŽŸŒ ΆΈΌΏΣς ЁЖЯ ẞẾ"), "àö×þß łžÿœ άέόώσς ёжя ßế");
    EXPECT_EQ(english.caseInsensitiveCompare("ÉTUDE ΣΑΣ", "étude σας"), Ordering::Same);
    EXPECT_EQ(english.caseInsensitiveCompare("Zebra", "apple"), Ordering::Descending);
    EXPECT_EQ(english.caseInsensitiveCompare("Ab", "aBc"), Ordering::Ascending);
    EXPECT_EQ(english.caseInsensitiveCompare("a😀", "A\uFFFD"),
              Ordering::Descending);  // by character, not by byte
}

TEST(LocaleServicesTest, WritesNumbersInEnglish) {
    const LocaleServices english;
    const std::pair<double, std::string> decimals[] = {
        {0, "0"},       {-0.0001, "0"},        {1000, "1,000"},    {999, "999"}, {-1234567.5, "-1,234,567.5"},
        {-999, "-999"}, {1000.25, "1,000.25"}, {0.12345, "0.123"}, {100, "100"}, {infinity, "∞"},
    };
    for (const auto& [number, text] : decimals)
        EXPECT_EQ(english.formattedNumber(number, NumberStyle::Decimal), text);
    EXPECT_EQ(english.formattedNumber(0.256, NumberStyle::Percent), "26%");
    EXPECT_EQ(english.formattedNumber(12345.6, NumberStyle::None), "12346");
}

TEST(LocaleServicesTest, WritesDatesInTheDevicesTimeZone) {
    setenv("TZ", "XYZ-2", 1);  // two hours ahead of universal time
    tzset();
    const Date date = std::chrono::sys_days{std::chrono::year{2023} / 12 / 31} + std::chrono::hours(22);
    DateFormatter formatter;
    formatter.dateStyle = DateStyle::Long;
    EXPECT_EQ(formatter.stringFromDate(date), "January 1, 2024");
    EXPECT_FALSE(formatter.stringFromDate(std::nullopt));
    const LocaleServices english;
    EXPECT_EQ(english.formattedDate(date, DateStyle::Full, DateStyle::Short),
              "Monday, January 1, 2024 at 12:00 AM");
    EXPECT_EQ(english.formattedDate(date, DateStyle::Short, DateStyle::None), "1/1/24");
    EXPECT_EQ(english.formattedDate(date, DateStyle::None, DateStyle::Long), "12:00:00 AM XYZ");
    EXPECT_EQ(english.yearOf(date), 2024);
    setenv("TZ", ":Europe/Berlin", 1);
    EXPECT_EQ(english.timeZoneName(), "Europe/Berlin");
    setenv("TZ", "/nowhere/else", 1);
    EXPECT_EQ(english.timeZoneName(), "UTC");
    unsetenv("TZ");
    tzset();
}
