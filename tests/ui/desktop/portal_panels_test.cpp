#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <algorithm>

#include "tests/ui/desktop/fake_object.h"
#include "tests/ui/desktop/panels_fixture.h"
#include "tests/ui/desktop/private_bus.h"
#include "ui/desktop/file_filter.h"
#include "ui/desktop/portal.h"

namespace quorvane {
namespace {

constexpr uint chosenCode = 0;
constexpr uint cancelledCode = 1;
constexpr uint otherCode = 2;

QString requestInterface() { return QStringLiteral("org.freedesktop.portal.Request"); }

// The portal's dialogs, with a fake portal that the test controls.
class PortalPanels : public PanelsTest {
 protected:
  PortalPanels() {
    panels_.emplace(client_);
    panels_->setWindow(&*window_);
  }

  void startPortal() { PrivateBus::own(desktop_, Portal::service()); }

  // Waits for the n-th call, n from 0.
  const QDBusMessage& call(qsizetype number = 0) {
    waitUntil([&] { return portal_.calls().size() > number; });
    return portal_.calls()[number];
  }
  QVariantMap options(qsizetype number = 0) {
    return qdbus_cast<QVariantMap>(call(number).arguments().value(2));
  }

  // The object path of the request, as the portal interface defines it.
  QString handle(qsizetype number = 0) {
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
        .arg(call(number).service().mid(1).replace(u'.', u'_'),
             options(number)[QStringLiteral("handle_token")].toString());
  }

  void answer(const QString& handle, qsizetype number = 0) {
    desktop_.send(call(number).createReply(QVariant::fromValue(QDBusObjectPath(handle))));
    settle();
  }
  void refuse(const QDBusMessage& question) {
    desktop_.send(question.createErrorReply(QDBusError::UnknownMethod, QString()));
  }
  void respond(const QString& handle, uint code, const QStringList& uris = {}) {
    auto response = QDBusMessage::createTargetedSignal(
        client_.baseService(), handle, requestInterface(), QStringLiteral("Response"));
    QVariantMap results;
    if (!uris.isEmpty()) results[QStringLiteral("uris")] = uris;
    response << code << results;
    desktop_.send(response);
    settle();
  }
  void settle() { PrivateBus::settle(desktop_, client_); }

  // Starts another import. Returns how many imports the portal has received in all.
  qsizetype importsAfterAnother() {
    import();
    PrivateBus::settle(client_, desktop_);
    const auto isImport = [](const QDBusMessage& made) { return made.member() == u"OpenFile"; };
    return std::count_if(portal_.calls().begin(), portal_.calls().end(), isImport);
  }

  PrivateBus bus_;
  QDBusConnection desktop_ = bus_.connect();
  QDBusConnection client_ = bus_.connect();
  FakeObject portal_{desktop_, Portal::path()};
};

TEST_F(PortalPanels, AnImportIsAFileToOpen) {
  startPortal();
  import();
  EXPECT_EQ(call().interface(), QStringLiteral("org.freedesktop.portal.FileChooser"));
  EXPECT_EQ(call().member(), QStringLiteral("OpenFile"));
  EXPECT_EQ(call().signature(), QStringLiteral("ssa{sv}"));
  EXPECT_EQ(call().arguments()[0], QString());
  EXPECT_EQ(call().arguments()[1], QStringLiteral("Import settings"));
  const QVariantMap sent = options();
  EXPECT_EQ(sent[QStringLiteral("accept_label")], QStringLiteral("Import"));
  EXPECT_EQ(sent[QStringLiteral("modal")], true);
  EXPECT_EQ(sent[QStringLiteral("current_folder")],
            QByteArray::fromStdString(documents().string()) + '\0');
  EXPECT_FALSE(sent.contains(QStringLiteral("current_name")));
  EXPECT_EQ(dialogs().size(), 0U);
}

TEST_F(PortalPanels, AnExportIsAFileToSaveUnderTheSuggestedName) {
  startPortal();
  share();
  EXPECT_EQ(call().member(), QStringLiteral("SaveFile"));
  EXPECT_EQ(call().arguments()[1], QStringLiteral("Share settings"));
  EXPECT_EQ(options()[QStringLiteral("current_name")], QStringLiteral("Base, set 1.quorvane"));
}

TEST_F(PortalPanels, FiltersAreGlobs) {
  startPortal();
  import();
  const auto sent = options()[QStringLiteral("filters")].value<QDBusArgument>();
  EXPECT_EQ(sent.currentSignature(), QStringLiteral("a(sa(us))"));
  const auto filters = qdbus_cast<QList<FileFilter>>(sent);
  ASSERT_EQ(filters.size(), 2);
  EXPECT_EQ(filters[0].name, QStringLiteral("Quorvane settings"));
  EXPECT_EQ(filters[0].globs,
            (QStringList{QStringLiteral("*.quorvane"), QStringLiteral("*.json")}));
  EXPECT_EQ(filters[1].text(), QStringLiteral("All files (*)"));
}

TEST_F(PortalPanels, TheResponseComesAfterTheAnswer) {
  startPortal();
  import();
  answer(handle());
  EXPECT_EQ(chosen_, Paths());
  respond(handle(), chosenCode, {QStringLiteral("file:///tmp/a%20b/gr%C3%BC%C3%9F%FF.json")});
  EXPECT_EQ(chosen_, Paths{"/tmp/a b/gr\u00fc\u00df\xff.json"});
}

TEST_F(PortalPanels, TheResponseMayComeBeforeTheAnswer) {
  startPortal();
  import();
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
  answer(handle());
  respond(handle(), chosenCode, {QStringLiteral("file:///b.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
  EXPECT_EQ(dialogs().size(), 0U);
}

TEST_F(PortalPanels, AnOldPortalChoosesTheHandle) {
  startPortal();
  import();
  const QString own = QStringLiteral("/org/freedesktop/portal/desktop/request/17");
  answer(own);
  respond(handle(), chosenCode, {QStringLiteral("file:///not-this.json")});
  EXPECT_EQ(chosen_, Paths());
  respond(own, chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
}

TEST_F(PortalPanels, AChoiceComesOnce) {
  startPortal();
  import();
  answer(handle());
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
}

TEST_F(PortalPanels, ADismissedDialogChoosesNothing) {
  startPortal();
  qsizetype number = 0;
  for (const uint code : {cancelledCode, otherCode, 99U}) {
    import();
    answer(handle(number), number);
    respond(handle(number), code, {QStringLiteral("file:///a.json")});
    ++number;
  }
  EXPECT_EQ(chosen_, Paths());
  EXPECT_EQ(dialogs().size(), 0U);
  EXPECT_EQ(importsAfterAnother(), number + 1);
}

TEST_F(PortalPanels, AChoiceThatIsNoFileIsNone) {
  startPortal();
  qsizetype number = 0;
  for (const QStringList& uris : {QStringList{}, QStringList{QStringLiteral("smb://host/a")},
                                  QStringList{QStringLiteral("/a.json")}}) {
    import();
    answer(handle(number), number);
    respond(handle(number), chosenCode, uris);
    ++number;
  }
  EXPECT_EQ(chosen_, Paths());
}

TEST_F(PortalPanels, MalformedResponsesAreIgnored) {
  startPortal();
  import();
  answer(handle());
  auto response = QDBusMessage::createTargetedSignal(
      client_.baseService(), handle(), requestInterface(), QStringLiteral("Response"));
  desktop_.send(response);
  response << QStringLiteral("0");
  desktop_.send(response);
  settle();
  EXPECT_EQ(chosen_, Paths());
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
}

TEST_F(PortalPanels, OneOfAKindIsOpenAtATime) {
  startPortal();
  import();
  EXPECT_EQ(importsAfterAnother(), 1);
  answer(handle());
  EXPECT_EQ(importsAfterAnother(), 1);
  share();
  exportPresets();
  EXPECT_EQ(call(2).member(), QStringLiteral("SaveFile"));
  EXPECT_NE(handle(1), handle(2));
}

TEST_F(PortalPanels, StartInTheFolderOfTheLastChoice) {
  startPortal();
  import();
  answer(handle());
  respond(handle(), chosenCode, {QStringLiteral("file://%1/a.json").arg(home().c_str())});
  share();
  EXPECT_EQ(options(1)[QStringLiteral("current_folder")],
            QByteArray::fromStdString(home().string()) + '\0');
}

TEST_F(PortalPanels, WithoutAPortalTheDialogIsTheToolkits) {
  import();
  EXPECT_TRUE(dialog().isVisible());
  EXPECT_EQ(dialog().windowTitle(), QStringLiteral("Import settings"));
}

TEST_F(PortalPanels, WithABusThatHasEndedTheDialogIsTheToolkits) {
  bus_.stop();
  import();
  EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PortalPanels, WhatThePortalRefusesTheToolkitDoes) {
  startPortal();
  import();
  refuse(call());
  EXPECT_TRUE(dialog().isVisible());
  EXPECT_EQ(importsAfterAnother(), 1);
  EXPECT_EQ(dialogs().size(), 1U);
}

TEST_F(PortalPanels, AnAnswerOfAnotherKindIsARefusal) {
  startPortal();
  share();
  desktop_.send(call().createReply(QStringLiteral("yes")));
  EXPECT_EQ(dialog().acceptMode(), QFileDialog::AcceptSave);
}

TEST_F(PortalPanels, ASilentPortalIsNone) {
  startPortal();
  panels_.emplace(client_, soon);
  panels_->setWindow(&*window_);
  import();
  EXPECT_TRUE(dialog().isVisible());
  EXPECT_EQ(call(1).member(), QStringLiteral("Close"));
  EXPECT_EQ(call(1).path(), handle());
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths());
}

TEST_F(PortalPanels, TheWindowMayGo) {
  startPortal();
  import();
  answer(handle());
  window_.reset();
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths{"/a.json"});
}

TEST_F(PortalPanels, TakeTheirDialogsAlong) {
  startPortal();
  import();
  answer(handle());
  panels_.reset();
  EXPECT_EQ(call(1).interface(), requestInterface());
  EXPECT_EQ(call(1).member(), QStringLiteral("Close"));
  EXPECT_EQ(call(1).path(), handle());
  respond(handle(), chosenCode, {QStringLiteral("file:///a.json")});
  EXPECT_EQ(chosen_, Paths());
}

}  // namespace
}  // namespace quorvane
