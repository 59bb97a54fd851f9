#include "ui/model/section.h"

namespace quorvane {

std::string_view rawValue(Section section) {
  switch (section) {
    case Section::base:
      return "Base";
    case Section::tuning:
      return "Tuning";
    case Section::presets:
      return "Presets";
    case Section::tools:
      return "Tools";
    case Section::log:
      return "Log";
  }
  return {};
}

std::optional<Section> section(std::string_view rawValue) {
  for (const Section section : allSections) {
    if (quorvane::rawValue(section) == rawValue) return section;
  }
  return std::nullopt;
}

std::string_view symbolName(Section section) {
  switch (section) {
    case Section::base:
      return "steeringwheel";
    case Section::tuning:
      return "slider.horizontal.3";
    case Section::presets:
      return "square.stack.3d.up";
    case Section::tools:
      return "wrench.and.screwdriver";
    case Section::log:
      return "list.bullet.rectangle";
  }
  return {};
}

}  // namespace quorvane
