#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "hid/device_info.h"
#include "hid/element_reader.h"
#include "presets/json_reader.h"
#include "presets/preset_coding.h"
#include "presets/preset_store.h"
#include "protocol/identity_report.h"
#include "simulator/simulated_base.h"
#include "simulator/simulated_device.h"
#include "tests/faults/fault.h"
#include "tests/faults/fault_table.h"
#include "tests/faults/leftovers.h"
#include "tests/faults/parsers/failing_allocation.h"
#include "tests/hid/descriptors.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

constexpr const char* outOfMemory = "out of memory";
constexpr std::size_t mostAllocations = 100'000;

// A parser of foreign bytes.
struct Parser {
  std::string name;
  std::function<void()> run;

  // The error text when an allocation fails; for files it names the file.
  std::string failure = outOfMemory;
  std::string success = "read";  // or the error text of bytes that are not valid
};

// The files that are read.
class Files {
 public:
  Files() {
    TuningPreset preset;
    preset.name = "A preset with a name that does not fit into a short string";
    preset.values = {{"SEN", 900}, {"FF", 80}, {"a code that is far too long for one", 1}};
    PresetStore(presets()).save({preset, preset});
    PresetStore::exportShare(preset, "CSL DD", shared());
    putFile(damaged(), R"([{"name": "never ended)");
  }

  std::filesystem::path presets() const { return directory_ / "presets.json"; }
  std::filesystem::path shared() const { return directory_ / "shared.quorvane"; }
  std::filesystem::path damaged() const { return directory_ / "damaged.json"; }

  std::string withoutDirectory(std::string text) const {
    const std::string directory = directory_.path().string() + "/";
    if (const auto at = text.find(directory); at != std::string::npos) {
      text.erase(at, directory.size());
    }
    return text;
  }

 private:
  TemporaryDirectory directory_;
};

HIDInputReport inputReport() {
  HIDInputReport report;
  report.reportID = 1;
  report.bytes = {1, 0x34, 0x12, 0xFF, 0x03, 0x05};
  return report;
}

Bytes menuReport() {
  return SimulatedBase(FanatecProduct::lookup(defaultSimulatedProduct).value()).menu().report();
}

Bytes identityReport() {
  return SimulatedBase(FanatecProduct::lookup(defaultSimulatedProduct).value()).identityReport();
}

std::vector<Parser> reports() {
  const auto device = SimulatedDevice::create(
      FanatecProduct::lookup(defaultSimulatedProduct).value(), SimulatedDevice::Time::simulated);
  return {
      {"report descriptor: lengths",
       [] { EXPECT_EQ(HIDReportDescriptor(joystick()).summaries().size(), 3U); }},
      {"report descriptor: elements",
       [] { EXPECT_EQ(HIDElements::parse(joystick()).elements.size(), 6U); }},
      {"report descriptor: properties",
       [] {
         HIDProperties properties;
         addDescriptorProperties(properties, joystick());
         EXPECT_EQ(properties.size(), 6U);
       }},
      {"description of a device",
       [device] { EXPECT_EQ(HIDEnumerator::info(device).reports.size(), 4U); }},
      {"input report: values",
       [] {
         HIDElementReader reader(HIDElements::parse(joystick()));
         EXPECT_EQ(reader.changes(inputReport()).size(), 12U);
       }},
      {"tuning report", [] { EXPECT_TRUE(TuningSnapshot::fromReport(menuReport(), {})); }},
      {"identity report", [] { EXPECT_TRUE(IdentityReport::fromReport(identityReport(), {})); }},
  };
}

std::vector<Parser> documents(const Files& files) {
  const std::string noMemory = ": Cannot allocate memory";
  return {
      {"preset file", [&files] { EXPECT_EQ(PresetStore(files.presets()).read().size(), 2U); },
       "presets.json" + noMemory},
      {"preset file, damaged", [&files] { PresetStore(files.damaged()).read(); },
       "damaged.json" + noMemory,
       "damaged.json: Not valid JSON at line 1, column 23: invalid string: missing closing quote"},
      {"import of a settings file",
       [&files] { EXPECT_EQ(PresetStore::importPresets(files.shared()).size(), 1U); },
       "shared.quorvane" + noMemory},
      {"import of a list of presets",
       [&files] { EXPECT_EQ(PresetStore::importPresets(files.presets()).size(), 2U); },
       "presets.json" + noMemory},
      {"settings file as JSON",
       [text = contentOf(files.shared())] {
         JSONValue json = parseJSON(text);
         EXPECT_EQ(decodeShareFile(json).base, "CSL DD");
         dismantle(json);
       }},
  };
}

// The outcome as text, with the n-th allocation failing; 0: none fails.
std::string outcomeOf(const Parser& parser, const Files& files, std::size_t failingNumber = 0) {
  std::optional<FailingAllocation> failing(failingNumber);
  try {
    parser.run();
    failing.reset();
    return parser.success;
  } catch (const std::bad_alloc&) {
    failing.reset();
    return outOfMemory;
  } catch (const std::exception& error) {
    failing.reset();
    return files.withoutDirectory(error.what());
  }
}

// Runs the parser once for each of its allocations, with that one failing. Returns their number.
std::size_t failEach(const Parser& parser, const Files& files) {
  for (std::size_t number = 1; number < mostAllocations; ++number) {
    SCOPED_TRACE(fmt::format("{}, allocation {}", parser.name, number));
    const std::ptrdiff_t before = liveAllocations();
    std::string outcome = outcomeOf(parser, files, number);
    const bool isExpected = outcome == parser.failure || outcome == outOfMemory;
    const bool isSuccess = outcome == parser.success;
    std::string().swap(outcome);
    EXPECT_EQ(liveAllocations(), before) << "memory was left behind";
    if (!FailingAllocation::happened()) {
      EXPECT_TRUE(isSuccess);
      return number - 1;
    }
    EXPECT_TRUE(isExpected);
  }
  ADD_FAILURE() << parser.name << " never passes";
  return 0;
}

TEST(ParserFaults, NoParserFailsOtherwiseThanWithAnErrorWhenMemoryRunsOut) {
  const NoLeftovers noLeftovers;
  const Files files;
  std::vector<Parser> all = reports();
  for (Parser& parser : documents(files)) all.push_back(std::move(parser));
  for (const Parser& parser : all) {
    SCOPED_TRACE(parser.name);
    EXPECT_EQ(outcomeOf(parser, files), parser.success);  // also creates function-local statics
    EXPECT_GT(failEach(parser, files), 0U);
    FaultTable::add({"parser", parser.name, nothingWrong, 0, {parser.success}, {}, {}});
    FaultTable::add({"parser", parser.name, "any allocation fails", 0, {parser.failure}, {}, {}});
  }
}

TEST(ParserFaults, WheelStatusReportsNeedNoMemory) {
  const Bytes report =
      SimulatedBase(FanatecProduct::lookup(defaultSimulatedProduct).value()).wheelStatusReport();
  const FailingAllocation failing(1);
  EXPECT_TRUE(WheelStatus::fromReport(report));
  EXPECT_FALSE(FailingAllocation::happened());
}

TEST(ParserFaults, AStoreThatCannotReadGivesNoPresetsAndKeepsTheFile) {
  const Files files;
  const std::string content = contentOf(files.presets());
  const PresetStore store(files.presets());
  std::size_t number = 1;
  for (bool failed = true; failed; ++number) {
    std::optional<FailingAllocation> failing(number);
    const std::vector<TuningPreset> presets = store.load();
    failing.reset();
    failed = FailingAllocation::happened();
    EXPECT_EQ(presets.size(), failed ? 0U : 2U);
  }
  EXPECT_GT(number, 2U);
  EXPECT_EQ(contentOf(files.presets()), content);
}

}  // namespace
}  // namespace quorvane
