#include "support/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

TEST(FirstCharacter, IsACodeWithItsLength) {
  const std::vector<std::pair<std::string, std::pair<char32_t, std::size_t>>> cases{
      {"a", {U'a', 1}},
      {std::string(1, '\0'), {0, 1}},
      {"\x7F", {0x7F, 1}},
      {"\xC2\x80", {0x80, 2}},
      {"\xDF\xBF", {0x7FF, 2}},
      {"\xE0\xA0\x80", {0x800, 3}},
      {"\xED\x9F\xBF", {0xD7FF, 3}},
      {"\xEE\x80\x80", {0xE000, 3}},
      {"\xEF\xBF\xBF", {0xFFFF, 3}},
      {"\xF0\x90\x80\x80", {0x10000, 4}},
      {"\xF4\x8F\xBF\xBF", {0x10FFFF, 4}},
  };
  for (const auto& [text, wanted] : cases) {
    for (const std::string& rest : {std::string(), std::string("\xFF"), std::string("a")}) {
      const Utf8Character character = firstCharacter(text + rest);
      EXPECT_EQ(character.code, wanted.first) << text;
      EXPECT_EQ(character.length, wanted.second) << text;
    }
    EXPECT_TRUE(isUtf8(text + text)) << text;
  }
  EXPECT_TRUE(isUtf8(""));
}

TEST(FirstCharacter, IsNoneForOtherBytes) {
  const std::vector<std::string> cases{"\x80",              // a continuation byte
                                       "\xBF\x80",          //
                                       "\xC2",              // truncated
                                       "\xC2z",             //
                                       "\xE2\x82",          //
                                       "\xF0\x9F\x8F",      //
                                       "\xC0\x80",          // overlong
                                       "\xC1\xBF",          //
                                       "\xE0\x9F\xBF",      //
                                       "\xF0\x8F\xBF\xBF",  //
                                       "\xED\xA0\x80",      // a surrogate
                                       "\xED\xBF\xBF",      //
                                       "\xF4\x90\x80\x80",  // too large
                                       "\xF8\x88\x80\x80\x80",
                                       "\xFE",
                                       "\xFF"};
  for (const std::string& text : cases) {
    EXPECT_EQ(firstCharacter(text).code, std::nullopt) << text;
    EXPECT_EQ(firstCharacter(text).length, 1U) << text;
    EXPECT_FALSE(isUtf8("a" + text)) << text;
  }
}

}  // namespace
}  // namespace quorvane
