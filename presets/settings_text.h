#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/product.h"

namespace quorvane {

// The values of a preset as one line to send to people: "SEN AUTO, FF 100, FFS PEAK, DRI -3". In
// menu order, in display units, without units. `product` decides which steering angle is written as
// AUTO; settings that its menu lacks are written too. Leaves out the set's number, which belongs to
// no preset, and codes that are no setting. Empty for a preset without values.
std::string settingsText(const TuningPreset& preset, const std::optional<FanatecProduct>& product);

// What a text says about settings.
struct SettingsInText {
  TuningPreset::Values values;  // display units, also those that are out of range

  // Those of `values` that the product cannot take although its menu has the setting; without a
  // product, that no base can take. In menu order.
  std::vector<ParameterValue> outOfRange;

  // Every other part of the text, in its order: names without a value, values that are none,
  // repeated settings with another value, and all other words. Each is a piece of one line of the
  // text.
  std::vector<std::string> notUnderstood;
};

// Whether a content is meant as the JSON of a settings file, not as a text: no text that people
// pass on begins with a bracket.
bool isSettingsDocument(std::string_view content);

// Reads settings from a text that people pass on: "SEN AUTO, FF: 100, FFS peak, NDP 25%, NFR off".
// A setting is named by its code or its title, in either case, and followed by a value as
// MenuText::parse() takes it, or by OFF for 0. Blanks, line ends and the punctuation of textWords()
// may stand between them. Reads every result of settingsText(), and the lists that the command line
// prints.
//
// A word that is not only a name counts as one only where that is likely: a title not within a
// sentence and with a value in range; FOR not in a sentence; a code in a list of codes not with a
// value from the next line. Of several values for a setting, the first counts.
SettingsInText settingsInText(std::string_view text, const std::optional<FanatecProduct>& product);

}  // namespace quorvane
