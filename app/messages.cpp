#include "app/messages.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "session/candidates.h"
#include "support/text.h"

namespace quorvane::Messages {
namespace {

std::string inQuotes(std::string_view name) { return fmt::format("\"{}\"", name); }

// A line for each value that failed.
std::vector<std::string> rejectionsOf(const std::vector<ValueReceipt>& receipts) {
  std::vector<std::string> lines;
  for (const ValueReceipt& receipt : receipts) {
    if (receipt.error) lines.push_back(rejection(receipt.parameter, *receipt.error));
  }
  return lines;
}

}  // namespace

std::string setName(const std::optional<TuningSnapshot>& menu) {
  return menu ? menu->setName() : "?";
}

std::string waitingFor(std::string_view which, const std::vector<HIDDeviceInfo>& attached) {
  std::vector<std::string> others;
  others.reserve(attached.size());
  for (const HIDDeviceInfo& device : attached) {
    others.push_back(
        fmt::format("{} ({})", device.displayName(), fmt::join(namesOf(device), ", ")));
  }
  return fmt::format(
      "No base answers to {}; waiting for it. Attached: {}. Plug in the one you named, or connect "
      "another in the Base section.",
      inQuotes(which), fmt::join(others, "; "));
}

std::string connecting(std::string_view device) { return fmt::format("Connecting to {}…", device); }

std::string connected(std::string_view name) { return fmt::format("Connected to {}", name); }

std::string couldNotOpen(std::string_view device, std::string_view reason) {
  return fmt::format("Could not open {}: {}", device, reason);
}

std::string cannotWatch(std::string_view reason) {
  return fmt::format("Bases that come and go are not noticed until the next start: {}", reason);
}

std::string failed(std::string_view action, std::string_view reason) {
  return fmt::format("{} failed: {}", action, reason);
}

std::string discarded(std::size_t count) {
  return fmt::format("Discarded {}", counted(count, "unsaved change"));
}

std::string loaded(const TuningPreset& preset, std::size_t staged) {
  if (staged == 0) return inQuotes(preset.name) + " matches the current values";
  return fmt::format("Loaded {}: {} to save", inQuotes(preset.name), counted(staged, "value"));
}

std::string saving(std::size_t count) {
  return fmt::format("Saving {}…", counted(count, "change"));
}

std::string saved(std::size_t count, std::string_view set) {
  return fmt::format("Saved {} to set {}", counted(count, "change"), set);
}

std::string partlySaved(std::size_t count, const std::vector<std::string>& rejections) {
  return fmt::format("Saved {} of {}; the base rejected {}", count - rejections.size(), count,
                     fmt::join(rejections, "; "));
}

std::string rejection(TuningParameter parameter, std::string_view reason) {
  return fmt::format("{}: {}", parameter.code(), reason);
}

std::string switchedToSet(const TuningSnapshot& menu) {
  return fmt::format("Switched to set {}", menu.slot());
}

std::string nowInMode(const TuningSnapshot& menu) {
  return fmt::format("Now in {} mode", menu.modeName());
}

std::string applied(const TuningPreset& preset, const std::vector<ValueReceipt>& receipts) {
  const auto failures = rejectionsOf(receipts);
  if (failures.empty()) {
    return fmt::format("Applied {} ({} values)", inQuotes(preset.name), receipts.size());
  }
  return fmt::format("Applied {} with {} failures: {}", inQuotes(preset.name), failures.size(),
                     fmt::join(failures, "; "));
}

std::string rejections(const std::vector<ValueReceipt>& receipts) {
  return fmt::format("{}", fmt::join(rejectionsOf(receipts), "; "));
}

std::string nothingToReverse(UndoDirection direction) {
  return direction == UndoDirection::undo ? "Nothing to undo" : "Nothing to redo";
}

std::string inAnotherSet(const HistoryRecord& record) {
  return fmt::format("the write was to set {} of the {} menu; choose that first",
                     record.menu->slot(), record.menu->modeName());
}

std::string reversed(UndoDirection direction, const UndoPlan& plan, const TuningSnapshot& menu) {
  std::string text =
      fmt::format("{} {} in set {}", direction == UndoDirection::undo ? "Undid" : "Redid",
                  counted(plan.writes.size(), "change"), menu.setName());
  if (plan.leftAlone.empty()) return text;
  std::vector<std::string_view> codes;
  codes.reserve(plan.leftAlone.size());
  for (const ValueLeftAlone& value : plan.leftAlone) codes.push_back(value.parameter.code());
  return text + fmt::format("; left alone, since changed meanwhile: {}", fmt::join(codes, ", "));
}

std::string usbResetFailed(std::string_view reason) {
  return fmt::format("USB reset failed: {}", reason);
}

std::string reportSaved(const std::filesystem::path& file) {
  return fmt::format("Saved the report to {}. Look it over before you send it.", file.string());
}

std::string couldNotSaveReport(std::string_view reason) {
  return fmt::format("Could not save the report: {}", reason);
}

std::string presetSaved(std::string_view name) { return "Saved preset " + inQuotes(name); }

std::string notDeleted(std::string_view name) {
  return inQuotes(name) + " was changed by another program and not deleted";
}

std::string presetDeleted(std::string_view name) { return "Deleted " + inQuotes(name); }

std::string presetEdited(std::string_view before, std::string_view after) {
  std::string line = "Edited preset " + inQuotes(after);
  if (before != after) line += ", before " + inQuotes(before);
  return line;
}

std::string valuesReplaced(std::string_view name) {
  return "Replaced the values of preset " + inQuotes(name);
}

std::string presetDuplicated(std::string_view name, std::string_view copy) {
  return fmt::format("Duplicated preset {} as {}", inQuotes(name), inQuotes(copy));
}

std::string presetMoved(std::string_view name, std::size_t place, std::size_t count) {
  return fmt::format("Moved preset {} to place {} of {}", inQuotes(name), place, count);
}

std::string presetBroughtBack(std::string_view name) { return "Brought back " + inQuotes(name); }

std::string formerTexts(std::string_view name) { return inQuotes(name) + " has its former texts"; }

std::string formerValues(std::string_view name) {
  return inQuotes(name) + " has its former values";
}

std::string copyRemoved(std::string_view copy) { return "Removed the copy " + inQuotes(copy); }

std::string movedBack(std::string_view name) { return "Moved preset " + inQuotes(name) + " back"; }

std::string couldNotSavePresets(std::string_view reason) {
  return fmt::format("Could not save presets: {}", reason);
}

std::string versionNotKept(std::string_view reason) {
  return fmt::format("The presets before this change were not kept as a version: {}", reason);
}

std::string exportedSettings(const std::filesystem::path& file) {
  return fmt::format("Exported settings to {}", file.string());
}

std::string exportedPresets(std::size_t count, const std::filesystem::path& file) {
  return fmt::format("Exported {} to {}", counted(count, "preset"), file.string());
}

std::string exportFailed(std::string_view reason) {
  return fmt::format("Export failed: {}", reason);
}

std::string imported(const std::vector<TuningPreset>& presets, const std::filesystem::path& file,
                     bool isConnected) {
  if (presets.empty()) {
    return fmt::format("Imported nothing: there are no presets in {}", file.string());
  }
  std::string text =
      fmt::format("Imported {} from {}", inQuotes(presets.front().name), file.string());
  if (presets.size() > 1) text += fmt::format(" and {} more", presets.size() - 1);
  if (!isConnected) text += "; connect a base to apply it";
  return text;
}

std::string couldNotImport(std::string_view reason) {
  return fmt::format("Could not import {}", reason);
}

std::string importedFiles(std::size_t imported, std::size_t all) {
  if (imported == all) return fmt::format("Imported {}", counted(all, "file"));
  return fmt::format("Imported {} of {}", imported, counted(all, "file"));
}

}  // namespace quorvane::Messages
