#include "tests/cli/json_schema.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "cli/completion.h"

namespace quorvane {
namespace {

using Faults = std::vector<std::string>;

bool isType(const Json& value, const std::string& type) {
  if (type == "object") return value.is_object();
  if (type == "array") return value.is_array();
  if (type == "string") return value.is_string();
  if (type == "integer") return value.is_number_integer();
  if (type == "boolean") return value.is_boolean();
  if (type == "null") return value.is_null();
  throw std::runtime_error("an unknown type in a schema: " + type);
}

class Validator {
 public:
  explicit Validator(const Json& schema) : root_(schema) {}

  Faults faults(const Json& schema, const Json& value, const std::string& place) const {
    Faults found;
    for (const auto& [keyword, wanted] : schema.items()) {
      const Faults more = faultsOf(keyword, wanted, schema, value, place);
      found.insert(found.end(), more.begin(), more.end());
    }
    return found;
  }

 private:
  static bool saysNothing(const std::string& keyword) {
    static const Faults words{"$schema", "$defs", "title", "description"};
    return std::find(words.begin(), words.end(), keyword) != words.end();
  }

  static Faults unless(bool holds, const std::string& place, const std::string& fault) {
    return holds ? Faults() : Faults{place + ": " + fault};
  }

  Faults faultsOf(const std::string& keyword, const Json& wanted, const Json& schema,
                  const Json& value, const std::string& place) const {
    if (saysNothing(keyword)) return {};
    if (keyword == "$ref") return faults(referred(wanted), value, place);
    if (keyword == "type") return unless(isType(value, wanted), place, "is no " + wanted.dump());
    if (keyword == "const") return unless(value == wanted, place, "is not " + wanted.dump());
    if (keyword == "enum") {
      const bool isOne = std::find(wanted.begin(), wanted.end(), value) != wanted.end();
      return unless(isOne, place, value.dump() + " is none of " + wanted.dump());
    }
    if (keyword == "pattern") {
      const bool fits =
          value.is_string() &&
          std::regex_search(value.get<std::string>(), std::regex(wanted.get<std::string>()));
      return unless(fits, place, "does not match " + wanted.dump());
    }
    if (keyword == "required") return missing(wanted, value, place);
    if (keyword == "properties") return properties(wanted, value, place);
    if (keyword == "additionalProperties") return others(wanted, schema, value, place);
    if (keyword == "items") return items(wanted, value, place);
    if (keyword == "anyOf" || keyword == "oneOf") return choices(keyword, wanted, value, place);
    throw std::runtime_error("an unknown keyword in a schema: " + keyword);
  }

  const Json& referred(const std::string& reference) const {
    return root_.at(Json::json_pointer(reference.substr(1)));
  }

  static Faults missing(const Json& names, const Json& value, const std::string& place) {
    Faults found;
    for (const Json& name : names) {
      if (!value.contains(name.get<std::string>()))
        found.push_back(place + ": has no " + name.dump());
    }
    return found;
  }

  Faults properties(const Json& schemas, const Json& value, const std::string& place) const {
    Faults found;
    for (const auto& [name, schema] : schemas.items()) {
      if (!value.contains(name)) continue;
      const Faults more = faults(schema, value[name], fmt::format("{}/{}", place, name));
      found.insert(found.end(), more.begin(), more.end());
    }
    return found;
  }

  Faults others(const Json& wanted, const Json& schema, const Json& value,
                const std::string& place) const {
    Faults found;
    if (!value.is_object()) return found;
    const Json known = schema.value("properties", Json::object());
    for (const auto& [name, other] : value.items()) {
      if (known.contains(name)) continue;
      const Faults more = wanted.is_boolean()
                              ? unless(wanted.get<bool>(), place, "has an unknown " + name)
                              : faults(wanted, other, fmt::format("{}/{}", place, name));
      found.insert(found.end(), more.begin(), more.end());
    }
    return found;
  }

  Faults items(const Json& schema, const Json& value, const std::string& place) const {
    Faults found;
    if (!value.is_array()) return found;
    for (std::size_t i = 0; i < value.size(); ++i) {
      const Faults more = faults(schema, value[i], place + "/" + std::to_string(i));
      found.insert(found.end(), more.begin(), more.end());
    }
    return found;
  }

  Faults choices(const std::string& keyword, const Json& schemas, const Json& value,
                 const std::string& place) const {
    const auto holding = std::count_if(schemas.begin(), schemas.end(), [&](const Json& schema) {
      return faults(schema, value, place).empty();
    });
    const bool holds = keyword == "oneOf" ? holding == 1 : holding > 0;
    return unless(holds, place, std::to_string(holding) + " of the choices hold");
  }

  const Json& root_;
};

// The name of the schema for a command's output.
std::string schemaOf(const std::vector<std::string>& words) {
  static const std::map<std::string, std::string> schemas{
      {"devices", "devices"},     {"read", "read"},
      {"set", "results"},         {"select", "menu"},
      {"mode", "menu"},           {"factory-reset", "menu"},
      {"rotation", "rotation"},   {"raw", "raw"},
      {"usb-reset", "usb-reset"}, {"doctor", "doctor"},
      {"udev-rule", "udev-rule"}, {"presets", "presets"},
      {"--version", "version"},   {"explain", "explain"},
      {"history", "history"},     {"undo", "undo"},
      {"redo", "undo"},           {"diff", "diff"},
  };
  for (const std::string& word : words) {
    const auto found = schemas.find(word);
    if (found == schemas.end()) continue;
    const auto has = [&](const char* other) {
      return std::find(words.begin(), words.end(), other) != words.end();
    };
    if (has("--dry-run") && (word == "set" || word == "presets")) return "plan";
    if (word != "presets") return found->second;
    if (has("apply")) return "results";
    return has("versions") ? "preset-versions" : found->second;
  }
  throw std::runtime_error("a command without a schema");
}

// The violations in the monitor's output, one document per line; it may be empty.
Faults lineFaults(const std::string& text) {
  Faults all;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const Json document = Json::parse(line, nullptr, false);
    const Faults faults = document.is_discarded() ? Faults{"a line is no document: " + line}
                                                  : schemaFaults(schemaNamed("monitor"), document);
    all.insert(all.end(), faults.begin(), faults.end());
  }
  return all;
}

}  // namespace

std::vector<std::string> schemaNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(SCHEMAS)) {
    names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Json schemaNamed(std::string_view name) {
  std::ifstream file(std::filesystem::path(SCHEMAS) / (std::string(name) + ".json"));
  return Json::parse(file);
}

Faults schemaFaults(const Json& schema, const Json& document) {
  return Validator(schema).faults(schema, document, "");
}

bool printsDocument(const std::vector<std::string>& words) {
  const auto end = std::find(words.begin(), words.end(), "--");
  const auto has = [&](const char* word) { return std::find(words.begin(), end, word) != end; };
  return has("--json") && !has("-") && !has("--report=-") && !has("--help") && !has("help") &&
         !words.front().starts_with(completionWord);
}

Faults documentFaults(const std::vector<std::string>& words, const Outcome& outcome) {
  const bool monitors = std::find(words.begin(), words.end(), "monitor") != words.end();
  if (monitors && outcome.status == ExitStatus::done) return lineFaults(outcome.out);
  const Json document = Json::parse(outcome.out, nullptr, false);
  if (document.is_discarded()) return {"standard output is no document: " + outcome.out};
  const bool isError = document.size() == 1 && document.contains("error");
  if (isError && outcome.status == ExitStatus::done) return {"an error, and status 0"};
  const bool compares = std::find(words.begin(), words.end(), "diff") != words.end();
  if (outcome.status == ExitStatus::wrongUsage && !compares &&
      (!isError || document["error"]["kind"] != "wrongUsage")) {
    return {"wrong usage without an error that says so: " + outcome.out};
  }
  return schemaFaults(schemaNamed(isError ? "error" : schemaOf(words)), document);
}

}  // namespace quorvane
