#include "tests/faults/dialogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quorvane {
namespace {

constexpr Seconds answerLimit{2.0};
constexpr Seconds turnLimit{2.0};

using Matches = bool (*)(const Step&);

bool isPacket(const Step& step) { return step.isPacket(); }
bool isPause(const Step& step) { return step.kind == Step::Kind::pause; }
bool isAnswer(const Step& step) { return step.isAnswer(); }
bool isWriteLock(const Step& step) { return step.isWriteLock(); }

std::size_t countOf(const Dialogue& dialogue, Matches matches) {
  std::size_t count = 0;
  for (const Part& part : dialogue) {
    count += static_cast<std::size_t>(std::count_if(part.steps.begin(), part.steps.end(), matches));
  }
  return count;
}

std::size_t stepOf(const Dialogue& dialogue, Matches matches, std::size_t number) {
  std::size_t step = 0;
  for (const Part& part : dialogue) {
    for (const Step& each : part.steps) {
      if (matches(each) && --number == 0) return step;
      ++step;
    }
  }
  throw std::out_of_range("the dialogue has no such step");
}

// Runs a dialogue step by step against a base with these faults.
class Walk {
 public:
  explicit Walk(const Disturbance& disturbance) : disturbance_(disturbance) {}

  Prediction through(const Dialogue& dialogue) {
    for (const Part& part : dialogue) {
      const auto error = through(part);
      prediction_.errors.push_back(error);
      if (error && part.endsAll) break;
    }
    return prediction_;
  }

 private:
  std::optional<std::string> through(const Part& part) {
    std::size_t step = step_;
    step_ += part.steps.size();
    for (const Step& each : part.steps) {
      if (auto error = take(each, step++)) return error;
    }
    return verdict(part);
  }

  std::optional<std::string> take(const Step& step, std::size_t number) {
    const bool isGone = number >= disturbance_.goneFrom;
    if (step.isPacket()) return send(step, isGone);
    if (step.isAnswer()) return await(step, isGone);
    if (step.isWriteLock()) return isGone ? std::nullopt : waitForWriteLock();
    prediction_.time += step.duration;
    return std::nullopt;
  }

  std::optional<std::string> send(const Step& step, bool isGone) {
    if (isGone) return disturbance_.whenGone(step);
    ++packets_;
    const bool isRefused = packets_ >= disturbance_.refusedFrom &&
                           packets_ - disturbance_.refusedFrom < disturbance_.refusedCount;
    if (isRefused) return refusalText(step, "IOReturn 0x0000C005");
    ++prediction_.packets;
    return std::nullopt;
  }

  std::optional<std::string> await(const Step& step, bool isGone) {
    if (isGone) {
      prediction_.time += disturbance_.goneWait;
      return disturbance_.whenGone(step);
    }
    if (disturbance_.answerAfter && *disturbance_.answerAfter <= answerLimit) {
      prediction_.time += *disturbance_.answerAfter;
      return std::nullopt;
    }
    prediction_.time += answerLimit;
    return timeoutText(step);
  }

  std::optional<std::string> waitForWriteLock() {
    const bool isTaken =
        ++writeLocks_ == disturbance_.writeLockTaken || !disturbance_.writeLockAfter;
    if (isTaken) prediction_.time += disturbance_.writeLockAfter.value_or(turnLimit);
    if (disturbance_.writeLockAfter) return std::nullopt;
    return noTurnText();
  }

  std::optional<std::string> verdict(const Part& part) const {
    if (!part.refusal.empty()) return part.refusal;
    const bool isVerified = !part.code.empty() && part.steps.back().isAnswer();
    if (!isVerified) return std::nullopt;
    const bool isBad = part.code == disturbance_.badCode;
    if (!isBad && !disturbance_.tellsOldMenus) return std::nullopt;
    return fmt::format("The base ignored the {} write; it still reports {}", part.code,
                       isBad ? disturbance_.badKept : part.kept);
  }

  const Disturbance& disturbance_;
  Prediction prediction_;
  std::size_t step_ = 0;
  std::size_t packets_ = 0;
  std::size_t writeLocks_ = 0;
};

}  // namespace

Part verifiedWrite(std::string code, std::string kept) {
  return {{ownWriteLock, menuPacket, pauseOf(0.25), menuPacket, menuAnswer},
          std::move(kept),
          std::move(code)};
}

Part meantWrite(std::string code, std::string kept) {
  Part part = verifiedWrite(std::move(code), std::move(kept));
  part.isMeant = true;
  return part;
}

Part readFirst(Part part) {
  const bool reads = part.steps.size() > 2 && part.steps[2].isAnswer();
  if (!reads) part.steps.insert(part.steps.begin() + 1, {menuPacket, menuAnswer});
  return part;
}

Part refused(Part part, std::string refusal) {
  part.steps = {ownWriteLock};
  part.refusal = std::move(refusal);
  return part;
}

bool Prediction::failsWholly() const {
  return !errors.empty() && std::all_of(errors.begin(), errors.end(),
                                        [](const auto& error) { return error.has_value(); });
}

std::size_t packetsIn(const Dialogue& dialogue) { return countOf(dialogue, isPacket); }
std::size_t pausesIn(const Dialogue& dialogue) { return countOf(dialogue, isPause); }
std::size_t answersIn(const Dialogue& dialogue) { return countOf(dialogue, isAnswer); }
std::size_t turnsIn(const Dialogue& dialogue) { return countOf(dialogue, isWriteLock); }

std::size_t valuesIn(const Dialogue& dialogue) {
  return static_cast<std::size_t>(std::count_if(
      dialogue.begin(), dialogue.end(), [](const Part& part) { return !part.code.empty(); }));
}

std::size_t stepOfPacket(const Dialogue& dialogue, std::size_t number) {
  return stepOf(dialogue, isPacket, number);
}
std::size_t stepOfPause(const Dialogue& dialogue, std::size_t number) {
  return stepOf(dialogue, isPause, number);
}
std::size_t stepOfAnswer(const Dialogue& dialogue, std::size_t number) {
  return stepOf(dialogue, isAnswer, number);
}
std::size_t stepOfWriteLock(const Dialogue& dialogue, std::size_t number) {
  return stepOf(dialogue, isWriteLock, number);
}

Prediction predict(const Dialogue& dialogue, const Disturbance& disturbance) {
  return Walk(disturbance).through(dialogue);
}

std::string refusalText(const Step& packet, const std::string& reason) {
  const char* const report = packet.kind == Step::Kind::menuPacket ? "0xFF" : "0x1";
  return fmt::format("HID I/O failed: SetReport id {} -> {}", report, reason);
}

std::string timeoutText(const Step& answer) {
  if (answer.kind == Step::Kind::identityAnswer) {
    return "Timed out waiting for system report (FF 08)";
  }
  return "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
         "firmware?)";
}

std::string noTurnText() {
  return "Timed out waiting for another program that is writing to the base; try again when it has "
         "finished";
}

}  // namespace quorvane
