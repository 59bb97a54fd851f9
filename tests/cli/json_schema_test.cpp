#include "tests/cli/json_schema.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using JsonSchemas = CommandLineTest;

TEST_F(JsonSchemas, DescribeWhatEveryCommandPrints) {
  struct Case {
    std::string line;
    ExitStatus status;
    std::string schema;
  };
  const std::vector<Case> cases{
      {"devices", ExitStatus::done, "devices"},
      {"read", ExitStatus::done, "read"},
      {"explain NDP", ExitStatus::done, "explain"},
      {"explain XYZ", ExitStatus::wrongUsage, "error"},
      {"set FF=80 SEN=AUTO SLOT=2", ExitStatus::done, "results"},
      {"set SHO=55 FF+=5", ExitStatus::done, "results"},
      {"set FF=101 DRI=1 BLI-=5", ExitStatus::failed, "results"},
      {"set FF=80 FUL=30 --dry-run", ExitStatus::done, "plan"},
      {"set FF=101 DRI=1 --dry-run", ExitStatus::failed, "plan"},
      {"diff base base", ExitStatus::done, "diff"},
      {"diff builtin:nobody", ExitStatus::wrongUsage, "error"},
      {"set FF=+5", ExitStatus::wrongUsage, "error"},
      {"set", ExitStatus::wrongUsage, "error"},
      {"undo --dry-run", ExitStatus::done, "undo"},
      {"undo", ExitStatus::done, "undo"},
      {"redo", ExitStatus::done, "undo"},
      {"redo", ExitStatus::failed, "error"},
      {"history", ExitStatus::done, "history"},
      {"select 3", ExitStatus::done, "menu"},
      {"select 6", ExitStatus::failed, "error"},
      {"mode", ExitStatus::done, "menu"},
      {"rotation 900", ExitStatus::done, "rotation"},
      {"rotation 20", ExitStatus::failed, "error"},
      {"raw ff 03 02", ExitStatus::done, "raw"},
      {"raw zz", ExitStatus::wrongUsage, "error"},
      {"factory-reset", ExitStatus::wrongUsage, "error"},
      {"factory-reset --yes", ExitStatus::done, "menu"},
      {"usb-reset", ExitStatus::done, "usb-reset"},
      {"--device nothing usb-reset", ExitStatus::failed, "error"},
      {"doctor", ExitStatus::done, "doctor"},
      {"udev-rule", ExitStatus::done, "udev-rule"},
      {"--version", ExitStatus::done, "version"},
      {"presets list", ExitStatus::done, "presets"},
      {"presets save Mine", ExitStatus::done, "presets"},
      {"presets show Mine", ExitStatus::done, "presets"},
      {"presets edit Mine --notes x", ExitStatus::done, "presets"},
      {"presets duplicate Mine", ExitStatus::done, "presets"},
      {"presets move Mine --last", ExitStatus::done, "presets"},
      {"presets move Mine", ExitStatus::wrongUsage, "error"},
      {"presets versions", ExitStatus::done, "preset-versions"},
      {"presets restore 1 --yes", ExitStatus::done, "presets"},
      {"presets restore 1", ExitStatus::wrongUsage, "error"},
      {"presets apply Mine", ExitStatus::done, "results"},
      {"presets apply Mine --dry-run", ExitStatus::done, "plan"},
      {"diff preset:Mine", ExitStatus::done, "diff"},
      {"presets export {}/all.json", ExitStatus::done, "presets"},
      {"presets share {}/mine.quorvane", ExitStatus::done, "presets"},
      {"presets import {}/mine.quorvane", ExitStatus::done, "presets"},
      {"presets import {}/all.json {}/nothing.json", ExitStatus::failed, "presets"},
      {"presets import {}/nothing.json", ExitStatus::failed, "error"},
      {"presets show nobody", ExitStatus::wrongUsage, "error"},
      {"presets", ExitStatus::wrongUsage, "error"},
      {"--device nothing read", ExitStatus::failed, "error"},
      {"raed", ExitStatus::wrongUsage, "error"},
      {"--layout windows read", ExitStatus::wrongUsage, "error"},
  };
  base();
  usb_.attached = {{Fanatec::vendorID, defaultSimulatedProduct, 0x03140000}};
  std::set<std::string> used{"monitor"};  // checked in monitor_command_test.cpp
  for (const auto& [line, status, schema] : cases) {
    std::vector<std::string> words = wordsOf("--json " + line);
    for (std::string& word : words) {
      const std::size_t at = word.find("{}");
      if (at != std::string::npos) word.replace(at, 2, directory_.path().string());
    }
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, status) << line << "\n" << outcome;
    EXPECT_EQ(schemaFaults(schemaNamed(schema), Json::parse(outcome.out)), Lines{}) << line;
    used.insert(schema);
  }
  expectedViolations_ = {"3 bytes on report 0xff instead of 64"};
  const std::vector<std::string> names = schemaNames();
  EXPECT_EQ(used, std::set<std::string>(names.begin(), names.end()));
}

// Expects that every object with named members allows no others.
void expectStrict(const std::string& name, const Json& schema) {
  if (schema.is_object() && schema.contains("properties") && schema.contains("type")) {
    EXPECT_EQ(schema.value("additionalProperties", Json()), Json(false)) << name << schema;
  }
  if (!schema.is_structured()) return;
  for (const Json& part : schema) expectStrict(name, part);
}

TEST(JsonSchemaFiles, AllowNothingThatTheyDoNotName) {
  for (const std::string& name : schemaNames()) {
    const Json schema = schemaNamed(name);
    EXPECT_EQ(schema["$schema"], "https://json-schema.org/draft/2020-12/schema") << name;
    EXPECT_TRUE(schema.contains("title")) << name;
    expectStrict(name, schema);
  }
}

TEST(SchemaFaults, NameWhatIsWrong) {
  const std::vector<std::pair<std::string, Lines>> cases{
      {R"({"error": {"kind": "timeout", "message": "x"}})", {}},
      {R"([])", {R"(: is no "object")", R"(: has no "error")"}},
      {R"({})", {R"(: has no "error")"}},
      {R"({"error": {"kind": "timeout"}})", {R"(/error: has no "message")"}},
      {R"({"error": {"kind": "timeout", "message": 1}})", {R"(/error/message: is no "string")"}},
      {R"({"error": {"kind": "timeout", "message": "x", "more": 1}})",
       {"/error: has an unknown more"}},
      {R"({"error": {"kind": "timeout", "message": "x"}, "more": 1})", {": has an unknown more"}},
  };
  for (const auto& [document, faults] : cases) {
    EXPECT_EQ(schemaFaults(schemaNamed("error"), Json::parse(document)), faults) << document;
  }
  const Json wrongKind = Json::parse(R"({"error": {"kind": "x", "message": "x"}})");
  EXPECT_EQ(schemaFaults(schemaNamed("error"), wrongKind).size(), 1U);
  const Json wrongEvent = Json::parse(R"({"event": "set", "value": "2"})");
  EXPECT_EQ(schemaFaults(schemaNamed("monitor"), wrongEvent), Lines{": 0 of the choices hold"});
}

TEST(SchemaFaults, AnUnknownKeywordIsAnError) {
  EXPECT_THROW(schemaFaults(Json{{"minimum", 3}}, Json(2)), std::runtime_error);
  EXPECT_THROW(schemaFaults(Json{{"type", "text"}}, Json("x")), std::runtime_error);
}

}  // namespace
}  // namespace quorvane
