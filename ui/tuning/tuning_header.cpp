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
  connect(set_, &Picker::chosen, this, [this](int number) { this->model().selectSlot(number); });
  connect(switchMode_, &Button::clicked, this, [this] { this->model().toggleMode(); });
  connect(readAgain_, &Button::clicked, this, [this] { this->model().refresh(); });
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
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

void TuningHeader::setNarrow(bool narrow) {
  if (isNarrow_ == narrow) return;
  isNarrow_ = narrow;
  updateGeometry();
  place();
}

QSize TuningHeader::sizeHint() const {
  const int line = Metrics::atLeast(Metrics::buttonHeight, font());
  const int extra = line - Metrics::buttonHeight;
  return {0, (isNarrow_ ? Metrics::tallTuningHeaderHeight + extra
                        : Metrics::tuningHeaderHeight + extra)};
}

void TuningHeader::renderSets(const TuningSnapshot& menu) {
  const bool hasStaged = !model().staged().empty();
  set_->setChoices(sets(menu));
  set_->show(menu.slot(), false);
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
  place();
}

void TuningHeader::place() {
  const int inset = isNarrow_ ? Metrics::narrowInset : Metrics::pageInset;
  const int right = std::min(width(), Metrics::contentWidth) - inset;
  const int line = Metrics::atLeast(Metrics::buttonHeight, font());
  const int gap = isNarrow_ ? narrowGap : groupGap;
  int top = (height() - line) / 2;
  int x = inset;
  const auto put = [&](QWidget* widget, int after) {
    const QSize size = widget->sizeHint();
    widget->setGeometry(x, top + (line - size.height()) / 2, size.width(), size.height());
    x += size.width() + after;
  };
  if (isNarrow_) {
    const QSize size = title_->sizeHint();
    title_->setGeometry(x, narrowTop, size.width(), size.height());
    top = height() - line - 10;
  } else {
    put(title_, afterTitle);
  }
  put(setLabel_, labelGap);
  put(set_, gap);
  put(mode_, narrowGap);
  put(switchMode_, gap);

  readAgain_->setSymbolOnly(false);
  const int wanted = sources_->sizeHint().width() + labelGap + readAgain_->sizeHint().width();
  readAgain_->setSymbolOnly(x + wanted > right);
  readAgain_->setAccessibleName(QStringLiteral("Read again"));
  x = right - readAgain_->sizeHint().width();
  put(readAgain_, 0);
  x = readAgain_->x() - labelGap - sources_->sizeHint().width();
  put(sources_, 0);
}

void TuningHeader::resizeEvent(QResizeEvent* /*event*/) { place(); }

void TuningHeader::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().window);
  drawEdge(painter, rect(), Qt::BottomEdge, theme().line);
}

}  // namespace quorvane
