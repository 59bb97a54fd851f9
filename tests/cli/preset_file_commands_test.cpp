#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>

#include "support/wall_time.h"
#include "tests/cli/piped_input.h"
#include "tests/cli/preset_fixture.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

class FilePresets : public PresetTest {
 protected:
  const TuningPreset first_ = ownPreset(firstID, "First", {{"FF", 80}, {"brF", 50}});
  const TuningPreset second_ = ownPreset(secondID, "Second", {{"SEN", 900}});
};

using ImportPresets = FilePresets;
using ExportPresets = FilePresets;
using SharePreset = FilePresets;

std::string shareFile(const TuningPreset& preset) {
  return encodeShareFile({"quorvane-settings-1", WallSeconds{}, "A base", preset});
}

// A share file with "THEN" in place of the time, which must be at most a minute ago.
std::string withoutTime(std::string text) {
  const std::string key = R"("exportedAt" : ")";
  const std::size_t begin = text.find(key) + key.size();
  const auto time = parseISO8601(text.substr(begin, 20));
  EXPECT_TRUE(time.has_value()) << text;
  EXPECT_LT(WallClock::now() - time.value_or(WallSeconds{}), std::chrono::minutes(1));
  return text.replace(begin, 20, "THEN");
}

TEST_F(ImportPresets, AddsThePresetsOfEveryFormOfFile) {
  store_.save({ownPreset(thirdID, "Mine")});
  const std::string share = put("share.quorvane", shareFile(first_));
  const std::string list = put("list.json", encodePresets({first_, second_}));
  const std::string single =
      put("single.json", documentText(Json::parse(encodePresets({second_}))[0]));
  EXPECT_EQ(presets({"import", share, list, single}),
            (Outcome{ExitStatus::done,
                     "Imported \"First\" from " + share + "\n" +     //
                         "Imported \"First\" from " + list + "\n" +  //
                         "Imported \"Second\" from " + list + "\n" + "Imported \"Second\" from " +
                         single + "\n",
                     ""}));
  EXPECT_EQ(
      withoutIDs(storeText()),
      withoutIDs(encodePresets({ownPreset(thirdID, "Mine"), first_, first_, second_, second_})));
}

TEST_F(ImportPresets, GivesThemNewIdsAndMakesThemTheUsersOwn) {
  TuningPreset builtIn = first_;
  builtIn.isBuiltIn = true;
  const std::string list = put("list.json", encodePresets({builtIn, builtIn}));
  EXPECT_EQ(presets({"import", list}).status, ExitStatus::done);
  const auto stored = store_.read();
  ASSERT_EQ(stored.size(), 2U);
  EXPECT_NE(stored[0].id, stored[1].id);
  EXPECT_NE(stored[0].id, first_.id);
  EXPECT_FALSE(stored[0].isBuiltIn);
}

TEST_F(ImportPresets, GivesOneDocument) {
  const std::string list = put("list.json", encodePresets({first_, second_}));
  const Outcome outcome = presets({"import", list, "--json"});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, presetsDocument(store_.read()), ""}));
  EXPECT_EQ(store_.read().size(), 2U);
}

TEST_F(ImportPresets, SaysWhenAFileHoldsNone) {
  const std::string list = put("list.json", "[]");
  EXPECT_EQ(presets({"import", list}),
            (Outcome{ExitStatus::done, "There are no presets in " + list + "\n", ""}));
  EXPECT_EQ(presets({"import", list, "--json"}),
            (Outcome{ExitStatus::done, presetsDocument({}), ""}));
  EXPECT_FALSE(std::filesystem::exists(store_.fileURL()));
}

TEST_F(ImportPresets, AFileThatCannotBeReadLeavesTheOthers) {
  const std::string bad = put("bad.json", "{}");
  const std::string good = put("good.json", encodePresets({first_}));
  const std::string missing = path("missing.json");
  const std::string message = bad + ": \"id\" is missing";
  const std::string messages = message + "\n" + missing + ": No such file or directory\n";
  EXPECT_EQ(presets({"import", bad, good, missing}),
            (Outcome{ExitStatus::failed, "Imported \"First\" from " + good + "\n", messages}));
  EXPECT_EQ(store_.read().size(), 1U);

  Json document = Json::parse(presetsDocument({first_}));
  document["error"] = {{"kind", "invalidFile"}, {"message", message}};
  EXPECT_EQ(withoutIDs(presets({"import", bad, good, missing, "--json"})),
            (Outcome{ExitStatus::failed, withoutIDs(documentText(document)) + "\n", messages}));
  EXPECT_EQ(store_.read().size(), 2U);
}

TEST_F(ImportPresets, SaysWhatIsWrongWithAFile) {
  struct Case {
    std::string name;
    std::function<void(const std::string&)> make;
    std::string kind;
    std::string reason;
  };
  const auto holding = [](std::string content) {
    return [content = std::move(content)](const std::string& path) { putFile(path, content); };
  };
  const std::vector<Case> cases{
      {"missing", [](const std::string&) {}, "fileFailed", "No such file or directory"},
      {"directory", [](const std::string& path) { std::filesystem::create_directory(path); },
       "fileFailed", "Is a directory"},
      {"fifo", [](const std::string& path) { EXPECT_EQ(::mkfifo(path.c_str(), 0666), 0); },
       "fileFailed", "Not a regular file"},
      {"huge",
       [](const std::string& path) {
         putFile(path, "");
         std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
       },
       "fileFailed", "Longer than 8 MiB"},
      {"object", holding("{}"), "invalidFile", "\"id\" is missing"},
      {"number", holding("7"), "invalidFile", "A preset is not an object but number"},
      {"element", holding("[7]"), "invalidFile", "A preset is not an object but array"},
      {"deep", holding(std::string(1000000, '[')), "invalidFile",
       "Not a settings file: nested deeper than 64"},
      {"latin", holding("[\"Gr\xFCn\"]"), "invalidFile", ""},
      {"empty", holding(""), "invalidFile", ""},
      {"truncated", holding("[{\"id\""), "invalidFile", ""},
      {"binary",
       holding(std::string("\x7f"
                           "ELF\0\x01\xFF",
                           7)),
       "invalidFile", ""},
  };
  for (const auto& [name, make, kind, reason] : cases) {
    const std::string file = path(name);
    make(file);
    const std::string start =
        file + ": " + (reason.empty() ? "Not valid JSON at line 1, column " : reason);
    const Outcome text = presets({"import", file});
    EXPECT_EQ(text.status, ExitStatus::failed) << name;
    EXPECT_EQ(text.out, "") << name;
    EXPECT_EQ(text.err.substr(0, start.size()), start);
    EXPECT_EQ(std::count(text.err.begin(), text.err.end(), '\n'), 1) << text.err;
    const std::string message = text.err.substr(0, text.err.size() - 1);
    EXPECT_EQ(presets({"import", file, "--json"}),
              (Outcome{ExitStatus::failed, errorDocument(kind, message), text.err}));
    EXPECT_FALSE(std::filesystem::exists(store_.fileURL()));
  }
}

TEST_F(ImportPresets, ReadsPipes) {
  for (const char* const file : {"-", "/dev/stdin", "/dev/fd/0"}) {
    const PipedInput input(encodePresets({first_}));
    const std::string name = file == std::string("-") ? "standard input" : file;
    EXPECT_EQ(presets({"import", file}),
              (Outcome{ExitStatus::done, "Imported \"First\" from " + name + "\n", ""}));
  }
  EXPECT_EQ(store_.read().size(), 3U);
}

TEST_F(ImportPresets, ReadsNoMoreOfAPipeThanOfAFile) {
  const Pipe pipe;
  const ChildProcess writer([&] {
    const std::string block(65536, ' ');
    ::signal(SIGPIPE, SIG_DFL);
    while (::write(pipe.writing.get(), block.data(), block.size()) > 0) continue;
    return std::string();
  });
  const std::string file = "/dev/fd/" + std::to_string(pipe.reading.get());
  EXPECT_EQ(presets({"import", file}),
            (Outcome{ExitStatus::failed, "", file + ": Longer than 8 MiB\n"}));
  writer.kill();
}

TEST_F(ImportPresets, WhatComesThroughAPipeHasToBeSettings) {
  const PipedInput input("{}");
  EXPECT_EQ(presets({"import", "-"}),
            (Outcome{ExitStatus::failed, "", "standard input: \"id\" is missing\n"}));
}

TEST_F(ImportPresets, AFileThatThisUserMayNotReadGivesNoHintAboutDevices) {
  const std::string file = put("secret.json", "[]");
  std::filesystem::permissions(file, std::filesystem::perms::none);
  EXPECT_EQ(inChildProcess([&] {
              becomeOrdinaryUser();
              return presets({"import", file}).err;
            }),
            file + ": Permission denied\n");
}

TEST_F(ImportPresets, KeepsAStoreThatCannotBeRead) {
  const std::string file = put("good.json", encodePresets({first_}));
  damageStore();
  const std::string warning = unreadable();
  const Outcome outcome = presets({"import", file});
  EXPECT_EQ(outcome, (Outcome{ExitStatus::done, "Imported \"First\" from " + file + "\n",
                              warning + kept()}));
  EXPECT_EQ(withoutIDs(storeText()), withoutIDs(encodePresets({first_})));
}

TEST_F(ImportPresets, AStoreThatCannotBeWrittenIsAFailureAndNothingCameIn) {
  const std::string file = put("good.json", encodePresets({first_}));
  std::filesystem::create_directories(store_.fileURL());
  const std::string message = storePath() + ": Is a directory";
  EXPECT_EQ(presets({"import", file, "--json"}),
            (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
}

TEST_F(ExportPresets, WritesTheUsersOwnInTheLayoutOfTheStore) {
  store_.save({first_, second_});
  const std::string file = path("mine.json");
  EXPECT_EQ(presets({"export", file}),
            (Outcome{ExitStatus::done, "Exported 2 presets to " + file + "\n", ""}));
  EXPECT_EQ(contentOf(file), storeText());
}

TEST_F(ExportPresets, WritesThoseNamed) {
  store_.save({first_, second_});
  const std::string file = path("mine.json");
  EXPECT_EQ(presets({"export", file, "second", factoryName()}).status, ExitStatus::done);
  EXPECT_EQ(contentOf(file), encodePresets({second_, TuningPreset::builtIn().front()}));
  EXPECT_EQ(presets({"export", "--force", file, firstID}),
            (Outcome{ExitStatus::done, "Exported 1 preset to " + file + "\n", ""}));
  EXPECT_EQ(contentOf(file), encodePresets({first_}));
}

TEST_F(ExportPresets, GivesOneDocument) {
  store_.save({first_, second_});
  const std::string file = path("mine.json");
  Json document = Json::parse(presetsDocument({second_}));
  document["file"] = file;
  EXPECT_EQ(presets({"export", file, "Second", "--json"}),
            (Outcome{ExitStatus::done, documentText(document) + "\n", ""}));
}

TEST_F(ExportPresets, AFileThatIsThereIsReplacedOnlyWhenAskedFor) {
  store_.save({first_});
  const std::string file = put("all.json", "another day");
  const std::string message = file + ": File exists; give --force to replace it";
  for (const std::vector<std::string>& words : {std::vector<std::string>{"export", file},
                                                {"share", file},
                                                {"share", file, "--preset", "First"}}) {
    EXPECT_EQ(presets(words), (Outcome{ExitStatus::failed, "", message + "\n"}));
    EXPECT_EQ(contentOf(file), "another day");
  }
  EXPECT_EQ(presets({"export", file, "--json"}).out, errorDocument("fileFailed", message));
  EXPECT_EQ(presets({"export", file, "--force"}).status, ExitStatus::done);
  EXPECT_EQ(contentOf(file), storeText());
  EXPECT_EQ(presets({"share", "--force", file, "--preset", "First"}).status, ExitStatus::done);
  EXPECT_NE(contentOf(file), storeText());
}

TEST_F(ExportPresets, ToStandardOutputGivesTheFileAndNothingElse) {
  store_.save({first_, second_});
  EXPECT_EQ(run("presets export -"), (Outcome{ExitStatus::done, storeText() + "\n", ""}));
  EXPECT_EQ(run("presets export - First --json"),
            (Outcome{ExitStatus::done, encodePresets({first_}) + "\n", ""}));
}

TEST_F(ExportPresets, WithoutAnyOfTheUsersOwnIsAnEmptyList) {
  const std::string file = path("mine.json");
  EXPECT_EQ(presets({"export", file}),
            (Outcome{ExitStatus::done, "Exported 0 presets to " + file + "\n", ""}));
  EXPECT_EQ(contentOf(file), "[]");
}

TEST_F(ExportPresets, WhatItWroteCanBeImported) {
  store_.save({first_, second_});
  const std::string file = path("mine.json");
  presets({"export", file});
  presets({"import", file});
  EXPECT_EQ(withoutIDs(storeText()), withoutIDs(encodePresets({first_, second_, first_, second_})));
}

TEST_F(ExportPresets, TakesANameInBracketsAsItIs) {
  const TuningPreset first = ownPreset(firstID, "[GT7]");
  const TuningPreset second = ownPreset(secondID, "[Rain, Ring]");
  store_.save({first, second});
  EXPECT_EQ(presets({"export", "-", "[Rain, Ring]", "[GT7]"}).out,
            encodePresets({second, first}) + "\n");
}

TEST_F(ExportPresets, AnUnknownNameWritesNothing) {
  store_.save({first_});
  const std::string file = path("mine.json");
  EXPECT_EQ(
      presets({"export", file, "First", "fir"}),
      (Outcome{ExitStatus::wrongUsage, "", "There is no preset \"fir\". There are:\n  First\n"}));
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ExportPresets, APlaceThatCannotBeWrittenIsAFailure) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {path("nowhere/mine.json"), "No such file or directory"},
      {directory_.path().string(), "Is a directory"},
      {"/dev/null", "Not a regular file"},
  };
  for (const auto& [file, reason] : cases) {
    const std::string message = fmt::format("{}: {}", file, reason);
    EXPECT_EQ(presets({"export", file}), (Outcome{ExitStatus::failed, "", message + "\n"}));
    EXPECT_EQ(presets({"export", file, "--json"}),
              (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
  }
}

TEST_F(ExportPresets, AStoreThatCannotBeReadLeavesTheBuiltInOnes) {
  damageStore();
  const std::string file = put("mine.json", "from another day");
  EXPECT_EQ(presets({"export", "--force", file, factoryName()}),
            (Outcome{ExitStatus::done, "Exported 1 preset to " + file + "\n", unreadable()}));
  EXPECT_EQ(contentOf(file), encodePresets({TuningPreset::builtIn().front()}));
}

TEST_F(ExportPresets, AStoreThatCannotBeReadReplacesNoFileByAnEmptyOne) {
  damageStore();
  const std::string file = put("mine.json", "from another day");
  EXPECT_EQ(presets({"export", file}),
            (Outcome{ExitStatus::failed, "",
                     unreadable() + file + ": Not written: your presets cannot be read\n"}));
  EXPECT_EQ(contentOf(file), "from another day");
}

TEST_F(SharePreset, WritesTheBasesMenuWithItsName) {
  base();
  const std::string file = path("mine");
  EXPECT_EQ(
      presets({"share", file}),
      (Outcome{ExitStatus::done,
               "Exported \"CSL DD / GT DD Pro / ClubSport DD, set C (Custom)\" to " + file + "\n",
               ""}));
  EXPECT_EQ(withoutTime(withoutIDs(contentOf(file))),
            "{\n"
            "  \"base\" : \"CSL DD \\/ GT DD Pro \\/ ClubSport DD\",\n"
            "  \"exportedAt\" : \"THEN\",\n"
            "  \"format\" : \"quorvane-settings-1\",\n"
            "  \"preset\" : {\n"
            "    \"game\" : \"\",\n"
            "    \"id\" : \"ID\",\n"
            "    \"isBuiltIn\" : false,\n"
            "    \"name\" : \"CSL DD \\/ GT DD Pro \\/ ClubSport DD, set C (Custom)\",\n"
            "    \"notes\" : \"\",\n"
            "    \"source\" : \"\",\n"
            "    \"values\" : {\n"
            "      \"ACP\" : 1,\n"
            "      \"BLI\" : 101,\n"
            "      \"DPR\" : 50,\n"
            "      \"FEI\" : 100,\n"
            "      \"FF\" : 65,\n"
            "      \"FFS\" : 1,\n"
            "      \"FOR\" : 100,\n"
            "      \"FUL\" : 0,\n"
            "      \"INT\" : 11,\n"
            "      \"NDP\" : 25,\n"
            "      \"NFR\" : 10,\n"
            "      \"NIN\" : 5,\n"
            "      \"SEN\" : 900,\n"
            "      \"SHO\" : 100,\n"
            "      \"SPR\" : 100,\n"
            "      \"brF\" : 50\n"
            "    }\n"
            "  }\n"
            "}");
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
  EXPECT_EQ(directory_.names(), std::set<std::string>{"mine"});
}

TEST_F(SharePreset, NamesTheSetAsTheMenusModeDoes) {
  base().withBase([](SimulatedBase& simulated) {
    simulated.menu().toggleMode();
    simulated.menu().select(4);
  });
  const Json document = Json::parse(run("presets share -").out);
  EXPECT_EQ(document["preset"]["name"], "CSL DD / GT DD Pro / ClubSport DD, set 4");
}

TEST_F(SharePreset, WritesAPresetWithoutABase) {
  base();
  store_.save({first_, second_});
  const std::string file = path("second.quorvane");
  EXPECT_EQ(presets({"share", file, "--preset", "second"}),
            (Outcome{ExitStatus::done, "Exported \"Second\" to " + file + "\n", ""}));
  EXPECT_EQ(withoutTime(contentOf(file)),
            "{\n"
            "  \"exportedAt\" : \"THEN\",\n"
            "  \"format\" : \"quorvane-settings-1\",\n"
            "  \"preset\" : {\n"
            "    \"game\" : \"Custom\",\n"
            "    \"id\" : \"11111111-2222-3333-4444-BBBBBBBBBBBB\",\n"
            "    \"isBuiltIn\" : false,\n"
            "    \"name\" : \"Second\",\n"
            "    \"notes\" : \"\",\n"
            "    \"source\" : \"\",\n"
            "    \"values\" : {\n"
            "      \"SEN\" : 900\n"
            "    }\n"
            "  }\n"
            "}");
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(SharePreset, GivesOneDocument) {
  store_.save({first_});
  const std::string file = path("first.quorvane");
  Json document = Json::parse(presetsDocument({first_}));
  document["file"] = file;
  EXPECT_EQ(presets({"share", "--preset=First", file, "--json"}),
            (Outcome{ExitStatus::done, documentText(document) + "\n", ""}));
}

TEST_F(SharePreset, ToStandardOutputGivesTheFileAndNothingElse) {
  const std::string file = path("factory.quorvane");
  presets({"share", file, "--preset", factoryName()});
  for (const char* const json : {"--json", "--layout=sdk"}) {
    const Outcome outcome = presets({"share", "-", "--preset", factoryName(), json});
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(withoutTime(outcome.out), withoutTime(contentOf(file)) + "\n");
  }
}

TEST_F(SharePreset, WhatItWroteCanBeImported) {
  store_.save({first_});
  const std::string file = path("first.quorvane");
  presets({"share", file, "--preset", "First"});
  presets({"import", file});
  EXPECT_EQ(withoutIDs(storeText()), withoutIDs(encodePresets({first_, first_})));
}

TEST_F(SharePreset, FailsWithoutWritingAnything) {
  const std::string file = path("mine.quorvane");
  EXPECT_EQ(presets({"share", file}).status, ExitStatus::failed);
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(presets({"share", file, "--json"}),
            (Outcome{ExitStatus::failed, errorDocument("timeout", timeoutText),
                     std::string(timeoutText) + "\n"}));
  EXPECT_EQ(presets({"share", file, "--preset", ""}),
            (Outcome{ExitStatus::wrongUsage, "",
                     "There is no preset \"\". There are:\n" + builtInNames()}));
  EXPECT_EQ(directory_.names(), std::set<std::string>{});
}

TEST_F(SharePreset, APlaceThatCannotBeWrittenIsAFailure) {
  base();
  const std::string message = directory_.path().string() + ": Is a directory";
  EXPECT_EQ(presets({"share", directory_.path(), "--json"}),
            (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
}

}  // namespace
}  // namespace quorvane
