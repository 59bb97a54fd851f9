#include "simulator/simbase/usbip_host.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>

#include "simulator/simbase/usb_descriptors.h"

namespace quorvane {
namespace {

constexpr const char* attachPath = "/sys/devices/platform/vhci_hcd.0/attach";
constexpr const char* detachPath = "/sys/devices/platform/vhci_hcd.0/detach";
constexpr int port = 0;
constexpr int deviceID = 0x00010002;
constexpr int fullSpeed = 2;

// Message headers have 48 bytes, big-endian: command, sequence number, device, direction, endpoint,
// then fields of the command.
constexpr std::size_t headerLength = 48;
constexpr std::size_t setupOffset = 40;
constexpr std::size_t setupLength = 8;
constexpr std::uint32_t submitCommand = 1;
constexpr std::uint32_t unlinkCommand = 2;
constexpr std::uint32_t submitReply = 3;
constexpr std::uint32_t unlinkReply = 4;

// Requests of a control transfer: bmRequestType in the high byte, bRequest in the low byte.
constexpr unsigned getStatus = 0x8000;
constexpr unsigned getDescriptor = 0x8006;
constexpr unsigned getInterfaceDescriptor = 0x8106;
constexpr unsigned setConfiguration = 0x0009;
constexpr unsigned setInterface = 0x010B;
constexpr unsigned clearEndpointFeature = 0x0201;
constexpr unsigned getReportRequest = 0xA101;
constexpr unsigned setReportRequest = 0x2109;
constexpr unsigned setIdleRequest = 0x210A;
constexpr std::uint8_t featureReportType = 3;

std::uint32_t word(const Bytes& bytes, std::size_t offset) {
  return static_cast<std::uint32_t>(bytes[offset] << 24U | bytes[offset + 1] << 16U |
                                    bytes[offset + 2] << 8U | bytes[offset + 3]);
}

void putWord(Bytes& bytes, std::size_t offset, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[offset + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
  }
}

unsigned requestOf(const Bytes& setup) { return static_cast<unsigned>(setup[0] << 8U | setup[1]); }

void writeFile(const char* path, const std::string& text) {
  const UniqueFd file(::open(path, O_WRONLY | O_CLOEXEC));
  if (!file || ::write(file.get(), text.data(), text.size()) < 0) {
    throw std::system_error(errno, std::generic_category(), path);
  }
}

}  // namespace

void UsbipHost::plug() {
  int ends[2] = {-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  socket_ = UniqueFd(ends[0]);
  const UniqueFd kernelEnd(ends[1]);  // the kernel keeps a reference of its own
  writeFile(attachPath, fmt::format("{} {} {} {}", port, kernelEnd.get(), deviceID, fullSpeed));
}

void UsbipHost::unplug() {
  if (!socket_) return;
  writeFile(detachPath, std::to_string(port));
  socket_.reset();
  waiting_.clear();
}

void UsbipHost::service() {
  const auto request = receive();
  if (!request) {
    socket_.reset();
    waiting_.clear();
  } else if (request->command == submitCommand) {
    submit(*request);
  } else if (request->command == unlinkCommand) {
    unlink(*request);
  }
}

void UsbipHost::send(ByteView report) {
  const Request request = std::move(waiting_.front());
  waiting_.pop_front();
  const ByteView data = report.first(std::min<std::size_t>(report.size(), request.length));
  reply(request, 0, data, data.size());
}

std::optional<UsbipHost::Request> UsbipHost::receive() {
  Bytes header(headerLength);
  if (!receiveExactly(header)) return std::nullopt;
  Request request;
  request.command = word(header, 0);
  request.sequence = word(header, 4);
  request.in = word(header, 12) != 0;
  request.endpoint = word(header, 16);
  if (request.command == unlinkCommand) {
    request.length = word(header, 20);
    return request;
  }
  request.length = word(header, 24);
  const auto setup = header.begin() + static_cast<std::ptrdiff_t>(setupOffset);
  request.setup.assign(setup, setup + static_cast<std::ptrdiff_t>(setupLength));
  if (!request.in) {
    request.data.resize(request.length);
    if (!receiveExactly(request.data)) return std::nullopt;
  }
  return request;
}

bool UsbipHost::receiveExactly(Bytes& bytes) {
  if (bytes.empty()) return true;
  const ssize_t got = ::recv(socket_.get(), bytes.data(), bytes.size(), MSG_WAITALL);
  return got == static_cast<ssize_t>(bytes.size());
}

void UsbipHost::submit(const Request& request) {
  if (request.endpoint == 0) {
    control(request);
  } else if (request.in) {
    waiting_.push_back(request);
  } else {
    take(request.data);
    reply(request, 0, {}, request.data.size());
  }
}

void UsbipHost::control(const Request& request) {
  if (request.in) {
    const auto answer = controlRead(request);
    if (!answer) return reply(request, -EPIPE, {}, 0);
    const ByteView data =
        ByteView(*answer).first(std::min<std::size_t>(answer->size(), request.length));
    return reply(request, 0, data, data.size());
  }
  const bool understood = controlWrite(request);
  reply(request, understood ? 0 : -EPIPE, {}, understood ? request.data.size() : 0);
}

std::optional<Bytes> UsbipHost::controlRead(const Request& request) const {
  const std::uint8_t valueLow = request.setup[2];
  const std::uint8_t valueHigh = request.setup[3];
  switch (requestOf(request.setup)) {
    case getStatus:
      return Bytes{0, 0};
    case getDescriptor:
    case getInterfaceDescriptor:
      return usbDescriptor(base_, valueHigh, valueLow);
    case getReportRequest:
      return base_.getReport(
          valueHigh == featureReportType ? HIDReportKind::feature : HIDReportKind::input, valueLow);
    default:
      return std::nullopt;
  }
}

bool UsbipHost::controlWrite(const Request& request) {
  switch (requestOf(request.setup)) {
    case setConfiguration:
    case setInterface:
    case clearEndpointFeature:
    case setIdleRequest:
      return true;
    case setReportRequest:
      take(request.data);
      return true;
    default:
      return false;
  }
}

void UsbipHost::unlink(const Request& request) {
  const auto victim = std::find_if(waiting_.begin(), waiting_.end(), [&](const Request& waiting) {
    return waiting.sequence == request.length;
  });
  const bool found = victim != waiting_.end();
  if (found) waiting_.erase(victim);
  replyUnlink(request, found ? -ECONNRESET : 0);
}

void UsbipHost::take(ByteView report) {
  log_.add("received " + hexDump(report));
  base_.receive(report, Monotonic::now());
}

void UsbipHost::reply(const Request& request, std::int32_t status, ByteView data,
                      std::size_t actualLength) {
  Bytes message(headerLength);
  putWord(message, 0, submitReply);
  putWord(message, 4, request.sequence);
  putWord(message, 20, static_cast<std::uint32_t>(status));
  putWord(message, 24, static_cast<std::uint32_t>(actualLength));
  message.insert(message.end(), data.begin(), data.end());
  sendAll(message);
}

void UsbipHost::replyUnlink(const Request& request, std::int32_t status) {
  Bytes message(headerLength);
  putWord(message, 0, unlinkReply);
  putWord(message, 4, request.sequence);
  putWord(message, 20, static_cast<std::uint32_t>(status));
  sendAll(message);
}

void UsbipHost::sendAll(const Bytes& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t now =
        ::send(socket_.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (now <= 0) return;  // the kernel has detached: receive() finds out
    sent += static_cast<std::size_t>(now);
  }
}

}  // namespace quorvane
