#include "ui/tuning/tuning_header.h"

#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <algorithm>

#include "protocol/setting.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/pickers.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int labelGap = 8;
constexpr int groupGap = 20;
constexpr int afterTitle = 28;
constexpr int narrowGap = 12;
constexpr int narrowTop = 8;
constexpr int betweenLines = 12;
constexpr int lastBottom = 10;
constexpr std::size_t afterTitleGroup = 1;
constexpr std::size_t afterModeGroup = 3;

QLabel* label(const QString& text, Metrics::Type type, QPalette::ColorRole role, QWidget* parent) {
  QLabel* const label = PlainText::label(text, parent);
  label->setFont(Metrics::font(type));
  label->setForegroundRole(role);
  return label;
}

std::vector<Choice> sets(const TuningSnapshot& menu) {
  if (!menu.isAdvancedMode()) {
    return {{autoSet, QStringLiteral("A, Auto")}, {customSet, QStringLiteral("C, Custom")}};
  }
  std::vector<Choice> choices;
  for (auto set = tuningSets.lower; set <= tuningSets.upper; ++set) {
    choices.push_back({static_cast<int>(set), QStringLiteral("Set %1").arg(set)});
  }
  return choices;
}

}  // namespace

TuningHeader::TuningHeader(AppModel& model, QWidget* parent)
    : View(model, parent),
      title_(label(QStringLiteral("Tuning menu"), Metrics::Type::pageTitle, QPalette::WindowText,
                   this)),
      setLabel_(label(QStringLiteral("Set"), Metrics::Type::body, QPalette::Dark, this)),
      set_(new Picker(this)),
      mode_(label({}, Metrics::Type::body, QPalette::Dark, this)),
      switchMode_(new Button({}, Button::Kind::plain, this)),
      sources_(new Button(QStringLiteral("Load or share"), Button::Kind::plain, this)),
      readAgain_(new Button(QStringLiteral("Read again"), Button::Kind::plain, this)) {
  setObjectName(QStringLiteral("tuningHeader"));
  setAccessibleName(QStringLiteral("Tuning menu"));
  title_->setObjectName(QStringLiteral("tuningTitle"));
  set_->setObjectName(QStringLiteral("setPicker"));
  set_->setAccessibleName(QStringLiteral("Set"));
  setLabel_->setBuddy(set_);
  mode_->setObjectName(QStringLiteral("menuMode"));
  switchMode_->setObjectName(QStringLiteral("switchModeButton"));
  sources_->setObjectName(QStringLiteral("sourcesButton"));
  sources_->setMenu(sourcesMenu());
  readAgain_->setObjectName(QStringLiteral("readAgainButton"));
  readAgain_->setSymbol(QStringLiteral("arrow.clockwise"));
  readAgain_->setAccessibleName(QStringLiteral("Read again"));
  connect(set_, &Picker::chosen, this, [this](int number) { this->model().selectSlot(number); });
  connect(switchMode_, &Button::clicked, this, [this] { this->model().toggleMode(); });
  connect(readAgain_, &Button::clicked, this, [this] { this->model().refresh(); });
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QMenu* TuningHeader::sourcesMenu() {
  auto* const menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("sourcesMenu"));
  menu->setToolTipsVisible(true);
  QMenu* const defaults = menu->addMenu(QStringLiteral("Load defaults"));
  defaults->setObjectName(QStringLiteral("loadDefaultsMenu"));
  PlainText::setToolTip(
      *defaults->menuAction(),
      QStringLiteral("Fill in a known set of values; nothing is written until you save"));
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    defaults->addAction(PlainText::withoutMnemonic(text(preset.name)), this,
                        [this, &preset] { model().stagePreset(preset); });
  }
  QAction* const import =
      menu->addAction(QStringLiteral("Import…"), this, [this] { model().importSettingsFile(); });
  import->setObjectName(QStringLiteral("importEntry"));
  PlainText::setToolTip(*import, QStringLiteral("Load a settings file someone shared with you"));
  QAction* const share =
      menu->addAction(QStringLiteral("Share…"), this, [this] { model().shareCurrentSettings(); });
  share->setObjectName(QStringLiteral("shareEntry"));
  PlainText::setToolTip(
      *share, QStringLiteral("Export the values on screen as a file you can send to someone"));
  return menu;
}

QSize TuningHeader::sizeHint() const { return {0, heightForWidth(width())}; }

void TuningHeader::renderSets(const TuningSnapshot& menu) {
  const bool hasStaged = !model().staged().empty();
  set_->setChoices(sets(menu));
  set_->show(menu.slot(), Mark::none);
  setAvailable(*set_, hasStaged
                          ? QStringLiteral("Save or discard your changes before switching sets")
                          : whyWait(model()));
}

void TuningHeader::render() {
  const auto& menu = model().tuning();
  if (!menu) return;
  const bool advanced = menu->isAdvancedMode();
  renderSets(*menu);
  mode_->setText(advanced ? QStringLiteral("Advanced menu") : QStringLiteral("Standard menu"));
  switchMode_->setText(advanced ? QStringLiteral("Switch to standard")
                                : QStringLiteral("Switch to advanced"));
  setAvailable(*switchMode_, whyWait(model()));
  setAvailable(*readAgain_, whyWait(model()), QStringLiteral("Read the menu again"));
  updateGeometry();
  place();
}

int TuningHeader::Group::width() const {
  int width = labelGap * (static_cast<int>(controls.size()) - 1);
  for (const QWidget* const control : controls) width += control->sizeHint().width();
  return width;
}

int TuningHeader::Group::height() const {
  int height = 0;
  for (const QWidget* const control : controls) {
    height = std::max(height, control->sizeHint().height());
  }
  return height;
}

int TuningHeader::widthOf(const Line& line) {
  int width = line.empty() ? 0 : -line.back().gapAfter;
  for (const Group& group : line) width += group.width() + group.gapAfter;
  return width;
}

int TuningHeader::heightOf(const Line& line) {
  int height = 0;
  for (const Group& group : line) height = std::max(height, group.height());
  return height;
}

// All controls in reading order. The last group stands at the right.
TuningHeader::Line TuningHeader::groups() const {
  const int gap = Metrics::inset(*this) == Metrics::narrowInset ? narrowGap : groupGap;
  return {{{title_}, afterTitle},
          {{setLabel_, set_}, gap},
          {{mode_}, narrowGap},
          {{switchMode_}, gap},
          {{sources_, readAgain_}, 0}};
}

// One line; else a break after the title, or after the mode; else as many groups in a line as fit.
std::vector<TuningHeader::Line> TuningHeader::lines(int width) const {
  const Line all = groups();
  const int room = std::min(width, Metrics::contentWidth) - 2 * Metrics::inset(*this);
  for (const std::size_t end : {all.size(), afterTitleGroup, afterModeGroup}) {
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(end);
    const Line first(all.begin(), middle);
    const Line second(middle, all.end());
    if (widthOf(first) > room || widthOf(second) > room) continue;
    return second.empty() ? std::vector<Line>{first} : std::vector<Line>{first, second};
  }
  std::vector<Line> flowing(1);
  for (const Group& group : all) {
    Line longer = flowing.back();
    longer.push_back(group);
    if (flowing.back().empty() || widthOf(longer) <= room) {
      flowing.back() = longer;
    } else {
      flowing.push_back({group});
    }
  }
  return flowing;
}

int TuningHeader::heightForWidth(int width) const {
  const std::vector<Line> all = lines(width);
  if (all.size() == 1) {
    return Metrics::tuningHeaderHeight - Metrics::buttonHeight + heightOf(all.front());
  }
  int height = narrowTop + lastBottom - betweenLines;
  for (const Line& line : all) height += heightOf(line) + betweenLines;
  return height;
}

void TuningHeader::place() {
  const std::vector<Line> all = lines(width());
  const int inset = Metrics::inset(*this);
  const int right = std::min(width(), Metrics::contentWidth) - inset;
  int top = all.size() == 1 ? (height() - heightOf(all.front())) / 2 : narrowTop;
  for (const Line& line : all) {
    const int tall = heightOf(line);
    int x = inset;
    for (const Group& group : line) {
      const bool isLast = group.controls.back() == readAgain_;
      if (isLast) x = right - group.width();
      for (QWidget* const control : group.controls) {
        const QSize size = control->sizeHint();
        const QRect rect(QPoint(x, top + (tall - size.height()) / 2), size);
        control->setGeometry(visualRect(*this, rect));
        x += size.width() + labelGap;
      }
      x += group.gapAfter - labelGap;
    }
    top += tall + betweenLines;
  }
}

void TuningHeader::resizeEvent(QResizeEvent* /*event*/) { place(); }

void TuningHeader::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().window);
  drawEdge(painter, rect(), Qt::BottomEdge, theme().line);
}

}  // namespace quorvane
