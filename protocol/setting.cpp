#include "protocol/setting.h"

#include <array>

namespace quorvane {
namespace {

using enum Coding;
using P = TuningParameter;

constexpr std::array<ValueLabel, 2> scalings{{{"LIN", "LIN, Linear"}, {"PEA", "PEA, Peak"}}};

constexpr std::array<ValueLabel, 4> paddleModes{{
    {"CbP (clutch bite point)", "CbP (clutch bite point)"},
    {"CH (clutch / handbrake)", "CH (clutch / handbrake)"},
    {"Bt (brake / throttle)", "Bt (brake / throttle)"},
    {"AnA (analog axes)", "AnA (analog axes)"},
}};

constexpr SpecialValue automaticAngle{0, "AUT", "AUTO", &FanatecProduct::autoRotation,
                                      "This base has no automatic steering angle"};
constexpr SpecialValue indicatorOff{101, "OFF", "OFF"};

constexpr unsigned cslEliteAndLater = MenuKind::cslElite | MenuKind::directDrive;
constexpr unsigned everyMenu = MenuKind::classic | cslEliteAndLater;
constexpr unsigned directDrive = MenuKind::directDrive;

// Bytes 8, 15 and 18 belong to no setting.
// clang-format off
constexpr std::array<SettingInfo, P::count> table{{
    // parameter, code, title, unit,
    // range, step, offset, coding, menus, factory value, then optional members
    {P::slot, "SLOT", "Tuning slot", "",
     tuningSets, 1, 2, plain, everyMenu, autoSet},
    {P::sensitivity, "SEN", "Sensitivity (steering angle)", "deg",
     {90, 2520}, 10, 3, steeringAngle, everyMenu, 0,
     Editor::slider, &FanatecProduct::maxRotation, automaticAngle},
    {P::forceFeedback, "FF", "Force feedback strength", "%",
     {0, 100}, 1, 4, plain, everyMenu, 100},
    {P::vibration, "SHO", "Wheel vibration motor", "%",
     {0, 100}, 10, 5, tenths, cslEliteAndLater, 100},
    {P::brakeLevelIndicator, "BLI", "Brake level indicator", "%",
     {0, 101}, 1, 6, plain, cslEliteAndLater, 101,
     Editor::slider, nullptr, indicatorOff},
    {P::forceFeedbackScaling, "FFS", "Force feedback scaling", "",
     {0, 1}, 1, 7, plain, directDrive, 1,
     Editor::segments, nullptr, std::nullopt, {scalings, true}},
    {P::driftMode, "DRI", "Drift mode", "",
     {-5, 3}, 1, 9, signedByte, MenuKind::cslElite, 0},
    {P::forceEffect, "FOR", "Force effect strength", "%",
     {0, 120}, 10, 10, tenths, everyMenu, 100},
    {P::springEffect, "SPR", "Spring effect strength", "%",
     {0, 120}, 10, 11, tenths, everyMenu, 100},
    {P::damperEffect, "DPR", "Damper effect strength", "%",
     {0, 120}, 10, 12, tenths, everyMenu, 100},
    {P::naturalDamper, "NDP", "Natural damper", "%",
     {0, 100}, 1, 13, plain, directDrive, 50},
    {P::naturalFriction, "NFR", "Natural friction", "%",
     {0, 100}, 1, 14, plain, directDrive, 0},
    {P::brakeForce, "brF", "Brake force (load cell)", "%",
     {0, 100}, 10, 16, flooredToTen, everyMenu, 50},
    {P::forceEffectIntensity, "FEI", "Force effect intensity", "%",
     {0, 100}, 10, 17, flooredToTen, everyMenu, 100},
    {P::analogPaddles, "ACP", "Analog paddle mode", "",
     {1, 4}, 1, 19, plain, everyMenu, 1,
     Editor::list, nullptr, std::nullopt, {paddleModes, false}},
    {P::interpolation, "INT", "FFB interpolation filter", "",
     {0, 20}, 1, 20, plain, directDrive, 11},
    {P::naturalInertia, "NIN", "Natural inertia", "%",
     {0, 100}, 1, 21, plain, directDrive, 0},
    {P::fullForce, "FUL", "FullForce", "%",
     {0, 100}, 1, 22, plain, MenuKind::fullForce, 0},
}};
// clang-format on

// A setting with a slider has no value labels; one with another editor needs a label per value.
consteval bool isComplete(const SettingInfo& setting) {
  const std::size_t values =
      static_cast<std::size_t>(setting.range.upper - setting.range.lower) + 1;
  const std::size_t labels = setting.valueLabels.labels.size();
  return !setting.code.empty() && labels == (setting.editor == Editor::slider ? 0 : values);
}

consteval bool isInOrder() {
  for (std::size_t index = 0; index < table.size(); ++index) {
    if (static_cast<std::size_t>(table[index].parameter) != index) return false;
    if (!isComplete(table[index])) return false;
    if (index > 0 && table[index].offset <= table[index - 1].offset) return false;
  }
  return true;
}
static_assert(isInOrder(), "each case has a row, in ascending order of offsets");

}  // namespace

const SettingInfo& settingOf(TuningParameter parameter) {
  return table[static_cast<std::size_t>(static_cast<TuningParameter::Case>(parameter))];
}

}  // namespace quorvane
