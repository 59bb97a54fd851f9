#include "cli/preset_names.h"

#include <gtest/gtest.h>

#include "cli/context.h"
#include "support/text.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

std::vector<TuningPreset> somePresets() {
  std::vector<TuningPreset> presets{
      ownPreset(firstID, "Drift"),
      ownPreset(secondID, "drift"),
      ownPreset(thirdID, "Rain at the Ring"),
      ownPreset("11111111-2222-3333-4444-DDDDDDDDDDDD", "GT7"),
      ownPreset("11111111-2222-3333-4444-EEEEEEEEEEEE", "GT7"),
      ownPreset("11111111-2222-3333-4444-FFFFFFFFFFFF", "Märchen"),
      ownPreset("11111111-2222-3333-4444-000000000000", firstID),  // its name is another's id
  };
  presets.front().isBuiltIn = true;
  return presets;
}

TEST(PresetNamed, GoesByIdThenByNameThenByNameIgnoringCase) {
  const auto presets = somePresets();
  const std::vector<std::pair<std::string, std::size_t>> cases{
      {firstID, 0},
      {"11111111-2222-3333-4444-aaaaaaaaaaaa", 0},
      {"11111111-2222-3333-4444-bbbbbbbbbbbb", 1},
      {"Drift", 0},
      {"drift", 1},
      {"Rain at the Ring", 2},
      {"RAIN at the ring", 2},
      {"11111111-2222-3333-4444-ddddDDDDdddd", 3},
      {"märchen", 5},
      {"MäRCHEN", 5},
  };
  for (const auto& [which, index] : cases) {
    EXPECT_EQ(&presetNamed(presets, which), &presets[index]) << which;
  }
}

TEST(PresetNamed, ListsTheCandidatesWhenNotOneIsNamed) {
  const std::string all =
      "  Drift\n  drift\n  Rain at the Ring\n  GT7\n  GT7\n  Märchen\n  "
      "11111111-2222-3333-4444-AAAAAAAAAAAA";
  const std::vector<std::pair<std::string, std::string>> cases{
      {"DRIFT",
       "Several presets answer to \"DRIFT\". Name one by:\n"
       "  \"Drift\"\n"
       "  \"drift\""},
      {"GT7",
       "Several presets answer to \"GT7\". Name one by:\n"
       "  11111111-2222-3333-4444-DDDDDDDDDDDD  GT7\n"
       "  11111111-2222-3333-4444-EEEEEEEEEEEE  GT7"},
      {"rIN", "There is no preset \"rIN\". There are:\n  Rain at the Ring"},
      {"ri", "There is no preset \"ri\". There are:\n  Drift\n  drift\n  Rain at the Ring"},
      {" Drift", "There is no preset \" Drift\". There are:\n" + all},
      {"MÄRCHEN", "There is no preset \"MÄRCHEN\". There are:\n" + all},
      {"22222222-2222-3333-4444-AAAAAAAAAAAA",
       "There is no preset \"22222222-2222-3333-4444-AAAAAAAAAAAA\". There are:\n" + all},
      {"", "There is no preset \"\". There are:\n" + all},
      {"a\x1B[2Jb\n", "There is no preset \"a [2Jb \". There are:\n" + all},
  };
  for (const auto& [which, message] : cases) {
    try {
      presetNamed(somePresets(), which);
      ADD_FAILURE() << "found one: " << which;
    } catch (const UsageError& error) {
      EXPECT_EQ(error.what(), message);
    }
  }
}

std::string refusal(const std::vector<TuningPreset>& presets, const std::string& which) {
  try {
    return "found " + presetNamed(presets, which).name;
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(PresetNamed, ScopesTellBuiltInPresetsFromOnesOwn) {
  std::vector<TuningPreset> presets{ownPreset(firstID, "Spa"), ownPreset(secondID, "Spa"),
                                    ownPreset(thirdID, "mine:Ring")};
  presets.front().isBuiltIn = true;
  const std::vector<std::pair<std::string, std::size_t>> cases{
      {"builtin:Spa", 0},    {"BuiltIn:spa", 0},
      {"mine:Spa", 1},       {"MINE:SPA", 1},
      {"mine:mine:Ring", 2}, {"mine:Ring", 2},
      {secondID, 1},         {"mine:" + std::string(secondID), 1},
  };
  for (const auto& [which, index] : cases) {
    EXPECT_EQ(&presetNamed(presets, which), &presets[index]) << which;
  }
  EXPECT_EQ(refusal(presets, "Spa"),
            "Several presets answer to \"Spa\". Name one by:\n"
            "  \"builtin:Spa\"\n"
            "  \"mine:Spa\"");
  EXPECT_EQ(sharedNamesText(presets), "  \"builtin:Spa\"\n  \"mine:Spa\"\n");
}

TEST(PresetNamed, WhatIsListedInsteadNamesOnePreset) {
  std::vector<TuningPreset> presets{ownPreset(firstID, "Spa $1"), ownPreset(secondID, "Spa $1"),
                                    ownPreset(thirdID, "mine:Spa $1")};
  presets.front().isBuiltIn = true;
  EXPECT_EQ(refusal(presets, "Spa $1"),
            "Several presets answer to \"Spa $1\". Name one by:\n"
            "  (built in)                            Spa $1\n"
            "  11111111-2222-3333-4444-BBBBBBBBBBBB  Spa $1");
}

TEST(PresetNamed, RecordsThatNoWordTellsApartAreTakenInTheirOrder) {
  const std::vector<TuningPreset> presets{ownPreset(firstID, "Spa", {{"FF", 1}}),
                                          ownPreset(firstID, "Spa", {{"FF", 2}}),
                                          ownPreset(secondID, "Ring"), ownPreset(secondID, "Ring")};
  EXPECT_EQ(refusal(presets, firstID),
            std::string("Several presets \"Spa\" have the id ") + firstID +
                ". This deletes the first of them: quorvanectl presets delete " + firstID);
  EXPECT_EQ(&presetNamed(presets, firstID, Twins::takeFirst), &presets[0]);
  EXPECT_EQ(&presetNamed(presets, secondID), &presets[2]);
}

TEST(PresetName, LosesTheWhiteSpaceAroundIt) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"GT7", "GT7"},
      {"  My GT7\t\n", "My GT7"},
      {"My  GT7", "My  GT7"},
      {"\u00A0\u3000 Grün\u2009\u2028", "Grün"},
      {"\U0001F3CE", "\U0001F3CE"},
      {"...", "..."},
      {"\u00C2", "\u00C2"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(presetName(text), name) << text;
}

TEST(PresetName, IsSomeUTF8) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "The preset needs a name"},
      {" \t\r\n\v\f", "The preset needs a name"},
      {"\u00A0\u1680\u205F", "The preset needs a name"},
      {"GT\xFF", "The preset's name is not UTF-8"},
      {"\xC3", "The preset's name is not UTF-8"},
      {"\xC0\xAF", "The preset's name is not UTF-8"},
      {"\xED\xA0\x80", "The preset's name is not UTF-8"},
      {" \x80 ", "The preset's name is not UTF-8"},
  };
  for (const auto& [text, message] : cases) {
    try {
      presetName(text);
      ADD_FAILURE() << "accepted: " << text;
    } catch (const UsageError& error) {
      EXPECT_EQ(error.what(), message) << text;
    }
  }
}

}  // namespace
}  // namespace quorvane
