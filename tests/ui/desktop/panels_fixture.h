#pragma once

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QWidget>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_directory.h"
#include "ui/desktop/desktop_panels.h"

namespace quorvane {

// The desktop's panels over a window, with a home directory whose documents folder has an unusual
// name.
class PanelsTest : public testing::Test {
 protected:
  using Paths = std::vector<std::filesystem::path>;

  static FilePanels::Request settingsRequest();
  static FilePanels::Request presetsRequest();
  static FilePanels::Request importRequest();

  PanelsTest();

  void share() { panels_->chooseDestination(settingsRequest(), choosing()); }
  void exportPresets() { panels_->chooseDestination(presetsRequest(), choosing()); }
  void import() { panels_->chooseFile(importRequest(), choosing()); }

  // A callback that appends what is chosen to chosen_.
  FilePanels::Chosen choosing();

  std::vector<QFileDialog*> dialogs() const;

  // Qt's only file dialog. Waits until it is there.
  QFileDialog& dialog() const;

  const std::filesystem::path& home() const { return home_.path(); }
  std::filesystem::path documents() const { return home_ / "Pa p\u00e9rs"; }

  TemporaryDirectory home_;
  const ScopedVariable homeVariable_{"HOME", home_.path().string()};
  const ScopedVariable configuration_{"XDG_CONFIG_HOME", home_.path().string()};
  std::optional<QWidget> window_;
  std::optional<DesktopPanels> panels_;
  Paths chosen_;
};

}  // namespace quorvane
