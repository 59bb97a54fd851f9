#include "tests/faults/session/operation.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tests/error_text.h"

namespace quorvane {
namespace {

using P = TuningParameter;

Part whole(std::vector<Step> steps) { return {std::move(steps), {}, {}, true}; }

Part burstWrite() {
  Part part{{ownWriteLock, menuPacket}, "65", "FF"};
  for (int packet = 0; packet < 8; ++packet) {
    part.steps.push_back(commandPacket);
    part.steps.push_back(pauseOf(0.002));
  }
  part.steps.insert(part.steps.end(), {pauseOf(0.25), menuPacket, menuAnswer});
  return part;
}

const TuningPreset& threeValues() {
  static const TuningPreset preset = [] {
    TuningPreset values;
    values.values = TuningPreset::codeValues(
        {{P::sensitivity, 800}, {P::forceFeedback, 80}, {P::naturalInertia, 9}});
    return values;
  }();
  return preset;
}

std::string textOf(const std::vector<WheelBase::ApplyResult>& results) {
  std::vector<std::string> texts;
  texts.reserve(results.size());
  for (const auto& result : results) {
    texts.push_back(fmt::format("{}: {}", result.parameter.code(), result.error.value_or("done")));
  }
  return fmt::format("{}", fmt::join(texts, "; "));
}

// An operation without a result: its text is "done".
template <typename Run>
std::function<std::string(WheelBase&)> silently(Run run) {
  return [run](WheelBase& base) {
    const std::string text = errorText([&] { run(base); });
    return text == "no error" ? "done" : text;
  };
}

// An operation whose result is its text.
template <typename Run>
std::function<std::string(WheelBase&)> telling(Run run) {
  return [run](WheelBase& base) {
    std::string told;
    const std::string text = errorText([&] { told = run(base); });
    return text == "no error" ? told : text;
  };
}

std::string setOf(const TuningSnapshot& menu) { return fmt::format("set {}", menu.slot()); }
std::string modeOf(const TuningSnapshot& menu) { return fmt::format("{} menu", menu.modeName()); }

std::vector<Operation> reads() {
  return {
      {"connect", {}, silently([](WheelBase& base) { base.connect(); }), "done", {}, true},
      {"connect, for reading",
       {},
       silently([](WheelBase& base) { base.connect(WheelBase::Use::reading); }),
       "done",
       {},
       true},
      {"disconnect", {}, silently([](WheelBase& base) { base.disconnect(); }), "done", {}},
      {"fetchTuning",
       {whole({menuPacket, menuAnswer})},
       telling([](WheelBase& base) { return setOf(base.fetchTuning(WheelBase::readTimeout)); }),
       "set 2",
       "set 2"},
      {"fetchIdentity",
       {whole({menuPacket, menuPacket, identityAnswer})},
       telling(
           [](WheelBase& base) { return base.fetchIdentity(WheelBase::readTimeout).baseName(); }),
       "CSL DD Wheel Base",
       "CSL DD Wheel Base"},
  };
}

std::vector<Operation> writes() {
  return {
      {"packet",
       {},
       silently([](WheelBase& base) { base.packet(P::forceFeedback, 80); }),
       "done",
       {}},
      {"set, verified",
       {verifiedWrite("FF", "65")},
       silently([](WheelBase& base) { base.set(P::forceFeedback, 80, true); }),
       "done",
       {}},
      {"set, verified, meant for its set",
       {meantWrite("FF", "65")},
       silently([](WheelBase& base) { base.set(P::forceFeedback, 80, true, base.tuning()); }),
       "done",
       {}},
      {"set, verified, in a session for reading",
       {readFirst(verifiedWrite("FF", "65"))},
       silently([](WheelBase& base) { base.set(P::forceFeedback, 80, true); }),
       "done",
       {},
       false,
       WheelBase::Use::reading},
      {"set, unverified",
       {{{ownWriteLock, menuPacket}, "65", "FF"}},
       silently([](WheelBase& base) { base.set(P::forceFeedback, 80, false); }),
       "done",
       {}},
      {"set, verified, with acknowledgements",
       {burstWrite()},
       silently([](WheelBase& base) {
         base.sendAckBurstAfterWrite = true;
         base.set(P::forceFeedback, 80, true);
       }),
       "done",
       {}},
      {"set of the slot, verified",
       {whole({ownWriteLock, menuPacket, pauseOf(0.25), menuPacket, menuAnswer})},
       telling([](WheelBase& base) { return setOf(base.set(P::slot, 3, true).value()); }),
       "set 3",
       "set 2"},
      {"set of the slot, unverified",
       {whole({ownWriteLock, menuPacket})},
       silently([](WheelBase& base) { base.set(P::slot, 3, false); }),
       "done",
       {}},
      {"apply",
       {meantWrite("SEN", "900"), meantWrite("FF", "65"), meantWrite("NIN", "5")},
       telling([](WheelBase& base) { return textOf(base.apply(threeValues())); }),
       "SEN: done; FF: done; NIN: done",
       {}},
  };
}

std::vector<Operation> commands() {
  const auto menuCommand = [](double seconds) {
    return Dialogue{whole({ownWriteLock, menuPacket, pauseOf(seconds), menuPacket, menuAnswer})};
  };
  return {
      {"selectSlot", menuCommand(0.15),
       telling([](WheelBase& base) { return setOf(base.selectSlot(3, TuningLayout::inPlace)); }),
       "set 3", "set 2"},
      {"toggleAdvancedMode",
       {whole({menuPacket})},
       silently([](WheelBase& base) { base.toggleAdvancedMode(); }),
       "done",
       {}},
      {"switchMenuMode", menuCommand(0.4),
       telling([](WheelBase& base) { return modeOf(base.switchMenuMode()); }), "advanced menu",
       "standard menu"},
      {"factoryReset", menuCommand(0.4),
       telling([](WheelBase& base) { return setOf(base.factoryReset()); }), "set 1", "set 2"},
      {"setRotation",
       {whole({commandPacket, commandPacket, commandPacket})},
       silently([](WheelBase& base) { base.setRotation(900); }),
       "done",
       {}},
      {"sendRaw",
       {whole({menuPacket})},
       silently(
           [](WheelBase& base) { base.sendRaw(FanatecCommands::resetTuningToFactoryDefaults()); }),
       "done",
       {}},
  };
}

}  // namespace

std::string Operation::words(const Prediction::Errors& errors) const {
  if (dialogue.size() < 2) {
    return errors.empty() || !errors.front() ? success : *errors.front();
  }
  std::vector<std::string> texts;
  for (std::size_t part = 0; part < dialogue.size(); ++part) {
    texts.push_back(fmt::format("{}: {}", dialogue[part].code, errors[part].value_or("done")));
  }
  return fmt::format("{}", fmt::join(texts, "; "));
}

const std::vector<Operation>& operations() {
  static const std::vector<Operation> all = [] {
    std::vector<Operation> list = reads();
    for (const auto& more : {writes(), commands()})
      list.insert(list.end(), more.begin(), more.end());
    return list;
  }();
  return all;
}

}  // namespace quorvane
