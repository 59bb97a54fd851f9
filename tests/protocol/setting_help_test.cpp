#include "protocol/setting_help.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>

#include "support/text.h"

namespace quorvane {
namespace {

TEST(SettingHelp, BelongsToTheSettingItIsAskedFor) {
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    EXPECT_EQ(TuningParameter(helpOf(parameter).parameter), parameter) << parameter.code();
  }
}

TEST(SettingHelp, IsWholeSentencesOnOneLine) {
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    const SettingHelp& help = helpOf(parameter);
    for (const std::string_view text : {help.what, help.feel}) {
      EXPECT_TRUE(text.ends_with('.')) << text;
      EXPECT_TRUE(text.front() >= 'A' && text.front() <= 'Z') << text;
      EXPECT_EQ(text.find("  "), std::string_view::npos) << text;
      EXPECT_EQ(oneLine(text), text);
      EXPECT_LE(text.size(), 260U) << text;
    }
  }
}

TEST(SettingHelp, IsDifferentForEachSetting) {
  std::set<std::string_view> texts;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    texts.insert(helpOf(parameter).what);
    texts.insert(helpOf(parameter).feel);
  }
  EXPECT_EQ(texts.size(), 2 * std::size_t{TuningParameter::count});
}

// A word of capitals in "works with" is the code of another setting that a base may have with it.
TEST(SettingHelp, NamesOnlyOtherSettingsToWorkWith) {
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    std::string rest(helpOf(parameter).worksWith);
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(", "), rest.size());
      const std::string item = rest.substr(0, end);
      rest.erase(0, end + 2);
      const bool isCode = item.size() >= 2 && item.size() <= 3 && item[1] >= 'A' && item[1] <= 'Z';
      const auto named = TuningParameter::named(item);
      EXPECT_EQ(named.has_value(), isCode || item == "brF") << item;
      EXPECT_NE(named, std::optional(parameter)) << item;
    }
  }
}

}  // namespace
}  // namespace quorvane
