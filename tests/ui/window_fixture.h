#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QObject>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/app/model_fixture.h"
#include "ui/shell/main_window.h"

namespace quorvane {

inline constexpr const char* waitReason = "Wait until the base has answered";
inline constexpr const char* connectReason = "Connect a base first";

// Catches the links that the window opens.
class OpenedLinks final : public QObject {
  Q_OBJECT

 public:
  OpenedLinks();
  ~OpenedLinks() override;
  OpenedLinks(const OpenedLinks&) = delete;
  OpenedLinks& operator=(const OpenedLinks&) = delete;

  Lines take();

 public slots:
  void open(const QUrl& url);

 private:
  Lines urls_;
};

// The window on the model's fixture. Destroyed before the model.
class WindowTest : public ModelTest {
 protected:
  void TearDown() override;

  // Show the window: with a base that has answered, without a base, or on the model as it is.
  void open();
  void openWithoutBase();
  void show();
  void closeWindow();
  MainWindow& window() { return *window_; }

  void visit(Section section);

  // Blocks until the model is idle and the window is laid out and drawn.
  void settle();

  // Blocks until the window shows what has arrived so far. An exchange may be running.
  void render();

  // Begins an exchange, calls `look` while it waits for the base's answer, and settles.
  void whileBusy(const std::function<void()>& begin, const std::function<void()>& look);
  void whileReading(const std::function<void()>& look);

  // Calls `begin`, then `look` while the exchange is held at the end of its n-th pause, n from 0.
  // Settles afterwards.
  void atPause(int pause, const std::function<void()>& begin, const std::function<void()>& look);

  // The only widget or action with this object name. Throws std::runtime_error if there is none or
  // more than one.
  template <typename T = QWidget>
  T& find(const std::string& name) {
    return find<T>(name, window());
  }
  template <typename T = QWidget>
  T& find(const std::string& name, const QObject& in) {
    const auto found = in.findChildren<T*>(QString::fromStdString(name));
    if (found.size() != 1) {
      throw std::runtime_error("there are " + std::to_string(found.size()) + " " +
                               T::staticMetaObject.className() + " \"" + name + "\"");
    }
    return *found.front();
  }

  bool exists(const std::string& name);
  bool isVisible(const std::string& name);

  // The text of a label, button, line edit, combo box or spin box. Throws std::runtime_error for
  // other widgets.
  std::string text(const std::string& name);
  static std::string textOf(const QWidget& widget);
  std::string name(const std::string& widget);         // its accessible name
  std::string description(const std::string& widget);  // its accessible description

  // "enabled", "enabled: TOOLTIP" or "disabled: TOOLTIP".
  std::string state(const std::string& widget);
  static std::string stateOf(const QWidget& widget);
  static std::string stateOf(const QAction& action);

  // The mouse clicks in the middle of the widget. Keys go to the widget with the focus.
  void click(const std::string& name);
  void click(QWidget& widget);
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void type(const std::string& words);
  void focus(const std::string& name);
  std::string focused();
  void trigger(const std::string& action);

  // Turns the mouse wheel over a widget by so many notches, away from the user.
  static void turnWheel(QWidget& widget, int notches);

  // The open dialog, or nullptr.
  QWidget* dialog();

  // Stages a value, as its row does.
  void stage(TuningParameter parameter, std::int64_t value);

  OpenedLinks links_;

 private:
  const ScopedVariable noSection_{"QUORVANE_SECTION"};
  const ScopedVariable stateHome_{"XDG_STATE_HOME", (directory_ / "state").string()};
  std::unique_ptr<MainWindow> window_;
};

// The titles of a menu's entries, with "-" for separators.
Lines entriesOf(const QMenu& menu);

}  // namespace quorvane
