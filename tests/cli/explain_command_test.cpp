#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "protocol/setting_help.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using ExplainCommand = CommandLineTest;
using P = TuningParameter;

TEST_F(ExplainCommand, SaysWhatASettingDoesWithoutABase) {
  const SettingHelp& help = helpOf(P::naturalDamper);
  EXPECT_EQ(run("explain NDP"), (Outcome{ExitStatus::done,
                                         "NDP  Natural damper\n\n" + std::string(help.what) +
                                             "\n\n" + std::string(help.feel) +
                                             "\n\n"
                                             "  Works with       NFR, NIN, DPR\n"
                                             "  Range            0 to 100 %, step 1\n"
                                             "  Factory default  50 %\n\n"
                                             "Built-in presets\n"
                                             "  Fanatec factory defaults                 50 %\n"
                                             "  Fanatec recommended, Gran Turismo 7      25 %\n"
                                             "  Redline Lab 2025, Gran Turismo 7 (8 Nm)  15 %\n"
                                             "  Gearwerk 2025, Gran Turismo 7 (8 Nm)     70 %\n",
                                         ""}));
}

TEST_F(ExplainCommand, KnowsEverySettingInEitherCase) {
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    const std::string code(parameter.code());
    const Outcome outcome = run("explain " + code);
    EXPECT_EQ(outcome.status, ExitStatus::done) << code;
    EXPECT_TRUE(outcome.out.starts_with(code + "  " + std::string(parameter.title()) + "\n"))
        << outcome;
  }
  EXPECT_EQ(run("explain ndp"), run("explain NDP"));
}

TEST_F(ExplainCommand, TellsRangesWithTheirWords) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"SEN", "90 to 2520 deg, step 10, or AUTO"},
      {"BLI", "0 to 100 %, step 1, or OFF"},
      {"FFS", "LIN, PEA"},
      {"ACP", "CbP, CH, Bt, AnA"},
      {"INT", "0 to 20, step 1"},
      {"DRI", "-5 to 3, step 1"},
  };
  for (const auto& [code, range] : cases) {
    const std::string out = run("explain " + code).out;
    EXPECT_NE(out.find("\n  Range            " + range + "\n"), std::string::npos) << out;
  }
}

TEST_F(ExplainCommand, SaysWhatAPresetLeavesAlone) {
  const std::string out = run("explain FUL").out;
  EXPECT_NE(out.find("Fanatec factory defaults                 left alone\n"), std::string::npos)
      << out;
}

TEST_F(ExplainCommand, PrintsOneDocumentWithJson) {
  const Json document = Json::parse(run("--json explain brF").out);
  EXPECT_EQ(document["code"], "brF");
  EXPECT_EQ(document["highest"], 100);
  EXPECT_EQ(document["step"], 10);
  EXPECT_EQ(document["unit"], "%");
  EXPECT_EQ(document["factoryDefault"], 50);
  EXPECT_EQ(document["words"], Json::array());
  EXPECT_EQ(document["presets"][1]["value"], Json(nullptr));
  EXPECT_EQ(document["presets"][3]["value"], 90);
}

TEST_F(ExplainCommand, ProposesTheCodeThatWasProbablyMeant) {
  const Outcome outcome = run("explain NPD");
  EXPECT_EQ(outcome.status, ExitStatus::wrongUsage);
  EXPECT_NE(outcome.err.find("There is no setting \"NPD\""), std::string::npos) << outcome;
  EXPECT_NE(outcome.err.find("quorvanectl explain NDP"), std::string::npos) << outcome;
}

}  // namespace
}  // namespace quorvane
