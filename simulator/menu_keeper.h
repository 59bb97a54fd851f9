#pragma once

#include <functional>
#include <memory>
#include <string>

#include "hid/return_code.h"
#include "simulator/menu_storage.h"
#include "support/bytes.h"
#include "support/mutex.h"

namespace quorvane {

class SimulatedDevice;

// Sends packets to a simulated base and keeps its menu in a storage. Thread-safe.
//
// A packet that changes the menu succeeds only if the storage has the change. Before each packet of
// the tuning channel the base loads the stored menu, except before a write of a whole menu: of
// that, only the bytes that it changes are stored. A whole-menu write thus does not undo what
// another process wrote since the menu was read.
class MenuKeeper {
 public:
  // Called with the reason when a packet fails because of the storage. On the sending thread.
  using Complain = std::function<void(const std::string&)>;

  // Loads the stored menu. Throws what the storage throws.
  MenuKeeper(SimulatedDevice& device, std::unique_ptr<MenuStorage> storage, Complain complain);

  // Calls `send` to pass the packet to the base. Blocks on the storage. A failure of the storage
  // gives generalError.
  HIDReturn send(ByteView packet, const std::function<HIDReturn()>& send);

 private:
  void takeOver() QUORVANE_REQUIRES(lock_);
  void keep(const SimulatedMenu::State& before) QUORVANE_REQUIRES(lock_);
  SimulatedMenu::State menu() const;
  void restore(const SimulatedMenu::State& state) const;

  SimulatedDevice& device_;
  const Complain complain_;
  Mutex lock_;
  const std::unique_ptr<MenuStorage> storage_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
