#include "tests/ui/window_fixture.h"

#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>
#include <utility>

namespace quorvane {
namespace {

constexpr int notch = 120;
constexpr int deepestLayout = 10;

std::string stateText(bool isEnabled, const QString& help) {
  if (!isEnabled) return "disabled: " + help.toStdString();
  return help.isEmpty() ? "enabled" : "enabled: " + help.toStdString();
}

// Handles events, also those that others cause: the layout of a new row reaches its page through
// every widget between them, one per round. Also deletes dialogs that have closed.
void handleEvents() {
  for (int round = 0; round < deepestLayout; ++round) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// RAII: opens the gate, also if a test ends early.
class Opened {
 public:
  explicit Opened(Gate& gate) : gate_(gate) {}
  ~Opened() { gate_.open(); }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

 private:
  Gate& gate_;
};

}  // namespace

OpenedLinks::OpenedLinks() {
  for (const char* const scheme : {"https", "mailto"}) {
    QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
  }
}

OpenedLinks::~OpenedLinks() {
  for (const char* const scheme : {"https", "mailto"}) {
    QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
  }
}

void OpenedLinks::open(const QUrl& url) { urls_.push_back(url.toString().toStdString()); }

Lines OpenedLinks::take() { return std::exchange(urls_, {}); }

void WindowTest::TearDown() {
  backend_.hold(false);
  if (window_) {
    settle();
    closeWindow();
  }
  ModelTest::TearDown();
}

void WindowTest::open() {
  start();
  show();
}

void WindowTest::openWithoutBase() {
  startWithoutBase();
  show();
}

void WindowTest::show() {
  window_ = std::make_unique<MainWindow>(model());
  window_->show();
  window_->activateWindow();
  handleEvents();
}

void WindowTest::closeWindow() { window_.reset(); }

void WindowTest::visit(Section section) {
  window().setSection(section);
  handleEvents();
}

void WindowTest::settle() {
  ModelTest::settle();
  handleEvents();
}

void WindowTest::render() {
  base().waitUntilQuiet();
  handleEvents();
}

void WindowTest::whileBusy(const std::function<void()>& begin, const std::function<void()>& look) {
  const auto gate = std::make_shared<Gate>();
  clock_.at(Moment::request, 0, [gate] { gate->pass(); });
  begin();
  gate->awaitArrival();
  {
    const Opened opened(*gate);
    handleEvents();
    look();
  }
  settle();
}

void WindowTest::whileReading(const std::function<void()>& look) {
  whileBusy([this] { model().refresh(); }, look);
}

void WindowTest::atPause(int pause, const std::function<void()>& begin,
                         const std::function<void()>& look) {
  const auto gate = std::make_shared<Gate>();
  clock_.at(Moment::pause, pause, [gate] { gate->pass(); });
  begin();
  gate->awaitArrival();
  {
    const Opened opened(*gate);
    render();
    look();
  }
  settle();
}

bool WindowTest::exists(const std::string& name) {
  return window().findChild<QObject*>(QString::fromStdString(name)) != nullptr;
}

bool WindowTest::isVisible(const std::string& name) { return find(name).isVisible(); }

std::string WindowTest::text(const std::string& name) { return textOf(find(name)); }

std::string WindowTest::textOf(const QWidget& widget) {
  QString shown;
  if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
    shown = label->text();
  } else if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
    shown = button->text();
  } else if (const auto* const field = qobject_cast<const QLineEdit*>(&widget)) {
    shown = field->text();
  } else if (const auto* const picker = qobject_cast<const QComboBox*>(&widget)) {
    shown = picker->currentText();
  } else if (const auto* const number = qobject_cast<const QSpinBox*>(&widget)) {
    shown = number->text();
  } else {
    throw std::runtime_error("\"" + widget.objectName().toStdString() + "\" shows no text");
  }
  return shown.toStdString();
}

std::string WindowTest::name(const std::string& widget) {
  return find(widget).accessibleName().toStdString();
}

std::string WindowTest::description(const std::string& widget) {
  return find(widget).accessibleDescription().toStdString();
}

std::string WindowTest::state(const std::string& widget) { return stateOf(find(widget)); }

std::string WindowTest::stateOf(const QWidget& widget) {
  return stateText(widget.isEnabled(), widget.toolTip());
}

std::string WindowTest::stateOf(const QAction& action) {
  return stateText(action.isEnabled(), action.isEnabled() ? QString() : action.toolTip());
}

void WindowTest::click(const std::string& name) { click(find(name)); }

void WindowTest::click(QWidget& widget) {
  EXPECT_TRUE(widget.isVisible()) << widget.objectName().toStdString();
  QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, widget.rect().center());
  handleEvents();
}

void WindowTest::press(int key, Qt::KeyboardModifiers modifiers) {
  // Activates the window, as a desktop does when a dialog has closed.
  if (QApplication::activeWindow() == nullptr) {
    window().activateWindow();
    handleEvents();
  }
  QWidget* target = QApplication::focusWidget();
  if (target == nullptr) target = &window();
  QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
  handleEvents();
}

void WindowTest::type(const std::string& words) {
  for (const char c : words) {
    QTest::keyClick(QApplication::focusWidget(), c);
  }
  handleEvents();
}

void WindowTest::focus(const std::string& name) {
  find(name).setFocus(Qt::TabFocusReason);
  EXPECT_EQ(focused(), name);
}

std::string WindowTest::focused() {
  const QWidget* const widget = QApplication::focusWidget();
  return widget == nullptr ? "nothing" : widget->objectName().toStdString();
}

void WindowTest::trigger(const std::string& action) {
  find<QAction>(action).trigger();
  handleEvents();
}

void WindowTest::turnWheel(QWidget& widget, int notches) {
  const QPointF centre = QRectF(widget.rect()).center();
  QWheelEvent event(centre, widget.mapToGlobal(centre), {}, {0, notches * notch}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QSpontaneKeyEvent::setSpontaneous(&event);  // Qt propagates only spontaneous ones to parents
  qApp->notify(&widget, &event);
  handleEvents();
}

QWidget* WindowTest::dialog() {
  for (QDialog* const dialog : window().findChildren<QDialog*>()) {
    if (dialog->isVisible()) return dialog;
  }
  return nullptr;
}

void WindowTest::stage(TuningParameter parameter, std::int64_t value) {
  model().stage(parameter, value);
  handleEvents();
}

Lines entriesOf(const QMenu& menu) {
  Lines entries;
  for (const QAction* const action : menu.actions()) {
    entries.push_back(
        action->isSeparator() ? "-" : action->text().remove(QLatin1Char('&')).toStdString());
  }
  return entries;
}

}  // namespace quorvane
