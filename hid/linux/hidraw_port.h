#pragma once

#include "hid/port.h"
#include "support/event_fd.h"
#include "support/unique_fd.h"

namespace quorvane {

// An open hidraw node, or anything that behaves like one (non-blocking, one report a read).
class HidrawPort final : public HIDPort {
 public:
  // `numbered`: the device's reports begin with their ID.
  HidrawPort(UniqueFd node, bool numbered) : node_(std::move(node)), numbered_(numbered) {}

  ReadResult read(std::span<std::uint8_t> buffer) override;
  void interrupt() override { stop_.set(); }
  HIDReturn write(std::uint8_t reportID, ByteView data) override;
  HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                      std::size_t& length) override;

 private:
  UniqueFd node_;
  bool numbered_;
  EventFd stop_;
};

}  // namespace quorvane
