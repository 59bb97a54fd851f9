#pragma once

#include <memory>
#include <utility>

#include "bench/wired_device.h"
#include "bench/wires.h"
#include "session/wheel_base.h"
#include "support/unique_fd.h"

namespace quorvane {

// A session through the port class of real nodes, with a base that answers only menu requests.
class SessionExchange {
 public:
  SessionExchange() : SessionExchange(nodeLikeWire()) {}

  ~SessionExchange() {
    base_->disconnect();
    base_.reset();
    responder_.join();
  }
  SessionExchange(const SessionExchange&) = delete;
  SessionExchange& operator=(const SessionExchange&) = delete;

  // Requests the menu and blocks until the session has it.
  void exchange() { base_->fetchTuning(WheelBase::readTimeout); }

  WheelBase& base() { return *base_; }

  // The file descriptor to which the base writes its reports.
  int farEnd() const { return responder_.fd(); }

 private:
  explicit SessionExchange(std::pair<UniqueFd, UniqueFd> ends)
      : base_(WheelBase::create(
            HIDEnumerator::info(std::make_shared<WiredDevice>(std::move(ends.first))))),
        responder_(std::move(ends.second)) {
    base_->connect();
  }

  std::shared_ptr<WheelBase> base_;
  Responder responder_;
};

}  // namespace quorvane
