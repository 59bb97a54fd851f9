#pragma once

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/clock.h"

namespace quorvane {

// One step of what an operation says to a base, as docs/protocol.md has it.
struct Step {
  enum class Kind { menuPacket, commandPacket, pause, menuAnswer, identityAnswer, turn };

  Kind kind = Kind::menuPacket;
  Seconds duration{0};  // of a pause

  bool isPacket() const { return kind == Kind::menuPacket || kind == Kind::commandPacket; }
  bool isAnswer() const { return kind == Kind::menuAnswer || kind == Kind::identityAnswer; }
  bool isTurn() const { return kind == Kind::turn; }
};

inline constexpr Step menuPacket{Step::Kind::menuPacket};
inline constexpr Step commandPacket{Step::Kind::commandPacket};
inline constexpr Step menuAnswer{Step::Kind::menuAnswer};
inline constexpr Step identityAnswer{Step::Kind::identityAnswer};
inline constexpr Step ownTurn{Step::Kind::turn};  // at writing, is there
constexpr Step pauseOf(double seconds) { return {Step::Kind::pause, Seconds(seconds)}; }

// Steps that fail together: the first that fails ends the part, and others may follow it.
struct Part {
  std::vector<Step> steps;
  std::string kept;       // the value before the write
  std::string code;       // "FF", of a part that writes a value
  bool endsAll = false;   // its failure is the operation's
  bool isMeant = false;   // the value is for the set that was read last, and for no other
  std::string refusal{};  // why the value is not written; empty: it is
};

using Dialogue = std::vector<Part>;

// The part of every verified write; "kept" as the base shows it.
Part verifiedWrite(std::string code, std::string kept);
Part meantWrite(std::string code, std::string kept);

// The part that the writing of a value becomes when the base may have another menu than was read
// last: it reads the menu in its turn.
Part readFirst(Part part);

// The part that the writing of a value becomes when the base is in another set than it is meant
// for.
Part refused(Part part, std::string refusal);

std::size_t packetsIn(const Dialogue& dialogue);
std::size_t pausesIn(const Dialogue& dialogue);
std::size_t answersIn(const Dialogue& dialogue);
std::size_t turnsIn(const Dialogue& dialogue);
std::size_t valuesIn(const Dialogue& dialogue);

// The number of the step that is the packet (pause, answer, turn) with this number, from 1.
std::size_t stepOfPacket(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfPause(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfAnswer(const Dialogue& dialogue, std::size_t number);
std::size_t stepOfTurn(const Dialogue& dialogue, std::size_t number);

inline constexpr std::size_t noStep = std::numeric_limits<std::size_t>::max();

// What goes wrong, in terms of the steps, which count from 0 over all parts.
struct Disturbance {
  // Packets that are refused, counted from 1.
  std::size_t refusedFrom = noStep;
  std::size_t refusedCount = noStep;

  // What comes after a request: the answer within this time, or none.
  std::optional<Seconds> answerAfter = Seconds(0);

  // Another program has its turn when the turn with this number is asked for, counted from 1, and
  // lets go of it after this time, or never and of none.
  std::size_t turnTaken = noStep;
  std::optional<Seconds> turnAfter = Seconds(0);

  // From this step on the base is not there. How its absence shows depends on who watches it.
  std::size_t goneFrom = noStep;
  std::function<std::string(const Step&)> whenGone;  // the failure of a packet or an answer
  Seconds goneWait{0};                               // for an answer that cannot come

  bool tellsOldMenus = false;
  std::string badCode;  // the parameter whose write the base ignores or limits
  std::string badKept;  // what it shows then
};

// What has to happen: why each part fails, if it does (those that are not reached are missing), how
// long it all takes and how much of it arrives.
struct Prediction {
  using Errors = std::vector<std::optional<std::string>>;

  Errors errors;
  Seconds time{0};
  std::size_t packets = 0;  // that the base takes

  // No part succeeds.
  bool failsWholly() const;
};

Prediction predict(const Dialogue& dialogue, const Disturbance& disturbance);

// The texts of failures that the prediction uses.
std::string refusalText(const Step& packet, const std::string& reason);
std::string timeoutText(const Step& answer);
std::string noTurnText();

}  // namespace quorvane
