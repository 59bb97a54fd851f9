#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "presets/preset_change.h"
#include "presets/preset_store.h"
#include "tests/support/child_process.h"
#include "tests/support/killed_commands.h"
#include "tests/support/patient_clock.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

// Processes that change one preset file at the same time. Some are killed.
class PresetSharing : public testing::Test {
 protected:
  using Names = std::set<std::string>;

  static TuningPreset named(std::string name) {
    TuningPreset preset;
    preset.name = std::move(name);
    return preset;
  }

  void add(const TuningPreset& preset) const {
    const PresetChange change = PresetChange::add({preset});
    store_.change([&](auto& presets) { change.apply(presets); });
  }

  void remove(const std::string& name) const {
    store_.change([&](auto& presets) {
      std::erase_if(presets, [&](const TuningPreset& each) { return each.name == name; });
    });
  }

  Names stored() const {
    Names names;
    for (const TuningPreset& preset : store_.read()) names.insert(preset.name);
    return names;
  }

  static Names wordsOf(const std::string& text) {
    Names words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;) words.insert(word);
    return words;
  }

  const TemporaryDirectory directory_;
  PatientClock clock_;
  const PresetStore store_{directory_ / "presets.json", clock_};
};

TEST_F(PresetSharing, EveryPresetWhoseSaveEndedIsThere) {
  constexpr int saves = 400;
  const auto lane = [&](unsigned seed) {
    return [this, seed]() -> std::string {
      return KilledCommands(seed).runEach(saves,
                                          [this](const std::string& name) { add(named(name)); });
    };
  };
  ChildProcess first(lane(1));
  ChildProcess second(lane(2));
  Names expected = wordsOf(first.end());
  expected.merge(wordsOf(second.end()));
  EXPECT_GE(expected.size(), 2U * saves * 9 / 10);
  const Names found = stored();
  for (const std::string& name : expected) EXPECT_TRUE(found.contains(name)) << name;
  add(named("last"));
  EXPECT_EQ(directory_.names(), Names{"presets.json"});
}

TEST_F(PresetSharing, SavesImportsAndDeletionsMix) {
  constexpr int rounds = 60;
  const auto lane = [&](unsigned seed) {
    return [this, seed]() -> std::string {
      KilledCommands commands(seed);
      std::string lines;
      for (int i = 0; i < rounds; ++i) {
        const std::string name = std::to_string(seed) + "-" + std::to_string(i);
        const auto save = [&] { add(named(name)); };
        const auto import = [&] {
          const std::string file = directory_ / (name + ".json");
          PresetStore::exportPresets({named(name)}, file);
          add(PresetStore::importPresets(file).front());
          std::filesystem::remove(file);
        };
        const bool isSaved = i % 2 == 0 ? commands.run(save) : commands.run(import);
        if (!isSaved) continue;
        if (i % 3 != 0) {
          lines += "+" + name + " ";
        } else if (commands.run([&] { remove(name); })) {
          lines += "-" + name + " ";
        }
      }
      return lines;
    };
  };
  ChildProcess first(lane(3));
  ChildProcess second(lane(4));
  Names said = wordsOf(first.end());
  said.merge(wordsOf(second.end()));
  EXPECT_GT(said.size(), 1U * rounds);
  const Names found = stored();
  for (const std::string& word : said) {
    EXPECT_EQ(found.contains(word.substr(1)), word[0] == '+') << word;
  }
}

}  // namespace
}  // namespace quorvane
