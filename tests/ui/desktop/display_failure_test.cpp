#include "ui/desktop/display_failure.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <utility>
#include <vector>

#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using Variables = std::vector<std::pair<const char*, const char*>>;

// The built program with no display except the one that the variables name, and with a home
// directory of its own.
class WindowProgram {
 public:
  explicit WindowProgram(const Variables& variables, const QStringList& words = {}) {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                   "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"}) {
      environment.remove(QString::fromLatin1(name));
    }
    const QString home = QString::fromStdString(home_.path().string());
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
    for (const auto& [name, value] : variables) {
      environment.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    }
    process_.setProcessEnvironment(environment);
    process_.start(QStringLiteral(QUORVANE), words);
  }

  // Waits for its end. Returns the exit status, or -1 if a signal ended it.
  int end() {
    process_.waitForFinished(-1);
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }

  void askToEnd() { process_.terminate(); }
  void waitForMessage(const QByteArray& message) {
    process_.setReadChannel(QProcess::StandardError);
    QByteArray said;
    while (!said.contains(message) && process_.waitForReadyRead(-1)) said += messages();
    EXPECT_TRUE(said.contains(message)) << said.constData();
  }
  QByteArray messages() { return process_.readAllStandardError(); }
  QByteArray results() { return process_.readAllStandardOutput(); }

 private:
  TemporaryDirectory home_;
  QProcess process_;
};

TEST(DisplayFailure, EndsTheProgramWithOnePlainLine) {
  struct Case {
    Variables variables;
    const char* reason;
  };
  const std::vector<Case> cases{
      {{}, "there is no display, neither WAYLAND_DISPLAY nor DISPLAY is set. In a terminal, "},
      {{{"DISPLAY", ""}}, "there is no display"},
      {{{"DISPLAY", ":4711"}},
       "no display can be used, WAYLAND_DISPLAY is not set, DISPLAY is "
       "\":4711\""},
      {{{"WAYLAND_DISPLAY", "wayland-4711"}},
       "WAYLAND_DISPLAY is \"wayland-4711\", DISPLAY is not "
       "set"},
      {{{"QT_QPA_PLATFORM", "nonsense"}}, "QT_QPA_PLATFORM is \"nonsense\": "},
      {{{"QT_QPA_PLATFORM", "xcb"}}, "QT_QPA_PLATFORM is \"xcb\": "},
  };
  for (const Case& each : cases) {
    WindowProgram program(each.variables);
    EXPECT_EQ(program.end(), 1) << each.reason;
    const QByteArray messages = program.messages();
    EXPECT_TRUE(messages.startsWith("Quorvane cannot show its window: ")) << messages.constData();
    EXPECT_TRUE(messages.contains(each.reason)) << messages.constData();
    EXPECT_EQ(messages.count('\n'), 1) << messages.constData();
    EXPECT_TRUE(messages.endsWith('\n')) << messages.constData();
    EXPECT_EQ(program.results(), QByteArray());
  }
}

TEST(DisplayFailure, IsNoneWhereQtNeedsNoDisplay) {
  WindowProgram program({{"QT_QPA_PLATFORM", "offscreen"}, {"QUORVANE_LOG_STDERR", "1"}},
                        {QStringLiteral("--simulate")});
  program.waitForMessage("Connected to");
  program.askToEnd();
  EXPECT_EQ(program.end(), 0) << program.messages().constData();
}

TEST(DisplayFailure, DoesNotKeepTheVersionAndTheHelpBack) {
  for (const char* const word : {"--version", "--help"}) {
    WindowProgram program({}, {QString::fromLatin1(word)});
    EXPECT_EQ(program.end(), 0) << word;
    EXPECT_EQ(program.messages(), QByteArray()) << word;
    EXPECT_TRUE(program.results().contains("quorvane")) << word;
  }
}

}  // namespace
}  // namespace quorvane
