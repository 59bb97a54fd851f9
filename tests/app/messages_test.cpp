#include "app/messages.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// A menu with this status byte. The mode bit 0x80 means the standard menu.
TuningSnapshot menuWithStatus(std::uint8_t status) {
  Bytes report(TuningSnapshot::length);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  report[2] = status;
  return TuningSnapshot::fromReport(report, {}).value();
}

using Table = std::vector<std::pair<std::string, std::string>>;

void expectTexts(const Table& table) {
  for (const auto& [text, expected] : table) EXPECT_EQ(text, expected);
}

TEST(Messages, OfTheConnection) {
  expectTexts({
      {Messages::looking, "Looking for a Fanatec base\u2026"},
      {Messages::noBaseFound, "No base found. Power it on in PC mode and connect it to this Mac."},
      {Messages::notConnected, "No base connected"},
      {Messages::disconnected, "Base disconnected"},
      {Messages::noTuningAnswer, "The base did not answer the tuning read. Is it in PC mode?"},
      {Messages::connecting("CSL DD"), "Connecting to CSL DD\u2026"},
      {Messages::connected("CSL DD"), "Connected to CSL DD"},
      {Messages::couldNotOpen("CSL DD", "the reason"), "Could not open CSL DD: the reason"},
      {Messages::failed("Read the tuning menu", "the reason"),
       "Read the tuning menu failed: the reason"},
  });
}

TEST(Messages, OfTheReport) {
  expectTexts({
      {Messages::reportSaved("/home/me/r.txt"),
       "Saved the report to /home/me/r.txt. Look it over before you send it."},
      {Messages::couldNotSaveReport("the reason"), "Could not save the report: the reason"},
  });
}

TEST(Messages, NameTheSet) {
  EXPECT_EQ(Messages::setName(std::nullopt), "?");
  const std::vector<std::pair<std::uint8_t, std::string>> names{{0x81, "A (Auto Setup)"},
                                                                {0x82, "C (Custom)"},
                                                                {0x83, "C (Custom)"},
                                                                {0x85, "C (Custom)"},
                                                                {0x80, "C (Custom)"},
                                                                {0x01, "1"},
                                                                {0x02, "2"},
                                                                {0x03, "3"},
                                                                {0x05, "5"},
                                                                {0x0F, "15"},
                                                                {0xF1, "A (Auto Setup)"}};
  for (const auto& [status, name] : names) {
    EXPECT_EQ(Messages::setName(menuWithStatus(status)), name) << int{status};
  }
}

TEST(Messages, OfEditsAndSaves) {
  const TuningPreset preset = presetOf("GT7", {});
  expectTexts({
      {Messages::discarded(1), "Discarded 1 unsaved change"},
      {Messages::discarded(2), "Discarded 2 unsaved changes"},
      {Messages::loaded(preset, 0), "\"GT7\" matches the current values"},
      {Messages::loaded(preset, 1), "Loaded \"GT7\": 1 value to save"},
      {Messages::loaded(preset, 17), "Loaded \"GT7\": 17 values to save"},
      {Messages::saving(1), "Saving 1 change\u2026"},
      {Messages::saving(3), "Saving 3 changes\u2026"},
      {Messages::saved(1, "A (Auto Setup)"), "Saved 1 change to set A (Auto Setup)"},
      {Messages::saved(2, "3"), "Saved 2 changes to set 3"},
      {Messages::rejection(P::brakeForce, "the reason"), "brF: the reason"},
      {Messages::partlySaved(1, {"FF: a"}), "Saved 0 of 1; the base rejected FF: a"},
      {Messages::partlySaved(3, {"FF: a"}), "Saved 2 of 3; the base rejected FF: a"},
      {Messages::partlySaved(3, {"FF: a", "NIN: b"}),
       "Saved 1 of 3; the base rejected FF: a; NIN: b"},
  });
}

ValueReceipt taken(P parameter) { return {parameter, 0, 1, 1, 250, {}}; }

ValueReceipt rejected(P parameter, std::string error) {
  return {parameter, 0, 1, {}, 250, std::move(error)};
}

TEST(Messages, OfActions) {
  const TuningPreset preset = presetOf("Wet", {});
  expectTexts({
      {Messages::factoryReset, "Tuning menu reset to factory defaults"},
      {Messages::usbReset, "USB reset issued; the base will reconnect in a few seconds"},
      {Messages::usbResetFailed("the reason"), "USB reset failed: the reason"},
      {Messages::switchedToSet(menuWithStatus(0x84)), "Switched to set 4"},
      {Messages::switchedToSet(menuWithStatus(0x05)), "Switched to set 5"},
      {Messages::nowInMode(menuWithStatus(0x01)), "Now in advanced mode"},
      {Messages::nowInMode(menuWithStatus(0x81)), "Now in standard mode"},
      {Messages::applied(preset, {}), "Applied \"Wet\" (0 values)"},
      {Messages::applied(preset, {taken(P::forceFeedback)}), "Applied \"Wet\" (1 values)"},
      {Messages::applied(preset, {taken(P::sensitivity), taken(P::forceFeedback)}),
       "Applied \"Wet\" (2 values)"},
      {Messages::applied(preset, {taken(P::sensitivity), rejected(P::brakeForce, "a")}),
       "Applied \"Wet\" with 1 failures: brF: a"},
      {Messages::applied(preset, {rejected(P::sensitivity, "a"), taken(P::forceFeedback),
                                  rejected(P::naturalInertia, "b")}),
       "Applied \"Wet\" with 2 failures: SEN: a; NIN: b"},
  });
}

TEST(Messages, OfUndo) {
  const TuningSnapshot menu = menuWithStatus(0x82);
  HistoryRecord record;
  record.menu = menu;
  const std::vector<ParameterValue> writes{{P::forceFeedback, 65}, {P::sensitivity, 0}};
  const std::vector<ValueLeftAlone> leftAlone{{P::vibration, 10, 20}, {P::brakeForce, 10, 20}};
  expectTexts({
      {Messages::nothingToReverse(UndoDirection::undo), "Nothing to undo"},
      {Messages::nothingToReverse(UndoDirection::redo), "Nothing to redo"},
      {Messages::inAnotherSet(record),
       "the write was to set 2 of the standard menu; choose that first"},
      {Messages::reversed(UndoDirection::undo, {writes, {}}, menu),
       "Undid 2 changes in set C (Custom)"},
      {Messages::reversed(UndoDirection::redo, {{}, leftAlone}, menu),
       "Redid 0 changes in set C (Custom); left alone, since changed meanwhile: SHO, brF"},
      {Messages::rejections({taken(P::forceFeedback)}), ""},
      {Messages::rejections({rejected(P::forceFeedback, "a"), rejected(P::vibration, "b")}),
       "FF: a; SHO: b"},
  });
}

TEST(Messages, OfPresetsAndFiles) {
  const std::filesystem::path file = "/home/me/my settings.quorvane";
  const TuningPreset wet = presetOf("Wet", {});
  const TuningPreset dry = presetOf("Dry", {});
  expectTexts({
      {Messages::presetSaved("Wet"), "Saved preset \"Wet\""},
      {Messages::presetEdited("Wet", "Wet"), R"(Edited preset "Wet")"},
      {Messages::presetEdited("Wet", "Rain"), R"(Edited preset "Rain", before "Wet")"},
      {Messages::valuesReplaced("Wet"), R"(Replaced the values of preset "Wet")"},
      {Messages::presetDuplicated("Wet", "Wet copy"), R"(Duplicated preset "Wet" as "Wet copy")"},
      {Messages::presetMoved("Wet", 2, 6), R"(Moved preset "Wet" to place 2 of 6)"},
      {Messages::formerTexts("Wet"), R"("Wet" has its former texts)"},
      {Messages::formerValues("Wet"), R"("Wet" has its former values)"},
      {Messages::copyRemoved("Wet copy"), R"(Removed the copy "Wet copy")"},
      {Messages::movedBack("Wet"), R"(Moved preset "Wet" back)"},
      {Messages::notDeleted("Spa"), "\"Spa\" was changed by another program and not deleted"},
      {Messages::couldNotSavePresets("the reason"), "Could not save presets: the reason"},
      {Messages::exportedSettings(file), "Exported settings to /home/me/my settings.quorvane"},
      {Messages::exportedPresets(0, file), "Exported 0 presets to /home/me/my settings.quorvane"},
      {Messages::exportedPresets(1, file), "Exported 1 preset to /home/me/my settings.quorvane"},
      {Messages::exportedPresets(2, file), "Exported 2 presets to /home/me/my settings.quorvane"},
      {Messages::exportFailed("the reason"), "Export failed: the reason"},
      {Messages::imported({}, file, true),
       "Imported nothing: there are no presets in /home/me/my settings.quorvane"},
      {Messages::imported({}, file, false),
       "Imported nothing: there are no presets in /home/me/my settings.quorvane"},
      {Messages::imported({wet}, file, true),
       "Imported \"Wet\" from /home/me/my settings.quorvane"},
      {Messages::imported({wet}, file, false),
       "Imported \"Wet\" from /home/me/my settings.quorvane; connect a base to apply it"},
      {Messages::imported({wet, dry}, file, true),
       "Imported \"Wet\" from /home/me/my settings.quorvane and 1 more"},
      {Messages::imported({wet, dry, dry}, file, false),
       "Imported \"Wet\" from /home/me/my settings.quorvane and 2 more; connect a base to apply "
       "it"},
      {Messages::couldNotImport("/a/file: the reason"), "Could not import /a/file: the reason"},
  });
}

}  // namespace
}  // namespace quorvane
