#pragma once

#include <filesystem>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {

inline constexpr const char* firstID = "11111111-2222-3333-4444-AAAAAAAAAAAA";
inline constexpr const char* secondID = "11111111-2222-3333-4444-BBBBBBBBBBBB";
inline constexpr const char* thirdID = "11111111-2222-3333-4444-CCCCCCCCCCCC";

// A user preset.
inline TuningPreset ownPreset(std::string_view id, std::string name,
                              TuningPreset::Values values = {}) {
  TuningPreset preset;
  preset.id = UUID::parse(id).value();
  preset.name = std::move(name);
  preset.game = "Custom";
  preset.values = std::move(values);
  return preset;
}

inline const std::string& factoryName() { return TuningPreset::builtIn().front().name; }

// The built-in presets' names, as error messages list them.
inline std::string builtInNames() {
  std::string names;
  for (const TuningPreset& preset : TuningPreset::builtIn()) names += "  " + preset.name + "\n";
  return names;
}

// The document that the commands print for presets.
inline std::string presetsDocument(const std::vector<TuningPreset>& presets) {
  return documentText(Json{{"presets", Json::parse(encodePresets(presets))}}) + "\n";
}

// The text with every UUID replaced by "ID", because they are random.
inline std::string withoutIDs(const std::string& text) {
  static const std::regex id("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}");
  return std::regex_replace(text, id, "ID");
}

inline Outcome withoutIDs(const Outcome& outcome) {
  return {outcome.status, withoutIDs(outcome.out), withoutIDs(outcome.err)};
}

// The command line with a preset store in a temporary directory.
class PresetTest : public CommandLineTest {
 protected:
  std::string storePath() const { return store_.fileURL().string(); }
  std::string storeText() const { return contentOf(store_.fileURL()); }
  std::string path(std::string_view name) const { return (directory_ / name).string(); }

  // Writes a file and returns its path.
  std::string put(std::string_view name, std::string_view content) const {
    putFile(directory_ / name, content);
    return path(name);
  }

  void damageStore(std::string_view content = "[{]") const {
    std::filesystem::create_directories(store_.fileURL().parent_path());
    putFile(store_.fileURL(), content);
  }

  // The message for a damaged store.
  std::string unreadable() const {
    try {
      store_.read();
    } catch (const std::runtime_error& error) {
      return std::string("Your own presets cannot be read: ") + error.what() + "\n";
    }
    return "the store can be read";
  }

  // The backups of damaged stores.
  std::vector<std::string> keptFiles() const {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(store_.fileURL().parent_path())) {
      if (entry.path().string().starts_with(storePath() + ".corrupt-")) {
        files.push_back(entry.path());
      }
    }
    return files;
  }

  // The message that names the backup.
  std::string kept() const {
    return "The old file is kept beside the new one, as " + keptFiles().at(0) + "\n";
  }

  // Runs `presets` with these words.
  Outcome presets(std::vector<std::string> words) {
    words.insert(words.begin(), "presets");
    return run(words);
  }
};

}  // namespace quorvane
