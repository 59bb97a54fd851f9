#include "presets/preset_coding.h"

#include <fmt/format.h>

#include <algorithm>

#include "presets/json_writer.h"

namespace quorvane {
namespace {

void write(JSONWriter& writer, const TuningPreset::Values& values) {
  writer.beginObject();
  for (const auto& [code, value] : values) {
    writer.key(code);
    writer.integer(value);
  }
  writer.endObject();
}

void write(JSONWriter& writer, std::string_view key, std::string_view text) {
  writer.key(key);
  writer.string(text);
}

void write(JSONWriter& writer, const TuningPreset& preset) {
  writer.beginObject();
  write(writer, "game", preset.game);
  write(writer, "id", preset.id.text());
  writer.key("isBuiltIn");
  writer.boolean(preset.isBuiltIn);
  write(writer, "name", preset.name);
  write(writer, "notes", preset.notes);
  write(writer, "source", preset.source);
  writer.key("values");
  write(writer, preset.values);
  writer.endObject();
}

void requireType(bool holds, std::string_view key, std::string_view wanted,
                 const JSONValue& found) {
  if (holds) return;
  throw DecodingError(fmt::format("\"{}\" is not {} but {}", key, wanted,
                                  found.is_null() ? "null" : found.type_name()));
}

void requireObject(const JSONValue& json, std::string_view what) {
  if (json.is_object()) return;
  throw DecodingError(fmt::format("{} is not an object but {}", what, json.type_name()));
}

const JSONValue& member(const JSONValue& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end()) throw DecodingError(fmt::format("\"{}\" is missing", key));
  return *found;
}

const std::string& text(const JSONValue& object, const char* key) {
  const JSONValue& value = member(object, key);
  requireType(value.is_string(), key, "a text", value);
  return value.get_ref<const std::string&>();
}

UUID uuid(const JSONValue& object, const char* key) {
  const std::string& written = text(object, key);
  const auto id = UUID::parse(written);
  if (!id) throw DecodingError(fmt::format("\"{}\" is not a UUID", key));
  return *id;
}

// How messages name a key in "values": literally if it looks like a code, else as "values".
std::string_view keyText(std::string_view key) {
  constexpr std::size_t longest = 16;
  const bool isPlain =
      std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c < '\x7f' && c != '"'; });
  return isPlain && key.size() <= longest ? key : "values";
}

bool isInteger(const JSONValue& value) {
  constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
  return value.is_number_integer() &&
         (!value.is_number_unsigned() || value.get<std::uint64_t>() <= largest);
}

[[noreturn]] void failInteger(std::string_view key, const JSONValue& value) {
  requireType(value.is_number(), key, "a whole number", value);
  throw DecodingError(fmt::format("\"{}\" is not a whole number of 64 bits", key));
}

TuningPreset::Values values(const JSONValue& object, const char* key) {
  const JSONValue& json = member(object, key);
  requireType(json.is_object(), key, "an object", json);
  TuningPreset::Values result;
  for (const auto& [code, value] : json.get_ref<const JSONValue::object_t&>()) {
    if (!isInteger(value)) failInteger(keyText(code), value);
    result.emplace_hint(result.end(), code, value.get<std::int64_t>());
  }
  return result;
}

bool boolean(const JSONValue& object, const char* key) {
  const JSONValue& value = member(object, key);
  requireType(value.is_boolean(), key, "true or false", value);
  return value.get<bool>();
}

WallSeconds date(const JSONValue& object, const char* key) {
  const auto time = parseISO8601(text(object, key));
  if (!time) {
    throw DecodingError(fmt::format("\"{}\" is not a date like 2026-03-01T09:30:00Z", key));
  }
  return *time;
}

std::optional<std::string> optionalText(const JSONValue& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) return std::nullopt;
  return text(object, key);
}

}  // namespace

std::string encodePresets(const std::vector<TuningPreset>& presets) {
  JSONWriter writer;
  writer.beginArray();
  for (const TuningPreset& preset : presets) write(writer, preset);
  writer.endArray();
  return writer.take();
}

std::string encodeShareFile(const SettingsShareFile& file) {
  JSONWriter writer;
  writer.beginObject();
  if (file.base) write(writer, "base", *file.base);
  write(writer, "exportedAt", iso8601(file.exportedAt));
  write(writer, "format", file.format);
  writer.key("preset");
  write(writer, file.preset);
  writer.endObject();
  return writer.take();
}

TuningPreset decodePreset(const JSONValue& json) {
  requireObject(json, "A preset");
  return {uuid(json, "id"),          text(json, "name"),  text(json, "game"),
          text(json, "source"),      text(json, "notes"), values(json, "values"),
          boolean(json, "isBuiltIn")};
}

std::vector<TuningPreset> decodePresets(const JSONValue& json) {
  if (!json.is_array()) {
    throw DecodingError(fmt::format("A list of presets is not an array but {}", json.type_name()));
  }
  std::vector<TuningPreset> presets;
  presets.reserve(json.size());
  for (const JSONValue& element : json) {
    try {
      presets.push_back(decodePreset(element));
    } catch (const DecodingError& error) {
      throw DecodingError(fmt::format("Preset {}: {}", presets.size() + 1, error.what()));
    }
  }
  return presets;
}

SettingsShareFile decodeShareFile(const JSONValue& json) {
  requireObject(json, "A settings file");
  return {text(json, "format"), date(json, "exportedAt"), optionalText(json, "base"),
          decodePreset(member(json, "preset"))};
}

std::vector<TuningPreset> decodeSettings(const JSONValue& json) {
  try {
    return {decodeShareFile(json).preset};
  } catch (const DecodingError&) {
  }
  try {
    return decodePresets(json);
  } catch (const DecodingError&) {
  }
  return {decodePreset(json)};
}

}  // namespace quorvane
