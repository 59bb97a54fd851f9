#pragma once

#include <optional>
#include <utility>

#include "protocol/tuning_snapshot.h"
#include "support/clock.h"

namespace quorvane {

// Gathers the changes that a user makes with the base's own buttons, so that turning a value
// through twenty steps is one record. Not thread-safe.
class WheelChanges {
 public:
  // How long changes are gathered, from the first one on.
  static constexpr Seconds period{30};

  // The menu before the first change and after the last one.
  struct Gathered {
    TuningSnapshot before;
    TuningSnapshot after;

    bool operator==(const Gathered&) const = default;
  };

  // Adds a change within one set and mode. Returns the changes gathered before it when their period
  // is over or they are of another set or mode. A switch of the set or mode is not gathered.
  std::optional<Gathered> add(const TuningSnapshot& before, const TuningSnapshot& after,
                              Monotonic::time_point now);

  // What was gathered until now; none when the menu is as it was before.
  std::optional<Gathered> take();

 private:
  std::optional<Gathered> gathered_;
  Monotonic::time_point begin_;
};

}  // namespace quorvane
