#include "ui/desktop/dark_preference.h"

#include <gtest/gtest.h>

#include <QDBusError>
#include <QDBusVariant>
#include <optional>
#include <vector>

#include "tests/ui/desktop/fake_object.h"
#include "tests/ui/desktop/private_bus.h"
#include "ui/desktop/portal.h"

namespace quorvane {
namespace {

using Told = std::vector<std::optional<bool>>;

QString appearance() { return QStringLiteral("org.freedesktop.appearance"); }
QString colorScheme() { return QStringLiteral("color-scheme"); }

QVariant wrapped(const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); }

class DarkPreferenceTest : public testing::Test {
 protected:
  void startPortal() { PrivateBus::own(desktop_, Portal::service()); }

  // Answers every call with this value.
  void answer(const QVariant& value) {
    portal_.follow([this, value](const QDBusMessage& call) {
      desktop_.send(call.createReply(wrapped(value)));
    });
  }
  void refuse() {
    portal_.follow([this](const QDBusMessage& call) {
      desktop_.send(call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                          QString()));
    });
  }

  void change(const QString& group, const QString& key, const QVariant& value) {
    auto signal = QDBusMessage::createSignal(Portal::path(),
                                             QStringLiteral("org.freedesktop.portal.Settings"),
                                             QStringLiteral("SettingChanged"));
    signal << group << key << wrapped(value);
    desktop_.send(signal);
  }

  void ask() {
    preference_.emplace(client_);
    QObject::connect(&*preference_, &DarkPreference::told,
                     [this](std::optional<bool> prefersDark) { told_.push_back(prefersDark); });
  }
  std::optional<bool> firstTold() {
    ask();
    waitUntil([&] { return !told_.empty(); });
    return told_.front();
  }

  PrivateBus bus_;
  QDBusConnection desktop_ = bus_.connect();
  QDBusConnection client_ = bus_.connect();
  FakeObject portal_{desktop_, Portal::path()};
  std::optional<DarkPreference> preference_;
  Told told_;
};

TEST_F(DarkPreferenceTest, AsksForTheColourScheme) {
  startPortal();
  answer(1U);
  EXPECT_EQ(firstTold(), true);
  ASSERT_EQ(portal_.calls().size(), 1);
  EXPECT_EQ(portal_.calls()[0].interface(), QStringLiteral("org.freedesktop.portal.Settings"));
  EXPECT_EQ(portal_.calls()[0].member(), QStringLiteral("Read"));
  EXPECT_EQ(portal_.calls()[0].arguments(), (QVariantList{appearance(), colorScheme()}));
}

TEST_F(DarkPreferenceTest, TheValueMayBeWrappedTwice) {
  startPortal();
  answer(wrapped(2U));
  EXPECT_EQ(firstTold(), false);
}

TEST_F(DarkPreferenceTest, WhatIsNeitherDarkNorLightIsNoPreference) {
  startPortal();
  for (const QVariant& value :
       {QVariant(0U), QVariant(3U), QVariant(QStringLiteral("dark")), QVariant(QVariantMap{}),
        QVariant(QStringList{QStringLiteral("1")})}) {
    answer(value);
    told_.clear();
    EXPECT_EQ(firstTold(), std::nullopt) << value.typeName();
  }
}

TEST_F(DarkPreferenceTest, ADesktopThatDoesNotKnowHasNoPreference) {
  startPortal();
  refuse();
  EXPECT_EQ(firstTold(), std::nullopt);
}

TEST_F(DarkPreferenceTest, AnAnswerOfAnotherKindIsNoPreference) {
  startPortal();
  portal_.follow([this](const QDBusMessage& call) { desktop_.send(call.createReply(1U)); });
  EXPECT_EQ(firstTold(), std::nullopt);
}

TEST_F(DarkPreferenceTest, WithoutAPortalThereIsNoPreference) {
  EXPECT_EQ(firstTold(), std::nullopt);
}

TEST_F(DarkPreferenceTest, WithABusThatHasEndedThereIsNoPreference) {
  bus_.stop();
  EXPECT_EQ(firstTold(), std::nullopt);
}

TEST_F(DarkPreferenceTest, MakingItWaitsForNobody) {
  startPortal();
  ask();
  waitUntil([&] { return portal_.calls().size() == 1; });
  EXPECT_EQ(told_, Told());
}

TEST_F(DarkPreferenceTest, FollowsChanges) {
  startPortal();
  answer(1U);
  EXPECT_EQ(firstTold(), true);
  change(appearance(), colorScheme(), 2U);
  change(appearance(), QStringLiteral("accent-color"), 1U);
  change(QStringLiteral("org.gnome.desktop.interface"), colorScheme(), 1U);
  change(appearance(), colorScheme(), QStringLiteral("1"));
  change(appearance(), colorScheme(), 1U);
  PrivateBus::settle(desktop_, client_);
  EXPECT_EQ(told_, (Told{true, false, std::nullopt, true}));
}

TEST_F(DarkPreferenceTest, MalformedChangesAreIgnored) {
  startPortal();
  answer(1U);
  EXPECT_EQ(firstTold(), true);
  auto signal =
      QDBusMessage::createSignal(Portal::path(), QStringLiteral("org.freedesktop.portal.Settings"),
                                 QStringLiteral("SettingChanged"));
  desktop_.send(signal);
  signal << appearance() << colorScheme() << 2U;
  desktop_.send(signal);
  change(appearance(), colorScheme(), 0U);
  PrivateBus::settle(desktop_, client_);
  EXPECT_EQ(told_, (Told{true, std::nullopt}));
}

TEST_F(DarkPreferenceTest, AsksAPortalThatComesLater) {
  EXPECT_EQ(firstTold(), std::nullopt);
  answer(1U);
  startPortal();
  waitUntil([&] { return told_.size() == 2; });
  EXPECT_EQ(told_.back(), true);
}

TEST_F(DarkPreferenceTest, MayGoBeforeTheAnswer) {
  startPortal();
  ask();
  waitUntil([&] { return portal_.calls().size() == 1; });
  preference_.reset();
  desktop_.send(portal_.calls()[0].createReply(wrapped(1U)));
  change(appearance(), colorScheme(), 1U);
  PrivateBus::settle(desktop_, client_);
  EXPECT_EQ(told_, Told());
}

}  // namespace
}  // namespace quorvane
