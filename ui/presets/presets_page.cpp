#include "ui/presets/presets_page.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/pickers.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/tab_order.h"
#include "ui/kit/text.h"
#include "ui/model/window_state.h"
#include "ui/presets/codes_bar.h"
#include "ui/presets/preset_actions.h"
#include "ui/presets/preset_group.h"
#include "ui/presets/preset_list.h"
#include "ui/presets/preset_row.h"
#include "ui/presets/preset_scroll.h"
#include "ui/presets/save_preset_bar.h"
#include "ui/presets/search_field.h"
#include "ui/presets/value_texts.h"

namespace quorvane {
namespace {

constexpr std::size_t manyPresets = 40;
constexpr int gamesWidth = 150;

QString compactKey() { return QStringLiteral("presets/compact"); }
QString compactOfferedKey() { return QStringLiteral("presets/compactOffered"); }

}  // namespace

PresetsPage::PresetsPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      header_(new PageHeader(QStringLiteral("Presets"))),
      games_(new Picker),
      search_(new SearchField),
      codes_(new CodesBar(model)),
      builtIn_(new PresetList([this](const ListedPreset& preset) { return newRow(preset); })),
      own_(new PresetList([this](const ListedPreset& preset) { return newRow(preset); })),
      builtInGroup_(new PresetGroup(QStringLiteral("Built in"),
                                    QStringLiteral("presets/foldBuiltIn"), {}, builtIn_)),
      ownGroup_(new PresetGroup(
          QStringLiteral("Mine"), QStringLiteral("presets/foldMine"),
          QStringLiteral("Save the current menu below to create your first preset."), own_)),
      scroll_(new PresetScroll({builtInGroup_, ownGroup_})),
      body_(new QHBoxLayout),
      saveBar_(new SavePresetBar(model)),
      actions_(new PresetActions(model, this)),
      mover_(model, *own_, *scroll_),
      isCompact_(isCompactRemembered()) {
  setObjectName(QStringLiteral("presetsPage"));
  setAccessibleName(QStringLiteral("Presets"));
  builtInGroup_->setObjectName(QStringLiteral("builtInPresets"));
  ownGroup_->setObjectName(QStringLiteral("minePresets"));
  builtInGroup_->caption().setObjectName(QStringLiteral("builtInCaption"));
  ownGroup_->caption().setObjectName(QStringLiteral("mineCaption"));
  buildHeader();
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(header_);
  column->addLayout(body_, 1);
  auto* const part = new QWidget;
  auto* const left = new QVBoxLayout(part);
  left->setContentsMargins(0, 0, 0, 0);
  left->setSpacing(0);
  left->addWidget(codes_);
  left->addWidget(scroll_, 1);
  left->addWidget(saveBar_);
  body_->setSpacing(0);
  body_->addWidget(part, 1);
  chainTabOrder({header_, scroll_, saveBar_});
  addKeys();
  connect(scroll_, &PresetScroll::scrolled, this, &PresetsPage::makeRows);
  connect(actions_, &PresetActions::menuOpened, this, &PresetsPage::menuOpened);
  connectList(*builtIn_, *builtInGroup_);
  connectList(*own_, *ownGroup_);
}

void PresetsPage::buildHeader() {
  games_->setObjectName(QStringLiteral("gamePicker"));
  games_->setAccessibleName(QStringLiteral("Game"));
  games_->setFixedWidth(std::max(gamesWidth, 10 * fontMetrics().averageCharWidth()));
  connect(games_, &Picker::chosen, this, &PresetsPage::search);
  connect(search_, &SearchField::textChanged, this, &PresetsPage::search);
  connect(search_, &SearchField::left, this, &PresetsPage::leaveSearch);
  connect(search_, &SearchField::returnPressed, this, &PresetsPage::leaveSearch);
  QLabel* const label = PlainText::label(QStringLiteral("Game"), header_);
  label->setBuddy(games_);
  label->hide();
  header_->add(games_);
  header_->add(search_);
}

// A text field with the focus handles these keys itself.
void PresetsPage::addKeys() {
  const auto add = [this](const char* name, const QList<QKeySequence>& keys, auto run) {
    auto* const action = new QAction(this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, run);
    addAction(action);
  };
  add("undoPresetsAction", {QKeySequence(Qt::CTRL | Qt::Key_Z)}, [this] { model().undoPresets(); });
  add("searchPresetsAction", {QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_Slash)},
      [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
      });
}

void PresetsPage::connectList(PresetList& list, PresetGroup& group) {
  connect(&list, &PresetList::resized, this, &PresetsPage::makeRows);
  connect(&list, &PresetList::made, this,
          [this, &group](const std::vector<PresetRow*>& rows, PresetRow* before) {
            orderRows(group, rows, before);
          });
  connect(&list, &PresetList::focusLeft, this, [this, &group](PresetRow* before) {
    keepFocus(before != nullptr ? before : &group.caption());
  });
  connect(&group, &PresetGroup::changed, this, [this] {
    alignCodes();
    makeRows();
  });
}

void PresetsPage::render() {
  compactIfMany();
  startRows();
  list();
  renderGames();
  renderRows();
  actions_->render();
  renderPanel();
  revealAdded();
}

void PresetsPage::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange && form_) render();
  View::changeEvent(event);
}

// Creates the rows again for another product, form or font.
void PresetsPage::startRows() {
  const PresetForm form = PresetForm::of(model().product(), isCompact_);
  if (form == form_) return;
  form_ = form;
  values_ = std::make_shared<ValueTexts>();
  builtIn_->start(form);
  own_->start(form);
  alignCodes();
}

bool PresetsPage::isCompactRemembered() { return WindowState::flag(compactKey(), false); }

void PresetsPage::setCompact(bool isCompact) {
  if (isCompact == isCompact_) return;
  isCompact_ = isCompact;
  WindowState::setFlag(compactKey(), isCompact);
  emit compactChanged(isCompact);
  if (form_) render();
}

void PresetsPage::compactIfMany() {
  if (model().userPresets().size() < manyPresets) return;
  if (WindowState::flag(compactOfferedKey(), false)) return;
  WindowState::setFlag(compactOfferedKey(), true);
  setCompact(true);
}

// The chosen game stays as long as a preset is for it.
void PresetsPage::renderGames() {
  std::vector<TuningPreset> presets = model().userPresets();
  const auto& builtIn = TuningPreset::builtIn();
  presets.insert(presets.end(), builtIn.begin(), builtIn.end());
  QStringList names = gamesOf(presets);
  if (names == gameNames_ && games_->count() > 0) return;
  const int chosen = games_->currentIndex();
  const QString game = chosen > 0 ? gameNames_[chosen - 1] : QString();
  gameNames_ = std::move(names);
  std::vector<Choice> choices{{0, QStringLiteral("All games")}};
  for (int i = 0; i < gameNames_.size(); ++i) choices.push_back({i + 1, gameNames_[i]});
  games_->setChoices(choices);
  games_->show(static_cast<int>(gameNames_.indexOf(game)) + 1, Mark::none);
  search();
}

void PresetsPage::search() {
  const int chosen = games_->currentIndex();
  const auto game =
      chosen > 0 ? std::optional(quorvane::text(gameNames_[chosen - 1])) : std::nullopt;
  filter_ = PresetFilter(search_->text(), game);
  listMatching();
  for (const PresetList* const list : {builtIn_, own_}) {
    for (PresetRow* const row : list->rows()) row->highlight(filter_);
  }
  scroll_->verticalScrollBar()->setValue(0);
}

void PresetsPage::list() {
  allBuiltIn_.update(TuningPreset::builtIn());
  allOwn_.update(model().userPresets());
  listMatching();
}

// Adjusts the scroll position so that visible rows stay when rows above them come or go.
void PresetsPage::listMatching() {
  builtIn_->setPresets(allBuiltIn_.matching(filter_));
  const QRect visible = scroll_->visiblePart(*own_);
  const bool isAnchored = !visible.isEmpty() && own_->count() > 0 && visible.top() > 0;
  own_->setPresets(allOwn_.matching(filter_));
  builtInGroup_->setCounts(builtIn_->count(), allBuiltIn_.size(), filter_.isActive());
  ownGroup_->setCounts(own_->count(), allOwn_.size(), filter_.isActive());
  if (isAnchored) scroll_->scrollBy(own_->takeShiftAt(visible.top()), *own_);
  makeRows();
}

void PresetsPage::makeRows() {
  for (PresetList* const list : {builtIn_, own_}) list->makeRows(scroll_->visiblePart(*list));
}

// Both groups are equally wide.
void PresetsPage::alignCodes() {
  if (!form_) return;
  const QWidget& part = *codes_->parentWidget();
  const QRect group(ownGroup_->mapTo(&part, QPoint()), ownGroup_->size());
  const int left = visualRect(part, group).left() + 1;
  const int width = group.width() - 2;
  const PresetRowLayout row = PresetRowLayout::of(width, *form_, 0);
  codes_->follow({left + row.strip.left(), row.strip.width(), left + row.name.left(),
                  left + row.trash.right() + 1, isCompact_});
}

// After a row with the focus is gone, the page has the focus.
void PresetsPage::keyPressEvent(QKeyEvent* event) {
  const bool isVertical = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
  if (hasFocus() && isVertical && event->modifiers() == Qt::NoModifier) {
    focusNextPrevChild(event->key() == Qt::Key_Down);
  } else {
    View::keyPressEvent(event);
  }
}

void PresetsPage::resizeEvent(QResizeEvent* event) {
  placePanel();
  View::resizeEvent(event);
}

void PresetsPage::hideEvent(QHideEvent* event) {
  mark(std::nullopt);
  View::hideEvent(event);
}

void PresetsPage::focusNewName() { saveBar_->focusName(); }

}  // namespace quorvane
