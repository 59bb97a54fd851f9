#include "ui/presets/edit_preset_dialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int editorWidth = 560;
constexpr int labelWidth = 96;
constexpr int fieldGap = 10;
constexpr int fieldTextMargin = 6;
constexpr int notesLines = 5;

// A field of several lines with the border of the other ones.
class NotesFrame final : public QWidget {
 public:
  explicit NotesFrame(QPlainTextEdit* notes) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->addWidget(notes);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    drawBox(painter, rect(), Metrics::controlRadius, theme().surface, theme().edge);
  }
};

QLineEdit* lineField(const std::string& words, const char* objectName) {
  auto* const field = new QLineEdit(text(words));
  field->setObjectName(QString::fromLatin1(objectName));
  field->setTextMargins(fieldTextMargin, 0, fieldTextMargin, 0);
  field->setMinimumHeight(Metrics::atLeast(Metrics::buttonHeight, field->font()));
  field->setModified(false);
  return field;
}

QLabel* quietNote(const QString& words, const char* objectName) {
  QLabel* const label = PlainText::label(words);
  label->setObjectName(QString::fromLatin1(objectName));
  label->setFont(Metrics::font(Metrics::Type::callout));
  label->setForegroundRole(QPalette::Dark);
  label->setWordWrap(true);
  return label;
}

}  // namespace

EditPresetDialog::EditPresetDialog(const TuningPreset& preset, const QStringList& games,
                                   QWidget* parent)
    : Dialog(QStringLiteral("Edit preset"), parent),
      preset_(preset),
      fields_(new QVBoxLayout),
      name_(lineField(preset.name, "editNameField")),
      game_(new QComboBox),
      source_(lineField(preset.source, "editSourceField")),
      notes_(new QPlainTextEdit),
      save_(new Button(QStringLiteral("Save changes"), Button::Kind::prominent)) {
  setObjectName(QStringLiteral("editPresetDialog"));
  buildFields(games);
  save_->setObjectName(QStringLiteral("saveEditButton"));
  save_->setDefault(true);
  addButton(save_, true);
  auto* const cancel = new Button(QStringLiteral("Cancel"));
  cancel->setObjectName(QStringLiteral("cancelEditButton"));
  addButton(cancel, false);
  setFixedWidth(editorWidth);
  connect(name_, &QLineEdit::textChanged, this, &EditPresetDialog::renderButton);
  connect(this, &QDialog::accepted, this, [this] { emit saved(preset_, edited()); });
  renderButton();
  name_->setFocus();
  name_->selectAll();
}

void EditPresetDialog::buildFields(const QStringList& games) {
  game_->setObjectName(QStringLiteral("editGameField"));
  game_->setEditable(true);
  game_->setInsertPolicy(QComboBox::NoInsert);
  game_->addItems(games);
  game_->setEditText(text(preset_.game));
  game_->lineEdit()->setModified(false);
  game_->lineEdit()->setObjectName(QStringLiteral("editGameText"));
  game_->setMinimumHeight(Metrics::atLeast(Metrics::buttonHeight, font()));
  notes_->setObjectName(QStringLiteral("editNotesField"));
  notes_->setPlainText(text(preset_.notes));
  notes_->setTabChangesFocus(true);
  notes_->setFrameShape(QFrame::NoFrame);
  notes_->viewport()->setAutoFillBackground(false);
  notes_->installEventFilter(this);
  auto* const frame = new NotesFrame(notes_);
  frame->setFixedHeight((notesLines + 1) * fontMetrics().lineSpacing());
  fields_->setSpacing(fieldGap);
  addField(QStringLiteral("Name"), name_);
  addField(QStringLiteral("Game"), game_);
  addField(QStringLiteral("Source"), source_);
  addField(QStringLiteral("Notes"), frame);
  notes_->setAccessibleName(QStringLiteral("Notes"));
  content().addLayout(fields_);
  auto* const help = quietNote(QStringLiteral("Shown under the preset and shared with it. A good "
                                              "place for the settings in the game."),
                               "editNotesHelp");
  help->setContentsMargins(labelWidth, fieldGap / 2, 0, 0);
  content().addWidget(help);
  const std::size_t count = preset_.values.size();
  auto* const stay =
      quietNote(count == 1 ? QStringLiteral("Its value stays as it is.")
                           : QStringLiteral("All %1 values stay as they are.").arg(count),
                "editValuesNote");
  stay->setContentsMargins(0, fieldGap, 0, 0);
  content().addWidget(stay);
}

void EditPresetDialog::addField(const QString& label, QWidget* field) {
  auto* const row = new QHBoxLayout;
  row->setSpacing(0);
  QLabel* const title = PlainText::label(label);
  title->setForegroundRole(QPalette::Dark);
  title->setFixedWidth(labelWidth);
  title->setBuddy(field);
  title->setContentsMargins(0, fieldTextMargin, 0, 0);
  field->setAccessibleName(label);
  row->addWidget(title, 0, Qt::AlignTop);
  row->addWidget(field, 1);
  fields_->addLayout(row);
}

// A field that was not touched keeps its text exactly, with what the field cannot show.
TuningPreset EditPresetDialog::edited() const {
  TuningPreset after = preset_;
  if (name_->isModified()) after.name = text(name_->text().trimmed());
  if (game_->currentText() != text(preset_.game)) after.game = text(game_->currentText().trimmed());
  if (source_->isModified()) after.source = text(source_->text().trimmed());
  if (notes_->document()->isModified()) after.notes = text(notes_->toPlainText().trimmed());
  return after;
}

void EditPresetDialog::renderButton() {
  const bool isNamed = !name_->text().trimmed().isEmpty();
  setAvailable(*save_, isNamed ? QString() : QStringLiteral("Type a name first"));
}

bool EditPresetDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == notes_ && event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isReturn && key.modifiers().testFlag(Qt::ControlModifier)) {
      save_->click();
      return true;
    }
  }
  return Dialog::eventFilter(watched, event);
}

}  // namespace quorvane
