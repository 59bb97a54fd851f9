#include <fmt/format.h>

#include "cli/base_access.h"
#include "cli/input_file.h"
#include "cli/json_output.h"
#include "cli/output_file.h"
#include "cli/preset_commands.h"
#include "cli/preset_library.h"
#include "cli/preset_text.h"
#include "presets/preset_coding.h"
#include "presets/preset_store.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// The presets imported from one file.
struct Imported {
  std::string file;
  std::vector<TuningPreset> presets;
};

Imported presetsIn(const InputFile& file) {
  return {file.name, PresetStore::importPresets(file.name, file.content)};
}

// An import of several files; skips those that cannot be read.
class Import {
 public:
  explicit Import(const CommandContext& context) : context_(context) {}

  void read(const std::string& file) {
    try {
      files_.push_back(presetsIn(readInputFile(file)));
    } catch (const std::runtime_error& failure) {  // FileError, DecodingError
      printTo(context_.world.err, "{}\n", oneLine(failure.what()));
      if (failure_.is_null()) failure_ = errorJson(failure);
    }
  }

  std::vector<TuningPreset> presets() const {
    std::vector<TuningPreset> all;
    for (const Imported& file : files_) {
      all.insert(all.end(), file.presets.begin(), file.presets.end());
    }
    return all;
  }

  ExitStatus report() const {
    if (context_.options.json) {
      printDocument();
    } else {
      printText();
    }
    return failure_.is_null() ? ExitStatus::done : ExitStatus::failed;
  }

 private:
  // Prints the presets and the first failure, if any; only the failure if there are no presets.
  void printDocument() const {
    const auto all = presets();
    Json document = all.empty() && !failure_.is_null() ? Json::object() : presetsJson(all);
    if (!failure_.is_null()) document.update(failure_);
    printJson(context_.world, document);
  }

  void printText() const {
    for (const Imported& file : files_) {
      for (const TuningPreset& preset : file.presets) {
        printTo(context_.world.out, "Imported \"{}\" from {}\n", oneLine(preset.name),
                oneLine(file.file));
      }
      if (file.presets.empty()) {
        printTo(context_.world.out, "There are no presets in {}\n", oneLine(file.file));
      }
    }
  }

  const CommandContext& context_;
  std::vector<Imported> files_;
  Json failure_;  // the first one; null without
};

// The user's own presets. Throws if they cannot be read, rather than overwriting an older export
// with an empty one.
std::vector<TuningPreset> ownPresets(const PresetLibrary& library, const std::string& file) {
  if (!library.isReadable()) throw FileError(file, "Not written: your presets cannot be read");
  return library.own();
}

void printExported(const CommandContext& context, const std::vector<TuningPreset>& presets,
                   const std::string& file, const std::string& what) {
  if (context.options.json) {
    Json document = presetsJson(presets);
    document["file"] = file;
    printJson(context.world, document);
  } else {
    printTo(context.world.out, "Exported {} to {}\n", what, oneLine(file));
  }
}

// A preset to share, and the base that it comes from.
struct Shared {
  TuningPreset preset;
  std::optional<std::string> base;
};

Shared presentMenu(const CommandContext& context) {
  const OpenBase base(context);
  const TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  const std::string product = base->info().displayName();
  const std::string name = fmt::format("{}, set {}", product, snapshot.setName());
  return {TuningPreset::capture(base->product(), name, snapshot), product};
}

}  // namespace

ExitStatus importPresetsCommand(const CommandContext& context,
                                const std::vector<std::string>& files) {
  Import import(context);
  for (const std::string& file : files) import.read(file);
  if (const auto presets = import.presets(); !presets.empty()) {
    PresetLibrary::withAdded(context.world, presets);
  }
  return import.report();
}

ExitStatus exportPresetsCommand(const CommandContext& context, const std::string& file,
                                const std::vector<std::string>& which, bool replace) {
  const PresetLibrary library(context.world);
  const auto presets = which.empty() ? ownPresets(library, file) : library.named(which);
  if (file == standardOutput) {
    printJsonFile(context.world, encodePresets(presets));
    return ExitStatus::done;
  }
  requireFreeName(file, replace);
  PresetStore::exportPresets(presets, file);
  printExported(context, presets, file, counted(presets.size(), "preset"));
  return ExitStatus::done;
}

ExitStatus sharePresetCommand(const CommandContext& context, const std::string& file,
                              const std::optional<std::string>& which, bool replace) {
  if (file != standardOutput) requireFreeName(file, replace);
  const auto [preset, base] =
      which ? Shared{PresetLibrary(context.world).named(*which), {}} : presentMenu(context);
  if (file == standardOutput) {
    printJsonFile(context.world, encodeShareFile({std::string(SettingsShareFile::currentFormat),
                                                  wholeSeconds(WallClock::now()), base, preset}));
    return ExitStatus::done;
  }
  PresetStore::exportShare(preset, base, file);
  printExported(context, {preset}, file, fmt::format("\"{}\"", oneLine(preset.name)));
  return ExitStatus::done;
}

}  // namespace quorvane
