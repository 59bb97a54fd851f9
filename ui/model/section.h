#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quorvane {

// A section of the window, in the order of the sidebar.
enum class Section { base, tuning, presets, tools, log };

inline constexpr std::array allSections{Section::base, Section::tuning, Section::presets,
                                        Section::tools, Section::log};

// Its name and title: "Base", "Tuning", ...
std::string_view rawValue(Section section);

// The inverse of rawValue(); none for any other text.
std::optional<Section> section(std::string_view rawValue);

// The name of its symbol.
std::string_view symbolName(Section section);

}  // namespace quorvane
