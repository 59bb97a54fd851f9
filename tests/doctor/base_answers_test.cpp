#include "doctor/base_answers.h"

#include <gtest/gtest.h>

#include <stop_token>

#include "support/semaphore.h"
#include "tests/simulator/faulty_device.h"
#include "tests/support/eventful_clock.h"

namespace quorvane {
namespace {

using Opening = BaseAnswers::Opening;

constexpr Seconds patience{60};

std::shared_ptr<FaultyDevice> simulated() {
  return FaultyDevice::create(FanatecProduct::lookup(defaultSimulatedProduct).value(),
                              FaultyDevice::Time::simulated);
}

TEST(AskBase, GetsIdentityAndMenu) {
  const auto device = simulated();
  const BaseAnswers answers = askBase(HIDEnumerator::info(device), device->clock(), patience);
  EXPECT_EQ(answers.opening, Opening::opened);
  EXPECT_EQ(answers.openFailure, "");
  ASSERT_TRUE(answers.identity);
  EXPECT_EQ(answers.identity->baseName(), "CSL DD Wheel Base");
  ASSERT_TRUE(answers.tuning);
  EXPECT_EQ(answers.tuning->slot(), 2);
  EXPECT_FALSE(answers.outOfTime);
  EXPECT_EQ(device->openPorts(), 0U);
  EXPECT_EQ(device->violations(), std::vector<std::string>{});
}

TEST(AskBase, TellsTheFirmwareWhereTheBaseReportsIt) {
  const auto device = simulated();
  device->withBase([](SimulatedBase& base) {
    base.attachWheel(0x1C, 0x0123);
    base.behaviour().streamWheelStatus = true;
    base.behaviour().answerDelay = Seconds(0.1);
  });
  const BaseAnswers answers = askBase(HIDEnumerator::info(device), device->clock(), patience);
  EXPECT_EQ(answers.firmwareVersion, 0x0123);
}

TEST(AskBase, TellsWhyItCouldNotOpenTheBase) {
  const std::vector<std::pair<HIDReturn, Opening>> cases{
      {HIDReturnCode::notPermitted, Opening::notPermitted},
      {HIDReturnCode::exclusiveAccess, Opening::heldByAnother},
      {HIDReturnCode::noDevice, Opening::failed},
      {HIDReturnCode::generalError, Opening::failed},
  };
  for (const auto& [code, opening] : cases) {
    const auto device = simulated();
    device->failOpenWith(code);
    const BaseAnswers answers = askBase(HIDEnumerator::info(device), device->clock(), patience);
    EXPECT_EQ(answers.opening, opening);
    EXPECT_EQ(answers.openFailure, "HID I/O failed: " + describeHIDReturn(code));
    EXPECT_FALSE(answers.identity);
    EXPECT_FALSE(answers.tuning);
  }
}

TEST(AskBase, AsksNothingOnceItIsStopped) {
  const auto device = simulated();
  std::stop_source stop;
  stop.request_stop();
  const BaseAnswers answers =
      askBase(HIDEnumerator::info(device), device->clock(), patience, stop.get_token());
  EXPECT_FALSE(answers.tuning);
  EXPECT_FALSE(answers.outOfTime);
  EXPECT_EQ(device->transcript().lines(), (std::vector<std::string>{"open", "close"}));
}

TEST(AskBase, AwaitsNothingOnceItIsStopped) {
  const auto device = simulated();
  device->withBase([](SimulatedBase& base) { base.behaviour().silent = true; });
  EventfulClock clock;
  clock.follow(&device->clock());
  std::stop_source stop;
  clock.at(EventfulClock::Moment::request, 0, [&] { stop.request_stop(); });
  const auto start = clock.now();
  askBase(HIDEnumerator::info(device), clock, patience, stop.get_token());
  EXPECT_EQ(clock.now(), start) << "it waited for an answer";
  EXPECT_EQ(device->transcript().lines(),
            (std::vector<std::string>{"open", "> ff 08 01 ff +60", "> ff 08 02 +61", "close"}));
}

TEST(AskBase, LeavesASessionOfTheSameProcessAlone) {
  const auto device = simulated();
  const auto session = device->open(false);
  ASSERT_EQ(session.code, HIDReturnCode::success);
  device->withBase([](SimulatedBase& base) { base.behaviour().silent = true; });
  const BaseAnswers answers = askBase(HIDEnumerator::info(device), device->clock(), patience);
  EXPECT_EQ(answers.opening, Opening::opened);
  EXPECT_EQ(device->openPorts(), 1U);
}

// A base whose writes block until `gate` is signalled, and then fail.
class StuckDevice final : public HIDDeviceHandle {
 public:
  // The destructor signals `gone`.
  StuckDevice(std::shared_ptr<Semaphore> gate, std::shared_ptr<Semaphore> gone)
      : gate_(std::move(gate)), gone_(std::move(gone)) {}
  ~StuckDevice() override { gone_->signal(); }
  StuckDevice(const StuckDevice&) = delete;
  StuckDevice& operator=(const StuckDevice&) = delete;

  std::optional<HIDProperty> property(std::string_view /*key*/) const override { return {}; }
  std::vector<HIDElement> elements() const override { return {}; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }
  HIDOpenResult open(bool /*exclusive*/) override {
    return {HIDReturnCode::success, std::make_unique<Port>(gate_)};
  }

 private:
  class Port final : public HIDPort {
   public:
    explicit Port(std::shared_ptr<Semaphore> gate) : gate_(std::move(gate)) {}

    ReadResult read(std::span<std::uint8_t> /*buffer*/) override {
      interrupted_.wait();
      return {HIDReturnCode::aborted, 0, 0};
    }
    void interrupt() override { interrupted_.signal(); }
    HIDReturn write(std::uint8_t /*reportID*/, ByteView /*data*/) override {
      gate_->wait();
      return HIDReturnCode::noDevice;
    }
    HIDReturn getReport(HIDReportKind /*kind*/, std::uint8_t /*reportID*/,
                        std::span<std::uint8_t> /*buffer*/, std::size_t& /*length*/) override {
      return HIDReturnCode::generalError;
    }

   private:
    const std::shared_ptr<Semaphore> gate_;
    Semaphore interrupted_;
  };

  const std::shared_ptr<Semaphore> gate_;
  const std::shared_ptr<Semaphore> gone_;
};

TEST(AskBase, GivesUpABaseThatDoesNotEvenTakeAQuestion) {
  const auto gate = std::make_shared<Semaphore>();
  const auto gone = std::make_shared<Semaphore>();
  const BaseAnswers answers = askBase(
      HIDEnumerator::info(std::make_shared<StuckDevice>(gate, gone)), Clock::system(), Seconds(0));
  EXPECT_TRUE(answers.outOfTime);
  EXPECT_FALSE(answers.identity);
  EXPECT_FALSE(answers.tuning);
  // The abandoned thread ends once its writes return.
  gate->signal();
  gate->signal();
  gone->wait();
}

}  // namespace
}  // namespace quorvane
