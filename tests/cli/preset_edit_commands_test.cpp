#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

using EditPreset = PresetTest;
using DuplicatePreset = PresetTest;
using MovePreset = PresetTest;
using SearchPresets = PresetTest;

std::vector<std::string> namesOf(const std::vector<TuningPreset>& presets) {
  std::vector<std::string> names;
  names.reserve(presets.size());
  for (const TuningPreset& preset : presets) names.push_back(preset.name);
  return names;
}

std::string builtInRefusal(const std::string& participle) {
  return "\"" + factoryName() + "\" is built in and cannot be " + participle +
         ". Make a copy of your own first: quorvanectl presets duplicate '" + factoryName() + "'\n";
}

TEST_F(EditPreset, ChangesTheGivenTextsAndNothingElse) {
  const TuningPreset before = ownPreset(secondID, "Rain", {{"FF", 60}, {"XYZ", 1}});
  struct Case {
    Lines options;
    std::string TuningPreset::*field;
    std::string text;
    std::string out;
  };
  const std::vector<Case> cases{
      {{"--name", " Spa "}, &TuningPreset::name, "Spa", R"("Spa", before "Rain")"},
      {{"--name=Rain"}, &TuningPreset::name, "Rain", "\"Rain\""},
      {{"--game", "GT7"}, &TuningPreset::game, "GT7", "\"Rain\""},
      {{"--game", ""}, &TuningPreset::game, "", "\"Rain\""},
      {{"--source", "a/b"}, &TuningPreset::source, "a/b", "\"Rain\""},
      {{"--notes", "one\ntwo\n"}, &TuningPreset::notes, "one\ntwo", "\"Rain\""},
      {{"--notes", "[x]"}, &TuningPreset::notes, "[x]", "\"Rain\""},
  };
  const TuningPreset first = ownPreset(firstID, "first");
  const TuningPreset last = ownPreset(thirdID, "last");
  for (const auto& [options, field, text, out] : cases) {
    store_.save({first, before, last});
    Lines words{"edit", "rain"};
    words.insert(words.end(), options.begin(), options.end());
    EXPECT_EQ(presets(words), (Outcome{ExitStatus::done, "Edited preset " + out + "\n", ""}));
    TuningPreset after = before;
    after.*field = text;
    EXPECT_EQ(store_.read(), (std::vector<TuningPreset>{first, after, last})) << options[0];
  }
}

TEST_F(EditPreset, TakesSeveralTextsAndGivesOneDocument) {
  store_.save({ownPreset(firstID, "Rain")});
  const Outcome outcome = presets(
      {"edit", firstID, "--json", "--name", "Spa", "--game", "G", "--source", "S", "--notes", "T"});
  TuningPreset after = ownPreset(firstID, "Spa");
  after.game = "G";
  after.source = "S";
  after.notes = "T";
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, presetsDocument({after}), ""}));
  EXPECT_EQ(store_.read(), std::vector<TuningPreset>{after});
}

TEST_F(EditPreset, ARefusalChangesNothingAndSaysWhatToDo) {
  const std::vector<std::pair<Lines, std::string>> cases{
      {{"Rain"}, "Nothing to edit: give --name, --game, --source or --notes\n"},
      {{"Rain", "--name", " "}, "The preset needs a name\n"},
      {{"Rain", "--notes", "\xFF"}, "The preset's note is not UTF-8\n"},
      {{factoryName(), "--notes", "x"}, builtInRefusal("edited")},
      {{"nobody", "--notes", "x"},
       "There is no preset \"nobody\". There are:\n" + builtInNames() + "  Rain\n"},
  };
  store_.save({ownPreset(firstID, "Rain")});
  const std::string before = storeText();
  for (auto [words, message] : cases) {
    words.insert(words.begin(), "edit");
    EXPECT_EQ(presets(words), (Outcome{ExitStatus::wrongUsage, "", message}));
  }
  EXPECT_EQ(storeText(), before);
}

TEST_F(EditPreset, ANameThatAnotherHasIsTold) {
  store_.save({ownPreset(firstID, "Rain"), ownPreset(secondID, "Spa")});
  EXPECT_EQ(presets({"edit", "Rain", "--name", "Spa"}).err,
            std::string("There is now more than one preset \"Spa\". This one answers to its id: ") +
                firstID + "\n");
}

TEST_F(EditPreset, KeepsAStoreThatCannotBeRead) {
  damageStore();
  for (const Lines& words : {Lines{"edit", "Rain", "--notes", "x"}, Lines{"duplicate", "Rain"},
                             Lines{"move", "Rain", "--first"}}) {
    EXPECT_EQ(presets(words).status, ExitStatus::failed);
    EXPECT_EQ(storeText(), "[{]");
  }
}

TEST_F(DuplicatePreset, PutsTheCopyAfterOnesOwn) {
  const TuningPreset rain = ownPreset(firstID, "Rain", {{"FF", 60}});
  store_.save({rain, ownPreset(secondID, "Spa")});
  EXPECT_EQ(presets({"duplicate", "rain"}),
            (Outcome{ExitStatus::done, "Duplicated preset \"Rain\" as \"Rain copy\"\n", ""}));
  EXPECT_EQ(presets({"duplicate", "rain"}),
            (Outcome{ExitStatus::done, "Duplicated preset \"Rain\" as \"Rain copy 2\"\n", ""}));
  const auto stored = store_.read();
  EXPECT_EQ(namesOf(stored), (Lines{"Rain", "Rain copy 2", "Rain copy", "Spa"}));
  EXPECT_EQ(stored[1].values, rain.values);
  EXPECT_EQ(stored[1].game, rain.game);
  EXPECT_NE(stored[1].id, rain.id);
}

TEST_F(DuplicatePreset, PutsTheCopyOfABuiltInOneAtTheEnd) {
  EXPECT_EQ(presets({"duplicate", factoryName(), "--name", "Mine"}).status, ExitStatus::done);
  EXPECT_EQ(presets({"duplicate", factoryName()}).status, ExitStatus::done);
  const auto stored = store_.read();
  EXPECT_EQ(namesOf(stored), (Lines{"Mine", factoryName() + " copy"}));
  EXPECT_FALSE(stored[0].isBuiltIn);
  EXPECT_EQ(stored[0].notes, TuningPreset::builtIn()[0].notes);
}

TEST_F(DuplicatePreset, GivesOneDocumentAndRefusesAnEmptyName) {
  const Outcome outcome = presets({"duplicate", factoryName(), "--json"});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, presetsDocument(store_.read()), ""}));
  EXPECT_EQ(presets({"duplicate", factoryName(), "--name", ""}),
            (Outcome{ExitStatus::wrongUsage, "", "The preset needs a name\n"}));
  EXPECT_EQ(store_.read().size(), 1U);
}

TEST_F(MovePreset, PutsOneWhereItIsWanted) {
  struct Case {
    Lines words;
    Lines order;
    std::string place;
  };
  const std::vector<Case> cases{
      {{"c", "--first"}, {"c", "a", "b"}, "1"},
      {{"a", "--last"}, {"b", "c", "a"}, "3"},
      {{"c", "--before", "b"}, {"a", "c", "b"}, "2"},
      {{"a", "--after", "mine:b"}, {"b", "a", "c"}, "2"},
      {{"a", "--first"}, {"a", "b", "c"}, "1"},
  };
  for (const auto& [words, order, place] : cases) {
    store_.save({ownPreset(firstID, "a"), ownPreset(secondID, "b"), ownPreset(thirdID, "c")});
    Lines line = words;
    line.insert(line.begin(), "move");
    EXPECT_EQ(presets(line),
              (Outcome{ExitStatus::done,
                       "Moved preset \"" + words[0] + "\" to place " + place + " of 3\n", ""}));
    EXPECT_EQ(namesOf(store_.read()), order);
  }
  const Outcome outcome = presets({"move", "c", "--first", "--json"});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, presetsDocument(store_.read()), ""}));
}

TEST_F(MovePreset, ARefusalChangesNothing) {
  const std::string onePlace =
      "Give one place to move to: --before PRESET, --after PRESET, --first or --last\n";
  const std::vector<std::pair<Lines, std::string>> cases{
      {{"a"}, onePlace},
      {{"a", "--first", "--last"}, onePlace},
      {{"a", "--first", "--before", "b"}, onePlace},
      {{"a", "--after", "a"}, "\"a\" cannot be next to itself\n"},
      {{factoryName(), "--first"}, builtInRefusal("moved")},
      {{"a", "--after", factoryName()}, builtInRefusal("moved, nor be a place to move to")},
  };
  store_.save({ownPreset(firstID, "a"), ownPreset(secondID, "b")});
  const std::string before = storeText();
  for (auto [words, message] : cases) {
    words.insert(words.begin(), "move");
    EXPECT_EQ(presets(words), (Outcome{ExitStatus::wrongUsage, "", message}));
  }
  EXPECT_EQ(storeText(), before);
}

TEST_F(SearchPresets, ListsThoseThatMatch) {
  TuningPreset rain = ownPreset(firstID, "Rain", {{"FF", 60}});
  rain.notes = "wet tyres";
  const TuningPreset spa = ownPreset(secondID, "Spa", {{"FF", 80}});
  store_.save({rain, spa});
  const std::string none = "  None that match.\n";
  EXPECT_EQ(presets({"list", "--search", "WET FF=60%"}),
            (Outcome{ExitStatus::done,
                     "Built in\n" + none + "\nYour own\n  Rain  Custom    1 value\n", ""}));
  EXPECT_EQ(
      presets({"list", "--game", "any"}).out,
      "Built in\n  Fanatec factory defaults  Any  14 values  Fanatec help center, tuning menu "
      "article\n\nYour own\n" +
          none);
  EXPECT_EQ(presets({"list", "--json", "--game", "custom", "--search", "FF=80"}),
            (Outcome{ExitStatus::done, presetsDocument({spa}), ""}));
  EXPECT_EQ(presets({"list", "--search", "\xFF"}),
            (Outcome{ExitStatus::done, "Built in\n" + none + "\nYour own\n" + none, ""}));
  EXPECT_EQ(presets({"list", "--search", ""}), presets({"list"}));
}

TEST_F(EditPreset, WhatAnotherGetsHasTheGameTheSourceAndTheNotes) {
  store_.save({ownPreset(firstID, "Rain", {{"FF", 60}})});
  presets({"edit", "Rain", "--game", "GT7", "--source", "me", "--notes", "one\ntwo"});
  TuningPreset shared = store_.read().at(0);
  EXPECT_EQ(presets({"share", path("rain.quorvane"), "--preset", "Rain"}).status, ExitStatus::done);
  store_.save({});
  EXPECT_EQ(presets({"import", path("rain.quorvane")}).status, ExitStatus::done);
  const TuningPreset imported = store_.read().at(0);
  shared.id = imported.id;
  EXPECT_EQ(imported, shared);
}

}  // namespace
}  // namespace quorvane
