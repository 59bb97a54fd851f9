#include "simulator/simbase/uhid_host.h"

#include <fcntl.h>
#include <linux/input.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>
#include <string>
#include <system_error>

#include "support/clock.h"

namespace quorvane {
namespace {

constexpr const char* nodePath = "/dev/uhid";

template <std::size_t size>
void copyText(const std::string& text, std::uint8_t (&target)[size]) {
  std::memcpy(target, text.data(), std::min(text.size(), size - 1));
}

std::system_error failure() { return {errno, std::generic_category(), nodePath}; }

}  // namespace

void UhidHost::plug() {
  node_ = UniqueFd(::open(nodePath, O_RDWR | O_CLOEXEC));
  if (!node_) throw failure();
  const Bytes& descriptor = SimulatedBase::reportDescriptor();
  uhid_event event{};
  event.type = UHID_CREATE2;
  uhid_create2_req& create = event.u.create2;
  copyText(std::string(base_.product().name), create.name);
  copyText(base_.serialNumber, create.uniq);
  create.rd_size = static_cast<std::uint16_t>(descriptor.size());
  create.bus = BUS_USB;
  create.vendor = static_cast<std::uint32_t>(Fanatec::vendorID);
  create.product = static_cast<std::uint32_t>(base_.productID());
  std::copy(descriptor.begin(), descriptor.end(), create.rd_data);
  write(event);
}

void UhidHost::unplug() { node_.reset(); }

void UhidHost::service() {
  uhid_event event{};
  if (::read(node_.get(), &event, sizeof event) < 0) throw failure();
  switch (event.type) {
    case UHID_OPEN:
      log_.add("opened");
      break;
    case UHID_CLOSE:
      log_.add("closed");
      break;
    case UHID_OUTPUT: {
      const std::span<const std::uint8_t> data(event.u.output.data, event.u.output.size);
      log_.add("received " + hexDump(data));
      base_.receive(data, Monotonic::now());
      break;
    }
    case UHID_GET_REPORT:
      answerGetReport(event.u.get_report);
      break;
    case UHID_SET_REPORT: {
      uhid_event reply{};
      reply.type = UHID_SET_REPORT_REPLY;
      reply.u.set_report_reply.id = event.u.set_report.id;
      reply.u.set_report_reply.err = EIO;
      write(reply);
      break;
    }
    default:
      break;
  }
}

void UhidHost::send(ByteView report) {
  uhid_event event{};
  event.type = UHID_INPUT2;
  event.u.input2.size = static_cast<std::uint16_t>(report.size());
  std::copy(report.begin(), report.end(), event.u.input2.data);
  write(event);
}

void UhidHost::write(const uhid_event& event) {
  if (::write(node_.get(), &event, sizeof event) < 0) throw failure();
}

void UhidHost::answerGetReport(const uhid_get_report_req& request) {
  const bool feature = request.rtype == UHID_FEATURE_REPORT;
  const auto report =
      base_.getReport(feature ? HIDReportKind::feature : HIDReportKind::input, request.rnum);
  uhid_event reply{};
  reply.type = UHID_GET_REPORT_REPLY;
  reply.u.get_report_reply.id = request.id;
  reply.u.get_report_reply.err = report ? 0 : EIO;
  if (report) {
    reply.u.get_report_reply.size = static_cast<std::uint16_t>(report->size());
    std::copy(report->begin(), report->end(), reply.u.get_report_reply.data);
  }
  write(reply);
}

}  // namespace quorvane
