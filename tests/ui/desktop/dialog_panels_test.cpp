#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include "tests/ui/desktop/panels_fixture.h"
#include "tests/ui/desktop/private_bus.h"

namespace quorvane {
namespace {

// Qt's dialogs, which are used without a bus.
class DialogPanels : public PanelsTest {
 protected:
  DialogPanels() {
    panels_.emplace(std::nullopt);
    panels_->setWindow(&*window_);
  }

  static void type(QFileDialog& dialog, const QString& name) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
  }
  static void accept(QDialog& dialog) { dialog.accept(); }

  void waitUntilGone() {
    waitUntil([&] { return dialogs().empty(); });
  }
  std::filesystem::path folderShown() { return dialog().directory().path().toStdString(); }
};

TEST_F(DialogPanels, AreOpenWithoutHoldingUpAnybody) {
  import();
  EXPECT_TRUE(dialog().isVisible());
  EXPECT_EQ(dialog().windowModality(), Qt::WindowModal);
  EXPECT_EQ(dialog().parentWidget(), &*window_);
  EXPECT_EQ(chosen_, Paths());
}

TEST_F(DialogPanels, AnImportIsOfAFileThatIsThere) {
  import();
  EXPECT_EQ(dialog().windowTitle(), QStringLiteral("Import settings"));
  EXPECT_EQ(dialog().labelText(QFileDialog::Accept), QStringLiteral("Import"));
  EXPECT_EQ(dialog().acceptMode(), QFileDialog::AcceptOpen);
  EXPECT_EQ(dialog().fileMode(), QFileDialog::ExistingFile);
  EXPECT_EQ(dialog().nameFilters(),
            (QStringList{QStringLiteral("Quorvane settings (*.quorvane *.json)"),
                         QStringLiteral("All files (*)")}));

  putFile(documents() / "my s\u00e9t #1.json", "{}");
  type(dialog(), QStringLiteral("my s\u00e9t #1.json"));
  accept(dialog());
  EXPECT_EQ(chosen_, Paths{documents() / "my s\u00e9t #1.json"});
  waitUntilGone();
}

TEST_F(DialogPanels, AnExportSuggestsItsName) {
  exportPresets();
  EXPECT_EQ(dialog().acceptMode(), QFileDialog::AcceptSave);
  EXPECT_EQ(dialog().labelText(QFileDialog::Accept), QStringLiteral("Export"));
  EXPECT_EQ(dialog().nameFilters(),
            (QStringList{QStringLiteral("Presets (*.json)"), QStringLiteral("All files (*)")}));
  accept(dialog());
  EXPECT_EQ(chosen_, Paths{documents() / "presets.json"});
}

TEST_F(DialogPanels, ANameWithoutAnExtensionGetsTheSuggestedOne) {
  share();
  type(dialog(), QStringLiteral("mine"));
  accept(dialog());
  EXPECT_EQ(chosen_, Paths{documents() / "mine.quorvane"});
}

TEST_F(DialogPanels, ANameKeepsTheExtensionThatItHas) {
  share();
  type(dialog(), QStringLiteral("mine.json"));
  accept(dialog());
  EXPECT_EQ(chosen_, Paths{documents() / "mine.json"});
}

TEST_F(DialogPanels, AnExistingFileIsConfirmed) {
  putFile(documents() / "presets.json", "{}");
  exportPresets();
  QTimer::singleShot(0, [] {
    auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(question, nullptr);
    question->button(QMessageBox::No)->click();
  });
  accept(dialog());
  EXPECT_EQ(chosen_, Paths());
  EXPECT_TRUE(dialog().isVisible());
}

TEST_F(DialogPanels, AClosedDialogChoosesNothing) {
  import();
  dialog().reject();
  waitUntilGone();
  EXPECT_EQ(chosen_, Paths());
  import();
  EXPECT_TRUE(dialog().isVisible());
}

TEST_F(DialogPanels, OneOfAKindIsOpenAtATime) {
  import();
  QFileDialog* const first = &dialog();
  window_->activateWindow();
  waitUntil([&] { return !first->isActiveWindow(); });
  import();
  EXPECT_EQ(&dialog(), first);
  waitUntil([&] { return first->isActiveWindow(); });
  share();
  exportPresets();
  EXPECT_EQ(dialogs().size(), 3U);
}

TEST_F(DialogPanels, AChoiceMayAskForAnother) {
  panels_->chooseDestination(presetsRequest(), [this](const std::filesystem::path&) { share(); });
  QFileDialog* const first = &dialog();
  accept(*first);
  waitUntil([&] { return !dialogs().empty() && dialogs().front() != first; });
  accept(dialog());
  EXPECT_EQ(chosen_, Paths{documents() / "Base, set 1.quorvane"});
}

TEST_F(DialogPanels, AChoiceMayAskForTheSameAgain) {
  panels_->chooseDestination(presetsRequest(),
                             [this](const std::filesystem::path&) { exportPresets(); });
  QFileDialog* const first = &dialog();
  accept(*first);
  waitUntil([&] { return dialogs().size() == 1 && dialogs().front() != first; });
  EXPECT_TRUE(dialog().isVisible());
}

TEST_F(DialogPanels, StartInTheFolderOfTheLastChoice) {
  import();
  EXPECT_EQ(folderShown(), documents());
  dialog().reject();
  waitUntilGone();

  putFile(home() / "a.json", "{}");
  import();
  type(dialog(), QString::fromStdString(home() / "a.json"));
  accept(dialog());
  waitUntilGone();
  EXPECT_EQ(chosen_, Paths{home() / "a.json"});

  exportPresets();
  EXPECT_EQ(folderShown(), home());
}

TEST_F(DialogPanels, GoBackToTheDocumentsWhenThatFolderIsGone) {
  const auto folder = home() / "stick";
  std::filesystem::create_directory(folder);
  exportPresets();
  type(dialog(), QString::fromStdString(folder / "a.json"));
  accept(dialog());
  waitUntilGone();
  EXPECT_EQ(chosen_, Paths{folder / "a.json"});

  std::filesystem::remove(folder);
  import();
  EXPECT_EQ(folderShown(), documents());
}

TEST_F(DialogPanels, StartAtHomeWithoutADocumentsFolder) {
  std::filesystem::remove(documents());
  import();
  EXPECT_EQ(folderShown(), home());
}

TEST_F(DialogPanels, GoWithTheirWindow) {
  import();
  const QPointer<QFileDialog> first = &dialog();
  window_.reset();
  EXPECT_TRUE(first.isNull());
  EXPECT_EQ(chosen_, Paths());

  window_.emplace();
  panels_->setWindow(&*window_);
  import();
  EXPECT_TRUE(dialog().isVisible());
}

TEST_F(DialogPanels, MayGoBeforeTheirWindow) {
  import();
  panels_.reset();
  EXPECT_TRUE(dialogs().empty());
}

TEST_F(DialogPanels, DoWithoutAWindow) {
  window_.reset();
  import();
  panels_.reset();
  for (const QWidget* const widget : QApplication::topLevelWidgets()) {
    EXPECT_EQ(qobject_cast<const QFileDialog*>(widget), nullptr);
  }
}

}  // namespace
}  // namespace quorvane
