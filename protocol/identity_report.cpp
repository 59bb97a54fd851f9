#include "protocol/identity_report.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr std::uint8_t nothingAttached = 0;
constexpr std::uint8_t extendedInfoDevice = 255;

}  // namespace

std::optional<IdentityReport> IdentityReport::fromReport(ByteView report,
                                                         WallClock::time_point receivedAt) {
  if (report.size() != length || report[0] != reportID || report[1] != subID) return std::nullopt;
  return IdentityReport(report, receivedAt);
}

IdentityReport::IdentityReport(ByteView report, WallClock::time_point receivedAt)
    : raw_(report.begin(), report.end()), receivedAt_(receivedAt) {}

std::optional<std::int64_t> IdentityReport::baseType() const {
  if (raw_[layoutOffset] != 0) return std::nullopt;
  return raw_[baseTypeOffset];
}

std::string IdentityReport::baseName() const {
  const auto type = baseType();
  if (!type) return "unknown (extended layout)";
  const auto found = baseNames().find(*type);
  if (found != baseNames().end()) return std::string(found->second);
  return fmt::format("unknown base type {}", *type);
}

std::string IdentityReport::wheelName() const {
  if (wheelCode() == extendedInfoDevice) return "extended-info device";
  if (wheelCode() == nothingAttached) return "nothing attached";
  const auto found = wheelNames().find(wheelCode());
  if (found != wheelNames().end()) return std::string(found->second);
  return fmt::format("unknown wheel code 0x{:02X}", wheelCode());
}

std::string IdentityReport::moduleName() const {
  switch (moduleCode()) {
    case 0:
      return "none";
    case 1:
      return "Podium Button Module Endurance";
    case 2:
      return "Podium Button Module Rally";
    default:
      return fmt::format("unknown module {}", moduleCode());
  }
}

const std::map<std::int64_t, std::string_view>& IdentityReport::baseNames() {
  static const std::map<std::int64_t, std::string_view> names{
      {1, "ClubSport Wheel Base V2"},        {2, "ClubSport Wheel Base V2.5"},
      {3, "CSL Elite Wheel Base (rev 1.0)"}, {4, "CSL Elite Wheel Base (rev 1.1)"},
      {5, "CSL Elite Wheel Base+ (PS4)"},    {6, "Podium Wheel Base DD1"},
      {7, "Podium Wheel Base DD1 (PS4)"},    {8, "Podium Wheel Base DD2"},
      {9, "GT DD Pro Wheel Base"},           {10, "CSL DD Wheel Base"},
      {11, "ClubSport DD Wheel Base"},       {12, "ClubSport DD+ Wheel Base"},
      {13, "Podium Wheel Base DD"},          {14, "Podium Wheel Base DD+"},
      {99, "ClubSport Wheel Base V1"},
  };
  return names;
}

const std::map<std::int64_t, std::string_view>& IdentityReport::wheelNames() {
  static const std::map<std::int64_t, std::string_view> names{
      {0x01, "ClubSport Steering Wheel BMW M3 GT2"},
      {0x02, "ClubSport Steering Wheel Formula Carbon"},
      {0x03, "ClubSport Steering Wheel Porsche 918 RSR"},
      {0x07, "CSL Elite Steering Wheel P1 (Xbox)"},
      {0x08, "CSL Elite Steering Wheel P1 (PS4)"},
      {0x09, "CSL Elite Steering Wheel McLaren GT3 V1"},
      {0x0A, "ClubSport Steering Wheel Formula V2"},
      {0x0B, "CSL Elite Steering Wheel McLaren GT3 V2"},
      {0x0E, "Podium Steering Wheel Bentley GT3"},
      {0x0F, "Podium Steering Wheel BMW M4 GT3"},
      {0x10, "GT DD Pro Steering Wheel"},
      {0x12, "CSL Elite Steering Wheel WRC"},
      {0x13, "ClubSport Steering Wheel BMW M3 GT2 V2"},
      {0x14, "ClubSport Steering Wheel RS"},
      {0x16, "ClubSport Steering Wheel F1 Esports V2"},
      {0x17, "Podium Steering Wheel BMW M4 GT3 (rev 2)"},
      {0x18, "GT Steering Wheel Extreme"},
      {0x1B, "CSL Elite Steering Wheel Porsche Vision GT"},
      {0x1C, "ClubSport Steering Wheel Formula V3"},
      {0x1D, "CSL Steering Wheel GT3"},
  };
  return names;
}

}  // namespace quorvane
