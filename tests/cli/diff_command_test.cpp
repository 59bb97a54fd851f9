#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "cli/history_text.h"
#include "tests/cli/json_schema.h"
#include "tests/cli/piped_input.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

constexpr ExitStatus diffSame = ExitStatus::done;
constexpr ExitStatus diffDiffers = ExitStatus::failed;
constexpr ExitStatus diffTrouble = ExitStatus::wrongUsage;
constexpr const char* theBase = "CSL DD / GT DD Pro / ClubSport DD, set C (Custom)";

class DiffCommand : public PresetTest {
 protected:
  std::string share(const std::string& name, const TuningPreset& preset) const {
    return put(name, encodeShareFile({"quorvane-settings-1", WallSeconds{}, "A base", preset}));
  }

  // The program's status for `diff` with a text on standard input, compared with the base.
  Outcome diffText(const std::string& text, const std::string& options = "") {
    const PipedInput input(text);
    return run("diff -" + options);
  }
};

TEST_F(DiffCommand, ComparesATextWithTheBase) {
  base();
  EXPECT_EQ(
      diffText("Try FF: 100, NDP 25%, SEN auto, INT 3, XYZ 5"),
      (Outcome{diffDiffers,
               "Stronger: FF 65 % -> 100 %\n"
               "Left:  " +
                   std::string(theBase) +
                   "\n"
                   "Right: standard input\n\n"
                   "  SEN  900 deg   AUTO                       Sensitivity (steering angle)\n"
                   "  FF   65 %      100 %     +35              Force feedback strength\n"
                   "  INT  11        3         -8               FFB interpolation filter\n\n"
                   "3 differ, 1 is the same, 12 only left\n",
               "Not understood: Try\nNot understood: XYZ 5\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(DiffCommand, OfWhatTheBaseHasIsTheSame) {
  base();
  const std::string counts = "0 differ, 2 are the same, 14 only left\n";
  EXPECT_EQ(
      diffText("FF 65, brF 57"),
      (Outcome{diffSame, "Left:  " + std::string(theBase) + "\nRight: standard input\n\n" + counts,
               ""}));
  EXPECT_EQ(diffText("FF 66").status, diffDiffers);
  EXPECT_EQ(diffText("FF 165").status, diffDiffers);
  EXPECT_EQ(diffText("FF 65, DRI 2").status, diffSame);
}

TEST_F(DiffCommand, ComparesPresetsAndFilesWithoutABase) {
  store_.save({ownPreset(firstID, "One", {{"FF", 80}, {"brF", 47}, {"DRI", 1}}),
               ownPreset(secondID, "Two", {{"FF", 60}, {"brF", 40}, {"SEN", 900}})});
  const Outcome expected{
      diffDiffers,
      "Left:  One\nRight: Two\n\n"
      "  SEN  -         900 deg   only right       Sensitivity (steering angle)\n"
      "  FF   80 %      60 %      -20              Force feedback strength\n"
      "  DRI  1         -         only left        Drift mode\n\n"
      "1 differs, 1 is the same, 1 only left, 1 only right\n",
      ""};
  EXPECT_EQ(run("diff preset:one preset:mine:Two"), expected);
  const std::string all = put("all.json", storeText());
  EXPECT_EQ(run({"diff", all + "#one", all + "#Two"}), expected);
  EXPECT_EQ(run({"diff", all + "#One", "preset:One"}).status, diffSame);
  const std::string two = share("two.quorvane", store_.read().at(1));
  EXPECT_EQ(run({"diff", "preset:One", two}), expected);
}

TEST_F(DiffCommand, ComparesOnTheMenuOfTheBaseThatIsAttached) {
  store_.save({ownPreset(firstID, "One", {{"SEN", 0}, {"DRI", 1}}),
               ownPreset(secondID, "Two", {{"SEN", 2530}, {"DRI", 2}})});
  EXPECT_EQ(Json::parse(run("diff preset:One preset:Two --json").out)["counts"]["differs"], 2);
  base();
  const Json document = Json::parse(run("diff preset:One preset:Two --json").out);
  EXPECT_EQ(document["counts"]["same"], 1);
  EXPECT_EQ(document["counts"]["notOnBase"], 1);
  EXPECT_EQ(transcript(), Lines{});
}

TEST_F(DiffCommand, AFormerMenuIsASide) {
  base();
  run("set FF=80");
  const std::string id = shortID(
      history_.read(HIDEnumerator::devices(Fanatec::vendorID, backend_).front()).records[0].id);
  const Json document = Json::parse(run("diff --json history:" + id).out);
  EXPECT_EQ(schemaFaults(schemaNamed("diff"), document), Lines{});
  EXPECT_EQ(document["right"]["kind"], "history");
  EXPECT_TRUE(document["right"]["name"].get<std::string>().ends_with(" (set)"));
  EXPECT_EQ(document["counts"]["differs"], 1);
  EXPECT_EQ(document["rows"][1]["left"], 80);
  EXPECT_EQ(document["rows"][1]["right"], 65);
  run("undo");
  EXPECT_EQ(run("diff history:" + id).status, diffSame);
  EXPECT_EQ(run("diff history:" + id + " history:" + id).status, diffSame);
}

TEST_F(DiffCommand, AFormerMenuOfAnotherBaseIsNone) {
  base();
  run("set FF=80");
  const auto devices = HIDEnumerator::devices(Fanatec::vendorID, backend_);
  const std::string id = shortID(history_.read(devices.front()).records[0].id);
  base().unplug();
  EXPECT_EQ(run({"diff", "history:" + id, "preset:" + factoryName()}).status, diffTrouble);
  attach(FanatecProduct::all().front().productID);
  const Outcome outcome = run({"diff", "history:" + id, "preset:" + factoryName()});
  EXPECT_EQ(outcome.status, diffTrouble);
  EXPECT_TRUE(outcome.err.starts_with("No write in the history of this base has the ID \"" + id))
      << outcome.err;
}

TEST_F(DiffCommand, GivesOneDocument) {
  base();
  const std::string file = put("text.txt", "FF 95, NDP 25, and more");
  const Outcome outcome = run({"diff", "--json", file});
  EXPECT_EQ(outcome.status, diffDiffers);
  const Json document = Json::parse(outcome.out);
  EXPECT_EQ(schemaFaults(schemaNamed("diff"), document), Lines{});
  EXPECT_EQ(document["left"],
            (Json{{"kind", "base"}, {"name", theBase}, {"notUnderstood", Json::array()}}));
  EXPECT_EQ(document["right"],
            (Json{{"kind", "text"}, {"name", file}, {"notUnderstood", {"and more"}}}));
  EXPECT_EQ(document["stronger"], "FF");
  EXPECT_EQ(document["isSame"], false);
  EXPECT_EQ(document["rows"][1], (Json{{"code", "FF"},
                                       {"title", "Force feedback strength"},
                                       {"left", 65},
                                       {"right", 95},
                                       {"change", 30},
                                       {"state", "differs"}}));
  int sum = 0;
  for (const auto& [state, count] : document["counts"].items()) sum += count.get<int>();
  EXPECT_EQ(sum, static_cast<int>(document["rows"].size()));
}

TEST_F(DiffCommand, TroubleIsStatusTwo) {
  const std::string broken = put("broken.quorvane", "{\"preset\": 1");
  const std::string several = put("several.json", encodePresets(TuningPreset::builtIn()));
  const std::string prose = put("prose.txt", "Nice weather today");
  const std::vector<std::pair<Lines, std::string>> cases{
      {{"diff", "base"}, "No base found"},
      {{"diff", "preset:Fanatec factory defaults"}, "No base found"},
      {{"diff", "preset:nobody"}, "There is no preset \"nobody\""},
      {{"diff", path("missing")}, "No such file"},
      {{"diff", broken, "preset:Fanatec factory defaults"}, broken},
      {{"diff", several, several}, "has 4 presets. Name one of them:"},
      {{"diff", several + "#nobody", several}, "There is no preset \"nobody\""},
      {{"diff", prose, prose}, "There is no setting in it"},
      {{"diff", "-", "-"}, "Only one side can be standard input"},
      {{"diff"}, "diff needs SIDE"},
      {{"diff", "a", "b", "c"}, "one too many"},
  };
  for (const auto& [words, message] : cases) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, diffTrouble) << testing::PrintToString(words);
    EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome;
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(DiffCommand, ASilentBaseIsTrouble) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(run("diff base base"), (Outcome{diffTrouble, "", std::string(timeoutText) + "\n"}));
  EXPECT_EQ(run("diff base base --json").out, errorDocument("timeout", timeoutText));
}

TEST_F(DiffCommand, ShowsForeignTextOnOneLine) {
  base();
  const Outcome outcome = diffText("FF 65 \x1B[31mred\n");
  EXPECT_EQ(outcome.err.find('\x1B'), std::string::npos);
  EXPECT_NE(outcome.err.find("Not understood: "), std::string::npos);
}

}  // namespace
}  // namespace quorvane
