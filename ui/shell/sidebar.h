#pragma once

#include <array>

#include "ui/model/section.h"
#include "ui/model/view.h"

namespace quorvane {

class SidebarRow;

// The list of sections, and two links.
class Sidebar final : public View {
  Q_OBJECT

 public:
  explicit Sidebar(AppModel& model, QWidget* parent = nullptr);

  void setSection(Section section);

 signals:
  void chosen(Section section);

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  std::array<SidebarRow*, allSections.size()> rows_{};
};

}  // namespace quorvane
