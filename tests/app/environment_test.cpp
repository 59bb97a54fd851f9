#include "app/environment.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/scoped_variable.h"

namespace quorvane {
namespace {

using Value = std::optional<std::string>;

TEST(Environment, TheLogGoesToStandardErrorWhenTheVariableIsThere) {
  const std::vector<std::pair<Value, bool>> cases{
      {std::nullopt, false}, {"", true}, {"0", true}, {"1", true}, {"no", true}};
  for (const auto& [value, expected] : cases) {
    SCOPED_TRACE(value.value_or("unset"));
    const ScopedVariable variable("QUORVANE_LOG_STDERR", value);
    EXPECT_EQ(Environment::logsToStandardError(), expected);
  }
}

TEST(Environment, TextsAreTakenAsTheyAreAndEmptyWhenUnset) {
  const std::vector<std::pair<const char*, std::function<std::string()>>> texts{
      {"QUORVANE_DEMO_STAGE", Environment::demoStage}, {"QUORVANE_SECTION", Environment::section}};
  for (const auto& [name, read] : texts) {
    for (const Value& value : {Value(), Value(""), Value("SEN=900"), Value(" Tuning menu ")}) {
      SCOPED_TRACE(name);
      const ScopedVariable variable(name, value);
      EXPECT_EQ(read(), value.value_or(""));
    }
  }
}

TEST(Environment, IsReadAfreshByEveryCall) {
  const ScopedVariable first("QUORVANE_SECTION", "Presets");
  EXPECT_EQ(Environment::section(), "Presets");
  {
    const ScopedVariable second("QUORVANE_SECTION", "Log");
    EXPECT_EQ(Environment::section(), "Log");
  }
  EXPECT_EQ(Environment::section(), "Presets");
}

}  // namespace
}  // namespace quorvane
