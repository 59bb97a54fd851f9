#include "simulator/simulated_state.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "presets/decoding_error.h"
#include "simulator/simulated_base.h"

namespace quorvane {
namespace {

using States = std::vector<SimulatedState>;

SimulatedState stateOf(std::int64_t productID) {
  SimulatedBase base(FanatecProduct::lookup(productID).value());
  return {productID, base.menu().state()};
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  const std::size_t begin = text.find(what);
  EXPECT_NE(begin, std::string::npos) << what;
  return text.replace(begin, what.size(), with);
}

std::string decodingRefusal(const std::string& text) {
  try {
    decodeStates(text);
  } catch (const DecodingError& error) {
    return error.what();
  }
  return "none";
}

TEST(SimulatedState, IsOneDocumentForAllBases) {
  const std::regex set("[0-9a-f]{2}( [0-9a-f]{2}){60}");
  const std::string text = std::regex_replace(encodeStates({stateOf(0x0020)}), set, "SET");
  EXPECT_EQ(text, R"({
  "bases" : [
    {
      "activeSet" : 2,
      "mode" : "standard",
      "product" : "0020",
      "sets" : [
        "SET",
        "SET",
        "SET",
        "SET",
        "SET"
      ]
    }
  ],
  "format" : "quorvane-simulated-bases-1"
})");
}

TEST(SimulatedState, ComesBackAsItWas) {
  States all;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) all.push_back(stateOf(product.productID));
  }
  SimulatedMenu menu(FanatecProduct::lookup(0x0020).value());
  menu.select(5);
  menu.toggleMode();
  menu.put(TuningParameter::forceFeedback, 37);
  all.push_back({0x0020, menu.state()});
  EXPECT_EQ(decodeStates(encodeStates(all)), all);
  EXPECT_EQ(decodeStates(encodeStates({})), States{});
}

TEST(SimulatedState, WhatIsNoneIsRefusedInWords) {
  const std::string good = encodeStates({stateOf(0x0020)});
  const std::string begin = "Not a state of simulated bases: ";
  const std::string format = begin + R"("format" is not "quorvane-simulated-bases-1")";
  const std::size_t firstSet = good.find("[\n        \"") + 11;
  const std::string forceFeedbackTooHigh = std::string(good).replace(firstSet + 3, 2, "ff");
  const std::string foreignByte = std::string(good).replace(firstSet + 180, 2, "01");
  const std::vector<std::pair<std::string, std::string>> cases{
      {"",
       "Not valid JSON at line 1, column 1: unexpected end of input; expected '[', '{', or a "
       "literal"},
      {"[]", format},
      {"{}", format},
      {replaced(good, "bases-1", "bases-2"), format},
      {replaced(good, "\"bases\"", "\"menus\""), begin + "\"bases\" is missing"},
      {replaced(good, "{\n  \"b", "{\n  \"a\" : 1, \"b"), begin + "it has other members"},
      {R"({"bases":{},"format":"quorvane-simulated-bases-1"})", begin + "\"bases\" is not a list"},
      {R"({"bases":[1],"format":"quorvane-simulated-bases-1"})",
       begin + "a base has other members"},
      {replaced(good, "\"mode\"", "\"menu\""), begin + "\"mode\" is missing"},
      {replaced(good, R"("mode")", R"("a" : 1, "mode")"), begin + "a base has other members"},
      {replaced(good, "\"standard\"", "\"sport\""),
       begin + "\"mode\" is neither standard nor advanced"},
      {replaced(good, "\"standard\"", "1"), begin + "\"mode\" is not a text"},
      {replaced(good, ": 2", ": 0"), begin + "\"activeSet\" is not 1 to 5"},
      {replaced(good, ": 2", ": 6"), begin + "\"activeSet\" is not 1 to 5"},
      {replaced(good, ": 2", ": 2.5"), begin + "\"activeSet\" is not 1 to 5"},
      {replaced(good, ": 2", ": 18446744073709551615"), begin + "\"activeSet\" is not 1 to 5"},
      {replaced(good, "\"0020\"", "\"183b\""), begin + "\"product\" is none with a tuning menu"},
      {replaced(good, "\"0020\"", "\"DD1\""), begin + "\"product\" is none with a tuning menu"},
      {replaced(good, "[\n        \"", "[ 1, \""), begin + "a base has not 5 sets"},
      {replaced(good, "[\n        \"", "[\n        \"00"), begin + "a set is not 61 bytes"},
      {replaced(good, "[\n        \"", "[\n        \"xx"), begin + "a set is not 61 bytes"},
      {forceFeedbackTooHigh,
       begin + "a set has a value that CSL DD / GT DD Pro / ClubSport DD cannot have"},
      {foreignByte, begin + "a set has a value that CSL DD / GT DD Pro / ClubSport DD cannot have"},
  };
  for (const auto& [text, reason] : cases) EXPECT_EQ(decodingRefusal(text), reason) << text;
  EXPECT_EQ(decodingRefusal(good), "none");
}

}  // namespace
}  // namespace quorvane
