#include <gtest/gtest.h>

#include "tests/cli/json_schema.h"
#include "tests/cli/piped_input.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

using ImportText = PresetTest;

TEST_F(ImportText, AddsOnePresetAndSaysWhatWasNotUnderstood) {
  const PipedInput input("Spa, wet: SEN auto, FF 80%, NDP 300\nIn-game: Max Torque 5\n");
  EXPECT_EQ(presets({"import", "--text", "-"}),
            (Outcome{ExitStatus::done, "Imported \"From text\" (3 values) from standard input\n",
                     "Not understood: Spa\nNot understood: wet\n"
                     "Not understood: In-game: Max Torque 5\n"
                     "Out of range on every base: NDP 300\n"}));
  const TuningPreset preset = store_.read().at(0);
  EXPECT_EQ(preset.name, "From text");
  EXPECT_EQ(preset.notes, "Spa\nwet\nIn-game: Max Torque 5");
  EXPECT_EQ(preset.values, (TuningPreset::Values{{"SEN", 0}, {"FF", 80}, {"NDP", 300}}));
  EXPECT_FALSE(preset.isBuiltIn);
}

TEST_F(ImportText, IsNamedAfterTheFileOrAsTold) {
  const std::string file = put("my spa.txt", "FF 80");
  EXPECT_EQ(presets({"import", "--text", file}).status, ExitStatus::done);
  EXPECT_EQ(presets({"import", file, "--text", "--name", " Monza "}).status, ExitStatus::done);
  EXPECT_EQ(store_.read().at(0).name, "my spa");
  EXPECT_EQ(store_.read().at(1).name, "Monza");
}

TEST_F(ImportText, GivesOneDocument) {
  const std::string file = put("a.txt", "FF 80 and so on");
  const Outcome outcome = presets({"import", "--text", "--json", file});
  const Json document = Json::parse(outcome.out);
  EXPECT_EQ(schemaFaults(schemaNamed("presets"), document), Lines{});
  EXPECT_EQ(document["notUnderstood"], (Json{"and so on"}));
  EXPECT_EQ(document["presets"][0]["values"], (Json{{"FF", 80}}));
}

TEST_F(ImportText, RefusesWhatHasNoSettings) {
  const std::string file = put("a.txt", "nothing");
  const std::string message = file + ": There is no setting in it";
  EXPECT_EQ(presets({"import", "--text", file}), (Outcome{ExitStatus::failed, "", message + "\n"}));
  EXPECT_EQ(presets({"import", "--text", file, file}).status, ExitStatus::wrongUsage);
  EXPECT_EQ(presets({"import", "--name", "x", file}).status, ExitStatus::wrongUsage);
  EXPECT_FALSE(std::filesystem::exists(store_.fileURL()));
}

}  // namespace
}  // namespace quorvane
