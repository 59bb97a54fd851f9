#include "tests/cli/command_line_fixture.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>
#include <system_error>
#include <utility>

#include "cli/command_line.h"
#include "tests/cli/json_schema.h"

namespace quorvane {

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
  return stream << "status " << static_cast<int>(outcome.status) << "\nout: " << outcome.out
                << "\nerr: " << outcome.err;
}

CapturedStream::CapturedStream() : file_(::open_memstream(&buffer_, &size_)) {}

CapturedStream::~CapturedStream() {
  std::fclose(file_);
  std::free(buffer_);
}

std::string CapturedStream::text() {
  std::fflush(file_);
  return {buffer_, size_};
}

class FakeUSBBus::Device final : public USBDevice {
 public:
  Device(FakeUSBBus& bus, const Entry& entry) : bus_(bus), entry_(entry) {}

  std::optional<std::int64_t> vendorID() const override { return entry_.vendorID; }
  std::optional<std::int64_t> productID() const override { return entry_.productID; }
  std::optional<std::int64_t> locationID() const override { return entry_.locationID; }

  void reset() override {
    if (entry_.resetError != 0) {
      throw std::system_error(entry_.resetError, std::generic_category(), "/dev/bus/usb/001/002");
    }
    bus_.resetLocations.push_back(entry_.locationID);
  }

 private:
  FakeUSBBus& bus_;
  Entry entry_;
};

std::vector<std::unique_ptr<USBDevice>> FakeUSBBus::devices() {
  std::vector<std::unique_ptr<USBDevice>> result;
  result.reserve(attached.size());
  for (const Entry& entry : attached) result.push_back(std::make_unique<Device>(*this, entry));
  return result;
}

std::string writeOf(const MenuBytes& menu, TuningLayout layout) {
  const bool isInPlace = layout == TuningLayout::inPlace;
  return fmt::format("> ff 03 00 {}{} {} 0a {} 01 00 00 0a 0a 05 19 {} 00 32 64 00 {} 0b 05 +{}",
                     isInPlace ? "" : "02 ", menu.sensitivity, menu.forceFeedback,
                     menu.brakeLevelIndicator, menu.naturalFriction, menu.analogPaddles,
                     isInPlace ? 42 : 41);
}

Lines linesOfFourWrites() {
  MenuBytes menu;
  Lines lines{"open", "> ff 03 02 +61"};
  const auto write = [&](std::string_view& byte, std::string_view value) {
    byte = value;
    lines.insert(lines.end(), {writeOf(menu), "pause 250 ms", "> ff 03 02 +61"});
  };
  write(menu.sensitivity, "7e");
  write(menu.forceFeedback, "50");
  write(menu.brakeLevelIndicator, "28");
  write(menu.analogPaddles, "03");
  lines.emplace_back("close");
  return lines;
}

void CommandLineTest::TearDown() {
  std::vector<std::string> violations;
  for (const auto& device : devices_) {
    const auto more = device->violations();
    violations.insert(violations.end(), more.begin(), more.end());
    EXPECT_EQ(device->openPorts(), 0U) << "a base was left open";
  }
  EXPECT_EQ(violations, expectedViolations_);
}

FaultyDevice& CommandLineTest::attach(std::int64_t productID) {
  auto device = FaultyDevice::create(FanatecProduct::lookup(productID).value(),
                                     FaultyDevice::Time::simulated);
  backend_.add(device);
  devices_.push_back(std::move(device));
  return *devices_.back();
}

FaultyDevice& CommandLineTest::base() {
  if (devices_.empty()) attach();
  return *devices_.front();
}

void CommandLineTest::change(const std::function<void(SimulatedBehaviour&)>& behaviour) {
  base().withBase([&](SimulatedBase& simulated) { behaviour(simulated.behaviour()); });
}

Clock& CommandLineTest::clock() {
  if (eventful_) return *eventful_;
  if (devices_.empty() || !inSimulatedTime_) return hasty_;
  return devices_.front()->clock();
}

void CommandLineTest::atPause(int pause, std::function<void()> event) {
  eventful_.emplace().follow(&base().clock());
  eventful_->at(EventfulClock::Moment::pause, pause, std::move(event));
}

World CommandLineTest::world(std::FILE* out, std::FILE* err) {
  return {{backend_, usb_, clock(), survey_},
          out,
          err,
          [this] { return Interruption(UniqueFd(::dup(interruption_.fd()))); },
          [this]() -> const PresetStore& { return store_; },
          [this]() -> const PresetStore& { return simulatedStore_; },
          {},
          history_,
          simulatedHistory_};
}

Outcome CommandLineTest::run(std::string_view line) { return run(wordsOf(line)); }

Outcome CommandLineTest::run(const std::vector<std::string>& words) {
  CapturedStream out;
  CapturedStream err;
  const ExitStatus status = runCommandLine(words, world(out.file(), err.file()));
  Outcome outcome{status, out.text(), err.text()};
  if (printsDocument(words)) {
    EXPECT_EQ(documentFaults(words, outcome), Lines{});
  }
  return outcome;
}

std::string documentText(const std::string& out) { return documentText(Json::parse(out)); }

std::string documentText(const Json& document) { return document.dump(2); }

std::string errorDocument(std::string_view kind, std::string_view message) {
  return documentText(Json{{"error", {{"kind", kind}, {"message", message}}}}) + "\n";
}

std::vector<std::string> wordsOf(std::string_view line) {
  std::istringstream stream{std::string(line)};
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

}  // namespace quorvane
