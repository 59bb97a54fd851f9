#include "ui/tuning/setting_help_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "protocol/setting_help.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/side_panel.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"
#include "ui/tuning/preset_values.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {
namespace {

constexpr int panelGap = 20;
constexpr int paragraphGap = 8;
constexpr int factLabelWidth = 140;
constexpr int factPadding = 7;

QLabel* paragraph(const char* objectName, QPalette::ColorRole role) {
  QLabel* const label = PlainText::label();
  label->setObjectName(QString::fromLatin1(objectName));
  label->setForegroundRole(role);
  label->setWordWrap(true);
  return label;
}

// The plate with the setting's code.
class Plate final : public QWidget {
 public:
  explicit Plate(QLabel* code) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(RowLayout::pillPadding, 0, RowLayout::pillPadding, 0);
    row->addWidget(code, 0, Qt::AlignCenter);
    setMinimumSize(RowLayout::plateSize());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    drawBox(painter, rect(), Metrics::plateRadius, theme().surface, theme().line);
  }
};

// "90 to 2520 deg, step 10, or AUTO"; the words alone for a setting without numbers.
QString rangeText(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  QStringList words;
  if (parameter.hasSpecial(product) || !MenuText::hasNumbers(parameter)) {
    for (const std::string& word : MenuText::words(parameter)) words += text(word);
  }
  QString alternatives = words.join(QStringLiteral(", "));
  if (!MenuText::hasNumbers(parameter)) return alternatives;
  const QString numbers = text(MenuText::range(parameter, product));
  return words.isEmpty() ? numbers : QStringLiteral("%1, or %2").arg(numbers, alternatives);
}

}  // namespace

SettingHelpPanel::SettingHelpPanel(AppModel& model, QWidget* parent)
    : View(model, parent),
      panel_(SidePanel::in(*this)),
      code_(paragraph("helpCode", QPalette::Dark)),
      title_(paragraph("helpTitle", QPalette::WindowText)),
      what_(paragraph("helpWhat", QPalette::WindowText)),
      feel_(paragraph("helpFeel", QPalette::Dark)),
      facts_(new Card(QStringLiteral("Facts"))),
      builtInCard_(new Card(QStringLiteral("Built-in presets"))),
      builtIn_(new PresetValues),
      mineCard_(new Card(QStringLiteral("Mine"))),
      mine_(new PresetValues) {
  setObjectName(QStringLiteral("settingHelp"));
  setAccessibleName(QStringLiteral("What it does"));
  addFact(onBaseTitle_, onBase_, QStringLiteral("On the base"), "helpOnBase");
  addFact(rangeTitle_, range_, QStringLiteral("Range"), "helpRange");
  addFact(factoryTitle_, factory_, QStringLiteral("Factory default"), "helpFactory");
  addFact(worksWithTitle_, worksWith_, QStringLiteral("Works with"), "helpWorksWith");
  builtIn_->setObjectName(QStringLiteral("helpBuiltIn"));
  mine_->setObjectName(QStringLiteral("helpMine"));
  builtInCard_->add(builtIn_);
  mineCard_->add(mine_);

  QVBoxLayout& column = panel_->column();
  const int side = column.contentsMargins().left();
  column.setContentsMargins(side, panelGap, side, panelGap);
  column.setSpacing(panelGap);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(paragraphGap);
  texts->addWidget(heading());
  texts->addWidget(what_);
  texts->addWidget(feel_);
  column.addLayout(texts);
  for (Card* const card : {facts_, builtInCard_, mineCard_}) column.addWidget(card);
  column.addStretch();
  panel_->scroll().setObjectName(QStringLiteral("settingHelpScroll"));
  panel_->scroll().setAccessibleName(QStringLiteral("What it does"));
}

QWidget* SettingHelpPanel::heading() {
  auto* const line = new QWidget;
  auto* const row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(Metrics::gap);
  code_->setFont(Metrics::font(Metrics::Type::fixed));
  code_->setWordWrap(false);
  title_->setFont(Metrics::font(Metrics::Type::dialogTitle));
  row->addWidget(new Plate(code_));
  row->addWidget(title_, 1);
  return line;
}

void SettingHelpPanel::addFact(QLabel*& title, QLabel*& value, const QString& label,
                               const char* objectName) {
  auto* const line = new QWidget;
  auto* const row = new QHBoxLayout(line);
  row->setContentsMargins(Metrics::cardInset, factPadding, Metrics::cardInset, factPadding);
  row->setSpacing(0);
  title = PlainText::label(label);
  title->setForegroundRole(QPalette::Dark);
  title->setMinimumWidth(factLabelWidth);
  value = paragraph(objectName, QPalette::WindowText);
  row->addWidget(title, 0, Qt::AlignTop);
  row->addWidget(value, 1, Qt::AlignTop);
  facts_->add(line);
}

void SettingHelpPanel::setScrollableByKeys(bool scrollable) {
  panel_->scroll().setFocusPolicy(scrollable ? Qt::StrongFocus : Qt::NoFocus);
}

void SettingHelpPanel::explain(TuningParameter parameter) {
  if (parameter_ == parameter) return;
  parameter_ = parameter;
  panel_->scroll().ensureVisible(0, 0);
  render();
}

void SettingHelpPanel::render() {
  if (!parameter_) return;
  const SettingHelp& help = helpOf(*parameter_);
  code_->setText(text(parameter_->code()));
  title_->setText(text(parameter_->title()));
  what_->setText(text(help.what));
  feel_->setText(text(help.feel));
  renderFacts();
  builtIn_->show(*parameter_, TuningPreset::builtIn(), model().product());
  mine_->show(*parameter_, model().userPresets(), model().product());
  mineCard_->setVisible(!model().userPresets().empty());
}

void SettingHelpPanel::renderFacts() {
  const auto& menu = model().tuning();
  const auto product = model().product();
  if (menu) {
    onBaseTitle_->setText(QStringLiteral("On the base, %1").arg(shortSetName(*menu)));
    onBase_->setText(
        text(MenuText::shortText(*parameter_, menu->value(*parameter_, product), product)));
  }
  onBase_->parentWidget()->setVisible(menu.has_value());
  range_->setText(rangeText(*parameter_, product));
  factory_->setText(
      text(MenuText::shortText(*parameter_, settingOf(*parameter_).factory, product)));
  worksWith_->setText(text(helpOf(*parameter_).worksWith));
}

}  // namespace quorvane
