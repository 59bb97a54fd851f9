#include "tests/ui/desktop/panels_fixture.h"

#include "tests/ui/desktop/private_bus.h"

namespace quorvane {

FilePanels::Request PanelsTest::settingsRequest() {
  return {"Share settings", "Export", FilePanels::Content::settings, "Base, set 1.quorvane"};
}

FilePanels::Request PanelsTest::presetsRequest() {
  return {"Export presets", "Export", FilePanels::Content::presets, "presets.json"};
}

FilePanels::Request PanelsTest::importRequest() {
  return {"Import settings", "Import", FilePanels::Content::settings, {}};
}

PanelsTest::PanelsTest() {
  std::filesystem::create_directory(documents());
  putFile(home_ / "user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Pa p\u00e9rs\"\n");
  window_.emplace().show();
}

FilePanels::Chosen PanelsTest::choosing() {
  return [this](const std::filesystem::path& file) { chosen_.push_back(file); };
}

std::vector<QFileDialog*> PanelsTest::dialogs() const {
  const auto found = window_->findChildren<QFileDialog*>(QString(), Qt::FindDirectChildrenOnly);
  return {found.begin(), found.end()};
}

QFileDialog& PanelsTest::dialog() const {
  waitUntil([&] { return !dialogs().empty(); });
  EXPECT_EQ(dialogs().size(), 1U);
  return *dialogs().front();
}

}  // namespace quorvane
