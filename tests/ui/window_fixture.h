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

// Takes the links that the window opens.
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

// The window on the model of a world of simulated bases. It goes before the model does.
class WindowTest : public ModelTest {
 protected:
  void TearDown() override;

  // Shows the window: with a base that has answered, with none, or on the model as it is.
  void open();
  void openWithoutBase();
  void show();
  void closeWindow();
  MainWindow& window() { return *window_; }

  void visit(Section section);

  // Until nothing is going on, and everything is drawn and laid out.
  void settle();

  // What has come in until now gets into the window; an exchange may be under way.
  void render();

  // Begins an exchange, and looks at the window while the base has not answered yet.
  void whileBusy(const std::function<void()>& begin, const std::function<void()>& look);
  void whileReading(const std::function<void()>& look);

  // Does something, and lets the main thread do more at the end of the pause with this number.
  void atPause(int pause, const std::function<void()>& begin, const std::function<void()>& look);

  // The one widget or action with this name.
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

  // What it shows: a label, a button, a field, a picker.
  std::string text(const std::string& name);
  static std::string textOf(const QWidget& widget);
  std::string name(const std::string& widget);         // its accessible name
  std::string description(const std::string& widget);  // its accessible description

  // "enabled", with its help text after a colon where it has one; else "disabled: the reason".
  std::string state(const std::string& widget);
  static std::string stateOf(const QWidget& widget);
  static std::string stateOf(const QAction& action);

  // With the mouse, in the middle; with the keyboard, at what has the focus.
  void click(const std::string& name);
  void click(QWidget& widget);
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void type(const std::string& words);
  void focus(const std::string& name);
  std::string focused();
  void trigger(const std::string& action);

  // Turns the wheel over a widget by so many notches, away from the person.
  static void turnWheel(QWidget& widget, int notches);

  // The dialog that is open, or none.
  QWidget* dialog();

  // What the value's row stages, saves or shows.
  void stage(TuningParameter parameter, std::int64_t value);

  OpenedLinks links_;

 private:
  const ScopedVariable noSection_{"QUORVANE_SECTION"};
  std::unique_ptr<MainWindow> window_;
};

// Titles of a menu's entries, a line for each and "-" between groups.
Lines entriesOf(const QMenu& menu);

}  // namespace quorvane
