#include "ui/desktop/display_failure.h"

#include <fmt/format.h>

#include <QMessageLogContext>
#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

struct HeldMessage {
  QtMsgType type;
  std::string category;  // a copy: Qt may unload the plugin that owns the original
  QString text;
};

// Static, because Qt passes no user data to a message handler.
std::vector<HeldMessage>& heldMessages() {
  static std::vector<HeldMessage> held;
  return held;
}

// Empty when the variable is not set.
std::string valueOf(const char* variable) { return qgetenv(variable).toStdString(); }

std::string named(const char* variable) {
  return fmt::format(
      "{} is {}", variable,
      qEnvironmentVariableIsEmpty(variable) ? "not set" : "\"" + valueOf(variable) + "\"");
}

// ": " and the first warning of Qt; empty without one.
std::string firstComplaint() {
  for (const HeldMessage& message : heldMessages()) {
    if (message.type == QtWarningMsg || message.type == QtCriticalMsg) {
      return ": " + message.text.trimmed().toStdString();
    }
  }
  return {};
}

std::string reason() {
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    return named("QT_QPA_PLATFORM") + firstComplaint();
  }
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    return "there is no display, neither WAYLAND_DISPLAY nor DISPLAY is set";
  }
  return fmt::format("no display can be used, {}, {}{}", named("WAYLAND_DISPLAY"), named("DISPLAY"),
                     firstComplaint());
}

[[noreturn]] void endWithoutDisplay() {
  printTo(stderr,
          "Quorvane cannot show its window: {}. In a terminal, quorvanectl works without one.\n",
          oneLine(reason()));
  flush(stderr);
  std::_Exit(EXIT_FAILURE);
}

void hold(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) endWithoutDisplay();
  heldMessages().push_back({type, context.category == nullptr ? "" : context.category, text});
}

}  // namespace

DisplayFailure::DisplayFailure() { qInstallMessageHandler(hold); }

DisplayFailure::~DisplayFailure() {
  qInstallMessageHandler(nullptr);
  for (const HeldMessage& message : heldMessages()) {
    const QMessageLogContext context(nullptr, 0, nullptr, message.category.c_str());
    qt_message_output(message.type, context, message.text);
  }
  heldMessages().clear();
}

}  // namespace quorvane
