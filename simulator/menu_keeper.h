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

// Carries packets to a simulated base whose menu is kept in a storage. Any thread may call.
//
// A packet that changes the menu succeeds when the storage has the change. The base takes over what
// is kept before each packet of the tuning channel, but for writes of a whole menu: of such a block
// only the bytes that it changes count, so that it does not undo what another process wrote since
// the menu was read.
class MenuKeeper {
 public:
  // Told why a packet failed that the base itself would have taken.
  using Complain = std::function<void(const std::string&)>;

  // Takes over what is kept. Throws what the storage throws.
  MenuKeeper(SimulatedDevice& device, std::unique_ptr<MenuStorage> storage, Complain complain);

  // `send` gives the packet to the base. Blocks for the storage.
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
