#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_line.h"
#include "support/text.h"
#include "support/thread.h"
#include "support/unique_fd.h"
#include "support/utf8.h"
#include "tests/cli/attached_nodes.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

constexpr std::string_view forged = "FORGED";

// Every kind of control character, and a line that imitates the program's output.
const std::string controls =
    "a\x1B[2J\r\b\x07\x7F\u0085\u009B\u061C\u200E\u2028\u2029\u202E\u2066\nFORGED";
const std::string hostile = controls + "\xFF\xC2";

std::string unsafePart(std::string_view text, std::string_view allowed) {
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    const bool isAllowed = allowed.find(text.front()) != std::string_view::npos;
    if (!next.code || (isControl(*next.code) && !isAllowed)) return std::string(text);
    text.remove_prefix(next.length);
  }
  return "";
}

void expectSafe(std::string_view text, std::string_view allowed = "\n") {
  EXPECT_EQ(unsafePart(text, allowed), "");
  EXPECT_EQ(("\n" + std::string(text)).find("\n" + std::string(forged)), std::string::npos) << text;
}

class HostileText : public PresetTest {
 protected:
  HostileText() {
    base().setProperty(HIDPropertyKey::productID, std::int64_t{0x7777});
    base().setProperty(HIDPropertyKey::product, hostile);
    base().setProperty(HIDPropertyKey::serialNumber, hostile);
    TuningPreset preset = ownPreset(firstID, controls, {{"FF", 40}, {controls, 1}});
    preset.game = preset.source = preset.notes = controls;
    TuningPreset unknown = ownPreset(secondID, controls + "!", {{controls, 1}});
    store_.save({preset, unknown});
  }

  void expectSafeRun(const std::vector<std::string>& words) {
    std::vector<std::string> withJson = words;
    withJson.insert(withJson.begin(), "--json");
    for (const auto& line : {words, withJson}) {
      SCOPED_TRACE(testing::PrintToString(line));
      const Outcome outcome = run(line);
      expectSafe(outcome.out);
      expectSafe(outcome.err);
    }
  }
};

TEST_F(HostileText, OfADeviceReachesNoStream) {
  const std::vector<std::string> lines{"devices",
                                       "read",
                                       "set FF=80",
                                       "set FF=120",
                                       "select 3",
                                       "mode",
                                       "rotation 540",
                                       "raw ff 03 02",
                                       "usb-reset",
                                       "doctor",
                                       "doctor --report -",
                                       "factory-reset --yes",
                                       "presets save X",
                                       "explain FF",
                                       "history",
                                       "undo",
                                       "redo --dry-run",
                                       "diff base base",
                                       "set FF=80 --dry-run"};
  for (const std::string& line : lines) expectSafeRun(wordsOf(line));
  expectedViolations_.assign(2, "3 bytes on report 0xff instead of 64");
}

TEST_F(HostileText, OfSeveralDevicesReachesNoStream) {
  AttachedNodes nodes;
  nodes.add(0x0020, hostile, "/dev/" + hostile);
  nodes.add(0x0020, hostile, "/dev/" + hostile + "2");
  CapturedStream out;
  CapturedStream err;
  World machine = world(out.file(), err.file());
  const World here{{nodes, machine.usb, machine.clock, machine.survey},
                   machine.out,
                   machine.err,
                   machine.interruption,
                   machine.presets};
  for (const std::string& which : {hostile, std::string("/dev/" + hostile)}) {
    runCommandLine({"--device", which, "read"}, here);
    runCommandLine({"devices"}, here);
    runCommandLine({"doctor"}, here);
  }
  EXPECT_NE(out.text(), "");
  EXPECT_NE(err.text(), "");
  expectSafe(out.text());
  expectSafe(err.text());
}

TEST_F(HostileText, OfTheMonitoredDeviceReachesNoStream) {
  for (const char* const line : {"monitor", "--json monitor"}) {
    interruption_.clear();
    base().transcript().clear();
    const Thread interrupting("interrupts", [this] {
      base().transcript().waitForLines(
          2);  // the monitor has opened the base and requested its menu
      interrupt();
    });
    const Outcome outcome = run(line);
    EXPECT_NE(outcome.out.find("arrival"), std::string::npos) << outcome.out;
    expectSafe(outcome.out);
    expectSafe(outcome.err);
  }
}

TEST_F(HostileText, OfAPresetReachesNoStream) {
  const std::vector<std::vector<std::string>> lines{
      {"presets", "list"},
      {"presets", "show", firstID},
      {"presets", "show", "nosuch"},
      {"presets", "show", controls},
      {"presets", "apply", firstID},
      {"presets", "apply", secondID},
      {"presets", "save", controls},
      {"presets", "show", controls},
      {"presets", "export", path("all.json")},
      {"presets", "import", path("all.json")},
      {"presets", "share", path("one"), "--preset", firstID},
      {"presets", "delete", firstID}};
  for (const auto& line : lines) expectSafeRun(line);
}

TEST_F(HostileText, OfAWordReachesNoStream) {
  const std::vector<std::vector<std::string>> lines{
      {hostile},
      {"--" + hostile},
      {"-" + hostile},
      {"--device", hostile, "read"},
      {"--simulate=" + hostile, "read"},
      {"--report-id", hostile, "read"},
      {"--layout", hostile, "read"},
      {"read", hostile},
      {"read", "--" + hostile},
      {"set", hostile},
      {"set", hostile + "=1"},
      {"set", "FF=" + hostile},
      {"select", hostile},
      {"mode", hostile},
      {"rotation", hostile},
      {"raw", hostile},
      {"doctor", "--report", "-" + hostile},
      {"doctor", "--report", path(hostile)},
      {"doctor", "--report", path(hostile) + "/none"},
      {"presets", hostile},
      {"presets", "show", hostile},
      {"presets", "apply", hostile},
      {"presets", "save", hostile},
      {"presets", "delete", hostile},
      {"presets", "import", hostile},
      {"presets", "export", path(hostile)},
      {"presets", "export", path(hostile) + "/none"},
      {"presets", "import", path(hostile)},
      {"presets", "share", path(hostile)},
      {"presets", "share", path("x"), "--preset", hostile}};
  for (const auto& line : lines) expectSafeRun(line);
}

TEST_F(HostileText, OfADamagedStoreReachesNoStream) {
  for (const std::string& content : {"[{\"" + controls + "\": 1}]", hostile, "[\"" + hostile}) {
    damageStore(content);
    expectSafeRun({"presets", "list"});
    expectSafeRun({"presets", "import", storePath()});
    expectSafeRun({"doctor"});
  }
}

TEST_F(HostileText, IsCompletedOnlyWhereItIsSafe) {
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"complete", "--device", ""},
           {"complete", "--device="},
           {"complete", "presets", "show", ""},
           {"complete", "set", hostile + "="},
           {"complete", "--" + hostile + "="},
       }) {
    const Outcome outcome = run(words);
    expectSafe(outcome.out, "\n\t");
    EXPECT_EQ(outcome.err, "");
  }
}

TEST_F(HostileText, IsEscapedInDocuments) {
  const Json document = Json::parse(run("devices --json").out);
  EXPECT_EQ(document["devices"][0]["name"], controls + "\uFFFD\uFFFD");
  const std::string shown = run({"presets", "show", firstID, "--json"}).out;
  EXPECT_NE(shown.find("\\u007f\\u0085\\u009b\\u061c\\u200e\\u2028\\u2029\\u202e\\u2066\\n"),
            std::string::npos)
      << shown;
  EXPECT_EQ(Json::parse(shown)["presets"][0]["name"], controls);
}

TEST_F(HostileText, KeepsItsFormInFiles) {
  EXPECT_EQ(run({"presets", "export", "-"}).out, encodePresets(store_.read()) + "\n");
}

// Everything that was written to a terminal, once its other end is closed. Reading returns it in
// pieces and then fails with EIO.
std::string everythingShownOn(int screen) {
  std::string shown;
  std::array<char, 4096> piece{};
  for (;;) {
    const ssize_t length = ::read(screen, piece.data(), piece.size());
    if (length <= 0) return shown;
    shown.append(piece.data(), static_cast<std::size_t>(length));
  }
}

TEST_F(HostileText, OfAFileIsEscapedOnATerminal) {
  const UniqueFd screen(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  ASSERT_EQ(::grantpt(screen.get()), 0);
  ASSERT_EQ(::unlockpt(screen.get()), 0);
  std::FILE* const terminal = std::fopen(::ptsname(screen.get()), "w");
  ASSERT_NE(terminal, nullptr);
  CapturedStream err;
  runCommandLine({"presets", "export", "-", secondID}, world(terminal, err.file()));
  std::fclose(terminal);
  const std::string text = everythingShownOn(screen.get());
  expectSafe(text, "\r\n");
  EXPECT_NE(text.find("\\u202e"), std::string::npos) << text;
}

}  // namespace
}  // namespace quorvane
