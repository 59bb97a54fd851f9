#include "doctor/preset_check.h"

#include <fmt/format.h>

#include "presets/preset_store.h"
#include "support/text.h"

namespace quorvane {

PresetFacts examinePresets(const std::optional<std::filesystem::path>& file) {
  PresetFacts facts;
  facts.file = file;
  if (!file) return facts;
  std::error_code unknown;
  facts.isMissing = !std::filesystem::exists(*file, unknown) && !unknown;
  try {
    facts.count = PresetStore(*file).read().size();
  } catch (const DecodingError& error) {
    facts.contentFailure = oneLine(error.what());
  } catch (const std::exception& error) {
    facts.openFailure = oneLine(error.what());
  }
  try {
    requireReplaceable(*file);
  } catch (const FileError& error) {
    facts.replaceFailure = oneLine(error.what());
  }
  return facts;
}

PresetFacts presetsOutOfTime(const std::optional<std::filesystem::path>& file) {
  PresetFacts facts;
  facts.file = file;
  facts.outOfTime = true;
  return facts;
}

Verdict judgePresets(const PresetFacts& presets) {
  if (!presets.file) {
    return Verdict::fail("you have no home directory to keep presets in",
                         "Set HOME, or XDG_DATA_HOME, to a directory of yours.");
  }
  if (presets.outOfTime) {
    return Verdict::fail(
        fmt::format("{}: the file system it is on does not answer", presets.file->string()),
        "See that the drive or network share it is on can be reached (findmnt shows which), or set "
        "XDG_DATA_HOME to a directory on this machine.");
  }
  if (!presets.openFailure.empty()) {
    return Verdict::fail(presets.openFailure,
                         CommandStep{"Make it a file that is yours to read and write",
                                     fmt::format(R"(sudo chown $USER "{0}" && chmod u+rw "{0}")",
                                                 presets.file->string())});
  }
  if (!presets.contentFailure.empty()) {
    return Verdict::fail(
        presets.contentFailure,
        "Mend the file at that place, or just save a preset: a new file is begun then, and this "
        "one is kept beside it, with \".corrupt-\" and the time in its name.");
  }
  if (!presets.replaceFailure.empty()) {
    return Verdict::fail(
        fmt::format("presets cannot be saved: {}", presets.replaceFailure),
        "Make that writable for you, or set XDG_DATA_HOME to a directory that is.");
  }
  if (presets.isMissing) return Verdict::pass("none saved yet");
  return Verdict::pass(
      fmt::format("{} in {}", counted(presets.count, "preset"), presets.file->string()));
}

}  // namespace quorvane
