#pragma once

#include <optional>

#include "hid/linux/node_visits.h"
#include "hid/linux/write_line.h"
#include "hid/port.h"
#include "support/event_fd.h"
#include "support/unique_fd.h"

namespace quorvane {

// An open hidraw node, or anything that behaves like one (non-blocking, one report a read).
class HidrawPort final : public HIDPort {
 public:
  // `numbered`: the device's reports begin with their ID.
  HidrawPort(UniqueFd node, bool numbered)
      : node_(std::move(node)), numbered_(numbered), line_(node_.get()) {}

  ReadResult read(std::span<std::uint8_t> buffer) override;
  void interrupt() override { stop_.set(); }
  HIDReturn write(std::uint8_t reportID, ByteView data) override;
  HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                      std::size_t& length) override;
  bool tryWriteTurn() override { return line_.tryTurn(); }
  void endWriteTurn() override { line_.leave(); }
  void watchForOthers() override;
  bool othersMayHaveWritten() override;

 private:
  UniqueFd node_;
  bool numbered_;
  EventFd stop_;
  WriteLine line_;
  std::optional<NodeVisits> visits_;
};

}  // namespace quorvane
