#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "history/undo_plan.h"
#include "presets/tuning_preset.h"
#include "protocol/tuning_snapshot.h"
#include "session/value_receipt.h"
#include "session/wheel_base.h"

// The texts of log lines and of the status line.
namespace quorvane::Messages {

inline constexpr const char* looking = "Looking for a Fanatec base…";
inline constexpr const char* noBaseFound =
    "No base found. Power it on in PC mode and connect it to this Mac.";
inline constexpr const char* notConnected = "No base connected";
inline constexpr const char* disconnected = "Base disconnected";
inline constexpr const char* noTuningAnswer =
    "The base did not answer the tuning read. Is it in PC mode?";
inline constexpr const char* factoryReset = "Tuning menu reset to factory defaults";
inline constexpr const char* usbReset =
    "USB reset issued; the base will reconnect in a few seconds";

// The display name of the active set; "?" without a menu.
std::string setName(const std::optional<TuningSnapshot>& menu);

// For when no attached base has the name `which`.
std::string waitingFor(std::string_view which, const std::vector<HIDDeviceInfo>& attached);

std::string connecting(std::string_view device);
std::string connected(std::string_view name);
std::string couldNotOpen(std::string_view device, std::string_view reason);
std::string cannotWatch(std::string_view reason);
std::string failed(std::string_view action, std::string_view reason);

std::string discarded(std::size_t count);
std::string loaded(const TuningPreset& preset, std::size_t staged);
std::string saving(std::size_t count);
std::string saved(std::size_t count, std::string_view set);
std::string partlySaved(std::size_t count, const std::vector<std::string>& rejections);

// One line of a list of failures: "FF: the reason".
std::string rejection(TuningParameter parameter, std::string_view reason);

std::string switchedToSet(const TuningSnapshot& menu);
std::string nowInMode(const TuningSnapshot& menu);
std::string applied(const TuningPreset& preset, const std::vector<ValueReceipt>& receipts);

// The rejections of the values that failed, with semicolons between; empty when none did.
std::string rejections(const std::vector<ValueReceipt>& receipts);

std::string nothingToReverse(UndoDirection direction);

// Why a write cannot be undone or redone while the base is in another set or mode than its own.
std::string inAnotherSet(const HistoryRecord& record);

// After an undo or a redo: how many values were written, and those that were left alone.
std::string reversed(UndoDirection direction, const UndoPlan& plan, const TuningSnapshot& menu);

std::string usbResetFailed(std::string_view reason);

std::string reportSaved(const std::filesystem::path& file);
std::string couldNotSaveReport(std::string_view reason);

std::string presetSaved(std::string_view name);
std::string presetEdited(std::string_view before, std::string_view after);
std::string valuesReplaced(std::string_view name);
std::string presetDuplicated(std::string_view name, std::string_view copy);
std::string presetMoved(std::string_view name, std::size_t place, std::size_t count);
std::string presetDeleted(std::string_view name);
std::string notDeleted(std::string_view name);

// A change of a preset was taken back.
std::string presetBroughtBack(std::string_view name);
std::string formerTexts(std::string_view name);
std::string formerValues(std::string_view name);
std::string copyRemoved(std::string_view copy);
std::string movedBack(std::string_view name);

std::string couldNotSavePresets(std::string_view reason);
std::string versionNotKept(std::string_view reason);
std::string exportedSettings(const std::filesystem::path& file);
std::string exportedPresets(std::size_t count, const std::filesystem::path& file);
std::string exportFailed(std::string_view reason);
std::string imported(const std::vector<TuningPreset>& presets, const std::filesystem::path& file,
                     bool isConnected);
std::string couldNotImport(std::string_view reason);

// For several files that were imported together.
std::string importedFiles(std::size_t imported, std::size_t all);

}  // namespace quorvane::Messages
