#pragma once

#include "support/bytes.h"

namespace quorvane {

// Shows a simulated base to the kernel as a device of its own. Failures of the kernel's interfaces
// are std::system_error.
class KernelHost {
 public:
  virtual ~KernelHost() = default;

  virtual void plug() = 0;
  virtual void unplug() = 0;

  // Readable when the kernel wants something; -1 while unplugged.
  virtual int fd() const = 0;

  // Handles one request of the kernel.
  virtual void service() = 0;

  // Whether the kernel takes an input report now.
  virtual bool canSend() const = 0;
  virtual void send(ByteView report) = 0;
};

}  // namespace quorvane
