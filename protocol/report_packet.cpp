#include "protocol/report_packet.h"

namespace quorvane {

Bytes HIDReportPacket::wireBytes() const {
  Bytes bytes;
  bytes.reserve(payload.size() + 1);
  if (reportID != 0) bytes.push_back(reportID);
  bytes.insert(bytes.end(), payload.begin(), payload.end());
  return bytes;
}

}  // namespace quorvane
