#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "session/menu_writer.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/hid_codes.h"
#include "tests/session/shared_time.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

constexpr const char* noWriteLock =
    "Timed out waiting for another program that is writing to the base; try again when it has "
    "finished";
constexpr const char* turnPause = "pause 10 ms";
constexpr const char* writePause = "pause 250 ms";

// A base's clock that calls callbacks at the end of pauses, on the pausing thread.
class PausesOf final : public Clock {
 public:
  explicit PausesOf(Clock& clock) : clock_(clock) {}

  // Calls `event` at the end of the n-th pause from now, n from 0.
  void at(int pause, std::function<void()> event) { events_[pauses_ + pause] = std::move(event); }

  Monotonic::time_point now() override { return clock_.now(); }
  void sleepFor(Seconds duration) override {
    clock_.sleepFor(duration);
    const auto event = events_.extract(pauses_++);
    if (!event.empty()) event.mapped()();
  }
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    return clock_.wait(semaphore, timeout);
  }

 private:
  Clock& clock_;
  std::map<int, std::function<void()>> events_;
  int pauses_ = 0;
};

std::string writeOf(const char* forceFeedback, const char* naturalInertia,
                    const char* status = "02") {
  return std::string("> ff 03 00 ") + status + " db " + forceFeedback +
         " 0a 65 01 00 00 0a 0a 05 19 0a 00 32 64 00 01 0b " + naturalInertia + " +41";
}

// Two programs with one base: the fixture's session and another one.
class WheelBaseWriteLock : public SimulatedSessionTest {
 protected:
  void SetUp() override { connectAndRead(); }

  void TearDown() override {
    leave();
    SimulatedSessionTest::TearDown();
  }

  // The other program opens the base and reads it.
  void come() {
    other_ = WheelBase::create(HIDEnumerator::info(device), clock_);
    other_->connect();
    other_->fetchTuning(WheelBase::readTimeout);
    device->transcript().clear();
  }

  // The other program closes the base.
  void leave() {
    if (!other_) return;
    other_->disconnect();
    other_->connection().join();
    other_.reset();
    device->transcript().clear();
  }

  // Calls `event` during a write of the other program.
  void whileTheOtherWrites(const std::function<void()>& event) {
    clock_.at(0, event);
    other_->set(forceFeedback, 70, true);
  }

  std::int64_t onBase(TuningParameter parameter) {
    std::int64_t value = 0;
    device->withBase([&](SimulatedBase& simulated) {
      const auto menu = TuningSnapshot::fromReport(simulated.menu().report(), {});
      value = menu->value(parameter, simulated.product());
    });
    return value;
  }

  PausesOf clock_{device->clock()};
  std::shared_ptr<WheelBase> other_;
};

TEST_F(WheelBaseWriteLock, AloneNothingIsReadBeforeAWrite) {
  base->set(forceFeedback, 70, true);
  base->set(naturalInertia, 9, true);
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("46", "05"), writePause, menuRequest,
                                     writeOf("46", "09"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, BesideAnotherProgramTheMenuIsReadBeforeEachWrite) {
  come();
  base->set(forceFeedback, 70, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "05"), writePause, menuRequest}));
  EXPECT_FALSE(base->set(naturalInertia, 9, false));
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "09")}));
}

TEST_F(WheelBaseWriteLock, WhatTheOtherWroteSinceOursIsKept) {
  come();
  // The base changes a value, and we miss its report.
  device->withBase([](SimulatedBase& simulated) { simulated.menu().put(forceFeedback, 70); });
  base->set(naturalInertia, 9, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "09"), writePause, menuRequest}));
  EXPECT_EQ(onBase(forceFeedback), 70);
  EXPECT_EQ(onBase(naturalInertia), 9);
}

TEST_F(WheelBaseWriteLock, AProgramThatCameAndWentMayComeBackUnseen) {
  come();
  leave();
  device->withBase([](SimulatedBase& simulated) { simulated.menu().put(forceFeedback, 70); });
  base->set(naturalInertia, 9, true);
  base->set(naturalInertia, 10, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "09"), writePause, menuRequest,  //
                                     menuRequest, writeOf("46", "0a"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, AProgramThatWasThereBeforeMayHaveWritten) {
  const auto late = WheelBase::create(HIDEnumerator::info(device), device->clock());
  late->connect();
  late->fetchTuning(WheelBase::readTimeout);
  base->disconnect();
  base->connection().join();
  takeTranscript();
  for (int i = 0; i < 2; ++i) {
    late->set(forceFeedback, 70, true);
    EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "05"), writePause, menuRequest}));
  }
  late->disconnect();
  late->connection().join();
}

TEST_F(WheelBaseWriteLock, WhatAReaderThatCameTooLateMayHaveMissedIsReadOnceBeforeTheNextWrite) {
  // The base has reported this change, but the readers have lost the report.
  device->withBase([](SimulatedBase& simulated) { simulated.menu().put(forceFeedback, 70); });
  device->delayReaders();
  base->set(naturalInertia, 9, true);
  base->set(naturalInertia, 10, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "09"), writePause, menuRequest,
                                     writeOf("46", "0a"), writePause, menuRequest}));
  device->delayReaders();
  base->fetchTuning(WheelBase::readTimeout);
  takeTranscript();
  base->set(naturalInertia, 11, true);
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("46", "0b"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, AReadingThatFailsMakesUpForNoMissedReport) {
  device->delayReaders();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  EXPECT_EQ(errorText([&] { base->set(naturalInertia, 9, true); }), menuTimeout);
  behave([](SimulatedBehaviour& b) { b.silent = false; });
  takeTranscript();
  base->set(naturalInertia, 9, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("41", "09"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, WhatAProgramWroteBeforeItLeftIsKept) {
  come();
  base->set(naturalInertia, 9, true);
  device->withBase([](SimulatedBase& simulated) { simulated.menu().put(forceFeedback, 70); });
  leave();
  base->set(naturalInertia, 10, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "0a"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, AReadingThatFailsIsMadeUpForBeforeTheNextWrite) {
  come();
  leave();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  EXPECT_EQ(errorText([&] { base->set(naturalInertia, 9, true); }), menuTimeout);
  behave([](SimulatedBehaviour& b) { b.silent = false; });
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest}));
  base->set(naturalInertia, 9, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("41", "09"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, WhatCannotBeWrittenAsksAndWaitsForNothing) {
  come();
  whileTheOtherWrites([&] {
    takeTranscript();
    EXPECT_EQ(errorText([&] { base->set(forceFeedback, 101, true); }),
              "FF value 101 is outside 0...100");
    EXPECT_EQ(errorText([&] { base->set(driftMode, 1, true); }),
              "DRI is not available on CSL DD / GT DD Pro / ClubSport DD");
    EXPECT_EQ(takeTranscript(), Lines{});
  });
  const auto fresh = WheelBase::create(HIDEnumerator::info(device), device->clock());
  fresh->connect();
  takeTranscript();
  EXPECT_EQ(errorText([&] { fresh->set(forceFeedback, 70, true); }),
            "No tuning data received from the base yet; refusing to write blind");
  EXPECT_EQ(takeTranscript(), Lines{});
}

// An operation that holds the write lock, and its transcript meanwhile.
struct Exchange {
  std::string name;
  std::function<void(WheelBase&)> run;
  Lines transcript;
};

const std::vector<Exchange>& exchanges() {
  static const std::vector<Exchange> all{
      {"verified set",
       [](WheelBase& base) { base.set(naturalInertia, 9, true); },
       {menuRequest, writeOf("46", "09"), writePause, menuRequest}},
      {"unverified set",
       [](WheelBase& base) { base.set(naturalInertia, 9, false); },
       {menuRequest, writeOf("46", "09")}},
      {"switch of the set",
       [](WheelBase& base) { base.set(slot, 3, true); },
       {"> ff 03 01 03 +60", writePause, menuRequest}},
      {"selectSlot",
       [](WheelBase& base) { base.selectSlot(3, TuningLayout::inPlace); },
       {"> ff 03 01 03 +60", "pause 150 ms", menuRequest}},
      {"switchMenuMode",
       [](WheelBase& base) { base.switchMenuMode(); },
       {"> ff 03 06 +61", "pause 400 ms", menuRequest}},
      {"factoryReset",
       [](WheelBase& base) { base.factoryReset(); },
       {"> ff 03 04 +61", "pause 400 ms", menuRequest}},
  };
  return all;
}

TEST_F(WheelBaseWriteLock, EveryExchangeWaitsUntilTheOtherIsDone) {
  for (const Exchange& exchange : exchanges()) {
    SCOPED_TRACE(exchange.name);
    SimulatedSession session;
    session.connectAndRead();
    PausesOf pauses(session.device->clock());
    const auto other = WheelBase::create(HIDEnumerator::info(session.device), pauses);
    const auto waiting = WheelBase::create(HIDEnumerator::info(session.device), pauses);
    for (const auto& program : {other, waiting}) {
      program->connect();
      program->fetchTuning(WheelBase::readTimeout);
    }
    // The other program holds the lock at first, and releases it after three attempts of this one.
    ASSERT_TRUE(other->connection().tryWriteLock());
    pauses.at(2, [&] {
      other->connection().send(other->packet(forceFeedback, 70));
      other->connection().endWriteLock();
      session.takeTranscript();
    });
    session.takeTranscript();
    exchange.run(*waiting);
    EXPECT_EQ(session.takeTranscript(), exchange.transcript);
    // The operation has released the lock.
    EXPECT_TRUE(other->connection().tryWriteLock());
    for (const auto& program : {other, waiting}) program->disconnect();
  }
}

TEST_F(WheelBaseWriteLock, ATurnThatDoesNotComeIsAnErrorAfterTwoSeconds) {
  come();
  for (const Exchange& exchange : exchanges()) {
    SCOPED_TRACE(exchange.name);
    ASSERT_TRUE(other_->connection().tryWriteLock());
    const auto begin = device->clock().now();
    EXPECT_EQ(errorText([&] { exchange.run(*base); }), noWriteLock);
    EXPECT_NEAR(Seconds(device->clock().now() - begin).count(), 2.0, 0.0101);
    const Lines lines = takeTranscript();
    EXPECT_EQ(lines, Lines(lines.size(), turnPause));
    // The operation has left the queue as well.
    other_->connection().endWriteLock();
    EXPECT_TRUE(other_->connection().tryWriteLock());
  }
}

TEST_F(WheelBaseWriteLock, AProgramThatKeepsTheTurnIsNamedWhereItIsKnown) {
  come();
  ASSERT_TRUE(other_->connection().tryWriteLock());
  NodeHolder holder{200, "game"};
  holder.hasWriteLock = true;
  device->setWriteLockHolder(holder);
  EXPECT_EQ(
      errorText([&] { base->set(naturalInertia, 9, true); }),
      "Timed out waiting for game (process 200), which is writing to the base; try again when "
      "it has finished");
  holder.isStopped = true;
  device->setWriteLockHolder(holder);
  EXPECT_EQ(errorText([&] { base->set(naturalInertia, 9, true); }),
            "Timed out waiting for game (process 200), which is stopped while it is writing to the "
            "base; continue it (kill -CONT 200) or end it");
  takeTranscript();
}

TEST_F(WheelBaseWriteLock, NobodyComesBetweenAWriteAndItsReadBack) {
  come();
  whileTheOtherWrites([&] {
    takeTranscript();
    EXPECT_EQ(errorText([&] { base->set(naturalInertia, 9, true); }), noWriteLock);
    EXPECT_EQ(takeTranscript().front(), turnPause);
  });
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest}));
  EXPECT_EQ(onBase(naturalInertia), 5);
}

TEST_F(WheelBaseWriteLock, ADisconnectEndsTheWaiting) {
  come();
  // The other program waits here, because only its clock has callbacks.
  ASSERT_TRUE(base->connection().tryWriteLock());
  clock_.at(4, [&] { other_->disconnect(); });
  EXPECT_EQ(errorText([&] { other_->set(naturalInertia, 9, true); }), "Device is not open");
  other_->connection().join();
  EXPECT_EQ(takeTranscript(),
            (Lines{turnPause, turnPause, turnPause, turnPause, turnPause, "close"}));
  base->connection().endWriteLock();
  base->set(naturalInertia, 9, true);
}

TEST_F(WheelBaseWriteLock, ABaseThatLeavesEndsTheWaiting) {
  come();
  ASSERT_TRUE(base->connection().tryWriteLock());
  clock_.at(4, [&] { device->unplug(); });
  EXPECT_EQ(errorText([&] { other_->set(naturalInertia, 9, true); }),
            "HID I/O failed: SetReport id 0xFF -> device not found");
}

TEST_F(WheelBaseWriteLock, AProgramThatEndsInItsTurnLeavesIt) {
  come();
  ASSERT_TRUE(other_->connection().tryWriteLock());
  leave();
  base->set(naturalInertia, 9, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("41", "09"), writePause, menuRequest}));
}

TEST_F(WheelBaseWriteLock, AFailureEndsTheTurn) {
  come();
  behave([](SimulatedBehaviour& b) { b.failSendsWith = otherCode; });
  for (const Exchange& exchange : exchanges()) {
    EXPECT_NE(errorText([&] { exchange.run(*base); }), "no error") << exchange.name;
    EXPECT_TRUE(other_->connection().tryWriteLock()) << exchange.name;
    other_->connection().endWriteLock();
  }
}

TEST_F(WheelBaseWriteLock, WithoutTurnsEveryWriteReadsFirst) {
  device->setHasWriteLocks(false);
  base->set(forceFeedback, 70, true);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "05"), writePause, menuRequest}));
  come();
  whileTheOtherWrites([&] { base->set(naturalInertia, 9, true); });
  EXPECT_EQ(onBase(naturalInertia), 9);
}

TEST_F(WheelBaseWriteLock, ASessionForReadingReadsBeforeItWrites) {
  end();
  const auto reader = WheelBase::create(HIDEnumerator::info(device), device->clock());
  reader->connect(WheelBase::Use::reading);
  reader->fetchTuning(WheelBase::readTimeout);
  takeTranscript();
  for (int i = 0; i < 2; ++i) {
    reader->set(forceFeedback, 70, true);
    EXPECT_EQ(takeTranscript(), (Lines{menuRequest, writeOf("46", "05"), writePause, menuRequest}));
  }
  reader->disconnect();
}

TEST_F(WheelBaseWriteLock, TheSessionItselfWaitsForNoTurnToSendAsItIs) {
  come();
  ASSERT_TRUE(other_->connection().tryWriteLock());
  base->toggleAdvancedMode();
  base->sendRaw(FanatecCommands::requestTuningSnapshot());
  base->setRotation(900);
  base->fetchTuning(WheelBase::readTimeout);
  EXPECT_EQ(takeTranscript().size(), 6U);
}

TEST_F(WheelBaseWriteLock, ValuesForOneSetAreNotWrittenToAnother) {
  struct Change {
    std::string name;
    std::function<void(SimulatedMenu&)> make;
    std::string place;
  };
  const std::vector<Change> changes{
      {"set", [](SimulatedMenu& menu) { menu.select(4); }, "set 4 of the standard menu"},
      {"mode", [](SimulatedMenu& menu) { menu.toggleMode(); }, "set 2 of the advanced menu"},
  };
  for (const Change& change : changes) {
    SCOPED_TRACE(change.name);
    SimulatedSession session;
    session.connectAndRead();
    MenuWriter writer(*session.base, session.base->tuning());
    writer.write(forceFeedback, 70);
    session.takeTranscript();
    // Changed by another program or on the wheel: the base sends an unsolicited report.
    session.device->withBase([&](SimulatedBase& simulated) { change.make(simulated.menu()); });
    session.report(session.menuReport());
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(errorText([&] { writer.write(naturalInertia, 9); }),
                "Invalid report: the base is in " + change.place +
                    " now, not in set 2 of the standard menu; write it again if it belongs there");
    }
    EXPECT_EQ(session.takeTranscript(), Lines{});
  }
}

TEST_F(WheelBaseWriteLock, ThatTheSetIsAnotherIsSeenInTheTurn) {
  come();
  MenuWriter writer(*base, base->tuning());
  device->withBase([](SimulatedBase& simulated) { simulated.menu().select(4); });
  EXPECT_NE(errorText([&] { writer.write(naturalInertia, 9); }), "no error");
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest}));
}

TEST_F(WheelBaseWriteLock, AWriterGoesOnToTheSetThatItSwitchesTo) {
  MenuWriter writer(*base, base->tuning());
  EXPECT_EQ(writer.write(slot, 4).slot(), 4);
  writer.write(naturalInertia, 9);
  EXPECT_EQ(onBase(naturalInertia), 9);
}

TEST_F(WheelBaseWriteLock, AWriterWritesNothingToTheSetThatItWasToLeave) {
  struct Failure {
    std::string name;
    std::function<void(SimulatedBehaviour&)> make;
    std::int64_t wanted;
    std::string error;
  };
  const std::vector<Failure> failures{
      {"slow", [](SimulatedBehaviour& b) { b.switchDelay = Seconds(1); }, 4,
       "The base ignored the SLOT write; it still reports 2"},
      {"silent", [](SimulatedBehaviour& b) { b.silent = true; }, 4, menuTimeout},
      {"refused",
       [](SimulatedBehaviour& b) {
         b.failSendsWith = otherCode;
         b.failSendsFrom = 1;
         b.failSendsCount = 1;
       },
       4, "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C005"},
      {"no such set", [](SimulatedBehaviour&) {}, 6, "SLOT value 6 is outside 1...5"},
  };
  for (const bool hasMenu : {true, false}) {
    for (const Failure& failure : failures) {
      SCOPED_TRACE(failure.name);
      SimulatedSession session;
      session.connectAndRead();
      session.behave(failure.make);
      MenuWriter writer(*session.base, hasMenu ? session.base->tuning() : std::nullopt);
      EXPECT_EQ(errorText([&] { writer.write(slot, failure.wanted); }), failure.error);
      session.takeTranscript();
      for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(errorText([&] { writer.write(forceFeedback, 56); }),
                  "Invalid report: the base is in set 2 of the standard menu now, not in set " +
                      std::to_string(failure.wanted) +
                      " of the standard menu; write it again if it belongs there");
      }
      EXPECT_EQ(session.takeTranscript(), Lines{});
    }
  }
}

TEST_F(WheelBaseWriteLock, AWriterGoesOnInTheSetThatItAskedForOnceTheBaseReportsIt) {
  behave([](SimulatedBehaviour& b) { b.switchDelay = Seconds(0.3); });
  MenuWriter writer(*base, base->tuning());
  EXPECT_NE(errorText([&] { writer.write(slot, 4); }), "no error");
  device->clock().sleepFor(Seconds(0.1));
  base->fetchTuning(WheelBase::readTimeout);
  EXPECT_EQ(writer.write(forceFeedback, 56).slot(), 4);
}

TEST_F(WheelBaseWriteLock, AWriterWithoutAMenuTakesAnySet) {
  MenuWriter writer(*base, std::nullopt);
  base->selectSlot(4, TuningLayout::inPlace);
  writer.write(naturalInertia, 9);
  base->selectSlot(2, TuningLayout::inPlace);
  writer.write(naturalInertia, 10);
  EXPECT_EQ(onBase(naturalInertia), 10);
}

TEST_F(WheelBaseWriteLock, APresetIsNotWrittenToAnotherSet) {
  come();
  TuningPreset preset;
  preset.values = {{"FF", 70}, {"NIN", 9}};
  const auto results = other_->apply(preset, [&](const WheelBase::ApplyResult& result) {
    if (result.parameter == forceFeedback) base->selectSlot(4, TuningLayout::inPlace);
  });
  ASSERT_EQ(results.size(), 2U);
  EXPECT_FALSE(results[0].error);
  EXPECT_EQ(results[1].error,
            "Invalid report: the base is in set 4 of the standard menu now, not in set 2 of the "
            "standard menu; write it again if it belongs there");
}

// Programs that write values of their own to one base at the same time.
class Programs {
 public:
  explicit Programs(std::size_t count) : time_(*device_, count) {}

  // One program, to be called on a thread of its own. Writes each of its values `rounds` times, and
  // checks after every write that all of them are as it last wrote them.
  void run(const std::vector<TuningParameter>& own, int rounds) {
    EXPECT_EQ(errorText([&] { writeAll(own, rounds); }), "no error");
    time_.leave();
  }

  // To be called when all programs have ended.
  void expectOnBase(const std::vector<TuningParameter>& own, std::int64_t value) {
    device_->withBase([&](SimulatedBase& base) {
      const auto menu = TuningSnapshot::fromReport(base.menu().report(), {});
      for (const TuningParameter parameter : own) {
        EXPECT_EQ(menu->value(parameter, base.product()), value) << parameter.code();
      }
    });
    EXPECT_EQ(device_->violations(), Lines{});
  }

  static std::int64_t valueOf(std::int64_t round) { return round % 10 * 10; }

 private:
  void writeAll(const std::vector<TuningParameter>& own, int rounds) {
    const auto base = WheelBase::create(HIDEnumerator::info(device_), time_);
    base->connect();
    base->fetchTuning(WheelBase::readTimeout);
    std::map<TuningParameter, std::int64_t> written;
    for (int round = 0; round < rounds; ++round) {
      for (const TuningParameter parameter : own) {
        written[parameter] = valueOf(round);
        const TuningSnapshot menu = base->set(parameter, valueOf(round), true).value();
        for (const auto& [mine, value] : written) {
          EXPECT_EQ(menu.value(mine, base->product()), value) << mine.code() << " " << round;
        }
      }
    }
    base->disconnect();
    base->connection().join();
  }

  const std::shared_ptr<SimulatedDevice> device_ = SimulatedDevice::create(
      *FanatecProduct::lookup(defaultSimulatedProduct), SimulatedDevice::Time::real);
  SharedTime time_;
};

TEST(WheelBasePrograms, WritingAtOnceDoNotUndoEachOther) {
  constexpr int rounds = 200;
  const std::vector<std::vector<TuningParameter>> values{{forceFeedback},
                                                         {naturalDamper, naturalFriction},
                                                         {naturalInertia},
                                                         {fullForce, springEffect, vibration}};
  Programs programs(values.size());
  {
    std::vector<Thread> threads;
    threads.reserve(values.size());
    for (const auto& own : values) {
      threads.emplace_back("program", [&] { programs.run(own, rounds); });
    }
  }
  for (const auto& own : values) programs.expectOnBase(own, Programs::valueOf(rounds - 1));
}

}  // namespace
}  // namespace quorvane
