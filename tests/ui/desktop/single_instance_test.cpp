#include "ui/desktop/single_instance.h"

#include <gtest/gtest.h>

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QEventLoop>
#include <QThread>
#include <memory>
#include <string>
#include <vector>

#include "tests/ui/desktop/fake_object.h"
#include "tests/ui/desktop/private_bus.h"
#include "ui/kit/file_uri.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

using Start = SingleInstance::Start;
using Files = std::vector<std::filesystem::path>;

QString applicationID() { return QStringLiteral("example.quorvane-test.Quorvane"); }
QString objectPath() { return QStringLiteral("/example/quorvane_test/Quorvane"); }

constexpr std::chrono::milliseconds never{2'000'000};

class SingleInstanceTest : public testing::Test {
 protected:
  // Starts the first instance, which owns the name. Records its signals.
  void startFirst() {
    instance_ = std::make_unique<SingleInstance>(first_, applicationID());
    QObject::connect(instance_.get(), &SingleInstance::activated, [this](const QString& token) {
      heard_ << QStringLiteral("activate ") + token;
    });
    QObject::connect(instance_.get(), &SingleInstance::opened,
                     [this](const QStringList& uris, const QString& token) {
                       heard_ << QStringLiteral("open %1 %2").arg(uris.join(u' '), token);
                     });
    QObject::connect(
        instance_.get(), &SingleInstance::sectionChosen,
        [this](Section section, const QString& token) {
          heard_ << QStringLiteral("section %1 %2").arg(text(rawValue(section)), token);
        });
    EXPECT_EQ(instance_->start({}, {}), Start::owner);
  }

  // Starts another instance, on a thread of its own because start() blocks.
  static Start startOn(const QDBusConnection& bus, const Files& files,
                       const QVariantMap& platformData = {},
                       std::optional<Section> section = std::nullopt) {
    Start result = Start::alone;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
      SingleInstance instance(bus, applicationID(), never);
      result = instance.start(files, platformData, section);
    }));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec();
    thread->wait();
    return result;
  }

  static QDBusMessage call(const char* method) {
    return QDBusMessage::createMethodCall(applicationID(), objectPath(),
                                          QStringLiteral("org.freedesktop.Application"),
                                          QString::fromLatin1(method));
  }
  QString errorOf(const QDBusMessage& message) {
    return PrivateBus::call(second_, message).errorName();
  }

  PrivateBus bus_;
  QDBusConnection first_ = bus_.connect();
  QDBusConnection second_ = bus_.connect();
  std::unique_ptr<SingleInstance> instance_;
  QStringList heard_;
};

TEST_F(SingleInstanceTest, WithoutABusEveryStartIsAlone) {
  SingleInstance instance(std::nullopt, applicationID());
  EXPECT_EQ(instance.start({"/a.json"}, {}), Start::alone);
}

TEST_F(SingleInstanceTest, WithABusThatHasEndedAStartIsAlone) {
  bus_.stop();
  SingleInstance instance(first_, applicationID());
  EXPECT_EQ(instance.start({}, {}), Start::alone);
}

TEST_F(SingleInstanceTest, ASecondStartActivatesTheFirst) {
  startFirst();
  const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("token")}};
  EXPECT_EQ(startOn(second_, {}, data), Start::handedOver);
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("activate token")});
}

TEST_F(SingleInstanceTest, FilesAreOpenedInTheirOrder) {
  startFirst();
  const QVariantMap data{{QStringLiteral("desktop-startup-id"), QStringLiteral("id")}};
  EXPECT_EQ(startOn(second_, {"/z.json", "/a b.json", "/\u00fc\xff", "/z.json"}, data),
            Start::handedOver);
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_,
            QStringList{QStringLiteral(
                "open file:///z.json file:///a%20b.json file:///%C3%BC%FF file:///z.json id")});
}

TEST_F(SingleInstanceTest, RelativeFilesAreThoseOfTheWorkingDirectoryOfTheirStart) {
  startFirst();
  EXPECT_EQ(startOn(second_, {"a.json"}), Start::handedOver);
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(
      heard_,
      QStringList{
          QStringLiteral("open %1 ").arg(FileURI::of(std::filesystem::current_path() / "a.json"))});
}

TEST_F(SingleInstanceTest, TheCallerHasItsAnswerBeforeTheFilesAreOpened) {
  startFirst();
  bool isAnswered = false;
  bool wasAnswered = false;
  QObject::connect(instance_.get(), &SingleInstance::opened, [&] {
    PrivateBus::settle(first_, second_);
    wasAnswered = isAnswered;
  });
  auto open = call("Open");
  open << QStringList{QStringLiteral("file:///a")} << QVariantMap{};
  const QDBusPendingCallWatcher answer(second_.asyncCall(open));
  QObject::connect(&answer, &QDBusPendingCallWatcher::finished, [&] { isAnswered = true; });
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_TRUE(wasAnswered);
}

TEST_F(SingleInstanceTest, AURIThatIsNoFileIsPassedOnAsItIs) {
  startFirst();
  auto open = call("Open");
  open << QStringList{QStringLiteral("https://quorvane.example/a"), QStringLiteral("nonsense")}
       << QVariantMap{};
  EXPECT_EQ(errorOf(open), QString());
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("open https://quorvane.example/a nonsense ")});
}

TEST_F(SingleInstanceTest, OpeningNothingActivates) {
  startFirst();
  auto open = call("Open");
  open << QStringList{} << QVariantMap{};
  EXPECT_EQ(errorOf(open), QString());
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("activate ")});
}

TEST_F(SingleInstanceTest, EachSectionIsAnAction) {
  startFirst();
  QStringList wanted;
  for (const Section section : allSections) {
    const QString name = text(rawValue(section));
    auto action = call("ActivateAction");
    action << name << QVariantList{}
           << QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("token")}};
    EXPECT_EQ(errorOf(action), QString());
    wanted << QStringLiteral("section %1 token").arg(name);
  }
  waitUntil([&] { return heard_.size() >= wanted.size(); });
  EXPECT_EQ(heard_, wanted);
}

TEST_F(SingleInstanceTest, OtherActionsAndParametersAreRefused) {
  startFirst();
  const QVariantList number{QVariant::fromValue(QDBusVariant(1))};
  const std::vector<std::pair<const char*, QVariantList>> cases{
      {"quit", {}}, {"quit", number}, {"", {}}, {"log", {}}, {"Log ", {}}, {"Log", number}};
  for (const auto& [name, parameter] : cases) {
    auto action = call("ActivateAction");
    action << QString::fromLatin1(name) << parameter << QVariantMap{};
    EXPECT_EQ(errorOf(action), QDBusError::errorString(QDBusError::InvalidArgs)) << name;
  }
  EXPECT_EQ(heard_, QStringList());
}

TEST_F(SingleInstanceTest, ASecondStartAsksForItsSection) {
  startFirst();
  const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("token")}};
  EXPECT_EQ(startOn(second_, {}, data, Section::log), Start::handedOver);
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("section Log token")});
}

TEST_F(SingleInstanceTest, FilesComeBeforeASection) {
  startFirst();
  EXPECT_EQ(startOn(second_, {"/a.json"}, {}, Section::log), Start::handedOver);
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("open file:///a.json ")});
}

TEST_F(SingleInstanceTest, MalformedCallsAreRefused) {
  startFirst();
  auto number = call("Activate");
  number << 1;
  auto text = call("Open");
  text << QStringLiteral("file:///a") << QVariantMap{};
  auto unknownToken = call("Activate");
  unknownToken << QVariantMap{{QStringLiteral("activation-token"), QStringList{QString()}}};
  const QString unknown = QDBusError::errorString(QDBusError::UnknownMethod);
  EXPECT_EQ(errorOf(call("Activate")), unknown);
  EXPECT_EQ(errorOf(number), unknown);
  EXPECT_EQ(errorOf(text), unknown);
  EXPECT_EQ(errorOf(call("Quit")), unknown);
  EXPECT_EQ(heard_, QStringList());

  EXPECT_EQ(errorOf(unknownToken), QString());
  waitUntil([&] { return !heard_.isEmpty(); });
  EXPECT_EQ(heard_, QStringList{QStringLiteral("activate ")});
}

TEST_F(SingleInstanceTest, AnOwnerThatDoesNotAnswerLeavesTheStartAlone) {
  PrivateBus::own(first_, applicationID());
  const FakeObject silent(first_, objectPath());
  SingleInstance instance(second_, applicationID(), soon);
  EXPECT_EQ(instance.start({"/a.json"}, {}), Start::alone);
}

TEST_F(SingleInstanceTest, AStartThatWasAloneStaysSo) {
  startFirst();
  SingleInstance other(second_, applicationID(), soon);
  EXPECT_EQ(other.start({}, {}), Start::alone);
  instance_.reset();
  EXPECT_EQ(startOn(bus_.connect(), {}), Start::owner);
}

TEST_F(SingleInstanceTest, AnOwnerThatRefusesLeavesTheStartAlone) {
  PrivateBus::own(first_, applicationID());
  FakeObject refusing(first_, objectPath());
  refusing.follow([&](const QDBusMessage& message) {
    first_.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
  });
  EXPECT_EQ(startOn(second_, {}), Start::alone);
  ASSERT_EQ(refusing.calls().size(), 1);
  EXPECT_EQ(refusing.calls()[0].member(), QStringLiteral("Activate"));
}

TEST_F(SingleInstanceTest, WhenTheOwnerEndsInsteadOfAnsweringTheNextStartOwns) {
  PrivateBus::own(first_, applicationID());
  FakeObject ending(first_, objectPath());
  ending.follow([&](const QDBusMessage&) {
    auto release = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReleaseName"));
    release << applicationID();
    first_.send(release);
    first_.send(ending.calls().last().createErrorReply(QDBusError::NoReply, QString()));
  });
  EXPECT_EQ(startOn(second_, {"/a.json"}), Start::owner);
}

TEST_F(SingleInstanceTest, TheNameIsFreeOnceItsOwnerIsGone) {
  startFirst();
  instance_.reset();
  SingleInstance next(second_, applicationID());
  EXPECT_EQ(next.start({}, {}), Start::owner);
}

TEST_F(SingleInstanceTest, WhoIsNotTheOwnerLeavesTheNameToIt) {
  startFirst();
  {
    SingleInstance other(second_, applicationID(), soon);
    EXPECT_EQ(other.start({}, {}), Start::alone);
  }
  EXPECT_EQ(startOn(second_, {}), Start::handedOver);
}

}  // namespace
}  // namespace quorvane
