#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "app/app_model.h"
#include "support/clock.h"

namespace quorvane {

// The menu of the base, kept after the base has left until another one is connected. Main thread
// only.
class LastMenu final : public QObject {
  Q_OBJECT

 public:
  // The model must outlive this object.
  explicit LastMenu(const AppModel& model, QObject* parent = nullptr);

  // None before a base has told its menu.
  const std::optional<TuningSnapshot>& menu() const { return menu_; }

  // Of the base with this menu.
  const std::optional<FanatecProduct>& product() const { return product_; }

  // The values in display units; empty without a menu.
  TuningPreset::Values values() const;

  // "On the base now, set C (Custom)", "Last read 14:02", "No base connected".
  QString name() const;

 private:
  void follow();

  const AppModel& model_;
  std::optional<TuningSnapshot> menu_;
  std::optional<FanatecProduct> product_;
  WallClock::time_point readAt_;
};

}  // namespace quorvane
