#include "presets/settings_text.h"

#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "presets/text_words.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

// All words of the texts, one after the other.
std::string allWords(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) {
    for (const TextWord& word : textWords(text)) joined += word.text;
  }
  return joined;
}

void expectPieces(const std::string& text, const std::vector<std::string>& pieces) {
  std::size_t place = 0;
  for (const std::string& piece : pieces) {
    invariant(!piece.empty(), "a piece that was not understood has a word");
    invariant(piece.find_first_of("\n\r") == std::string::npos, "a piece is of one line");
    place = text.find(piece, place);
    invariant(place != std::string::npos, "pieces are in the text, in its order");
    place += piece.size();
  }
}

}  // namespace

void settingsText(ByteView bytes) {
  const std::string text = textOf(bytes);
  const SettingsInText read = settingsInText(text, std::nullopt);
  expectPieces(text, read.notUnderstood);
  if (read.values.empty()) {
    invariant(allWords(read.notUnderstood) == allWords({text}), "no word is dropped");
  }

  TuningPreset preset;
  preset.values = read.values;
  const std::string written = quorvane::settingsText(preset, std::nullopt);
  const SettingsInText again = settingsInText(written, std::nullopt);
  invariant(again.values == read.values, "settings survive as a text");
  invariant(again.outOfRange == read.outOfRange, "settings survive as a text");
  invariant(again.notUnderstood.empty(), "what is written can be read");
}

}  // namespace quorvane::Fuzz
