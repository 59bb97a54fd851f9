#pragma once

#include <cstdint>
#include <deque>
#include <optional>

#include "simulator/simbase/event_log.h"
#include "simulator/simbase/kernel_host.h"
#include "simulator/simulated_base.h"
#include "support/unique_fd.h"

namespace quorvane {

// The base as a USB device on the kernel's virtual host controller (vhci_hcd), with the USB/IP
// protocol over a socket pair instead of a network.
class UsbipHost final : public KernelHost {
 public:
  UsbipHost(SimulatedBase& base, EventLog& log) : base_(base), log_(log) {}

  void plug() override;
  void unplug() override;
  int fd() const override { return socket_.get(); }
  void service() override;

  // True while an interrupt IN transfer of the kernel is pending.
  bool canSend() const override { return !waiting_.empty(); }
  void send(ByteView report) override;

 private:
  // One request of the kernel, in host byte order.
  struct Request {
    std::uint32_t command = 0;
    std::uint32_t sequence = 0;
    bool in = false;
    std::uint32_t endpoint = 0;
    std::uint32_t length = 0;  // of the data; in an unlink: the sequence number to cancel
    Bytes setup;
    Bytes data;
  };

  std::optional<Request> receive();
  bool receiveExactly(Bytes& bytes);
  void submit(const Request& request);
  void control(const Request& request);
  std::optional<Bytes> controlRead(const Request& request) const;
  bool controlWrite(const Request& request);
  void unlink(const Request& request);
  void take(ByteView report);
  void reply(const Request& request, std::int32_t status, ByteView data, std::size_t actualLength);
  void replyUnlink(const Request& request, std::int32_t status);
  void sendAll(const Bytes& bytes);

  SimulatedBase& base_;
  EventLog& log_;
  UniqueFd socket_;
  std::deque<Request> waiting_;  // interrupt IN transfers
};

}  // namespace quorvane
