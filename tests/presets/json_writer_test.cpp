#include "presets/json_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

using Json = nlohmann::json;

std::string written(const std::function<void(JSONWriter&)>& write) {
  JSONWriter writer;
  write(writer);
  return writer.take();
}

std::string asString(std::string_view text) {
  return written([&](JSONWriter& writer) { writer.string(text); });
}

TEST(JSONWriter, WritesASingleValue) {
  EXPECT_EQ(written([](JSONWriter& writer) { writer.boolean(true); }), "true");
  EXPECT_EQ(written([](JSONWriter& writer) { writer.boolean(false); }), "false");
  EXPECT_EQ(written([](JSONWriter& writer) { writer.integer(0); }), "0");
  EXPECT_EQ(written([](JSONWriter& writer) { writer.string("text"); }), "\"text\"");
  EXPECT_EQ(written([](JSONWriter& writer) { writer.string(""); }), "\"\"");
}

TEST(JSONWriter, WritesEveryInteger) {
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {1, "1"},
      {-1, "-1"},
      {101, "101"},
      {-2520, "-2520"},
      {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"},
      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
  };
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(written([value = value](JSONWriter& writer) { writer.integer(value); }), text);
  }
}

TEST(JSONWriter, ContainersWithoutMembersStandOnOneLine) {
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginArray();
              writer.endArray();
            }),
            "[]");
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginObject();
              writer.endObject();
            }),
            "{}");
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginArray();
              writer.beginObject();
              writer.endObject();
              writer.beginArray();
              writer.endArray();
              writer.endArray();
            }),
            "[\n"
            "  {},\n"
            "  []\n"
            "]");
}

TEST(JSONWriter, WritesOneMemberALine) {
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginObject();
              writer.key("a");
              writer.integer(-5);
              writer.key("b");
              writer.beginObject();
              writer.endObject();
              writer.key("c");
              writer.beginArray();
              writer.string("x");
              writer.beginObject();
              writer.key("deep");
              writer.beginArray();
              writer.boolean(true);
              writer.boolean(false);
              writer.endArray();
              writer.endObject();
              writer.endArray();
              writer.key("d");
              writer.string("y");
              writer.endObject();
            }),
            "{\n"
            "  \"a\" : -5,\n"
            "  \"b\" : {},\n"
            "  \"c\" : [\n"
            "    \"x\",\n"
            "    {\n"
            "      \"deep\" : [\n"
            "        true,\n"
            "        false\n"
            "      ]\n"
            "    }\n"
            "  ],\n"
            "  \"d\" : \"y\"\n"
            "}");
}

TEST(JSONWriter, EscapesExactlyWhatItMust) {
  const std::map<int, std::string> escapes{{'\b', "\\b"},  {'\f', "\\f"}, {'\n', "\\n"},
                                           {'\r', "\\r"},  {'\t', "\\t"}, {'"', "\\\""},
                                           {'\\', "\\\\"}, {'/', "\\/"}};
  constexpr std::string_view digits = "0123456789abcdef";
  for (int value = 0; value < 0x80; ++value) {
    const auto c = static_cast<char>(value);
    std::string expected(1, c);
    if (const auto found = escapes.find(value); found != escapes.end()) {
      expected = found->second;
    } else if (value < ' ') {
      expected = std::string("\\u00") + digits[static_cast<std::size_t>(value / 16)] +
                 digits[static_cast<std::size_t>(value % 16)];
    }
    EXPECT_EQ(asString(std::string(1, c)), "\"" + expected + "\"") << value;
    EXPECT_EQ(asString(std::string{'a', c, c, 'b'}), "\"a" + expected.append(expected) + "b\"")
        << value;
  }
}

TEST(JSONWriter, LeavesUTF8AsItIs) {
  for (const std::string text :
       {"\xC2\x80", "\xC3\xA4\xC3\xB6", "\xDF\xBF", "\xE0\xA0\x80", "\xE2\x82\xAC", "\xED\x9F\xBF",
        "\xEE\x80\x80", "\xEF\xBB\xBF", "\xEF\xBF\xBD", "\xEF\xBF\xBF", "\xF0\x90\x80\x80",
        "\xF0\x9F\x8F\x8E", "\xF4\x8F\xBF\xBF", "\xE2\x80\xA8\xE2\x80\xA9", "\x7F", "a\xC3\xA4z"}) {
    EXPECT_EQ(asString(text), "\"" + text + "\"");
  }
}

TEST(JSONWriter, ReplacesWhatIsNotUTF8) {
  const std::string mark = "\xEF\xBF\xBD";
  const std::vector<std::pair<std::string, std::string>> cases{
      {"\x80", mark},
      {"\xBF", mark},
      {"a\xFFz", "a" + mark + "z"},
      {"\xFE", mark},
      {"\xC3", mark},
      {"\xC3(", mark + "("},
      {"\xC3\xC3\xA4", mark + "\xC3\xA4"},
      {"\xE2\x82", mark},
      {"\xE2\x82/", mark + "\\/"},
      {"\xE2\x82\"", mark + "\\\""},
      {"\xF0\x9F\x8F", mark},
      {"a\xF0\x9F\x8Fz", "a" + mark + "z"},
      {std::string("\xC3\0", 2), mark + "\\u0000"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(asString(text), "\"" + expected + "\"") << testing::PrintToString(text);
  }
  // Overlong forms, surrogates and code points above U+10FFFF become replacement characters. Their
  // number is unspecified.
  for (const std::string text :
       {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80", "\xED\xA0\x80",
        "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80"}) {
    std::string marks;
    const std::string result = asString(text);
    while (marks.size() + 2 < result.size()) marks += mark;
    EXPECT_EQ(result, "\"" + marks + "\"") << testing::PrintToString(text);
  }
}

TEST(JSONWriter, WhateverItWritesIsJSON) {
  for (int first = 0; first <= 0xFF; ++first) {
    for (int second = 0; second <= 0xFF; ++second) {
      const std::string text{static_cast<char>(first), static_cast<char>(second)};
      const std::string document = asString(text);
      ASSERT_TRUE(Json::accept(document)) << first << " " << second;
      if (first < 0x80 && second < 0x80) {
        ASSERT_EQ(Json::parse(document), text);
      }
    }
  }
}

TEST(JSONWriter, QuotesKeysAsTexts) {
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginObject();
              for (const char* const key : {"", "\n", " \"", "/", "a\xFF", "\xC3\xA4"}) {
                writer.key(key);
                writer.integer(1);
              }
              writer.endObject();
            }),
            "{\n"
            "  \"\" : 1,\n"
            "  \"\\n\" : 1,\n"
            "  \" \\\"\" : 1,\n"
            "  \"\\/\" : 1,\n"
            "  \"a\xEF\xBF\xBD\" : 1,\n"
            "  \"\xC3\xA4\" : 1\n"
            "}");
}

TEST(JSONWriter, TakesKeysInTheOrderOfTheirBytes) {
  EXPECT_EQ(written([](JSONWriter& writer) {
              writer.beginObject();
              for (const char* const key : {"FF", "FFS", "SEN", "brF", "\xC3\xA4"}) {
                writer.key(key);
                writer.beginObject();
                writer.key("A");
                writer.integer(1);
                writer.endObject();
              }
              writer.endObject();
            }),
            "{\n"
            "  \"FF\" : {\n"
            "    \"A\" : 1\n"
            "  },\n"
            "  \"FFS\" : {\n"
            "    \"A\" : 1\n"
            "  },\n"
            "  \"SEN\" : {\n"
            "    \"A\" : 1\n"
            "  },\n"
            "  \"brF\" : {\n"
            "    \"A\" : 1\n"
            "  },\n"
            "  \"\xC3\xA4\" : {\n"
            "    \"A\" : 1\n"
            "  }\n"
            "}");
}

TEST(JSONWriter, IsEmptyAgainOnceTheDocumentIsTaken) {
  JSONWriter writer;
  writer.integer(1);
  EXPECT_EQ(writer.take(), "1");
  writer.integer(2);
  EXPECT_EQ(writer.take(), "2");
}

TEST(JSONWriterDeathTest, ACallOutOfPlaceStopsTheProgram) {
  const std::vector<std::pair<std::function<void(JSONWriter&)>, std::string>> cases{
      {[](JSONWriter& w) { w.take(); }, "a JSON document is complete when it is taken"},
      {[](JSONWriter& w) { w.beginArray(), w.take(); },
       "a JSON document is complete when it is taken"},
      {[](JSONWriter& w) { w.key("a"); }, "a JSON key stands in an object, before a value"},
      {[](JSONWriter& w) { w.beginArray(), w.key("a"); },
       "a JSON key stands in an object, before a value"},
      {[](JSONWriter& w) { w.beginObject(), w.key("a"), w.key("b"); },
       "a JSON key stands in an object, before a value"},
      {[](JSONWriter& w) { w.beginObject(), w.integer(1); }, "a JSON value in an object has a key"},
      {[](JSONWriter& w) { w.beginObject(), w.string("a"); },
       "a JSON value in an object has a key"},
      {[](JSONWriter& w) { w.beginObject(), w.boolean(true); },
       "a JSON value in an object has a key"},
      {[](JSONWriter& w) { w.beginObject(), w.beginArray(); },
       "a JSON value in an object has a key"},
      {[](JSONWriter& w) { w.beginObject(), w.key("a"), w.integer(1), w.integer(2); },
       "a JSON value in an object has a key"},
      {[](JSONWriter& w) { w.endArray(); }, "JSON brackets come in pairs"},
      {[](JSONWriter& w) { w.endObject(); }, "JSON brackets come in pairs"},
      {[](JSONWriter& w) { w.beginArray(), w.endObject(); }, "JSON brackets come in pairs"},
      {[](JSONWriter& w) { w.beginObject(), w.endArray(); }, "JSON brackets come in pairs"},
      {[](JSONWriter& w) { w.beginObject(), w.key("a"), w.endObject(); },
       "JSON brackets come in pairs"},
      {[](JSONWriter& w) { w.integer(1), w.integer(2); }, "a JSON document is one value"},
      {[](JSONWriter& w) { w.beginArray(), w.endArray(), w.beginArray(); },
       "a JSON document is one value"},
  };
  for (const auto& [misuse, fault] : cases) {
    JSONWriter writer;
    EXPECT_DEATH(misuse(writer), "^quorvane: internal fault: " + fault + "\n$");
  }
}

TEST(JSONWriterDeathTest, AKeyOutOfOrderStopsTheProgram) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"a", "a"},     {"b", "a"},    {"a", ""},        {"", ""},
      {"brF", "SEN"}, {"FFS", "FF"}, {"\xC3\xA4", "z"}};
  for (const auto& [first, second] : cases) {
    JSONWriter writer;
    writer.beginObject();
    writer.key(first);
    writer.integer(1);
    EXPECT_DEATH(writer.key(second),
                 "^quorvane: internal fault: JSON keys come in the order of their bytes\n$");
  }
}

}  // namespace
}  // namespace quorvane
