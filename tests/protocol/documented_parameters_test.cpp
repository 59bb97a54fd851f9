#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "protocol/error.h"
#include "protocol/tuning_parameter.h"
#include "tests/protocol_document.h"

namespace quorvane::documented_parameters_test {
namespace {

namespace Document = ProtocolDocument;
using Document::Cells;

constexpr std::int64_t classicID = 0x0001;
constexpr std::int64_t cslEliteID = 0x0E03;
constexpr std::int64_t directDriveID = 0x0006;
constexpr std::int64_t fullForceID = 0x0020;

FanatecProduct product(std::int64_t productID) { return *FanatecProduct::lookup(productID); }

bool has(std::int64_t productID, TuningParameter parameter) {
  const auto available = TuningParameter::available(product(productID));
  return std::find(available.begin(), available.end(), parameter) != available.end();
}

std::string menusOf(TuningParameter parameter) {
  constexpr std::array<std::pair<std::int64_t, const char*>, 3> menus{
      {{classicID, "classic"}, {cslEliteID, "CSL Elite"}, {directDriveID, "direct drive"}}};
  std::string text;
  for (const auto& [productID, name] : menus) {
    if (has(productID, parameter)) text += (text.empty() ? "" : ", ") + std::string(name);
  }
  if (text.empty() && has(fullForceID, parameter)) return "product 0x0020 only";
  return text;
}

// A row of the table of codings, as text and as functions.
struct Coding {
  std::string decodeText;
  std::string encodeText;
  std::function<std::int64_t(std::int64_t raw)> decode;
  std::function<std::int64_t(std::int64_t value)> encode;
};

const std::map<std::string, Coding>& codings() {
  static const std::map<std::string, Coding> all{
      {"plain", {"r", "v", [](auto r) { return r; }, [](auto v) { return v; }}},
      {"tenths",
       {"10 · r", "v / 10", [](auto r) { return 10 * r; }, [](auto v) { return v / 10; }}},
      {"tens", {"r", "v / 10 · 10", [](auto r) { return r; }, [](auto v) { return v / 10 * 10; }}},
      {"signed",
       {"r as two's complement", "v as two's complement",
        [](auto r) { return r < 128 ? r : r - 256; }, [](auto v) { return v < 0 ? v + 256 : v; }}},
      {"angle, classic and CSL Elite",
       {"10 · r", "v / 10", [](auto r) { return 10 * r; }, [](auto v) { return v / 10; }}},
      {"angle, direct drive and unknown products",
       {"r < 138: 10 · r + 1270, else 10 · r − 1290", "v / 10 − 127, the low 8 bits",
        [](auto r) { return r < 138 ? 10 * r + 1270 : 10 * r - 1290; },
        [](auto v) { return (v / 10 - 127 + 256) % 256; }}},
  };
  return all;
}

const Coding& codingOf(const std::string& name, const std::optional<FanatecProduct>& product) {
  if (name != "angle") return codings().at(name);
  return codings().at(!product || product->tuningFamily == TuningFamily::directDrive
                          ? "angle, direct drive and unknown products"
                          : "angle, classic and CSL Elite");
}

void expectCoding(TuningParameter parameter, const std::optional<FanatecProduct>& product,
                  const Coding& coding) {
  for (int raw = 0; raw <= 0xFF; ++raw) {
    const auto byte = static_cast<std::uint8_t>(raw);
    EXPECT_EQ(parameter.decode(byte, product), coding.decode(byte)) << parameter.code() << raw;
  }
  const ClosedRange range = parameter.allowedRange(product);
  for (std::int64_t value = range.lower; value <= range.upper; ++value) {
    EXPECT_EQ(parameter.encode(value, product), coding.encode(value)) << parameter.code() << value;
  }
}

TEST(DocumentedParameters, ListEveryParameter) {
  std::vector<Cells> parameters;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    const ClosedRange range = parameter.allowedRange(std::nullopt);
    parameters.push_back({std::to_string(parameter.offset()), std::string(parameter.code()),
                          std::string(parameter.title()), std::string(parameter.unit()),
                          std::to_string(parameter.step()),
                          fmt::format("{} to {}", range.lower, range.upper), menusOf(parameter)});
  }
  auto rows = Document::table("Parameters", "byte");
  for (Cells& row : rows) row.erase(row.begin() + 6);  // the coding, which has a test of its own
  EXPECT_EQ(rows, parameters);
}

TEST(DocumentedParameters, ListEveryCoding) {
  const auto rows = Document::table("Codings", "coding");
  EXPECT_EQ(rows.size(), codings().size());
  for (const Cells& row : rows) {
    const Coding& coding = codings().at(row.at(0));
    EXPECT_EQ(row, (Cells{row.at(0), coding.decodeText, coding.encodeText}));
  }
}

TEST(DocumentedParameters, NameTheCodingOfEveryByteAndValue) {
  for (const Cells& row : Document::table("Parameters", "byte")) {
    const auto parameter = TuningParameter::fromRawValue(row.at(1)).value();
    expectCoding(parameter, std::nullopt, codingOf(row.at(6), std::nullopt));
    for (const FanatecProduct& product : FanatecProduct::all()) {
      if (!has(product.productID, parameter)) continue;
      expectCoding(parameter, product, codingOf(row.at(6), product));
    }
  }
}

TEST(DocumentedParameters, CodeTheirExamplesBothWays) {
  for (const Cells& row : Document::table("Coded values", "product")) {
    const FanatecProduct base = product(Document::hexNumber(row.at(0)));
    const auto parameter = TuningParameter::fromRawValue(row.at(1)).value();
    const std::int64_t value = Document::number(row.at(2));
    const std::uint8_t byte = Document::bytes(row.at(3)).at(0);
    EXPECT_EQ(parameter.encode(value, base), byte) << row.at(0) << row.at(1) << value;
    EXPECT_EQ(parameter.decode(byte, base), value) << row.at(0) << row.at(1) << value;
  }
}

TEST(DocumentedParameters, TellTheAutomaticAngle) {
  const TuningParameter angle = TuningParameter::sensitivity;
  EXPECT_EQ(angle.encode(0, product(fullForceID)), angle.encode(2530, product(fullForceID)));
  EXPECT_EQ(angle.encode(0, std::nullopt), angle.encode(2520, std::nullopt));
  EXPECT_THROW(angle.encode(0, product(classicID)), FanatecError);
}

TEST(DocumentedParameters, ListEveryWord) {
  const FanatecProduct base = product(fullForceID);
  std::vector<Cells> words;
  for (const TuningParameter parameter : TuningParameter::available(base)) {
    ClosedRange range = parameter.allowedRange(base);
    if (parameter == TuningParameter::sensitivity) range.upper = base.autoRotation;
    for (std::int64_t value = range.lower; value <= range.upper; ++value) {
      const auto word = parameter.label(value, base);
      if (!word) continue;
      const bool isAutomatic = parameter == TuningParameter::sensitivity;
      words.push_back({std::string(parameter.code()),
                       isAutomatic ? "the automatic angle" : std::to_string(value),
                       std::string(*word)});
    }
  }
  EXPECT_EQ(Document::table("Words in place of numbers", "code"), words);
}

}  // namespace
}  // namespace quorvane::documented_parameters_test
