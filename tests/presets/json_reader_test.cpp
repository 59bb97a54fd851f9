#include "presets/json_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Literals mix bytes and escapes, so raw string literals would not make them more readable.
// NOLINTBEGIN(modernize-raw-string-literal)

namespace quorvane {
namespace {

using namespace std::string_literals;

// The text of the error that parsing throws; "no error" if it throws none.
std::string errorOf(std::string_view text) {
  try {
    parseJSON(text);
  } catch (const DecodingError& error) {
    return error.what();
  }
  return "no error";
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

std::string printable(std::string_view text) {
  return testing::PrintToString(std::string(text.substr(0, 60)));
}

bool isPlainText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

TEST(ParseJSON, ReadsWhatIsWellFormed) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"[]", "[]"},
      {"{}", "{}"},
      {"null", "null"},
      {"true", "true"},
      {"false", "false"},
      {"0", "0"},
      {"\"\"", "\"\""},
      {"[[]   ]", "[[]]"},
      {"[null, 1, \"1\", {}]", "[null,1,\"1\",{}]"},
      {"[1,null,null,null,2]", "[1,null,null,null,2]"},
      {" \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 \t\r\n] \t\r\n", "[1,2]"},
      {"{ \"a\" \n:\t1 ,\r\"b\" : 2 }", "{\"a\":1,\"b\":2}"},
      {"{\"\":0}", "{\"\":0}"},
      {"{\"b\":1,\"a\":2}", "{\"a\":2,\"b\":1}"},
      {"{\"a\\u0000b\":1}", "{\"a\\u0000b\":1}"},
      {"[123]", "[123]"},
      {"[-1]", "[-1]"},
      {"[-0]", "[0]"},
      {"[9223372036854775807]", "[9223372036854775807]"},
      {"[-9223372036854775808]", "[-9223372036854775808]"},
      {"[18446744073709551615]", "[18446744073709551615]"},
      {"[1.5]", "[1.5]"},
      {"[1.0]", "[1.0]"},
      {"[-0.0]", "[-0.0]"},
      {"[0e1]", "[0.0]"},
      {"[0E+1]", "[0.0]"},
      {"[1E22]", "[1e+22]"},
      {"[1e-2]", "[0.01]"},
      {"[123.456e+78]", "[1.23456e+80]"},
      {"[123e-10000000]", "[0.0]"},
      {"[-2.5e-3]", "[-0.0025]"},
      {"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"", "\"\\\"\\\\/\\b\\f\\n\\r\\t\""},
      {"\"\\u0041\\u00e4\\u20AC\\uFFFF\"", "\"A\xC3\xA4\xE2\x82\xAC\xEF\xBF\xBF\""},
      {"\"\\uD83C\\uDFCE\"", "\"\xF0\x9F\x8F\x8E\""},
      {"\"\\ud800\\udc00\\uDBFF\\uDFFF\"", "\"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\""},
      {"\"\\u0000\\u001f\\u007F\"", "\"\\u0000\\u001f\x7F\""},
      {"\"\\\\u0041\"", "\"\\\\u0041\""},
      {"\"\x7F\"", "\"\x7F\""},
      {"\"/* no comment */ // either\"", "\"/* no comment */ // either\""},
      {"\"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBF\xBF\"",
       "\"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBF\xBF\""},
      {"\"\xF0\x90\x80\x80 \xF4\x8F\xBF\xBF \xE2\x80\xA8\xE2\x80\xA9\"",
       "\"\xF0\x90\x80\x80 \xF4\x8F\xBF\xBF \xE2\x80\xA8\xE2\x80\xA9\""},
  };
  for (const auto& [text, compact] : cases) {
    ASSERT_EQ(errorOf(text), "no error") << text;
    EXPECT_EQ(parseJSON(text).dump(), compact);
  }
}

TEST(ParseJSON, RefusesWhatIsNot) {
  const std::vector<std::string> cases{
      "",
      " ",
      "\n",
      "[",
      "]",
      "{",
      "}",
      "[1",
      "[1,",
      "[1,]",
      "[1,,2]",
      "[,1]",
      "[,]",
      "[1 2]",
      "[1 true]",
      "[\"a\" \"b\"]",
      "[1:2]",
      "[3[4]]",
      "[1]]",
      "[1]x",
      "[1] 2",
      "[][]",
      "{}{}",
      "{}}",
      "[1}",
      "{\"a\":1]",
      "[\"\": 1]",
      "{,}",
      "{\"a\"}",
      "{\"a\":}",
      "{\"a\" 1}",
      "{\"a\"::1}",
      "{\"a\",1}",
      "{:1}",
      "{1:1}",
      "{null:1}",
      "{a:1}",
      "{'a':1}",
      "{\"a\":1,}",
      "{\"a\":1,,\"b\":2}",
      "{\"a\":1 \"b\":2}",
      "{\"a\":1,\"b\"",
      "{\"a\":1}#",
      "{\"a\":1}//",
      "{\"a\":1}/**/",
      "/**/{}",
      "// comment\n{}",
      "# comment\n{}",
      "[1,/* two */2]",
      "[*]",
      "[...]",
      "<a>",
      "nul",
      "nulll",
      "[tru]",
      "[truth]",
      "[fals]",
      "[True]",
      "[TRUE]",
      "[Null]",
      "[undefined]",
      "[NaN]",
      "[-NaN]",
      "[nan]",
      "[Infinity]",
      "[-Infinity]",
      "[inf]",
      "[+1]",
      "[++1]",
      "[- 1]",
      "[-]",
      "[--1]",
      "[-a]",
      "[01]",
      "[-01]",
      "[00]",
      "[012]",
      "[1.]",
      "[.5]",
      "[-.5]",
      "[0.e1]",
      "[1.5.5]",
      "[1e]",
      "[1e+]",
      "[1E-]",
      "[1ee2]",
      "[1e2.5]",
      "[0x1F]",
      "[1 000]",
      "[1_000]",
      "[1,5.]",
      "[1f]",
      "[\xEF\xBC\x91]",
      "'text'",
      "[`text`]",
      "\"",
      "\"text",
      "[\"text]",
      "\"\\",
      "\"\\\"",
      "[\"\\x41\"]",
      "[\"\\a\"]",
      "[\"\\v\"]",
      "[\"\\0\"]",
      "[\"\\'\"]",
      "[\"\\ \"]",
      "[\"\\u\"]",
      "[\"\\u1\"]",
      "[\"\\u12\"]",
      "[\"\\u123\"]",
      "[\"\\u12G4\"]",
      "[\"\\u 123\"]",
      "[\"\\u+123\"]",
      "[\"\\U0041\"]",
      "[\\n]",
      "\\u0041",
      "[\\u0020\"a\"]",
      "[1]\f",
      "[\v1]",
      "\xC2\xA0[1]",
      "[1]\xE2\x80\x83",
      "\xE2\x81\xA0[1]",
      "[\xC3\xA4]",
      "[\xFF]",
  };
  for (const std::string& text : cases) EXPECT_NE(errorOf(text), "no error") << printable(text);
}

TEST(ParseJSON, RefusesControlCharactersInTexts) {
  for (int value = 0; value <= 0x7F; ++value) {
    const std::string text{'"', 'a', static_cast<char>(value), 'b', '"'};
    const bool allowed = value >= ' ' && value != '"' && value != '\\';
    // A backslash escapes the b.
    EXPECT_EQ(errorOf(text) == "no error", allowed || value == '\\') << value;
  }
}

TEST(ParseJSON, RefusesZeroBytes) {
  const std::string sample = "{\"a\": [1, true, \"text\"]}";
  for (std::size_t place = 0; place <= sample.size(); ++place) {
    std::string text = sample;
    text.insert(place, 1, '\0');
    EXPECT_EQ(errorOf(text),
              "Not valid JSON at line 1, column " + std::to_string(place + 1) + ": zero byte");
  }
  EXPECT_EQ(errorOf("[]\n\0garbage"s), "Not valid JSON at line 2, column 1: zero byte");
}

TEST(ParseJSON, RefusesADocumentThatIsCutShort) {
  const std::string sample =
      "{\"a\\u00e4\\n\" : [1, -2.5e3, true, false, null, \"x\xE2\x82\xAC\\uD83C\\uDFCE\", {}], "
      "\"b\":{\"c\":\"\"}}";
  ASSERT_EQ(errorOf(sample), "no error");
  for (std::size_t length = 0; length < sample.size(); ++length) {
    EXPECT_NE(errorOf(sample.substr(0, length)), "no error") << length;
  }
  EXPECT_NE(errorOf(sample + "x"), "no error");
}

TEST(ParseJSON, RefusesWhatIsNoUTF8) {
  const std::vector<std::string> cases{
      "\x80",
      "\xBF",
      "\x80\x80",
      "\xC3",
      "\xC3(",
      "\xC3\xC3\xA4",
      "\xE2\x82",
      "\xE2(\x82",
      "\xE2\x82(",
      "\xF0\x9F\x8F",
      "\xF0(\x8F\x8E",
      "\xF0\x9F\x8F(",
      "\xC0\xAF",
      "\xC1\xBF",
      "\xE0\x80\xAF",
      "\xE0\x9F\xBF",
      "\xF0\x80\x80\xAF",
      "\xF0\x8F\xBF\xBF",
      "\xED\xA0\x80",
      "\xED\xAF\xBF",
      "\xED\xB0\x80",
      "\xED\xBF\xBF",
      "\xED\xA0\x80\xED\xB0\x80",
      "\xF4\x90\x80\x80",
      "\xF5\x80\x80\x80",
      "\xF7\xBF\xBF\xBF",
      "\xF8\x88\x80\x80\x80",
      "\xFC\x84\x80\x80\x80\x80",
      "\xFE",
      "\xFF",
      "\xFE\xFF",
      "\xE4",
      "caf\xE9",
  };
  for (const std::string& bytes : cases) {
    EXPECT_NE(errorOf("\"" + bytes + "\""), "no error") << printable(bytes);
    EXPECT_NE(errorOf("{\"" + bytes + "\":1}"), "no error") << printable(bytes);
    EXPECT_NE(errorOf("[" + bytes + "]"), "no error") << printable(bytes);
    EXPECT_NE(errorOf(bytes), "no error") << printable(bytes);
  }
}

TEST(ParseJSON, RefusesHalfOfASurrogatePair) {
  for (const std::string escapes :
       {"\\uD800", "\\uDBFF", "\\uDC00", "\\uDFFF", "\\uD800a", "\\uD800\\n", "\\uD800\\u0041",
        "\\uD800\\uD800", "\\uDC00\\uD800", "\\uD800\\u", "\\uD800\\uDC0", "\\ud800\xC3\xA4",
        "\\uD800\\\\uDC00"}) {
    EXPECT_NE(errorOf("\"" + escapes + "\""), "no error") << escapes;
    EXPECT_NE(errorOf("{\"" + escapes + "\":1}"), "no error") << escapes;
  }
}

TEST(ParseJSON, SkipsOneByteOrderMark) {
  EXPECT_EQ(parseJSON("\xEF\xBB\xBF[1]").dump(), "[1]");
  EXPECT_EQ(parseJSON("\xEF\xBB\xBF \"\xEF\xBB\xBF\"").dump(), "\"\xEF\xBB\xBF\"");
  for (const std::string text :
       {"\xEF\xBB\xBF", "\xEF", "\xEF\xBB", "\xEF\xBB[1]", "\xEF\xBB\xBF\xEF\xBB\xBF[1]",
        "[1]\xEF\xBB\xBF", " \xEF\xBB\xBF[1]", "[\xEF\xBB\xBF]"}) {
    EXPECT_NE(errorOf(text), "no error") << printable(text);
  }
}

TEST(ParseJSON, RefusesOtherEncodings) {
  const std::string sample = "[\"a\"]";
  std::string utf16;
  std::string utf16LE;
  std::string utf32;
  for (const char c : sample) {
    utf16 += "\0"s + c;
    utf16LE += c + "\0"s;
    utf32 += "\0\0\0"s + c;
  }
  for (const std::string& text :
       {utf16, utf16LE, utf32, "\xFE\xFF" + utf16, "\xFF\xFE" + utf16LE, "\0\0\xFE\xFF"s + utf32}) {
    EXPECT_NE(errorOf(text), "no error") << printable(text);
  }
}

TEST(ParseJSON, TheLastValueOfAKeyCounts) {
  EXPECT_EQ(parseJSON("{\"a\":1,\"a\":2}").dump(), "{\"a\":2}");
  EXPECT_EQ(parseJSON("{\"a\":1,\"b\":2,\"a\":{\"c\":3}}").dump(), "{\"a\":{\"c\":3},\"b\":2}");
  EXPECT_EQ(parseJSON("{\"a\":{\"c\":3},\"\\u0061\":[]}").dump(), "{\"a\":[]}");
  EXPECT_EQ(parseJSON("{\"a\":{\"c\":3},\"a\":{}}").dump(), "{\"a\":{}}");
}

TEST(ParseJSON, KeepsWholeNumbersApartFromOthers) {
  for (const char* const text : {"0", "-0", "7", "-7", "9223372036854775807",
                                 "-9223372036854775808", "18446744073709551615"}) {
    EXPECT_TRUE(parseJSON(text).is_number_integer()) << text;
  }
  for (const char* const text : {"0.0", "-0.0", "1.0", "1e2", "1E0", "18446744073709551616",
                                 "-9223372036854775809", "123456789012345678901234567890"}) {
    EXPECT_TRUE(parseJSON(text).is_number_float()) << text;
  }
  EXPECT_EQ(parseJSON("-9223372036854775808").get<std::int64_t>(),
            std::numeric_limits<std::int64_t>::min());
}

TEST(ParseJSON, RefusesNumbersThatNothingCanHold) {
  for (const std::string& number :
       {"1e400"s, "-1e400"s, "1.5E+309"s, "-123123e100000"s, "0.4e006699999999999999999"s,
        "1" + std::string(400, '0'), "-1" + std::string(1000000, '0')}) {
    EXPECT_EQ(errorOf(number), "Not valid JSON: a number is too large");
    EXPECT_EQ(errorOf("{\"a\":[" + number + "]}"), "Not valid JSON: a number is too large");
  }
  EXPECT_EQ(errorOf("1" + std::string(308, '0')), "no error");
}

TEST(ParseJSON, ReadsSixtyFourLevelsAndNoMore) {
  const std::vector<std::pair<std::string, std::string>> brackets{
      {"[", "]"}, {"{\"a\":", "}"}, {"[1,", ",2]"}, {"{\"a\":1,\"b\":", ",\"c\":2}"}};
  for (const auto& [opening, closing] : brackets) {
    for (std::size_t depth = 1; depth <= 70; ++depth) {
      const std::string text = repeated(opening, depth) + "0" + repeated(closing, depth);
      EXPECT_EQ(errorOf(text),
                depth <= 64 ? "no error" : "Not a settings file: nested deeper than 64");
    }
  }
  EXPECT_EQ(errorOf(repeated("[{\"a\":", 32) + "0" + repeated("}]", 32)), "no error");
  EXPECT_EQ(errorOf("[" + repeated("[{\"a\":", 32) + "0" + repeated("}]", 32) + "]"),
            "Not a settings file: nested deeper than 64");
  EXPECT_EQ(errorOf("[" + repeated("[],{},", 1000) + "0]"), "no error");
}

TEST(ParseJSON, BracketsInTextsAreNoLevels) {
  const std::string brackets = repeated("[{", 1000);
  const std::vector<std::pair<std::string, std::string>> cases{
      {"\"", "\""},         {"\"\\\"", "\""},        {"\"\\\\\\\"", "\""}, {"{\"", "\":1}"},
      {"{\"a\":\"", "\"}"}, {"[\"\\\\\",\"", "\"]"}, {"\"]}]}]}", "\""},
  };
  for (const auto& [before, after] : cases) {
    std::string text = before;
    text.append(brackets).append(after);
    EXPECT_EQ(errorOf(text), "no error") << printable(text);
  }
  EXPECT_EQ(errorOf("[\"]]]]\"," + repeated("[", 64) + repeated("]", 65)),
            "Not a settings file: nested deeper than 64");
  EXPECT_EQ(errorOf("[\"\\\\\"," + repeated("[", 64) + repeated("]", 65)),
            "Not a settings file: nested deeper than 64");
}

TEST(ParseJSON, ClosingBracketsInAdvanceEarnNoLevels) {
  EXPECT_EQ(errorOf(repeated("]", 100000) + repeated("[", 100000)),
            "Not valid JSON at line 1, column 1: unexpected ']'; expected '[', '{', or a literal");
}

TEST(ParseJSON, RefusesALongRowOfBrackets) {
  constexpr std::size_t length = std::size_t{8} * 1024 * 1024;
  for (const std::string_view opening : {"[", "{", "{\"a\":", "[\n", "[0,", "[[],"}) {
    EXPECT_EQ(errorOf(repeated(opening, length / opening.size())),
              "Not a settings file: nested deeper than 64");
  }
}

TEST(ParseJSON, SaysWhereTheErrorIs) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "line 1, column 1: unexpected end of input"},
      {" ", "line 1, column 2: unexpected end of input"},
      {"\n", "line 2, column 1: unexpected end of input"},
      {"[1,\n", "line 2, column 1: unexpected end of input"},
      {"[1,\n2,\n  ]", "line 3, column 3: unexpected ']'"},
      {"[1,\r\n2,\r\n  ]", "line 3, column 3: unexpected ']'"},
      {"x", "line 1, column 1: invalid literal"},
      {"[x]", "line 1, column 2: invalid literal"},
      {"[tru]", "line 1, column 5: invalid literal"},
      {"[\n\n\n    1 2]", "line 4, column 7: unexpected number literal"},
      {"{\"a\" 1}", "line 1, column 6: unexpected number literal"},
      {"{\"a\":1,}", "line 1, column 8: unexpected '}'"},
      {"[01]", "line 1, column 3: unexpected number literal"},
      {"\"a\nb\"",
       "line 1, column 3: invalid string: control character U+000A (LF) must be "
       "escaped to \\u000A or \\n"},
      {"\"a", "line 1, column 3: invalid string: missing closing quote"},
      {"[1]\n[2]", "line 2, column 1: unexpected '['"},
      {"[\"a\xFF\"]", "line 1, column 4: invalid string: ill-formed UTF-8 byte"},
      {"[\"\\uD800\"]",
       "line 1, column 9: invalid string: surrogate U+D800..U+DBFF must be "
       "followed by U+DC00..U+DFFF"},
      {"\xEF\xBB\xBF\nx", "line 2, column 1: invalid literal"},
      {"\xEFx", "line 1, column 2: invalid BOM; must be 0xEF 0xBB 0xBF if given"},
  };
  for (const auto& [text, error] : cases) {
    EXPECT_EQ(errorOf(text).substr(0, 18 + error.size()), "Not valid JSON at " + error)
        << printable(text);
  }
}

TEST(ParseJSON, ItsErrorsShowNothingOfTheText) {
  const std::string secret = "\x1B[31mSECRET\x07\xC3\xA4\xFF";
  const std::vector<std::string> cases{secret,
                                       "[" + secret + "]",
                                       "\"" + secret + "\"",
                                       "[\"" + secret,
                                       "{\"SECRET\" 1}",
                                       "{\"SECRET\":\"SECRET\" \"SECRET\"}",
                                       "[SECRET]",
                                       "SECRET",
                                       "[1, SECRET",
                                       "\"\\uD800SECRET\"",
                                       "\"SECRET\\x\"",
                                       "\"SECRET\x01\"",
                                       "[12345e678]",
                                       "[-12345e678]"};
  for (const std::string& text : cases) {
    const std::string error = errorOf(text);
    EXPECT_TRUE(error.starts_with("Not valid JSON")) << error;
    EXPECT_TRUE(isPlainText(error)) << error;
    EXPECT_EQ(error.find("SECRET"), std::string::npos) << error;
    EXPECT_EQ(error.find("12345"), std::string::npos) << error;
    EXPECT_EQ(error.find("last read"), std::string::npos) << error;
    EXPECT_EQ(error.find("json.exception"), std::string::npos) << error;
  }
}

}  // namespace
}  // namespace quorvane

// NOLINTEND(modernize-raw-string-literal)
