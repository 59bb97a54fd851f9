#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>

#include "presets/settings_share_file.h"
#include "ui/kit/text.h"
#include "ui/model/addresses.h"
#include "ui/model/section.h"

namespace quorvane {
namespace {

// The lines of an installed file; empty if it does not exist.
QStringList linesOf(const QString& suffix) {
  QFile file(QStringLiteral(INSTALLED_FILES "/") + Addresses::applicationID() + suffix);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll()).split(u'\n');
}

QStringList titles() {
  QStringList result;
  for (const Section section : allSections) result += text(rawValue(section));
  return result;
}

TEST(DesktopEntry, HasAnActionForEachSection) {
  const QStringList lines = linesOf(QStringLiteral(".desktop"));
  EXPECT_TRUE(lines.contains(QStringLiteral("Actions=%1;").arg(titles().join(u';'))));
  for (const QString& title : titles()) {
    const auto group = lines.indexOf(QStringLiteral("[Desktop Action %1]").arg(title));
    ASSERT_GE(group, 0) << text(title);
    EXPECT_EQ(lines.value(group + 1), QStringLiteral("Name=") + title);
    EXPECT_EQ(lines.value(group + 2),
              QStringLiteral("Exec=env QUORVANE_SECTION=%1 quorvane").arg(title));
  }
  EXPECT_EQ(lines.filter(QStringLiteral("[Desktop Action ")).size(), titles().size());
}

TEST(DesktopEntry, TakesFilesAndAnswersOnTheBus) {
  const QStringList lines = linesOf(QStringLiteral(".desktop"));
  EXPECT_TRUE(lines.contains(QStringLiteral("Exec=quorvane %U")));
  EXPECT_TRUE(lines.contains(QStringLiteral("DBusActivatable=true")));
  EXPECT_TRUE(lines.contains(QStringLiteral("MimeType=application/vnd.quorvane.settings+json;")));
  EXPECT_TRUE(lines.contains(QStringLiteral("Icon=") + Addresses::applicationID()));
}

TEST(MediaType, IsThatOfShareFiles) {
  const QString lines = linesOf(QStringLiteral(".xml")).join(u'\n');
  EXPECT_TRUE(lines.contains(
      QStringLiteral("<glob pattern=\"*.%1\"/>").arg(text(SettingsShareFile::fileExtension))));
  EXPECT_TRUE(lines.contains(QStringLiteral("type=\"application/vnd.quorvane.settings+json\"")));
  EXPECT_TRUE(lines.contains(QStringLiteral("<sub-class-of type=\"application/json\"/>")));
}

}  // namespace
}  // namespace quorvane
