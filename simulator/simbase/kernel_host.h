#pragma once

#include "support/bytes.h"

namespace quorvane {

// Registers a simulated base with the kernel as a device. Members throw std::system_error when the
// kernel's interface fails.
class KernelHost {
 public:
  virtual ~KernelHost() = default;

  virtual void plug() = 0;
  virtual void unplug() = 0;

  // A file descriptor that is readable while the kernel has a request; -1 while unplugged.
  virtual int fd() const = 0;

  // Handles one request of the kernel; call when fd() is readable.
  virtual void service() = 0;

  // Whether the kernel accepts an input report now.
  virtual bool canSend() const = 0;
  virtual void send(ByteView report) = 0;
};

}  // namespace quorvane
