#include "cli/json_output.h"

#include <gtest/gtest.h>

#include <system_error>

#include "presets/decoding_error.h"
#include "protocol/error.h"
#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

TEST(PresetsJson, HasTheKeysOfThePresetFileInTheirOrder) {
  EXPECT_EQ(documentText(presetsJson({ownPreset(firstID, "A/B", {{"SEN", 900}, {"brF", 50}})})),
            "{\n"
            "  \"presets\": [\n"
            "    {\n"
            "      \"game\": \"Custom\",\n"
            "      \"id\": \"11111111-2222-3333-4444-AAAAAAAAAAAA\",\n"
            "      \"isBuiltIn\": false,\n"
            "      \"name\": \"A/B\",\n"
            "      \"notes\": \"\",\n"
            "      \"source\": \"\",\n"
            "      \"values\": {\n"
            "        \"SEN\": 900,\n"
            "        \"brF\": 50\n"
            "      }\n"
            "    }\n"
            "  ]\n"
            "}");
  EXPECT_EQ(documentText(presetsJson({})), "{\n  \"presets\": []\n}");
}

TEST(ErrorJson, NamesTheKindOfTheFailure) {
  const auto kindOf = [](const std::exception& failure) {
    const Json document = errorJson(failure);
    EXPECT_EQ(document["error"]["message"], failure.what());
    return document["error"]["kind"].get<std::string>();
  };
  EXPECT_EQ(kindOf(FanatecError::notConnected()), "notConnected");
  EXPECT_EQ(kindOf(FanatecError::timeout("rain")), "timeout");
  EXPECT_EQ(kindOf(FileError("/tmp/x", EACCES)), "fileFailed");
  EXPECT_EQ(kindOf(DecodingError("no")), "invalidFile");
  EXPECT_EQ(kindOf(std::system_error(EIO, std::generic_category())), "ioFailed");
}

}  // namespace
}  // namespace quorvane
