#pragma once

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/clock.h"

namespace quorvane {

// One step of an operation's dialogue with a base, see docs/protocol.md.
struct Step {
  enum class Kind { menuPacket, commandPacket, pause, menuAnswer, identityAnswer, writeLock };

  Kind kind = Kind::menuPacket;
  Seconds duration{0};  // of a pause

  bool isPacket() const { return kind == Kind::menuPacket || kind == Kind::commandPacket; }
  bool isAnswer() const { return kind == Kind::menuAnswer || kind == Kind::identityAnswer; }
  bool isWriteLock() const { return kind == Kind::writeLock; }
};

inline constexpr Step menuPacket{Step::Kind::menuPacket};
inline constexpr Step commandPacket{Step::Kind::commandPacket};
inline constexpr Step menuAnswer{Step::Kind::menuAnswer};
inline constexpr Step identityAnswer{Step::Kind::identityAnswer};
inline constexpr Step ownWriteLock{Step::Kind::writeLock};  // gets the write lock
constexpr Step pauseOf(double seconds) { return {Step::Kind::pause, Seconds(seconds)}; }

// Steps that fail together: the first failing step ends the part. The next part may still run.
struct Part {
  std::vector<Step> steps;
  std::string kept;       // the value before the write
  std::string code;       // "FF", of a part that writes a value
  bool endsAll = false;   // its failure ends the operation
  bool isMeant = false;   // the value is only for the set that was read last
  std::string refusal{};  // why the value is not written; empty: it is written
};

using Dialogue = std::vector<Part>;

// A verified write. `kept` is the value before the write, as the base shows it. meantWrite() also
// sets isMeant.
Part verifiedWrite(std::string code, std::string kept);
Part meantWrite(std::string code, std::string kept);

// The write of a value when the base's menu may differ from the one read last: it reads the menu
// again, under the write lock.
Part readFirst(Part part);

// The write of a value when the base is in another set than the value is meant for: nothing is
// sent.
Part refused(Part part, std::string refusal);

std::size_t packetsIn(const Dialogue& dialogue);
std::size_t pausesIn(const Dialogue& dialogue);
std::size_t answersIn(const Dialogue& dialogue);
std::size_t turnsIn(const Dialogue& dialogue);
std::size_t valuesIn(const Dialogue& dialogue);

// The index, from 0, of the step with the n-th packet (pause, answer, write lock), n from 1.
// Throws std::out_of_range if there is none.
std::size_t stepOfPacket(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfPause(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfAnswer(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfWriteLock(const Dialogue& dialogue, std::size_t number);

inline constexpr std::size_t noStep = std::numeric_limits<std::size_t>::max();

// What goes wrong. Steps are numbered from 0 over all parts.
struct Disturbance {
  // Packets that are refused, counted from 1.
  std::size_t refusedFrom = noStep;
  std::size_t refusedCount = noStep;

  // The delay of every answer; empty: no answer.
  std::optional<Seconds> answerAfter = Seconds(0);

  // Another program holds the write lock at the n-th attempt to get it, n from 1, and releases it
  // after writeLockAfter. Empty writeLockAfter: it holds the lock at every attempt and never
  // releases it.
  std::size_t writeLockTaken = noStep;
  std::optional<Seconds> writeLockAfter = Seconds(0);

  // From this step on the base is gone. The failures depend on whether the session is disconnected.
  std::size_t goneFrom = noStep;
  std::function<std::string(const Step&)> whenGone;  // the failure of a packet or an answer
  Seconds goneWait{0};                               // the wait for an answer then

  bool tellsOldMenus = false;
  std::string badCode;  // the parameter whose write the base ignores or limits
  std::string badKept;  // what it shows then
};

// The expected outcome: the error of each part that was reached, empty if it succeeds; the duration
// of the whole; the number of packets that the base takes.
struct Prediction {
  using Errors = std::vector<std::optional<std::string>>;

  Errors errors;
  Seconds time{0};
  std::size_t packets = 0;

  // Whether every part that was reached fails, and there is at least one.
  bool failsWholly() const;
};

Prediction predict(const Dialogue& dialogue, const Disturbance& disturbance);

// The error texts in a prediction.
std::string refusalText(const Step& packet, const std::string& reason);
std::string timeoutText(const Step& answer);
std::string noTurnText();

}  // namespace quorvane
