#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <string_view>

#include "cli/command_line.h"
#include "support/unique_fd.h"
#include "tests/cli/attached_nodes.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

class DoctorCommand : public CommandLineTest {
 protected:
  // The whole list, for a base without faults.
  std::string wellText() const {
    return std::string("ok   Wheel base attached: ") + simulatedName +
           ", simulated\n"
           "--   Driver: the base is simulated\n"
           "--   Device node: the base is simulated\n"
           "--   Permission: the base is simulated\n"
           "ok   Reports: the 64-byte reports, and short commands on report 0x01\n"
           "ok   Identity: CSL DD Wheel Base, ClubSport Steering Wheel Formula V3, Podium Button "
           "Module Endurance\n"
           "ok   Tuning menu: standard menu, set C (Custom)\n"
           "--   Other programs: the base is simulated\n"
           "ok   Preset file: none saved yet\n";
  }

  std::string reportFile() const { return directory_ / "report.txt"; }
};

TEST_F(DoctorCommand, ListsEveryCheck) {
  base();
  EXPECT_EQ(run("doctor"), (Outcome{ExitStatus::done, wellText(), ""}));
}

TEST_F(DoctorCommand, FailsWithTheNextStepWhenSomethingIsWrong) {
  change([](SimulatedBehaviour& base) { base.tuningSilent = true; });
  const Outcome outcome = run("doctor");
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_EQ(outcome.err, "");
  EXPECT_NE(outcome.out.find(std::string("FAIL Tuning menu: ") + timeoutText +
                             "\n     Set the base to PC mode with its mode button, and switch it "
                             "off and on. If the menu stays silent, update the base's firmware.\n"),
            std::string::npos)
      << outcome;
}

TEST_F(DoctorCommand, WithoutABaseTheRestIsNotChecked) {
  const Outcome outcome = run("doctor");
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')),
            "FAIL Wheel base attached: the simulated base is unplugged");
  EXPECT_NE(outcome.out.find("--   Driver: no base is there to look at\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("ok   Preset file: none saved yet\n"), std::string::npos);
}

TEST_F(DoctorCommand, GivesOneDocument) {
  base().failOpenWith(HIDReturnCode::notPermitted);
  const Outcome outcome = run("doctor --json");
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_EQ(outcome.err, "");
  const Json document = Json::parse(outcome.out);
  EXPECT_EQ(document["passed"], false);
  ASSERT_EQ(document["checks"].size(), 9U);
  EXPECT_EQ(documentText(document["checks"][3]),
            documentText(Json{{"id", "access"},
                              {"title", "Permission"},
                              {"outcome", "fail"},
                              {"finding", "the simulated base refuses to be opened"},
                              {"nextStep", "Simulate one that does not."}}));
  std::string ids;
  for (const Json& check : document["checks"]) ids += check["id"].get<std::string>() + " ";
  EXPECT_EQ(ids, "usb driver node access reports identity tuning holders presets ");

  base().failOpenWith(HIDReturnCode::success);
  EXPECT_EQ(Json::parse(run("doctor --json").out)["passed"], true);
}

TEST_F(DoctorCommand, AnExclusiveSessionIsAnotherProgram) {
  const auto session = base().open(true);
  ASSERT_EQ(session.code, HIDReturnCode::success);
  const Json checks = Json::parse(run("doctor --json").out)["checks"];
  EXPECT_EQ(checks[7]["outcome"], "fail");
  EXPECT_EQ(checks[5]["finding"], "another program keeps the base to itself");
}

TEST_F(DoctorCommand, WritesAReportBesideTheList) {
  base().setProperty(HIDPropertyKey::serialNumber, std::string("QV-4711"));
  EXPECT_EQ(run({"doctor", "--report", reportFile()}),
            (Outcome{ExitStatus::done,
                     wellText() + "Report written to " + reportFile() +
                         "; look it over before you send it\n",
                     ""}));
  const std::string report = contentOf(reportFile());
  EXPECT_NE(report.find("\nChecks\n" + wellText()), std::string::npos) << report;
  EXPECT_NE(report.find("  menu: 64 bytes\n    ff 03 82 "), std::string::npos) << report;
  EXPECT_EQ(report.find("QV-4711"), std::string::npos) << report;
}

TEST_F(DoctorCommand, NamesTheReportInTheDocument) {
  base();
  const Json document = Json::parse(run({"--json", "doctor", "--report", reportFile()}).out);
  EXPECT_EQ(document["file"], reportFile());
  EXPECT_TRUE(std::filesystem::exists(reportFile()));
}

TEST_F(DoctorCommand, AReportOnStandardOutputStandsAlone) {
  change([](SimulatedBehaviour& base) { base.silent = true; });
  for (const char* const line : {"doctor --report -", "--json doctor --report=-"}) {
    const Outcome outcome = run(line);
    EXPECT_EQ(outcome.status, ExitStatus::failed);
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('.')), "Report of the Quorvane doctor");
    EXPECT_EQ(outcome.err, "");
  }
}

// On a terminal, a progress message shows that the program does not hang.
TEST_F(DoctorCommand, SaysOnATerminalThatItIsAtWork) {
  base();
  int master = -1;
  int slave = -1;
  ASSERT_EQ(::openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
  const UniqueFd terminal(master);
  std::FILE* const err = ::fdopen(slave, "w");
  CapturedStream out;
  EXPECT_EQ(runCommandLine({"doctor"}, world(out.file(), err)), ExitStatus::done);
  EXPECT_EQ(out.text(), wellText());
  std::array<char, 100> shown{};
  const ssize_t length = ::read(terminal.get(), shown.data(), shown.size());
  std::fclose(err);
  ASSERT_GT(length, 0);
  EXPECT_EQ(std::string_view(shown.data(), static_cast<std::size_t>(length)),
            "Examining the base; this takes 5 s at most\r\n");
}

TEST_F(DoctorCommand, AReportThatCannotBeWrittenIsAFailure) {
  base();
  const std::string file = directory_ / "missing/report.txt";
  const std::string message = file + ": No such file or directory";
  EXPECT_EQ(run({"doctor", "--report", file}), (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(run({"doctor", "--json", "--report", file}),
            (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
}

TEST_F(DoctorCommand, AReportThatIsThereIsReplacedOnlyWhenAskedFor) {
  base();
  std::ofstream(reportFile()) << "another day";
  const std::string message = reportFile() + ": File exists; give --force to replace it";
  EXPECT_EQ(run({"doctor", "--report", reportFile()}),
            (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(run({"doctor", "--json", "--report", reportFile()}),
            (Outcome{ExitStatus::failed, errorDocument("fileFailed", message), message + "\n"}));
  EXPECT_EQ(contentOf(reportFile()), "another day");
  EXPECT_EQ(run({"doctor", "--force", "--report", reportFile()}).status, ExitStatus::done);
  EXPECT_NE(contentOf(reportFile()), "another day");
}

TEST_F(DoctorCommand, ExaminesTheNamedBase) {
  attach(0x0E03);
  attach(0x0020).withBase([](SimulatedBase& base) { base.behaviour().silent = true; });
  EXPECT_EQ(run("doctor --device 0eb7:0e03@00000000/1:4").status, ExitStatus::done);
  EXPECT_EQ(run("doctor --device 0eb7:0020@00000000/1:4").status, ExitStatus::failed);
  const Outcome nobody = run("doctor --device nobody");
  EXPECT_EQ(nobody.status, ExitStatus::failed);
  EXPECT_EQ(nobody.out, "");
  EXPECT_NE(nobody.err.find(R"(No base answers to "nobody")"), std::string::npos);
}

TEST_F(DoctorCommand, AUserWithoutAHomeIsToldSo) {
  base();
  CapturedStream out;
  CapturedStream err;
  World homeless = world(out.file(), err.file());
  homeless.presets = []() -> const PresetStore& { throw FileError("presets.json", "No home"); };
  EXPECT_EQ(runCommandLine({"doctor"}, homeless), ExitStatus::failed);
  EXPECT_NE(out.text().find("FAIL Preset file: you have no home directory to keep presets in\n"),
            std::string::npos);
}

TEST_F(DoctorCommand, ASimulatedBaseOfTheProgramsOwnIsWell) {
  inSimulatedTime_ = false;
  EXPECT_EQ(run("--simulate doctor"),
            (Outcome{ExitStatus::done, wellText(),
                     std::string("Simulated base: ") + simulatedName + "\n"}));
}

}  // namespace
}  // namespace quorvane
