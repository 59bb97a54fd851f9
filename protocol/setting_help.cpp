#include "protocol/setting_help.h"

#include <array>

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr std::array<SettingHelp, P::count> helpTable{{
    {P::slot,
     "Which of the base's five sets of values is active. In the standard menu set 1 is A, Auto "
     "Setup, and set 2 is C, Custom.",
     "Another set brings its own values for all other settings; no value is lost by switching.",
     "every other setting, the menu's mode"},
    {P::sensitivity,
     "The steering angle: how far the wheel turns from full left to full right. AUTO leaves the "
     "angle to the base.",
     "Fewer degrees make the car answer to smaller movements of your hands. More degrees make it "
     "calmer and easier to hold straight, with more turning in tight corners.",
     "steering angle in the game"},
    {P::forceFeedback,
     "The upper limit of all force that the base gives. At 100 % it uses its full torque; below "
     "that every effect shrinks in proportion.",
     "Less spares arms and clamps. More lets you feel small forces better, as long as the game "
     "does not clip. It multiplies with the strength in the game.",
     "FOR, FUL, strength in the game"},
    {P::vibration,
     "How strongly the vibration motors in the steering wheel run, if it has any. 0 % keeps them "
     "still.",
     "Less is quieter in the hands. More makes the game's warnings hard to miss.",
     "BLI, vibration in the game"},
    {P::brakeLevelIndicator,
     "The brake level at which the base's indicator answers. OFF switches the indicator off.",
     "A lower level answers at a lighter brake, a higher one only near full braking.", "brF, SHO"},
    {P::forceFeedbackScaling,
     "How the base scales the force that the game asks for. With LIN, Linear, twice the signal is "
     "twice the force. PEA, Peak, is the factory default.",
     "Linear keeps all forces in proportion. Drivers report that Peak brings out the strongest "
     "forces more.",
     "FF, FOR, strength in the game"},
    {P::driftMode, "How freely the wheel turns by itself, on bases that have a drift mode.",
     "Drivers report that a higher value lets the wheel swing faster into countersteer, and that "
     "a lower one slows it down.",
     "DPR"},
    {P::forceEffect,
     "The strength of the force effects that the game sends, which carry most of what the car's "
     "steering does. 100 % passes them on as they are, more amplifies them.",
     "Less weakens them against springs and dampers. More makes them stronger, but what exceeds "
     "the torque of the base is cut off and feels the same.",
     "FF, FEI, strength in the game"},
    {P::springEffect,
     "The strength of the spring effects that the game sends. A spring pulls the wheel back to a "
     "place, mostly the centre.",
     "Less leaves the wheel freer, 0 % ignores springs. More centres it harder. A game that sends "
     "no spring feels the same with any value.",
     "DPR, FF"},
    {P::damperEffect,
     "The strength of the damper effects that the game sends. A damper resists the wheel more the "
     "faster it turns.",
     "Less lets the wheel move quickly, 0 % ignores dampers. More makes it calmer and slower. A "
     "game that sends no damper feels the same with any value.",
     "NDP, SPR"},
    {P::naturalDamper,
     "A damper that the base itself adds, in every game: it resists the wheel more the faster it "
     "turns.",
     "Less is livelier, but the wheel may swing back and forth on straights. More is calmer and "
     "slower, and hides small quick forces.",
     "NFR, NIN, DPR"},
    {P::naturalFriction,
     "A friction that the base itself adds, in every game: it resists every movement alike, slow "
     "or fast.",
     "Less lets the wheel turn easily. More makes it steadier in the hands, and hides forces that "
     "are smaller than the friction.",
     "NDP, NIN"},
    {P::brakeForce,
     "How much force a brake pedal with a load cell asks for. It does nothing without a load cell.",
     "Less reaches full braking with a lighter foot. More takes a harder one; drivers report that "
     "it is then easier to brake with the same force each time.",
     "BLI, brake calibration in the game"},
    {P::forceEffectIntensity,
     "How sharply the base turns the game's force effects into movement. 100 % passes them on as "
     "they are.",
     "Drivers report that less is smoother and rounder, and that more shows kerbs and bumps "
     "harder, with the game's roughness.",
     "FOR, INT"},
    {P::analogPaddles,
     "What the analog paddles of a steering wheel do: a clutch with a bite point (CbP), clutch and "
     "handbrake (CH), brake and throttle (Bt), or two free axes (AnA).",
     "It changes no force. After a change, assign the paddles in the game again.",
     "controls in the game"},
    {P::interpolation,
     "A filter between the force signals that the game sends: it smooths the steps from one signal "
     "to the next. 0 leaves them as they are.",
     "Less is more direct and can feel grainy. More is smoother, and fine detail gets weaker.",
     "FEI, NDP"},
    {P::naturalInertia,
     "An inertia that the base itself adds, in every game: the wheel resists being sped up and "
     "slowed down, as if its rim were heavier.",
     "Less follows quick changes at once. More feels heavier and steadier, and the wheel tends to "
     "swing on past its place.",
     "NDP, NFR"},
    {P::fullForce,
     "The strength of FullForce effects, on bases that have them. 0 % switches them off.",
     "Drivers report fine vibrations that grow with the value. A game that sends no such effects "
     "feels the same with any value.",
     "FF, the game"},
}};

consteval bool explainsEverySetting() {
  for (std::size_t index = 0; index < helpTable.size(); ++index) {
    const SettingHelp& help = helpTable[index];
    if (static_cast<std::size_t>(help.parameter) != index) return false;
    if (help.what.empty() || help.feel.empty() || help.worksWith.empty()) return false;
  }
  return true;
}
static_assert(explainsEverySetting(), "each case has a row with all texts, in the enum's order");

}  // namespace

const SettingHelp& helpOf(TuningParameter parameter) {
  return helpTable[static_cast<std::size_t>(static_cast<TuningParameter::Case>(parameter))];
}

}  // namespace quorvane
