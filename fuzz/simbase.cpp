#include <algorithm>
#include <optional>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/packets.h"
#include "fuzz/properties.h"
#include "protocol/tuning_snapshot.h"
#include "simulator/simulated_base.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

constexpr std::uint8_t tuningChannel = 0xFF;
constexpr std::uint8_t shortChannel = 0x01;
constexpr std::size_t tuningWire = 64;
constexpr std::size_t shortWire = 8;
constexpr std::size_t menuBegin = 3;
constexpr std::size_t reportsBeforeAnswer = 3;

const std::array<PacketForm, 3>& packetForms() {
  static const std::array<PacketForm, 3> forms{{{{tuningChannel, 0x03}, tuningWire},
                                                {{tuningChannel, 0x08}, tuningWire},
                                                {{shortChannel}, shortWire}}};
  return forms;
}

bool isWellFormed(ByteView wire) {
  if (wire.empty()) return false;
  return (wire[0] == tuningChannel && wire.size() == tuningWire) ||
         (wire[0] == shortChannel && wire.size() == shortWire);
}

// Whether the packet is a command that changes the menu or the active set.
bool isMenuCommand(ByteView wire) {
  if (wire.size() < 3 || wire[0] != tuningChannel || wire[1] != 0x03) return false;
  return wire[2] == 0x00 || wire[2] == 0x01 || wire[2] == 0x03 || wire[2] == 0x04 ||
         wire[2] == 0x06;
}

bool isInMenu(TuningParameter parameter, std::uint8_t raw, const FanatecProduct& product) {
  const std::int64_t value = parameter.decode(raw, product);
  const bool isAutomatic = parameter == TuningParameter::sensitivity && product.autoRotation > 0 &&
                           value == product.autoRotation;
  return isAutomatic || parameter.allowedRange(product).contains(value);
}

// A behaviour from two bytes: flags, and the index of a parameter whose writes are ignored.
SimulatedBehaviour nextBehaviour(Input& input) {
  const unsigned flags = input.byte();
  SimulatedBehaviour behaviour;
  if ((flags & 0x01U) != 0) behaviour.layout = TuningLayout::inPlace;
  behaviour.silent = (flags & 0x02U) != 0;
  behaviour.tuningSilent = (flags & 0x04U) != 0;
  behaviour.foreignReports = (flags & 0x08U) != 0;
  if ((flags & 0x10U) != 0) behaviour.unplugAfter = static_cast<int>(flags >> 5U) + 1;
  const std::uint8_t which = input.byte();
  if (which < TuningParameter::count) behaviour.ignored.insert(TuningParameter::allCases()[which]);
  return behaviour;
}

class Conversation {
 public:
  Conversation(const FanatecProduct& product, SimulatedBehaviour behaviour)
      : base_(product), behaviour_(std::move(behaviour)) {
    base_.behaviour() = behaviour_;
    expectMenu();
  }

  void say(const Bytes& wire) {
    const Bytes before = base_.menu().report();
    const bool isThere = base_.isPlugged();
    const HIDReturn code = base_.receive(wire, now_);
    invariant((code == HIDReturnCode::success) == isThere, "a base that left takes nothing");
    if (isThere) take(wire, before);
    invariant(base_.violations().size() == violations_, "packets of a wrong form are noted");
    expectMenu();
    expectAnswers(wire, before, isThere);
  }

 private:
  void take(const Bytes& wire, const Bytes& before) {
    ++received_;
    if (!isWellFormed(wire)) ++violations_;
    const bool leaves = behaviour_.unplugAfter && received_ >= *behaviour_.unplugAfter;
    invariant(base_.isPlugged() == !leaves, "a base leaves when it was told to");
    identityEnabled_ = enablesIdentity(wire).value_or(identityEnabled_);
    if (!isMenuCommand(wire)) {
      invariant(base_.menu().report() == before, "other packets leave the menu alone");
    }
    if (isMenuCommand(wire) && wire[2] == 0x00) expectWritten(wire, before);
  }

  static std::optional<bool> enablesIdentity(const Bytes& wire) {
    if (wire.size() < 3 || wire[0] != tuningChannel || wire[1] != 0x08 || wire[2] != 0x01) {
      return std::nullopt;
    }
    return wire.size() > 3 && wire[3] != 0;
  }

  // After a write each byte of the menu has the written value, unless that is invalid for the menu
  // or the parameter is ignored.
  void expectWritten(const Bytes& wire, const Bytes& before) {
    const Bytes after = base_.menu().report();
    const std::size_t shift = behaviour_.layout == TuningLayout::inPlace ? 0 : 1;
    for (const TuningParameter parameter : TuningParameter::adjustable(base_.product())) {
      const std::size_t offset = parameter.offset();
      const bool isTaken = offset + shift < wire.size() &&
                           isInMenu(parameter, wire[offset + shift], base_.product()) &&
                           !behaviour_.ignored.contains(parameter);
      invariant(after[offset] == (isTaken ? wire[offset + shift] : before[offset]),
                "a write sets the values that are in range");
    }
  }

  void expectMenu() {
    const auto snapshot = TuningSnapshot::fromReport(base_.menu().report(), {});
    invariant(snapshot.has_value(), "the menu has the form of a tuning report");
    invariant(snapshot->slot() >= 1 && snapshot->slot() <= SimulatedMenu::setCount,
              "one of the sets is active");
    Bytes others(snapshot->raw().begin() + menuBegin, snapshot->raw().end());
    for (const TuningParameter parameter : TuningParameter::adjustable(base_.product())) {
      invariant(isInMenu(parameter, snapshot->rawValue(parameter), base_.product()),
                "a menu has only values that its product can have");
      others[parameter.offset() - menuBegin] = 0;
    }
    invariant(std::all_of(others.begin(), others.end(), [](std::uint8_t b) { return b == 0; }),
              "a menu has only values of its product");
  }

  bool asksForMenu(const Bytes& wire) const {
    return wire.size() >= 3 && wire[0] == tuningChannel && wire[1] == 0x03 && wire[2] == 0x02 &&
           !behaviour_.tuningSilent;
  }

  bool asksForIdentity(const Bytes& wire) const {
    return wire.size() >= 3 && wire[0] == tuningChannel && wire[1] == 0x08 && wire[2] == 0x02 &&
           identityEnabled_;
  }

  void expectAnswers(const Bytes& wire, const Bytes& menu, bool wasThere) {
    std::vector<Bytes> answers;
    while (const auto answer = base_.takeDue(now_)) answers.push_back(*answer);
    const bool isAsked = asksForMenu(wire) || asksForIdentity(wire);
    if (!isAsked || behaviour_.silent || !wasThere || !base_.isPlugged()) {
      invariant(answers.empty(), "a base speaks when it is asked");
      return;
    }
    invariant(answers.size() == (behaviour_.foreignReports ? reportsBeforeAnswer : 0) + 1,
              "a base answers once");
    const Bytes& wanted = asksForMenu(wire) ? menu : base_.identityReport();
    invariant(answers.back() == wanted, "a base answers with what it is asked for");
  }

  SimulatedBase base_;
  const SimulatedBehaviour behaviour_;
  const Monotonic::time_point now_;
  int received_ = 0;
  std::size_t violations_ = 0;
  bool identityEnabled_ = false;
};

}  // namespace

void simbase(ByteView bytes) {
  Input input(bytes);
  const FanatecProduct product = nextProduct(input);
  Conversation conversation(product, nextBehaviour(input));
  while (!input.atEnd()) conversation.say(nextPacket(input, packetForms()));
}

}  // namespace quorvane::Fuzz
