#include "simulator/simulated_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "presets/json_reader.h"
#include "presets/json_writer.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr const char* format = "quorvane-simulated-bases-1";
constexpr const char* advanced = "advanced";
constexpr const char* standard = "standard";

void write(JSONWriter& writer, std::string_view key, std::string_view text) {
  writer.key(key);
  writer.string(text);
}

void write(JSONWriter& writer, const SimulatedState& state) {
  writer.beginObject();
  writer.key("activeSet");
  writer.integer(state.menu.activeSet);
  write(writer, "mode", state.menu.isAdvanced ? advanced : standard);
  write(writer, "product", fmt::format("{:04x}", state.productID));
  writer.key("sets");
  writer.beginArray();
  for (const SimulatedMenu::Menu& menu : state.menu.sets) writer.string(hexDump(menu));
  writer.endArray();
  writer.endObject();
}

[[noreturn]] void refuse(std::string_view what) {
  throw DecodingError(fmt::format("Not a state of simulated bases: {}", what));
}

void require(bool holds, std::string_view what) {
  if (!holds) refuse(what);
}

const JSONValue& member(const JSONValue& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end()) refuse(fmt::format("\"{}\" is missing", key));
  return *found;
}

const std::string& text(const JSONValue& json, const char* key) {
  require(json.is_string(), fmt::format("\"{}\" is not a text", key));
  return json.get_ref<const std::string&>();
}

const JSONValue& list(const JSONValue& object, const char* key) {
  const JSONValue& json = member(object, key);
  require(json.is_array(), fmt::format("\"{}\" is not a list", key));
  return json;
}

FanatecProduct product(const JSONValue& base) {
  const auto id = parseHexNumber(text(member(base, "product"), "product"));
  const auto found = id ? FanatecProduct::lookup(*id) : std::nullopt;
  require(found && found->hasTuningMenu(), "\"product\" is none with a tuning menu");
  return *found;
}

int activeSet(const JSONValue& base) {
  const JSONValue& json = member(base, "activeSet");
  const bool isSet = json.is_number_integer() && json >= 1 && json <= SimulatedMenu::setCount;
  require(isSet, fmt::format("\"activeSet\" is not 1 to {}", SimulatedMenu::setCount));
  return json.get<int>();
}

bool isAdvanced(const JSONValue& base) {
  const std::string& mode = text(member(base, "mode"), "mode");
  require(mode == advanced || mode == standard, "\"mode\" is neither standard nor advanced");
  return mode == advanced;
}

SimulatedMenu::Menu menu(const JSONValue& json) {
  const auto bytes = parseHexBytes(text(json, "sets"));
  SimulatedMenu::Menu result{};
  require(bytes && bytes->size() == result.size(),
          fmt::format("a set is not {} bytes", result.size()));
  std::copy(bytes->begin(), bytes->end(), result.begin());
  return result;
}

SimulatedState state(const JSONValue& base) {
  require(base.is_object() && base.size() == 4, "a base has other members");
  const FanatecProduct ofProduct = product(base);
  SimulatedState result{ofProduct.productID, {{}, activeSet(base), isAdvanced(base)}};
  const JSONValue& sets = list(base, "sets");
  require(sets.size() == result.menu.sets.size(),
          fmt::format("a base has not {} sets", result.menu.sets.size()));
  std::transform(sets.begin(), sets.end(), result.menu.sets.begin(), menu);
  require(SimulatedMenu(ofProduct).canHave(result.menu),
          fmt::format("a set has a value that {} cannot have", ofProduct.name));
  return result;
}

std::vector<SimulatedState> states(const JSONValue& json) {
  require(json.is_object() && json.contains("format") && json["format"] == format,
          fmt::format(R"("format" is not "{}")", format));
  require(json.size() == 2, "it has other members");
  std::vector<SimulatedState> result;
  for (const JSONValue& base : list(json, "bases")) result.push_back(state(base));
  return result;
}

}  // namespace

std::string encodeStates(const std::vector<SimulatedState>& states) {
  JSONWriter writer;
  writer.beginObject();
  writer.key("bases");
  writer.beginArray();
  for (const SimulatedState& state : states) write(writer, state);
  writer.endArray();
  write(writer, "format", format);
  writer.endObject();
  return writer.take();
}

std::vector<SimulatedState> decodeStates(std::string_view text) {
  JSONValue json = parseJSON(text);
  try {
    auto result = states(json);
    dismantle(json);
    return result;
  } catch (...) {
    dismantle(json);
    throw;
  }
}

}  // namespace quorvane
