#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/preset_commands.h"
#include "tests/cli/preset_fixture.h"
#include "tests/support/file_calls.h"

namespace quorvane {
namespace {

using Names = std::set<std::string>;

// A command that changes the store, and the names in the store after it has succeeded.
struct StoreCommand {
  std::string name;
  std::function<ExitStatus(const CommandContext&)> run;
  Names after;
};

// Runs each command once for each of its system calls on files, with that call failing.
class PresetFaults : public PresetTest {
 protected:
  struct Run {
    ExitStatus status = ExitStatus::done;
    std::string messages;
    bool isOver = false;  // there were fewer calls, so that none failed
  };

  Names before_{"First", "Second"};

  void reset() const {
    std::filesystem::remove_all(store_.fileURL().parent_path());
    store_.save({ownPreset(firstID, "First"), ownPreset(secondID, "Second")});
  }

  Run runFailing(const StoreCommand& command, std::size_t number, int error) {
    CapturedStream out;
    CapturedStream err;
    std::unique_ptr<FileCalls> calls;
    World here = world(out.file(), err.file());
    here.presets = [&]() -> const PresetStore& {
      if (!calls) calls = std::make_unique<FileCalls>(FileCalls::failAt(number, error));
      return store_;
    };
    const GlobalOptions options;
    Run result;
    try {
      result.status = command.run({here, options});
    } catch (const std::exception& failure) {
      result.status = ExitStatus::failed;
      result.messages = failure.what();
    }
    result.isOver = calls->made().size() <= number;
    calls.reset();
    result.messages += err.text();
    return result;
  }

  void expectNothingLost(const StoreCommand& command, const Run& run) {
    Names found = namesIn(store_.read());
    if (run.status == ExitStatus::done) {
      EXPECT_EQ(found, command.after);
    } else {
      EXPECT_FALSE(run.messages.empty());
    }
    if (run.messages.find("kept beside") != std::string::npos) {
      EXPECT_FALSE(keptFiles().empty()) << run.messages;
    }
    for (const std::string& kept : keptFiles()) found.merge(namesIn(PresetStore(kept).read()));
    const Names& least = command.name == "delete" ? command.after : before_;
    for (const std::string& name : least) EXPECT_TRUE(found.contains(name)) << name;
  }

  static Names namesIn(const std::vector<TuningPreset>& presets) {
    Names names;
    for (const TuningPreset& preset : presets) names.insert(preset.name);
    return names;
  }
};

TEST_F(PresetFaults, NoCallThatFailsOnceCostsAPresetOrMakesACommandSayWhatIsNotTrue) {
  base();
  const std::string file = put("more.json", encodePresets({ownPreset(thirdID, "Third")}));
  const std::vector<StoreCommand> commands{
      {"save",
       [](const auto& context) {
         return savePresetCommand(context, {"Third", {}, {}, {}}, false);
       },
       {"First", "Second", "Third"}},
      {"import",
       [&](const auto& context) { return importPresetsCommand(context, {file}); },
       {"First", "Second", "Third"}},
      {"delete",
       [](const auto& context) { return deletePresetCommand(context, "Second"); },
       {"First"}},
  };
  for (const StoreCommand& command : commands) {
    for (const int error : {EIO, EMFILE, EAGAIN, ENOSPC, EACCES, EPERM}) {
      bool isOver = false;
      for (std::size_t number = 0; !isOver; ++number) {
        SCOPED_TRACE(command.name + ", call " + std::to_string(number) + ", " +
                     std::to_string(error));
        reset();
        const Run run = runFailing(command, number, error);
        expectNothingLost(command, run);
        isOver = run.isOver;
        if (isOver) {
          EXPECT_GT(number, 15U);
        }
      }
    }
  }
}

}  // namespace
}  // namespace quorvane
