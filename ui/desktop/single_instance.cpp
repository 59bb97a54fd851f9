#include "ui/desktop/single_instance.h"

#include <QDBusMessage>
#include <system_error>
#include <utility>

#include "ui/desktop/application_interface.h"
#include "ui/kit/file_uri.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

constexpr uint doNotQueue = 4;  // a flag of RequestName
constexpr uint primaryOwner = 1;
constexpr uint alreadyOwner = 4;

QDBusMessage callToBus(const QString& method) {
  return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                        QStringLiteral("/org/freedesktop/DBus"),
                                        QStringLiteral("org.freedesktop.DBus"), method);
}

QString objectPathOf(QString name) {
  return QLatin1Char('/') + name.replace(QLatin1Char('.'), QLatin1Char('/'))
                                .replace(QLatin1Char('-'), QLatin1Char('_'));
}

// None if a file's absolute path cannot be determined.
std::optional<QStringList> urisOf(const std::vector<std::filesystem::path>& files) {
  QStringList uris;
  for (const auto& file : files) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(file, error);
    if (error) return std::nullopt;
    uris.append(FileURI::of(absolute));
  }
  return uris;
}

}  // namespace

SingleInstance::SingleInstance(std::optional<QDBusConnection> bus, QString applicationID,
                               std::chrono::milliseconds timeout)
    : bus_(std::move(bus)),
      name_(std::move(applicationID)),
      path_(objectPathOf(name_)),
      timeout_(timeout) {
  new ApplicationInterface(*this);
}

SingleInstance::~SingleInstance() {
  if (!isOwner_) return;
  QDBusMessage release = callToBus(QStringLiteral("ReleaseName"));
  release << name_;
  bus_->send(release);
  bus_->unregisterObject(path_);
}

SingleInstance::Start SingleInstance::start(const std::vector<std::filesystem::path>& files,
                                            const QVariantMap& platformData,
                                            std::optional<Section> section) {
  if (!bus_) return Start::alone;
  if (own()) return Start::owner;
  if (handOver(files, platformData, section)) return Start::handedOver;
  // The owner may have exited in the meantime: try again.
  return own() ? Start::owner : Start::alone;
}

bool SingleInstance::own() {
  // Before RequestName: calls arrive as soon as this process owns the name.
  if (!bus_->registerObject(path_, this, QDBusConnection::ExportAdaptors)) return false;
  QDBusMessage request = callToBus(QStringLiteral("RequestName"));
  request << name_ << doNotQueue;
  const QDBusMessage reply = ask(request);
  const uint result =
      reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toUInt() : 0;
  isOwner_ = result == primaryOwner || result == alreadyOwner;
  if (!isOwner_) bus_->unregisterObject(path_);
  return isOwner_;
}

bool SingleInstance::handOver(const std::vector<std::filesystem::path>& files,
                              const QVariantMap& platformData, std::optional<Section> section) {
  const auto uris = urisOf(files);
  if (!uris) return false;
  const auto call = [this](const char* method) {
    return QDBusMessage::createMethodCall(
        name_, path_, QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
  };
  QDBusMessage message;
  if (!uris->isEmpty()) {
    message = call("Open") << *uris;
  } else if (section) {
    message = call("ActivateAction") << text(rawValue(*section)) << QVariantList();
  } else {
    message = call("Activate");
  }
  message << platformData;
  message.setAutoStartService(false);
  return ask(message).type() == QDBusMessage::ReplyMessage;
}

QDBusMessage SingleInstance::ask(const QDBusMessage& question) {
  return bus_->call(question, QDBus::Block, static_cast<int>(timeout_.count()));
}

}  // namespace quorvane
