#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "cli/completion.h"
#include "cli/history_text.h"
#include "tests/cli/command_line_fixture.h"
#include "tests/cli/receipts.h"
#include "tests/support/file_calls.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// Whether a line of the transcript is a packet that may change the base.
bool isChange(const std::string& line) {
  return line.starts_with("> ") && !line.starts_with("> ff 03 02") && !line.starts_with("> ff 08");
}

class HistoryCommands : public CommandLineTest {
 protected:
  HIDDeviceInfo info() { return HIDEnumerator::devices(Fanatec::vendorID, backend_).front(); }

  std::vector<HistoryRecord> records() { return history_.read(info()).records; }

  std::int64_t valueOnBase(P parameter) {
    std::int64_t value = 0;
    base().withBase([&](SimulatedBase& simulated) {
      value = TuningSnapshot::fromReport(simulated.menu().report(), {})
                  ->value(parameter, simulated.product());
    });
    return value;
  }

  // Runs a command that has to succeed, and returns what it prints.
  std::string done(std::string_view line) {
    const Outcome outcome = run(line);
    EXPECT_EQ(outcome.status, ExitStatus::done) << line << "\n" << outcome;
    return outcome.out;
  }

  // Runs a line, in which {} is the directory. Returns whether packets were sent that may change
  // the base.
  bool runAndSeeChange(std::string line) {
    if (const auto at = line.find("{}"); at != std::string::npos) {
      line.replace(at, 2, directory_.path().string());
    }
    base().transcript().clear();
    if (line.starts_with("monitor")) interrupt();
    run(line);
    interruption_.clear();
    const Lines sent = transcript();
    return std::any_of(sent.begin(), sent.end(), isChange);
  }

  // The commands and groups of commands that the completion offers.
  std::set<std::string> offeredCommands() {
    std::set<std::string> commands;
    std::istringstream offered(run(std::vector<std::string>{completionWord, ""}).out);
    for (std::string line; std::getline(offered, line);) {
      const std::string word = line.substr(0, line.find('\t'));
      if (!word.starts_with("-")) commands.insert(word);
    }
    return commands;
  }

  // The lines after the first one, which has the time.
  std::string withoutHead(const std::string& text) { return text.substr(text.find('\n') + 1); }
};

TEST_F(HistoryCommands, EveryCommandThatWritesLeavesARecord) {
  std::string zeros;
  for (int i = 0; i < 61; ++i) zeros += " 00";
  // Each command with words that make it write if it ever does.
  const std::vector<std::pair<std::string, std::string>> lines{
      {"devices", ""},
      {"read", ""},
      {"explain", "FF"},
      {"diff", "base base"},
      {"set", "FF=80 SEN=700"},
      {"undo", ""},
      {"redo", ""},
      {"history", ""},
      {"select", "3"},
      {"mode", "advanced"},
      {"rotation", "540"},
      {"raw", "ff 03 06" + zeros},
      {"factory-reset", "--yes"},
      {"usb-reset", ""},
      {"monitor", ""},
      {"doctor", ""},
      {"udev-rule", ""},
      {"help", ""},
      {"presets save", "Mine"},
      {"presets list", ""},
      {"presets show", "Mine"},
      {"presets apply", "Mine"},
      {"presets edit", "Mine --notes x"},
      {"presets duplicate", "Mine"},
      {"presets move", "Mine --last"},
      {"presets versions", ""},
      {"presets restore", "1 --yes"},
      {"presets export", "{}/all.json"},
      {"presets share", "{}/mine.quorvane"},
      {"presets import", "{}/all.json"},
      {"presets delete", "builtin:none"},
  };
  base();
  std::set<std::string> writing;
  std::set<std::string> known;
  for (const auto& [command, more] : lines) {
    known.insert(command.substr(0, command.find(' ')));
    const std::size_t before = records().size();
    if (runAndSeeChange(fmt::format("{} {}", command, more))) writing.insert(command);
    EXPECT_EQ(records().size() - before, writing.contains(command) ? 1U : 0U) << command;
  }
  EXPECT_EQ(writing, (std::set<std::string>{"set", "undo", "redo", "select", "mode", "rotation",
                                            "raw", "factory-reset", "presets apply"}));
  EXPECT_EQ(known, offeredCommands());
}

TEST_F(HistoryCommands, UndoWritesTheOldValuesBackAndRedoTheNewOnes) {
  base();
  run("set FF=80 SEN=700");
  EXPECT_EQ(withoutHead(done("undo")), "SEN  900 deg (250 ms)\nFF   65 % (250 ms)\n");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  EXPECT_EQ(valueOnBase(P::sensitivity), 900);
  EXPECT_EQ(withoutHead(done("redo")), "SEN  700 deg (250 ms)\nFF   80 % (250 ms)\n");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_TRUE(done("undo").starts_with("Undoing what quorvanectl wrote at "));
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(HistoryCommands, UndoingAgainGoesFurtherBack) {
  base();
  for (const char* const line : {"set FF=70", "set FF=75", "set NDP=40"}) run(line);
  done("undo");
  EXPECT_EQ(valueOnBase(P::naturalDamper), 25);
  done("undo");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 70);
  done("undo");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  EXPECT_EQ(run("undo"),
            (Outcome{ExitStatus::failed, "",
                     std::string("There is nothing to undo on ") + simulatedName + "\n"}));
  done("redo");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 70);
}

TEST_F(HistoryCommands, AValueThatWasTurnedSinceIsShownAndLeftAlone) {
  base();
  run("set FF=80 SEN=700");
  base().turn(P::forceFeedback, 50);
  EXPECT_EQ(withoutHead(done("undo")),
            "FF   left at 50 %: changed since, it was 80 %\nSEN  900 deg (250 ms)\n");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 50);
  EXPECT_EQ(withoutHead(done("redo")),
            "FF   left at 50 %: changed since, it was 65 %\nSEN  700 deg (250 ms)\n");
}

TEST_F(HistoryCommands, WhenAllWasChangedSinceNothingIsWritten) {
  base();
  run("set FF=80");
  base().turn(P::forceFeedback, 50);
  base().transcript().clear();
  EXPECT_EQ(withoutHead(done("undo")),
            "FF   left at 50 %: changed since, it was 80 %\nThere is nothing to write\n");
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
  EXPECT_EQ(run("undo").status, ExitStatus::failed);
}

TEST_F(HistoryCommands, NothingIsUndoneInAnotherSetOrMode) {
  base();
  run("set FF=80");
  run("select 3");
  EXPECT_EQ(run("undo"),
            (Outcome{ExitStatus::failed, "",
                     "The write to undo is in set 2 of the standard menu; the base is in set 3 of "
                     "the standard menu. Choose the other one first\n"}));
  run("select 2");
  run("mode advanced");
  EXPECT_EQ(run("undo").status, ExitStatus::failed);
  run("mode standard");
  EXPECT_EQ(run("undo").status, ExitStatus::done);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(HistoryCommands, AnotherBaseHasAHistoryOfItsOwn) {
  base().setProperty(HIDPropertyKey::serialNumber, "ONE");
  attach().setProperty(HIDPropertyKey::serialNumber, "TWO");
  run("--device ONE set FF=80");
  EXPECT_EQ(run("--device TWO undo").status, ExitStatus::failed);
  EXPECT_EQ(run("--device TWO history").out,
            std::string("Nothing was written to ") + simulatedName + " yet\n");
  EXPECT_EQ(run("--device ONE undo").status, ExitStatus::done);
}

TEST_F(HistoryCommands, ADryRunShowsWhatWouldBeWrittenAndWritesNothing) {
  base();
  run("set FF=80 SEN=AUTO");
  const std::size_t before = records().size();
  base().transcript().clear();
  EXPECT_EQ(withoutHead(done("undo --dry-run")), "SEN  AUT -> 900 deg\nFF   80 % -> 65 %\n");
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
  EXPECT_EQ(records().size(), before);
  const Json document = Json::parse(done("undo --dry-run --json"));
  EXPECT_EQ(document["record"], records().front().id.text());
  EXPECT_EQ(document["writes"],
            (Json{{{"parameter", "SEN"}, {"value", 900}}, {{"parameter", "FF"}, {"value", 65}}}));
  EXPECT_EQ(document["leftAlone"], Json::array());
  EXPECT_FALSE(document.contains("results"));
}

TEST_F(HistoryCommands, AnUndoThatTheBaseRefusesIsTriedAgain) {
  base();
  run("set FF=80 SEN=700");
  change([](SimulatedBehaviour& behaviour) { behaviour.ignored = {P::forceFeedback}; });
  EXPECT_EQ(run("undo").status, ExitStatus::failed);
  change([](SimulatedBehaviour& behaviour) { behaviour.ignored.clear(); });
  EXPECT_EQ(withoutHead(done("undo")), "FF   65 % (250 ms)\n");
}

TEST_F(HistoryCommands, ASwitchOfSetsWithinSetIsARecordOfItsOwn) {
  base();
  run("set SLOT=3 FF=80");
  ASSERT_EQ(records().size(), 2U);
  EXPECT_EQ(records()[0].action, HistoryAction::select);
  EXPECT_EQ(records()[0].menu->slot(), 2);
  EXPECT_EQ(records()[1].action, HistoryAction::set);
  EXPECT_EQ(records()[1].menu->slot(), 3);
  run("select 2");
  EXPECT_EQ(run("undo").status, ExitStatus::failed);
}

TEST_F(HistoryCommands, TheListNamesTheLatestWriteFirst) {
  base();
  run("set FF=80 SEN=AUTO");
  run("set FF=120");
  run("presets save Mine");
  run("presets apply Mine");
  run("rotation 540");
  const auto all = records();
  ASSERT_EQ(all.size(), 4U);
  EXPECT_EQ(changeText(all[0]), "SEN 900 deg -> AUT; FF 65 % -> 80 %");
  EXPECT_EQ(changeText(all[1]), "FF 80 % -> 120 %, not written");
  EXPECT_TRUE(changeText(all[2]).starts_with("Mine; SEN AUT -> AUT; FF 80 % -> 80 %; "));
  EXPECT_EQ(changeText(all[3]), "540");
  const std::string text = done("history");
  EXPECT_EQ(text, historyText(all));
  EXPECT_TRUE(text.starts_with(shortID(all[3].id) + "  "));
}

TEST_F(HistoryCommands, AHistoryThatCannotBeWrittenStopsNothingAndIsSaid) {
  base();
  std::filesystem::create_directories(state_ / "history");
  const FileCalls calls(FileCalls::failEach("open", EROFS));
  const Outcome outcome = run("set FF=80");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.out, "FF   80 % (250 ms)\n");
  EXPECT_TRUE(outcome.err.starts_with("Not in the history: ")) << outcome.err;
  EXPECT_EQ(run("rotation 540").status, ExitStatus::done);
}

TEST_F(HistoryCommands, LinesThatCannotBeReadAreCounted) {
  base();
  run("set FF=80");
  const std::string file = (state_ / "history") / historyFileName(info());
  putFile(file, contentOf(file) + "{\"id\":");
  const Outcome outcome = run("history");
  EXPECT_EQ(outcome.status, ExitStatus::done);
  EXPECT_EQ(outcome.err, "Left out of the history: 1 line that cannot be read\n");
  EXPECT_EQ(outcome.out, historyText(records()));
}

}  // namespace
}  // namespace quorvane
