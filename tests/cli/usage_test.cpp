#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/version.h"
#include "tests/cli/command_line_fixture.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

using Usage = CommandLineTest;

// Expects that no message of the library for options is shown.
void expectOwnSentences(const std::string& text) {
  for (const char* const sentence :
       {"is required", "required", "was not expected", "were not expected", "Could not convert",
        "The following argument", "[REQUIRED]", " TEXT ", "missing", "not in {", "subcommand"}) {
    EXPECT_EQ(text.find(sentence), std::string::npos) << text;
  }
}

// Bases that the program simulates itself, in real time.
class Simulate : public CommandLineTest {
 protected:
  Simulate() { inSimulatedTime_ = false; }
};

// Removes --json from the suggested command line, which repeats the given options.
std::string withoutJsonOption(std::string text) {
  const std::string option = " --json";
  const auto at = text.find("quorvanectl" + option);
  if (at != std::string::npos) text.erase(text.find(option, at), option.size());
  return text;
}

TEST_F(Usage, WrongWordsTouchNoBase) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "Usage: quorvanectl [OPTION...] COMMAND [ARGUMENT...]"},
      {"--layout sdk", "A command is needed: devices, read, explain, diff,"},
      {"frobnicate", "frobnicate"},
      {"READ", "READ"},
      {"--frobnicate read", "--frobnicate"},
      {"read more", "read takes no more words: \"more\" is one too many"},
      {"devices more", "more"},
      {"usb-reset more", "more"},
      {"monitor more", "more"},
      {"--device", "--device needs a value: WHICH"},

      {"set", "set needs CODE=VALUE: what to write, such as SEN=900 FF=80"},
      {"set FF", "\"FF\" is not of the form CODE=VALUE"},
      {"set FF=80 SEN", "\"SEN\" is not of the form CODE=VALUE"},
      {"set XYZ=1", "There is no setting \"XYZ\""},
      {"set FF=80 XYZ=1", "There is no setting \"XYZ\""},
      {"set FF=80 SEN=OFF", "\"OFF\" is no value for SEN"},
      {"set FF=80 FF=80", "FF is given twice"},
      {"set FF=80 ff=20", "FF is given twice"},
      {"set FF=99999999999999999999", "is no value for FF"},
      {"set --yes FF=80", "set has no option \"--yes\""},

      {"select", "select needs SET: the set's number, 1 to 5, or its name"},
      {"select two", "There is no set \"two\": give 1 to 5, or A or C"},
      {"select 2 3", "select takes no more words: \"3\" is one too many"},
      {"mode basic", "There is no mode \"basic\": give standard or advanced"},
      {"mode standard advanced", "advanced"},
      {"history FF", "history takes no more words: \"FF\" is one too many"},
      {"undo FF", "undo takes no more words: \"FF\" is one too many"},
      {"redo --yes", "redo has no option \"--yes\""},
      {"rotation", "rotation needs DEGREES: degrees, from 90 to"},
      {"rotation far", "\"far\" is no steering angle: give whole degrees, such as 540"},
      {"rotation 900.5", "\"900.5\" is no steering angle"},
      {"rotation +900", "\"+900\" is no steering angle"},
      {"rotation AUTO", "\"AUTO\" is no steering angle"},
      {"rotation 900 90", "90"},
      {"raw", "raw needs BYTES: hexadecimal bytes"},
      {"raw zz", "hexadecimal"},
      {"raw ff 03 0g", "hexadecimal"},
      {"raw ff 03 002", "hexadecimal"},
      {"raw 0x", "hexadecimal"},
      {"doctor more", "more"},
      {"doctor --report", "--report needs a value: FILE"},
      {"factory-reset", "--yes"},
      {"factory-reset yes", "yes"},

      {"presets list more", "more"},
      {"presets list list", "list"},
      {"presets show", "presets show needs WHICH: the preset's name or id"},
      {"presets show a b", "b"},
      {"presets show nobody", "There is no preset \"nobody\""},
      {"presets apply", "presets apply needs WHICH"},
      {"presets apply a b", "b"},
      {"presets apply nobody", "There is no preset \"nobody\""},
      {"presets save", "presets save needs NAME: the new preset's name"},
      {"presets save My GT7", "GT7"},
      {"presets delete", "presets delete needs WHICH"},
      {"presets delete nobody", "There is no preset \"nobody\""},
      {"presets edit", "presets edit needs WHICH"},
      {"presets edit a --name", "--name needs a value: NAME"},
      {"presets duplicate", "presets duplicate needs WHICH"},
      {"presets duplicate a b", "b"},
      {"presets move", "presets move needs WHICH"},
      {"presets versions more", "more"},
      {"presets restore", "presets restore needs NUMBER"},
      {"presets restore 1 2", "2"},
      {"presets move a --before", "--before needs a value: WHICH"},
      {"presets import", "presets import needs FILE"},
      {"presets export", "presets export needs FILE"},
      {"presets export - nobody", "There is no preset \"nobody\""},
      {"presets share", "presets share needs FILE"},
      {"presets share - more", "more"},
      {"presets share - --preset nobody", "There is no preset \"nobody\""},
      {"presets apply --preset x", "--preset"},
      {"apply x", "There is no command or option \"apply\""},
      {"[apply] x", "There is no command or option \"[apply]\""},

      {"--layout windows set FF=80", "There is no layout \"windows\": give sdk or linux"},
      {"--layout SDK set FF=80", "SDK"},
      {"--report-id 256 rotation 900", "\"256\" is no report ID"},
      {"--report-id -1 rotation 900", "\"-1\" is no report ID"},
      {"--report-id 0x100 rotation 900", "\"0x100\" is no report ID"},
      {"--report-id 0x rotation 900", "\"0x\" is no report ID"},
      {"--report-id one rotation 900", "\"one\" is no report ID"},
      {"--report-id +1 rotation 900", "\"+1\" is no report ID"},
      {"--layout= set FF=80", "\"--layout=\" has nothing behind it"},
      {"--simulate= read", "\"--simulate=\" has nothing behind it"},
      {"--simulate=nothing read", "\"nothing\" does not name one product"},
      {"read --json=maybe", "\"--json=maybe\": --json takes no value"},
      {"factory-reset --yes=maybe", "\"--yes=maybe\": --yes takes no value"},
      {"read -x", "read has no option \"-x\""},
      {"help frobnicate", "There is no command \"frobnicate\" to help with"},
      {"help presets frobnicate", "There is no command \"frobnicate\" to help with"},
  };
  base();
  for (const auto& [line, message] : cases) {
    const Outcome outcome = run(line);
    EXPECT_EQ(outcome.status, ExitStatus::wrongUsage) << line;
    EXPECT_EQ(outcome.out, "") << line;
    EXPECT_NE(outcome.err.find(message), std::string::npos) << line << "\n" << outcome.err;
    expectOwnSentences(outcome.err);
    if (line.empty()) continue;
    const Outcome inJson = run("--json " + line);
    EXPECT_EQ(inJson.status, ExitStatus::wrongUsage) << line;
    EXPECT_EQ(withoutJsonOption(inJson.err), outcome.err) << line;
    const Json error = Json::parse(inJson.out)["error"];
    EXPECT_EQ(error["kind"], "wrongUsage") << line;
    EXPECT_NE(error["message"].get<std::string>().find(message), std::string::npos) << inJson.out;
  }
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(Usage, ListsTheCommandsBelowPresetsWhenNoneIsNamed) {
  const std::string help =
      "presets takes one of: list, show, apply, save, delete, edit, duplicate, move, "
      "versions, restore, import, export, share";
  const std::string usage =
      "\nUsage: quorvanectl presets COMMAND [ARGUMENT...]\nMore with --help.\n";
  const std::string none = "There is no command or option \"presets ";
  const std::vector<std::pair<std::string, std::string>> cases{
      {"presets", help},
      {"presets frobnicate", none + "frobnicate\"\n" + help},
      {"presets LIST", none + "LIST\"\n" + help + "\nDid you mean: quorvanectl presets list"},
      {"presets read", none + "read\"\n" + help},
      {"presets --frobnicate", none + "--frobnicate\"\n" + help},
  };
  for (const auto& [line, message] : cases) {
    EXPECT_EQ(run(line), (Outcome{ExitStatus::wrongUsage, "", message + usage})) << line;
  }
  EXPECT_EQ(run("presets --json"),
            (Outcome{ExitStatus::wrongUsage, errorDocument("wrongUsage", help), help + usage}));
}

TEST_F(Usage, ShowsTheCommandsWhenNoneIsNamed) {
  const Outcome bare = run("");
  EXPECT_EQ(bare, (Outcome{ExitStatus::wrongUsage, "", run("--help").out}));
  EXPECT_EQ(run("help").out, bare.err);
}

TEST_F(Usage, ProposesTheLikelyLine) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"raed"}, "read"},
      {{"READ", "--json"}, "read --json"},
      {{"--simulate", "st", "FF=80"}, "--simulate set FF=80"},
      {{"FF=80"}, "set FF=80"},
      {{"fx=80"}, "set FF=80"},
      {{"FF:80"}, "set FF=80"},
      {{"--simulate", "ff", "80", "SEN=900"}, "--simulate set FF=80 SEN=900"},
      {{"apply", "My GT7"}, "presets apply 'My GT7'"},
      {{"presets", "aply", "My GT7"}, "presets apply 'My GT7'"},
      {{"presets", "save", "My", "GT7"}, "presets save 'My GT7'"},
      {{"presets", "show", "it's", "mine"}, "presets show 'it'\\''s mine'"},
      {{"read", "--jsno"}, "read --json"},
      {{"--sim=DD1", "read", "--devise=x"}, ""},
      {{"read", "--devise=x"}, "read --device=x"},
      {{"set", "SEN", "900"}, "set SEN=900"},
      {{"set", "--simulate", "SEN", "900", "--json"}, "set --simulate SEN=900 --json"},
      {{"set", "FF=80", "sen:900"}, "set FF=80 SEN=900"},
      {{"set", "FX=80"}, "set FF=80"},
      {{"set", "DRI", "-3"}, "set DRI=-3"},
      {{"mode", "advaced"}, "mode advanced"},
      {{"help", "prests", "save"}, "help presets save"},
      {{"help", "raed"}, "help read"},
      {{"frobnicate"}, ""},
      {{"set", "FF=loud"}, ""},
      {{"select", "2", "3"}, ""},
  };
  base();
  for (const auto& [words, line] : cases) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, ExitStatus::wrongUsage) << words.front();
    const std::string hint = "Did you mean: quorvanectl ";
    const std::size_t at = outcome.err.find(hint);
    const std::string proposed =
        at == std::string::npos
            ? ""
            : outcome.err.substr(at + hint.size(), outcome.err.find('\n', at) - at - hint.size());
    EXPECT_EQ(proposed, line) << outcome.err;
  }
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(Usage, HelpIsACommandToo) {
  for (const char* const command : {"set", "presets", "presets save", "help"}) {
    const Outcome wanted = run(std::string(command) + " --help");
    EXPECT_EQ(run("help " + std::string(command)), wanted) << command;
    EXPECT_EQ(wanted.out.substr(0, wanted.out.find('\n')).empty(), false);
  }
}

// All commands with their groups' names, without the groups themselves.
std::vector<std::string> allCommands() {
  return {"devices",
          "read",
          "explain",
          "diff",
          "set",
          "select",
          "mode",
          "history",
          "undo",
          "redo",
          "rotation",
          "raw",
          "factory-reset",
          "usb-reset",
          "monitor",
          "doctor",
          "udev-rule",
          "help",
          "presets list",
          "presets show",
          "presets apply",
          "presets save",
          "presets delete",
          "presets edit",
          "presets duplicate",
          "presets move",
          "presets versions",
          "presets restore",
          "presets import",
          "presets export",
          "presets share"};
}

TEST_F(Usage, TheHelpOfEachCommandEndsWithItsOwnExamples) {
  for (const std::string& command : allCommands()) {
    const std::string help = run(command + " --help").out;
    const std::size_t examples = help.rfind("Example");
    ASSERT_NE(examples, std::string::npos) << command;
    std::istringstream lines(help.substr(examples));
    std::string line;
    std::getline(lines, line);
    int count = 0;
    while (std::getline(lines, line)) {
      if (line.empty()) continue;
      EXPECT_TRUE((line + " ").starts_with("  quorvanectl " + command + " ")) << line;
      ++count;
    }
    EXPECT_GT(count, 0) << command;
  }
}

TEST_F(Usage, ANameOfSeveralBasesIsWrongUsage) {
  attach();
  attach();
  const Outcome outcome = run({"--device", simulatedID, "read"});
  EXPECT_EQ(outcome.status, ExitStatus::wrongUsage);
  EXPECT_EQ(outcome.err.substr(0, outcome.err.find('\n')),
            "Several bases answer to 0eb7:0020@00000000/1:4. Name one by its node:");
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(Usage, GlobalOptionsStandBeforeOrAfterTheCommandAndTheLastOneCounts) {
  base();
  const Outcome wanted = run("--layout linux --json select 3");
  ASSERT_EQ(wanted.status, ExitStatus::done);
  for (const char* const line :
       {"select 3 --layout linux --json", "select --json 3 --layout=linux",
        "--layout sdk select 3 --json --layout linux", "--json --json --layout linux select 3"}) {
    base().transcript().clear();
    EXPECT_EQ(Json::parse(run(line).out)["tuning"]["set"], 3) << line;
    EXPECT_EQ(transcript()[1], "> ff 03 01 03 +60") << line;
  }
}

TEST_F(Usage, HelpNamesTheCommandsAndOptions) {
  const Outcome outcome = run("--help");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "");
  for (const char* const word : {"--device WHICH",
                                 "--simulate [=PRODUCT]",
                                 "--report-id N",
                                 "--layout sdk|linux ",
                                 "--json",
                                 "--version",
                                 "--help",
                                 "\n  devices ",
                                 "\n  read ",
                                 "\n  explain ",
                                 "\n  diff ",
                                 "\n  set ",
                                 "\n  select ",
                                 "\n  mode ",
                                 "\n  rotation ",
                                 "\n  raw ",
                                 "\n  factory-reset ",
                                 "\n  usb-reset ",
                                 "\n  monitor ",
                                 "\n  doctor ",
                                 "\n  udev-rule ",
                                 "\n  presets ",
                                 "Exit status: 0 done, 1 "}) {
    EXPECT_NE(outcome.out.find(word), std::string::npos) << word << "\n" << outcome.out;
  }
}

TEST_F(Usage, HelpOfACommandNamesItsArguments) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
      {"devices", {"List the attached bases"}},
      {"read", {"Show who the base is"}},
      {"explain", {"CODE", "No base is needed", "explain NDP"}},
      {"diff", {"SIDE", "preset:NAME", "FILE#NAME", "1 they differ, 2 trouble"}},
      {"set", {"CODE=VALUE", "SEN=AUTO", "Ctrl-C", "--dry-run"}},
      {"select", {"SET", "1 to 5"}},
      {"mode", {"standard|advanced "}},
      {"history", {"what was written"}},
      {"undo", {"--dry-run", "goes further back"}},
      {"redo", {"--dry-run"}},
      {"rotation", {"DEGREES"}},
      {"raw", {"BYTES", "ff 03 02"}},
      {"factory-reset", {"--yes"}},
      {"usb-reset", {"Re-enumerate the base"}},
      {"monitor", {"Ctrl-C"}},
      {"doctor", {"--report FILE", "quorvanectl doctor --report", "Exit status 0"}},
      {"udev-rule", {"--install", "--remove", "/etc/udev/rules.d/70-quorvane.rules"}},
      {"presets",
       {"\n  list ", "\n  show ", "\n  apply ", "\n  save ", "\n  delete ", "\n  import ",
        "\n  export ", "\n  share ", "presets apply \"My GT7\""}},
      {"presets list", {"List the built-in presets and your own", "--search TEXT", "--game GAME"}},
      {"presets show", {"WHICH", "name or id", "presets show \"Fanatec factory defaults\""}},
      {"presets apply", {"WHICH", "Ctrl-C", "--dry-run", "presets apply"}},
      {"presets save", {"NAME", "presets save \"My GT7\""}},
      {"presets delete", {"WHICH", "presets delete \"My GT7\""}},
      {"presets edit", {"WHICH", "--name NAME", "--game GAME", "--source TEXT", "--notes TEXT"}},
      {"presets duplicate", {"WHICH", "--name NAME"}},
      {"presets move", {"--before WHICH", "--after WHICH", "--first", "--last"}},
      {"presets versions", {"former versions"}},
      {"presets restore", {"NUMBER", "--yes"}},
      {"presets import", {"FILE ...", "--text", "--name NAME", "presets import friend.quorvane"}},
      {"presets export", {"FILE", "WHICH ...", "presets export quorvane-presets.json"}},
      {"presets share", {"FILE", "--preset WHICH", "presets share my-base.quorvane"}},
  };
  base();
  for (const auto& [command, words] : cases) {
    const Outcome outcome = run(command + " --help");
    EXPECT_EQ(outcome.status, ExitStatus::done) << command;
    EXPECT_EQ(outcome.err, "") << command;
    EXPECT_NE(outcome.out.find("quorvanectl " + command), std::string::npos) << outcome.out;
    for (const std::string& word : words) {
      EXPECT_NE(outcome.out.find(word), std::string::npos) << word << "\n" << outcome.out;
    }
  }
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(Usage, VersionTellsVersionAndCommit) {
  EXPECT_EQ(run("--version"),
            (Outcome{ExitStatus::done,
                     "quorvanectl " + std::string(version()) + " (" + std::string(commit()) + ")\n",
                     ""}));
  const Json document{{"name", "quorvanectl"}, {"version", version()}, {"commit", commit()}};
  for (const char* const line : {"--version --json", "--json --version"}) {
    EXPECT_EQ(run(line), (Outcome{ExitStatus::done, documentText(document) + "\n", ""})) << line;
  }
}

TEST_F(Simulate, IsEveryProductWithATuningMenu) {
  const std::vector<std::pair<std::string, std::int64_t>> cases{
      {"--simulate", 0x0020},
      {"--simulate=0x0001", 0x0001},
      {"--simulate=0004", 0x0004},
      {"--simulate=5", 0x0005},
      {"--simulate=0x6", 0x0006},
      {"--simulate=0007", 0x0007},
      {"--simulate=0x0020", 0x0020},
      {"--simulate=0x0E03", 0x0E03},
      {"--simulate=dd1", 0x0006},
      {"--simulate=GT_DD_Pro", 0x0020},
      {"--simulate=CSL_Elite_Wheel_Base", 0x0E03},
      {"--simulate=PS4", 0x0005},
  };
  for (const auto& [option, productID] : cases) {
    std::string word = option;
    for (char& c : word) c = c == '_' ? ' ' : c;
    const auto product = FanatecProduct::lookup(productID).value();
    const Outcome outcome = run({word, "read", "--json"});
    EXPECT_EQ(outcome.status, ExitStatus::done) << option;
    EXPECT_EQ(outcome.err, "Simulated base: " + std::string(product.name) + "\n") << option;
    EXPECT_EQ(Json::parse(outcome.out)["device"]["productID"], productID) << option;
  }
}

TEST_F(Simulate, TakesItsProductWithAnEqualsSignOnly) {
  const Outcome outcome = run("read --simulate --json");
  EXPECT_EQ(Json::parse(outcome.out)["device"]["productID"], defaultSimulatedProduct);
  EXPECT_EQ(run("--simulate dd1 read").status, ExitStatus::wrongUsage);
}

TEST_F(Simulate, AnUnknownOrAmbiguousProductIsWrongUsageAndListsTheProducts) {
  for (const std::string product : {"nothing", "DD", "0x6204", "0x0011", "0x99999", "ClubSport"}) {
    EXPECT_EQ(run("--simulate=" + product + " read"),
              (Outcome{ExitStatus::wrongUsage, "",
                       "\"" + product +
                           "\" does not name one product with a tuning menu. There are:\n"
                           "  0x0001  ClubSport Wheel Base V2\n"
                           "  0x0004  ClubSport Wheel Base V2.5\n"
                           "  0x0005  CSL Elite Wheel Base (PS4)\n"
                           "  0x0006  Podium Wheel Base DD1\n"
                           "  0x0007  Podium Wheel Base DD2\n"
                           "  0x0020  CSL DD / GT DD Pro / ClubSport DD\n"
                           "  0x0e03  CSL Elite Wheel Base\n"}));
  }
}

TEST_F(Simulate, AnEmptyProductIsWrongUsage) {
  base();
  for (const char* const line : {"--simulate= read", "read --simulate=", "--simulate="}) {
    EXPECT_EQ(run(line).status, ExitStatus::wrongUsage) << line;
  }
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(Simulate, LeavesTheMachinesOwnBasesAlone) {
  base();
  usb_.attached = {{Fanatec::vendorID, 0x0020, 0x03140000}};
  EXPECT_EQ(run("--simulate read").status, ExitStatus::done);
  EXPECT_EQ(run("--simulate usb-reset").status, ExitStatus::done);
  EXPECT_EQ(transcript(), Lines{});
  EXPECT_EQ(usb_.resetLocations, std::vector<std::int64_t>{});
}

TEST_F(Simulate, KeepsPresetsInAStoreOfItsOwn) {
  EXPECT_EQ(run("--simulate presets save Mine").out,
            "Saved preset \"Mine\" (16 values)\nYour presets are in " +
                simulatedStore_.fileURL().string() + "\n");
  EXPECT_EQ(simulatedStore_.read().at(0).name, "Mine");
  EXPECT_EQ(run("--simulate presets delete Mine").status, ExitStatus::done);
  EXPECT_FALSE(std::filesystem::exists(store_.fileURL()));
}

TEST_F(Simulate, LeavesTheUsersOwnPresetsAlone) {
  store_.save({ownPreset(firstID, "Own")});
  const std::string before = contentOf(store_.fileURL());
  const std::string file = (directory_ / "all.json").string();
  EXPECT_EQ(run("presets export " + file).status, ExitStatus::done);
  const Lines lines{"--simulate presets show Own", "--simulate presets apply Own",
                    "--simulate presets export " + file + ".own Own",
                    "--simulate presets delete Own"};
  for (const std::string& line : lines) {
    EXPECT_EQ(run(line).status, ExitStatus::wrongUsage) << line;
  }
  EXPECT_EQ(run("--simulate presets import " + file).status, ExitStatus::done);
  for (const std::string& line : lines) EXPECT_NE(run(line).status, ExitStatus::wrongUsage) << line;
  EXPECT_EQ(contentOf(store_.fileURL()), before);
}

TEST_F(Simulate, TheFirmwareSpeaksTheLayoutAskedFor) {
  for (const char* const layout : {"sdk", "linux"}) {
    EXPECT_EQ(run({"--simulate", "--layout", layout, "set", "FF=81"}).status, ExitStatus::done);
  }
}

TEST_F(Simulate, EachRunStartsAfresh) {
  EXPECT_EQ(run("--simulate set FF=37").status, ExitStatus::done);
  EXPECT_EQ(Json::parse(run("--simulate --json read").out)["tuning"]["values"]["FF"], 65);
}

TEST_F(Simulate, KeepsItsStateInAFile) {
  const std::string options =
      "--simulate --json --simulate-state " + (directory_ / "my.state").string() + " ";
  for (const char* const command : {"set FF=37", "select 4", "set SEN=540", "mode advanced"}) {
    EXPECT_EQ(run(options + command).status, ExitStatus::done) << command;
  }
  Json tuning = Json::parse(run(options + "read").out)["tuning"];
  EXPECT_EQ(tuning["set"], 4);
  EXPECT_EQ(tuning["mode"], "advanced");
  EXPECT_EQ(tuning["values"]["SEN"], 540);
  EXPECT_EQ(run(options + "select 2").status, ExitStatus::done);
  tuning = Json::parse(run(options + "read").out)["tuning"];
  EXPECT_EQ(tuning["values"]["FF"], 37);
  EXPECT_EQ(tuning["values"]["SEN"], 900);
}

TEST_F(Simulate, AStateThatCannotBeUsedIsAFailure) {
  const std::string file = (directory_ / "my.state").string();
  const std::string command = "--simulate --simulate-state " + file + " read";
  putFile(file, "{}");
  EXPECT_EQ(run(command), (Outcome{ExitStatus::failed, "",
                                   file + ": Not a state of simulated bases: \"format\" is not "
                                          "\"quorvane-simulated-bases-1\"\n"}));
  EXPECT_EQ(contentOf(file), "{}");
  std::filesystem::remove(file);
  EXPECT_EQ(run("--simulate=DD1 --simulate-state " + file + " set FF=37").status, ExitStatus::done);
  const Outcome other = run(command);
  EXPECT_EQ(other.status, ExitStatus::failed);
  EXPECT_NE(other.err.find("name another file, or use --simulate=0006\n"), std::string::npos);
  EXPECT_EQ(run("--simulate-state " + file + " read").err,
            "--simulate-state keeps what a simulated base is set to: add --simulate\n");
}

TEST_F(Simulate, AChangeThatCannotBeKeptIsAFailure) {
  std::filesystem::create_directory(directory_ / ".lock");
  const std::string file = (directory_ / "my.state").string();
  const Outcome outcome = run("--simulate --simulate-state " + file + " set FF=37");
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_NE(outcome.err.find("The simulated base's state was not kept: "), std::string::npos)
      << outcome;
  EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace quorvane
