#include "ui/desktop/platform_data.h"

#include <gtest/gtest.h>

#include <QEvent>
#include <QWidget>
#include <functional>

#include "tests/support/scoped_variable.h"
#include "tests/ui/desktop/private_bus.h"

namespace quorvane {
namespace {

constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr auto startupVariable = "DESKTOP_STARTUP_ID";

class PlatformDataTest : public testing::Test {
 protected:
  const ScopedVariable noToken_{tokenVariable};
  const ScopedVariable noStartupID_{startupVariable};
};

// Records the token in the environment at the moment a widget is shown.
class Witness final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show) offered_ = qEnvironmentVariable(tokenVariable);
    return QObject::eventFilter(watched, event);
  }
  const QString& offered() const { return offered_; }

 private:
  QString offered_;
};

TEST_F(PlatformDataTest, IsEmptyWithoutVariables) {
  const ScopedVariable empty(tokenVariable, "");
  EXPECT_TRUE(PlatformData::fromEnvironment().isEmpty());
}

TEST_F(PlatformDataTest, HasTheNamesOfTheSpecification) {
  const ScopedVariable token(tokenVariable, "token");
  const ScopedVariable startupID(startupVariable, "id_TIME1");
  const QVariantMap wanted{{QStringLiteral("activation-token"), QStringLiteral("token")},
                           {QStringLiteral("desktop-startup-id"), QStringLiteral("id_TIME1")}};
  EXPECT_EQ(PlatformData::fromEnvironment(), wanted);
}

TEST_F(PlatformDataTest, TheActivationTokenIsTheBetterOne) {
  QVariantMap data;
  EXPECT_EQ(PlatformData::token(data), QString());
  data[QStringLiteral("desktop-startup-id")] = QStringLiteral("id");
  EXPECT_EQ(PlatformData::token(data), QStringLiteral("id"));
  data[QStringLiteral("activation-token")] = QStringLiteral("token");
  EXPECT_EQ(PlatformData::token(data), QStringLiteral("token"));
  data[QStringLiteral("activation-token")] = QVariantList{1, 2};
  EXPECT_EQ(PlatformData::token(data), QStringLiteral("id"));
}

TEST_F(PlatformDataTest, AHiddenWindowIsShownWithTheTokenOnOffer) {
  QWidget window;
  Witness witness;
  window.installEventFilter(&witness);
  PlatformData::bringToFront(window, QStringLiteral("token"));
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(witness.offered(), QStringLiteral("token"));
  EXPECT_FALSE(qEnvironmentVariableIsSet(tokenVariable));
}

TEST_F(PlatformDataTest, WithoutATokenTheEnvironmentStaysAsItIs) {
  const ScopedVariable token(tokenVariable, "of this start");
  QWidget window;
  PlatformData::bringToFront(window, {});
  EXPECT_EQ(qEnvironmentVariable(tokenVariable), QStringLiteral("of this start"));
}

TEST_F(PlatformDataTest, AMinimisedWindowComesBackAsItWas) {
  QWidget window;
  window.setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
  window.show();
  PlatformData::bringToFront(window, {});
  EXPECT_FALSE(window.isMinimized());
  EXPECT_TRUE(window.isMaximized());
}

TEST_F(PlatformDataTest, TheWindowBecomesTheActiveOne) {
  QWidget window;
  QWidget other;
  window.show();
  other.show();
  other.activateWindow();
  waitUntil([&] { return other.isActiveWindow(); });
  PlatformData::bringToFront(window, {});
  waitUntil([&] { return window.isActiveWindow(); });
}

}  // namespace
}  // namespace quorvane
