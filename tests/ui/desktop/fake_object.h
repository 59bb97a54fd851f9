#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <functional>
#include <utility>

namespace quorvane {

// A D-Bus object of a client, at a path and all paths below it. Records every call and passes it to
// the script, which has to send the reply: until then the caller waits.
class FakeObject final : public QDBusVirtualObject {
 public:
  using Script = std::function<void(const QDBusMessage& call)>;

  FakeObject(QDBusConnection client, const QString& path) : client_(std::move(client)) {
    client_.registerVirtualObject(path, this, QDBusConnection::SubPath);
  }

  void follow(Script script) { script_ = std::move(script); }
  const QList<QDBusMessage>& calls() const { return calls_; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
    message.setDelayedReply(true);
    calls_.append(message);
    if (script_) script_(message);
    return true;
  }
  QString introspect(const QString& /*path*/) const override { return {}; }

 private:
  QDBusConnection client_;
  QList<QDBusMessage> calls_;
  Script script_;
};

}  // namespace quorvane
