#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using WheelBaseThreads = SimulatedSessionTest;
using WheelBaseThreadsInRealTime = RealTimeSessionTest;

TEST_F(WheelBaseThreads, AHandlerMayUseTheSession) {
  connect();
  int calls = 0;
  base->setOnTuningUpdate([&](const TuningSnapshot&) {
    ++calls;
    EXPECT_TRUE(base->tuning());
    EXPECT_FALSE(base->wheelID());
    base->toggleAdvancedMode();
    base->setOnStatusUpdate([&](WheelBase& session) {
      ++calls;
      session.setOnStatusUpdate({});
    });
    base->setOnTuningUpdate({});
  });
  report(menuReport());
  EXPECT_EQ(calls, 1);
  device->withBase([](SimulatedBase& simulated) { simulated.attachWheel(3, 4); });
  report(statusReport());
  report(menuReport());
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61"}));
}

TEST_F(WheelBaseThreads, AHandlerMayDisconnect) {
  connect();
  int calls = 0;
  base->setOnTuningUpdate([&](const TuningSnapshot&) {
    ++calls;
    base->disconnect();
  });
  report(menuReport());
  EXPECT_FALSE(base->connection().isOpen());
  EXPECT_TRUE(base->tuning());
  report(menuReport());
  EXPECT_EQ(calls, 1);
}

TEST_F(WheelBaseThreads, AHandlerMayLetGoOfTheSession) {
  connect();
  base->setOnTuningUpdate([this](const TuningSnapshot&) { base.reset(); });
  report(menuReport());
  device->transcript().waitForLines(1);
  EXPECT_EQ(takeTranscript(), (Lines{"close"}));
  EXPECT_EQ(base, nullptr);
}

TEST_F(WheelBaseThreads, AStatusHandlerMayLetGoOfTheSession) {
  connect();
  base->setOnStatusUpdate([this](WheelBase&) { base.reset(); });
  report(statusReport());
  device->transcript().waitForLines(1);
  EXPECT_EQ(takeTranscript(), (Lines{"close"}));
  EXPECT_EQ(base, nullptr);
}

TEST_F(WheelBaseThreadsInRealTime, ADisconnectEndsEveryReadThatWaits) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  {
    const Thread reader("reader", [&] {
      EXPECT_EQ(errorText([&] { base->fetchTuning(never); }), "Device is not open");
    });
    const Thread identityReader("identity reader", [&] {
      EXPECT_EQ(errorText([&] { base->fetchIdentity(never); }), "Device is not open");
    });
    device->transcript().waitForLines(3);
    base->disconnect();
  }
  EXPECT_FALSE(base->connection().isOpen());
}

TEST_F(WheelBaseThreads, ADisconnectIsForGood) {
  base->disconnect();
  EXPECT_EQ(errorText([&] { base->connect(); }), "Device is not open");
  EXPECT_FALSE(base->connection().isOpen());
}

TEST_F(WheelBaseThreads, StandsADisconnectAtAnyMomentOfTheConnecting) {
  for (int i = 0; i < 300; ++i) {
    const auto session = WheelBase::create(HIDEnumerator::info(device), device->clock());
    const Thread connecting("connecting", [&] {
      const std::string text = errorText([&] { session->connect(); });
      EXPECT_TRUE(text == "no error" || text == "Device is not open") << text;
    });
    session->disconnect();
  }
  EXPECT_EQ(device->openPorts(), 0U);
}

TEST_F(WheelBaseThreads, DestructionClosesAndDropsTheHandlers) {
  const auto held = std::make_shared<int>(0);
  connect();
  base->setOnTuningUpdate([held](const TuningSnapshot&) {});
  base->setOnStatusUpdate([held](WheelBase&) {});
  EXPECT_EQ(held.use_count(), 3);
  report(menuReport());
  base.reset();
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(takeTranscript(), (Lines{"close"}));
}

TEST_F(WheelBaseThreads, ASessionThatIsLetGoWhileItsHandlerRunsIsKeptUntilTheHandlerIsDone) {
  connect();
  Semaphore entered;
  Semaphore leave;
  base->setOnTuningUpdate([&, session = base.get()](const TuningSnapshot& snapshot) {
    entered.signal();
    leave.wait();
    EXPECT_EQ(session->tuning(), snapshot);
  });
  device->sendReport(menuReport());
  entered.wait();
  base.reset();
  EXPECT_EQ(device->openPorts(), 1U);
  leave.signal();
  device->transcript().waitForLines(1);
}

TEST_F(WheelBaseThreadsInRealTime, StandsManyReadersAndHandlersWhileReportsStream) {
  constexpr int reads = 150;
  connect();
  behave([](SimulatedBehaviour& b) {
    b.streamWheelStatus = true;
    b.foreignReports = true;
  });
  std::atomic<bool> done = false;
  std::atomic<int> announced = 0;
  {
    std::vector<Thread> others;
    others.emplace_back("handlers", [&] {
      while (!done) {
        base->setOnTuningUpdate([&](const TuningSnapshot&) { ++announced; });
        base->setOnStatusUpdate([&](WheelBase& session) { session.firmwareVersion(); });
        base->setOnTuningUpdate({});
        base->setOnStatusUpdate({});
      }
    });
    others.emplace_back("looker", [&] {
      while (!done) {
        // Both are set by the same report. The second call may see a later report.
        const bool hasWheel = base->wheelID().has_value();
        EXPECT_TRUE(!hasWheel || base->firmwareVersion());
        const auto snapshot = base->tuning();
        EXPECT_TRUE(!snapshot || snapshot->slot() == 2);
        base->identity();
      }
    });
    others.emplace_back("wheels", [&] {
      for (std::uint16_t wheel = 1; !done; wheel = static_cast<std::uint16_t>(wheel % 100 + 1)) {
        device->withBase([&](SimulatedBase& simulated) { simulated.attachWheel(wheel, wheel); });
      }
    });
    {
      std::array<Thread, 3> readers;
      for (Thread& reader : readers) {
        reader = Thread("reader", [&] {
          for (int n = 0; n < reads; ++n) EXPECT_EQ(base->fetchTuning(never).slot(), 2);
        });
      }
      const Thread identityReader("identity reader", [&] {
        for (int n = 0; n < reads; ++n) EXPECT_EQ(base->fetchIdentity(never).raw().size(), 64U);
      });
    }
    done = true;
  }
  EXPECT_TRUE(base->tuning());
  EXPECT_TRUE(base->identity());
  end();
}

TEST_F(WheelBaseThreads, StandsReadsOnManyThreadsWhileItIsDisconnected) {
  constexpr std::size_t sessions = 40;
  connect();
  for (std::size_t i = 0; i < sessions; ++i) {
    SimulatedSession session;
    session.connect();
    session.behave([](SimulatedBehaviour& b) {
      b.streamWheelStatus = true;
      b.answerDelay = Seconds(0.001);
    });
    std::array<Thread, 3> readers;
    for (Thread& reader : readers) {
      reader = Thread("reader", [&] {
        // Until a read fails: the base left before its answer or before its request.
        std::string text;
        do {
          text = errorText([&] { session.base->fetchTuning(WheelBase::readTimeout); });
        } while (text == "no error");
        EXPECT_TRUE(text == menuTimeout || text == "Device is not open" ||
                    text == "HID I/O failed: SetReport id 0xFF -> device not found")
            << text;
      });
    }
    session.device->transcript().waitForLines(5 + i);
    if (i % 2 == 0) {
      session.base->disconnect();
    } else {
      session.device->unplug();
    }
  }
}

TEST_F(WheelBaseThreads, StandsAThousandSessionsOneAfterTheOther) {
  for (int i = 0; i < 1000; ++i) {
    const auto session = WheelBase::create(HIDEnumerator::info(device), device->clock());
    session->connect();
    if (i % 10 == 0) {
      EXPECT_EQ(session->fetchTuning(WheelBase::readTimeout).raw(), menuReport());
    }
    if (i % 2 == 0) session->disconnect();
  }
  EXPECT_EQ(device->openPorts(), 0U);
}

}  // namespace
}  // namespace quorvane
