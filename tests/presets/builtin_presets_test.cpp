#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "presets/tuning_preset.h"
#include "support/thread.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using Values = std::map<std::string, std::int64_t, std::less<>>;

struct Entry {
  std::string name;
  std::string game;
  std::string source;
  std::string notes;
  Values values;
  std::vector<P> parameters;
};

const std::vector<Entry> catalogue{
    {"Fanatec factory defaults",
     "Any",
     "Fanatec help center, tuning menu article",
     "What a CSL DD or GT DD Pro ships with.",
     {{"SEN", 0},
      {"FF", 100},
      {"SHO", 100},
      {"BLI", 101},
      {"FFS", 1},
      {"FOR", 100},
      {"SPR", 100},
      {"DPR", 100},
      {"NDP", 50},
      {"NFR", 0},
      {"brF", 50},
      {"FEI", 100},
      {"INT", 11},
      {"NIN", 0}},
     {P::sensitivity, P::forceFeedback, P::vibration, P::brakeLevelIndicator,
      P::forceFeedbackScaling, P::forceEffect, P::springEffect, P::damperEffect, P::naturalDamper,
      P::naturalFriction, P::brakeForce, P::forceEffectIntensity, P::interpolation,
      P::naturalInertia}},
    {"Fanatec recommended, Gran Turismo 7",
     "Gran Turismo 7",
     "Fanatec forum thread",
     "In-game: Max Torque 5, FFB Sensitivity 1.",
     {{"SEN", 0},
      {"FF", 100},
      {"BLI", 101},
      {"FFS", 1},
      {"FOR", 100},
      {"SPR", 100},
      {"DPR", 100},
      {"NDP", 25},
      {"NFR", 25},
      {"FEI", 100},
      {"INT", 0},
      {"NIN", 0}},
     {P::sensitivity, P::forceFeedback, P::brakeLevelIndicator, P::forceFeedbackScaling,
      P::forceEffect, P::springEffect, P::damperEffect, P::naturalDamper, P::naturalFriction,
      P::forceEffectIntensity, P::interpolation, P::naturalInertia}},
    {"Redline Lab 2025, Gran Turismo 7 (8 Nm)",
     "Gran Turismo 7",
     "redlinelab.example",
     "In-game: Max Torque 6 to 7 by car class, FFB Sensitivity 10. On a 5 Nm base raise Max Torque "
     "to 8 or 9.",
     {{"SEN", 0},
      {"FF", 100},
      {"FFS", 1},
      {"FOR", 100},
      {"SPR", 0},
      {"DPR", 50},
      {"NDP", 15},
      {"NFR", 10},
      {"FEI", 100},
      {"INT", 3},
      {"NIN", 5}},
     {P::sensitivity, P::forceFeedback, P::forceFeedbackScaling, P::forceEffect, P::springEffect,
      P::damperEffect, P::naturalDamper, P::naturalFriction, P::forceEffectIntensity,
      P::interpolation, P::naturalInertia}},
    {"Gearwerk 2025, Gran Turismo 7 (8 Nm)",
     "Gran Turismo 7",
     "gearwerk.example, March 2025",
     "Heavy damping. In-game: Max Torque 3 as a base and raised per car, FFB Sensitivity 2, "
     "steering sensitivity 5.",
     {{"SEN", 0},
      {"FF", 100},
      {"BLI", 75},
      {"FFS", 1},
      {"FOR", 100},
      {"SPR", 100},
      {"DPR", 100},
      {"NDP", 70},
      {"NFR", 35},
      {"brF", 90},
      {"FEI", 100},
      {"INT", 3},
      {"NIN", 5}},
     {P::sensitivity, P::forceFeedback, P::brakeLevelIndicator, P::forceFeedbackScaling,
      P::forceEffect, P::springEffect, P::damperEffect, P::naturalDamper, P::naturalFriction,
      P::brakeForce, P::forceEffectIntensity, P::interpolation, P::naturalInertia}},
};

std::vector<std::string> ids() {
  std::vector<std::string> texts;
  for (const TuningPreset& preset : TuningPreset::builtIn()) texts.push_back(preset.id.text());
  return texts;
}

constexpr const char* idLine = "built-in preset ";

// The IDs that another run of this program prints.
std::vector<std::string> idsOfAnotherRun() {
  Pipe output;
  const pid_t process = ::fork();
  if (process == 0) {
    ::dup2(output.writing.get(), STDOUT_FILENO);
    std::string filter = "--gtest_filter=BuiltInPresets.ShowTheirIDs";
    std::string program = "/proc/self/exe";
    const std::array<char*, 3> arguments{program.data(), filter.data(), nullptr};
    const std::array<char*, 1> noEnvironment{nullptr};
    ::execve(program.c_str(), arguments.data(), noEnvironment.data());
    ::_exit(127);
  }
  output.writing.reset();
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t got = 0; (got = ::read(output.reading.get(), buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  int status = 0;
  EXPECT_EQ(::waitpid(process, &status, 0), process);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << text;

  std::vector<std::string> texts;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(idLine)) texts.push_back(line.substr(std::string(idLine).size()));
  }
  return texts;
}

TEST(BuiltInPresets, AreTheCatalogue) {
  const auto& presets = TuningPreset::builtIn();
  ASSERT_EQ(presets.size(), catalogue.size());
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    SCOPED_TRACE(catalogue[i].name);
    EXPECT_EQ(presets[i].name, catalogue[i].name);
    EXPECT_EQ(presets[i].game, catalogue[i].game);
    EXPECT_EQ(presets[i].source, catalogue[i].source);
    EXPECT_EQ(presets[i].notes, catalogue[i].notes);
    EXPECT_EQ(presets[i].values, catalogue[i].values);
    EXPECT_TRUE(presets[i].isBuiltIn);
  }
}

TEST(BuiltInPresets, HaveSoManyValues) {
  constexpr std::array<std::size_t, 4> counts{14, 12, 11, 13};
  for (std::size_t i = 0; i < counts.size(); ++i) {
    EXPECT_EQ(TuningPreset::builtIn().at(i).values.size(), counts[i]);
    EXPECT_EQ(TuningPreset::builtIn().at(i).parameters().size(), counts[i]);
  }
}

TEST(BuiltInPresets, ListTheirParametersInMenuOrder) {
  for (std::size_t i = 0; i < catalogue.size(); ++i) {
    EXPECT_EQ(TuningPreset::builtIn().at(i).parameters(), catalogue[i].parameters);
  }
  const auto factory = TuningPreset::builtIn().front().parameters();
  EXPECT_EQ(factory.front(), P(P::sensitivity));
  EXPECT_EQ(factory.back(), P(P::naturalInertia));
}

TEST(BuiltInPresets, LeaveFourParametersAlone) {
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    for (const P parameter : {P::slot, P::driftMode, P::analogPaddles, P::fullForce}) {
      EXPECT_EQ(preset.value(parameter), std::nullopt) << preset.name;
    }
  }
}

TEST(BuiltInPresets, HaveRandomIDs) {
  const std::vector<std::string> texts = ids();
  EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), 4U);
  for (const std::string& text : texts) EXPECT_EQ(text[14], '4') << text;
}

TEST(BuiltInPresets, KeepTheirIDsForTheRun) {
  const std::vector<std::string> before = ids();
  EXPECT_EQ(ids(), before);
  EXPECT_EQ(&TuningPreset::builtIn(), &TuningPreset::builtIn());
}

TEST(BuiltInPresets, AreTheSameForEveryThread) {
  std::array<const std::vector<TuningPreset>*, 8> seen{};
  std::vector<Thread> threads;
  threads.reserve(seen.size());
  for (auto& mine : seen) {
    threads.emplace_back("looks", [&mine] { mine = &TuningPreset::builtIn(); });
  }
  threads.clear();
  for (const auto* presets : seen) EXPECT_EQ(presets, &TuningPreset::builtIn());
}

// Prints the IDs for idsOfAnotherRun().
TEST(BuiltInPresets, ShowTheirIDs) {
  ASSERT_EQ(ids().size(), 4U);
  for (const std::string& text : ids()) std::cout << idLine << text << std::endl;
}

TEST(BuiltInPresets, HaveOtherIDsInAnotherRun) {
  const std::vector<std::string> here = ids();
  const std::vector<std::string> first = idsOfAnotherRun();
  const std::vector<std::string> second = idsOfAnotherRun();
  std::set<std::string> all(here.begin(), here.end());
  all.insert(first.begin(), first.end());
  all.insert(second.begin(), second.end());
  EXPECT_EQ(first.size(), 4U);
  EXPECT_EQ(second.size(), 4U);
  EXPECT_EQ(all.size(), 12U);
}

TEST(BuiltInPresets, SurviveTheirCoding) {
  const auto& presets = TuningPreset::builtIn();
  EXPECT_EQ(decodePresets(parseJSON(encodePresets(presets))), presets);
}

}  // namespace
}  // namespace quorvane
