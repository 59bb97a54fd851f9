#pragma once

#include <linux/uhid.h>

#include "simulator/simbase/event_log.h"
#include "simulator/simbase/kernel_host.h"
#include "simulator/simulated_base.h"
#include "support/unique_fd.h"

namespace quorvane {

// The base as a virtual HID device of /dev/uhid.
class UhidHost final : public KernelHost {
 public:
  UhidHost(SimulatedBase& base, EventLog& log) : base_(base), log_(log) {}

  void plug() override;
  void unplug() override;
  int fd() const override { return node_.get(); }
  void service() override;
  bool canSend() const override { return static_cast<bool>(node_); }
  void send(ByteView report) override;

 private:
  void write(const uhid_event& event);
  void answerGetReport(const uhid_get_report_req& request);

  SimulatedBase& base_;
  EventLog& log_;
  UniqueFd node_;
};

}  // namespace quorvane
