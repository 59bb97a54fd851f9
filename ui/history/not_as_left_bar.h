#pragma once

#include "ui/history/as_left.h"
#include "ui/model/notice_bar.h"

namespace quorvane {

class Button;
class IconButton;

// The bar that says how many values are not as the user left them, with buttons to fill them in and
// to dismiss it.
class NotAsLeftBar final : public NoticeBar {
  Q_OBJECT

 public:
  // By itself, or as the last line of the warning about set A.
  enum class Place { own, inWarning };

  NotAsLeftBar(AppModel& model, AsLeft& asLeft, Place place, QWidget* parent = nullptr);

  bool isWanted() const override { return !asLeft_.values().empty(); }

 protected:
  void render() override;
  Look look() const override;

 private:
  AsLeft& asLeft_;
  const Place place_;
  Button* compare_;
  Button* fillIn_;
  IconButton* close_;
};

}  // namespace quorvane
