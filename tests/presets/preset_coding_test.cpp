#include "presets/preset_coding.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

UUID id(std::string_view text) { return UUID::parse(text).value(); }

TuningPreset sample() {
  return {id("6f1c2a34-8b0e-4d27-9c51-3e8a77b2d410"),
          "My GT7",
          "Gran Turismo 7",
          "me",
          "a/b \"c\"\n\xC3\xA4",
          {{"SEN", 900}, {"FF", 100}, {"brF", 90}, {"DRI", -5}, {"ABC", 7}},
          false};
}

constexpr const char* sampleText =
    "{\n"
    "  \"game\" : \"Gran Turismo 7\",\n"
    "  \"id\" : \"6F1C2A34-8B0E-4D27-9C51-3E8A77B2D410\",\n"
    "  \"isBuiltIn\" : false,\n"
    "  \"name\" : \"My GT7\",\n"
    "  \"notes\" : \"a\\/b \\\"c\\\"\\n\xC3\xA4\",\n"
    "  \"source\" : \"me\",\n"
    "  \"values\" : {\n"
    "    \"ABC\" : 7,\n"
    "    \"DRI\" : -5,\n"
    "    \"FF\" : 100,\n"
    "    \"SEN\" : 900,\n"
    "    \"brF\" : 90\n"
    "  }\n"
    "}";

JSONValue sampleJSON() { return parseJSON(sampleText); }

SettingsShareFile sampleFile() {
  SettingsShareFile file;
  file.exportedAt = WallSeconds(std::chrono::seconds(1741977005));
  file.base = "ClubSport DD+";
  file.preset = sample();
  return file;
}

JSONValue sampleFileJSON() { return parseJSON(encodeShareFile(sampleFile())); }

// The text with every line after the first indented by so many spaces.
std::string indented(std::string_view text, std::size_t spaces) {
  std::string result;
  for (const char c : text) {
    result += c;
    if (c == '\n') result.append(spaces, ' ');
  }
  return result;
}

template <typename Decode>
std::string errorOf(const JSONValue& json, Decode decode) {
  try {
    decode(json);
  } catch (const DecodingError& error) {
    return error.what();
  }
  return "no error";
}

std::string presetError(const JSONValue& json) { return errorOf(json, decodePreset); }
std::string listError(const JSONValue& json) { return errorOf(json, decodePresets); }
std::string fileError(const JSONValue& json) { return errorOf(json, decodeShareFile); }

// One value of each type, and the type's name in errors.
const std::vector<std::pair<JSONValue, std::string>> valueTexts{
    {nullptr, "null"},
    {true, "boolean"},
    {1, "number"},
    {-1, "number"},
    {1.5, "number"},
    {"x", "string"},
    {"", "string"},
    {JSONValue::array(), "array"},
    {JSONValue::object(), "object"},
};

TEST(EncodePresets, WritesAnEmptyArray) { EXPECT_EQ(encodePresets({}), "[]"); }

TEST(EncodePresets, WritesTheExactText) {
  EXPECT_EQ(encodePresets({sample()}), "[\n  " + indented(sampleText, 2) + "\n]");
  EXPECT_EQ(encodePresets({sample(), sample()}),
            "[\n  " + indented(sampleText, 2) + ",\n  " + indented(sampleText, 2) + "\n]");
}

TEST(EncodePresets, WritesAnEmptyPreset) {
  TuningPreset preset;
  preset.id = UUID();
  preset.isBuiltIn = true;
  EXPECT_EQ(encodePresets({preset}),
            "[\n"
            "  {\n"
            "    \"game\" : \"\",\n"
            "    \"id\" : \"00000000-0000-0000-0000-000000000000\",\n"
            "    \"isBuiltIn\" : true,\n"
            "    \"name\" : \"\",\n"
            "    \"notes\" : \"\",\n"
            "    \"source\" : \"\",\n"
            "    \"values\" : {}\n"
            "  }\n"
            "]");
}

TEST(EncodePresets, PutsTheBrakeForceAfterEveryUpperCaseCode) {
  TuningPreset preset;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    preset.values.emplace(parameter.code(), 1);
  }
  const std::string text = encodePresets({preset});
  std::string codes;
  for (std::size_t at = text.find("\" : 1"); at != std::string::npos;
       at = text.find("\" : 1", at + 1)) {
    const std::size_t begin = text.rfind('"', at - 1) + 1;
    codes += text.substr(begin, at - begin) + " ";
  }
  EXPECT_EQ(codes, "ACP BLI DPR DRI FEI FF FFS FOR FUL INT NDP NFR NIN SEN SHO SLOT SPR brF ");
}

TEST(EncodeShareFile, WritesTheExactText) {
  EXPECT_EQ(encodeShareFile(sampleFile()), std::string("{\n"
                                                       "  \"base\" : \"ClubSport DD+\",\n"
                                                       "  \"exportedAt\" : "
                                                       "\"2025-03-14T18:30:05Z\",\n"
                                                       "  \"format\" : \"quorvane-settings-1\",\n"
                                                       "  \"preset\" : ") +
                                               indented(sampleText, 2) + "\n}");
}

TEST(EncodeShareFile, LeavesOutABaseThatIsAbsent) {
  SettingsShareFile file = sampleFile();
  file.base.reset();
  const std::string text = encodeShareFile(file);
  EXPECT_TRUE(text.starts_with("{\n  \"exportedAt\" : ")) << text;
  EXPECT_EQ(text.find("\"base\""), std::string::npos);
  EXPECT_EQ(decodeShareFile(parseJSON(text)).base, std::nullopt);
  EXPECT_EQ(decodeShareFile(parseJSON(text)), file);
}

TEST(EncodeShareFile, KeepsAnEmptyBase) {
  SettingsShareFile file = sampleFile();
  file.base = "";
  EXPECT_TRUE(encodeShareFile(file).starts_with("{\n  \"base\" : \"\",\n"));
  EXPECT_EQ(decodeShareFile(parseJSON(encodeShareFile(file))), file);
}

TEST(DecodePreset, ReadsEveryField) { EXPECT_EQ(decodePreset(sampleJSON()), sample()); }

TEST(DecodePreset, ReadsBackWhatIsEncoded) {
  TuningPreset preset = sample();
  preset.isBuiltIn = true;
  preset.name = std::string("\0\x01\x1F\x7F\"\\/\b\f\n\r\t", 12) + "\xF0\x9F\x8F\x8E";
  preset.game = std::string(100000, 'x');
  preset.values = {{"", 0}, {"a\nb", -1}, {"max", largest}, {"min", smallest}, {"\xC3\xA4", 1}};
  const std::vector<TuningPreset> presets{preset, TuningPreset(), sample(), preset};
  EXPECT_EQ(decodePresets(parseJSON(encodePresets(presets))), presets);
}

TEST(DecodePreset, ACodeOfNoParameterSurvives) {
  TuningPreset preset;
  preset.values = {{"XYZ", 12}, {"SENS", -1}, {"FF", 80}};
  const auto decoded = decodePresets(parseJSON(encodePresets({preset})));
  EXPECT_EQ(decoded.at(0).values, preset.values);
  EXPECT_EQ(decoded.at(0).parameters(),
            std::vector<TuningParameter>{TuningParameter::forceFeedback});
}

TEST(DecodePreset, IgnoresTheOrderOfTheKeysAndUnknownOnes) {
  EXPECT_EQ(
      decodePreset(
          parseJSON(R"({"values":{"FF":1},"zzz":{"id":null},"source":"s","notes":"n","name":"m",)"
                    R"("isBuiltIn":true,"Name":5,"id":"6f1c2a34-8b0e-4d27-9c51-3e8a77b2d410",)"
                    R"("game":"g","":[]})")),
      (TuningPreset{
          id("6F1C2A34-8B0E-4D27-9C51-3E8A77B2D410"), "m", "g", "s", "n", {{"FF", 1}}, true}));
}

TEST(DecodePreset, NeedsAllSevenKeys) {
  for (const char* const key : {"id", "name", "game", "source", "notes", "values", "isBuiltIn"}) {
    JSONValue json = sampleJSON();
    json.erase(key);
    EXPECT_EQ(presetError(json), "\"" + std::string(key) + "\" is missing");
  }
  EXPECT_EQ(sampleJSON().size(), 7U);
  EXPECT_EQ(presetError(JSONValue::object()), "\"id\" is missing");
}

TEST(DecodePreset, NeedsTheRightTypes) {
  struct Member {
    std::string key;
    std::string type;
    std::string wanted;
  };
  for (const Member& member :
       {Member{"id", "string", "a text"}, Member{"name", "string", "a text"},
        Member{"game", "string", "a text"}, Member{"source", "string", "a text"},
        Member{"notes", "string", "a text"}, Member{"values", "object", "an object"},
        Member{"isBuiltIn", "boolean", "true or false"}}) {
    for (const auto& [value, type] : valueTexts) {
      JSONValue json = sampleJSON();
      json[member.key] = value;
      std::string expected = "\"" + member.key + "\" is not " + member.wanted + " but " + type;
      if (type == member.type) expected = member.key == "id" ? "\"id\" is not a UUID" : "no error";
      EXPECT_EQ(presetError(json), expected);
    }
  }
}

TEST(DecodePreset, NeedsAUUID) {
  for (const char* const text :
       {"", "x", "6F1C2A34-8B0E-4D27-9C51-3E8A77B2D41", "6F1C2A34-8B0E-4D27-9C51-3E8A77B2D4100",
        "{6F1C2A34-8B0E-4D27-9C51-3E8A77B2D410}", "6F1C2A348B0E4D279C513E8A77B2D410",
        "6F1C2A34-8B0E-4D27-9C51-3E8A77B2D41G"}) {
    JSONValue json = sampleJSON();
    json["id"] = text;
    EXPECT_EQ(presetError(json), "\"id\" is not a UUID") << text;
  }
}

TEST(DecodePreset, NeedsAnObject) {
  for (const auto& [value, type] : valueTexts) {
    if (type == "object") continue;
    EXPECT_EQ(presetError(value), "A preset is not an object but " + type);
  }
}

TEST(DecodePreset, TakesValuesOfSixtyFourBitsAndNoOthers) {
  const std::string notWhole = "\"SEN\" is not a whole number of 64 bits";
  const std::vector<std::pair<std::string, std::string>> cases{
      {"0", "no error"},
      {"-0", "no error"},
      {"900", "no error"},
      {"-900", "no error"},
      {"9223372036854775807", "no error"},
      {"-9223372036854775808", "no error"},
      {"9223372036854775808", notWhole},
      {"-9223372036854775809", notWhole},
      {"18446744073709551615", notWhole},
      {"18446744073709551616", notWhole},
      {"100000000000000000000000", notWhole},
      {"1.0", notWhole},
      {"0.0", notWhole},
      {"-0.0", notWhole},
      {"1.5", notWhole},
      {"1e2", notWhole},
      {"1E0", notWhole},
      {"100e-2", notWhole},
      {"null", "\"SEN\" is not a whole number but null"},
      {"true", "\"SEN\" is not a whole number but boolean"},
      {"\"900\"", "\"SEN\" is not a whole number but string"},
      {"[900]", "\"SEN\" is not a whole number but array"},
      {"{}", "\"SEN\" is not a whole number but object"},
  };
  for (const auto& [text, error] : cases) {
    JSONValue json = sampleJSON();
    json["values"] = parseJSON(R"({"FF":1,"SEN":)" + text + "}");
    EXPECT_EQ(presetError(json), error) << text;
  }
  JSONValue json = sampleJSON();
  json["values"] = parseJSON(R"({"a":9223372036854775807,"b":-9223372036854775808,"c":-0})");
  EXPECT_EQ(decodePreset(json).values,
            (TuningPreset::Values{{"a", largest}, {"b", smallest}, {"c", 0}}));
}

TEST(DecodePreset, AnUnknownCodeNeedsAWholeNumberAsWell) {
  JSONValue json = sampleJSON();
  json["values"]["XYZ"] = "text";
  EXPECT_EQ(presetError(json), "\"XYZ\" is not a whole number but string");
}

TEST(DecodePreset, AKeyThatIsNothingLikeACodeIsNotQuoted) {
  for (const std::string& key : {std::string(17, 'x'), std::string("\x1b[31m"), std::string("a b"),
                                 std::string("\xc3\xa4"), std::string("a\0b", 3)}) {
    JSONValue json = sampleJSON();
    json["values"][key] = "text";
    EXPECT_EQ(presetError(json), "\"values\" is not a whole number but string");
  }
}

TEST(DecodePresets, ReadsAListInItsOrder) {
  EXPECT_EQ(decodePresets(parseJSON("[]")), std::vector<TuningPreset>{});
  std::vector<TuningPreset> presets(20);
  for (std::size_t i = 0; i < presets.size(); ++i) presets[i].name = std::to_string(100 - i);
  EXPECT_EQ(decodePresets(parseJSON(encodePresets(presets))), presets);
}

TEST(DecodePresets, NeedsAnArray) {
  for (const auto& [value, type] : valueTexts) {
    if (type == "array") continue;
    EXPECT_EQ(listError(value), "A list of presets is not an array but " + type);
  }
  EXPECT_EQ(listError(sampleJSON()), "A list of presets is not an array but object");
}

TEST(DecodePresets, SaysWhichPresetIsWrong) {
  for (std::size_t wrong = 0; wrong < 12; ++wrong) {
    const std::string number = std::to_string(wrong + 1);
    JSONValue json = JSONValue::array();
    for (int i = 0; i < 12; ++i) json.push_back(sampleJSON());
    json[wrong].erase("isBuiltIn");
    EXPECT_EQ(listError(json), "Preset " + number + ": \"isBuiltIn\" is missing");
    json[wrong] = nullptr;
    EXPECT_EQ(listError(json), "Preset " + number + ": A preset is not an object but null");
  }
}

TEST(DecodeShareFile, ReadsBackWhatIsEncoded) {
  SettingsShareFile file = sampleFile();
  EXPECT_EQ(decodeShareFile(sampleFileJSON()), file);
  file.preset.isBuiltIn = true;
  EXPECT_EQ(decodeShareFile(parseJSON(encodeShareFile(file))), file);
}

TEST(DecodeShareFile, ANewOneHasTheCurrentFormat) {
  EXPECT_EQ(SettingsShareFile::currentFormat, "quorvane-settings-1");
  EXPECT_EQ(SettingsShareFile().format, "quorvane-settings-1");
  EXPECT_EQ(SettingsShareFile().base, std::nullopt);
  EXPECT_EQ(SettingsShareFile::fileExtension, "quorvane");
}

TEST(DecodeShareFile, TakesAnyFormat) {
  for (const char* const format : {"quorvane-settings-2", "quorvane-settings-99", "", "other"}) {
    JSONValue json = sampleFileJSON();
    json["format"] = format;
    EXPECT_EQ(decodeShareFile(json).format, format);
    EXPECT_EQ(decodeShareFile(json).preset, sample());
  }
}

TEST(DecodeShareFile, ABaseThatIsNullOrMissingIsAbsent) {
  JSONValue json = sampleFileJSON();
  json["base"] = nullptr;
  EXPECT_EQ(decodeShareFile(json).base, std::nullopt);
  json.erase("base");
  EXPECT_EQ(decodeShareFile(json).base, std::nullopt);
}

TEST(DecodeShareFile, IgnoresUnknownKeys) {
  JSONValue json = sampleFileJSON();
  json["Base"] = 5;
  json["zzz"] = JSONValue::array();
  EXPECT_EQ(decodeShareFile(json), sampleFile());
}

TEST(DecodeShareFile, NeedsTheOtherKeys) {
  for (const char* const key : {"format", "exportedAt", "preset"}) {
    JSONValue json = sampleFileJSON();
    json.erase(key);
    EXPECT_EQ(fileError(json), "\"" + std::string(key) + "\" is missing");
  }
}

TEST(DecodeShareFile, NeedsTheRightTypes) {
  for (const auto& [value, type] : valueTexts) {
    for (const std::string key : {"format", "base", "exportedAt"}) {
      JSONValue json = sampleFileJSON();
      json[key] = value;
      std::string expected = "\"";
      expected.append(key).append("\" is not a text but ").append(type);
      if (type == "string" || (type == "null" && key == "base")) expected = "no error";
      if (type == "string" && key == "exportedAt") {
        expected = "\"exportedAt\" is not a date like 2026-03-01T09:30:00Z";
      }
      EXPECT_EQ(fileError(json), expected);
    }
    JSONValue json = sampleFileJSON();
    json["preset"] = value;
    EXPECT_EQ(fileError(json),
              type == "object" ? "\"id\" is missing" : "A preset is not an object but " + type);
  }
}

TEST(DecodeShareFile, NeedsADateInTheVeryForm) {
  for (const char* const text :
       {"2025-03-14T18:30:05.123Z", "2025-03-14T18:30:05+00:00", "2025-03-14t18:30:05z",
        "2025-03-14 18:30:05Z", "2025-03-14T18:30Z", "2025-03-14", "2025-02-30T18:30:05Z", "now"}) {
    JSONValue json = sampleFileJSON();
    json["exportedAt"] = text;
    EXPECT_EQ(fileError(json), "\"exportedAt\" is not a date like 2026-03-01T09:30:00Z") << text;
  }
}

TEST(DecodeShareFile, NeedsAnObject) {
  for (const auto& [value, type] : valueTexts) {
    if (type == "object") continue;
    EXPECT_EQ(fileError(value), "A settings file is not an object but " + type);
  }
}

}  // namespace
}  // namespace quorvane
