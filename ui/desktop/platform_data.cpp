#include "ui/desktop/platform_data.h"

#include <QWidget>
#include <array>

namespace quorvane::PlatformData {
namespace {

constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";

struct Item {
  const char* variable;
  const char* name;
};

// The preferred one first.
constexpr std::array items{Item{tokenVariable, "activation-token"},
                           Item{"DESKTOP_STARTUP_ID", "desktop-startup-id"}};

// RAII: sets the environment variable in which Qt looks for the token when a window is activated.
// Unset afterwards, since the token is valid once and must not reach child processes.
class OfferedToken {
 public:
  explicit OfferedToken(const QString& token) : isOffered_(!token.isEmpty()) {
    if (isOffered_) qputenv(tokenVariable, token.toUtf8());
  }
  ~OfferedToken() {
    if (isOffered_) qunsetenv(tokenVariable);
  }
  OfferedToken(const OfferedToken&) = delete;
  OfferedToken& operator=(const OfferedToken&) = delete;

 private:
  const bool isOffered_;
};

}  // namespace

QVariantMap fromEnvironment() {
  QVariantMap data;
  for (const Item& item : items) {
    const QString value = qEnvironmentVariable(item.variable);
    if (!value.isEmpty()) data[QLatin1String(item.name)] = value;
  }
  return data;
}

QString token(const QVariantMap& data) {
  for (const Item& item : items) {
    QString value = data.value(QLatin1String(item.name)).toString();
    if (!value.isEmpty()) return value;
  }
  return {};
}

void bringToFront(QWidget& window, const QString& token) {
  const OfferedToken offered(token);
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace quorvane::PlatformData
