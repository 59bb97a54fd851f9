// The window with the bases of this machine, controlled by commands on standard input, one per
// line:
//
//   quorvane-driven [DEVICE]     DEVICE: the base to use, as for `quorvane --device`
//
//   click NAME | show | quit
//
// NAME is the object name of a button. `show` prints what the window shows as one JSON line. End of
// input quits.

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "support/standard_streams.h"
#include "tests/app/no_panels.h"
#include "tests/windowless/line_input.h"
#include "ui/base/base_row.h"
#include "ui/base/check_fold.h"
#include "ui/base/check_row.h"
#include "ui/kit/style.h"
#include "ui/kit/text.h"
#include "ui/shell/main_window.h"
#include "ui/tuning/parameter_row.h"

namespace quorvane {
namespace {

std::string shownText(const QWidget& window, const char* objectName) {
  const auto* const label = window.findChild<QLabel*>(QString::fromLatin1(objectName));
  return label != nullptr && label->isVisible() ? text(label->text()) : "";
}

// The rows by code, with their sliders' accessible names: "Force feedback strength, 65 %".
nlohmann::ordered_json rows(const QWidget& window) {
  nlohmann::ordered_json json = nlohmann::ordered_json::object();
  for (const ParameterRow* const row : window.findChildren<ParameterRow*>()) {
    const QString code = text(row->parameter().code());
    const auto* const slider = row->findChild<QWidget*>(code + QStringLiteral("Slider"));
    if (row->isVisible() && slider != nullptr) json[text(code)] = text(slider->accessibleName());
  }
  return json;
}

// The attached bases by node, with the text at the end of each row, or "" if it has a button there.
nlohmann::ordered_json bases(const QWidget& window) {
  nlohmann::ordered_json json = nlohmann::ordered_json::object();
  for (const BaseRow* const row : window.findChildren<BaseRow*>()) {
    if (row->isVisible()) json[row->base().device->node()] = shownText(*row, "baseLink");
  }
  return json;
}

// The doctor's list: title to outcome.
nlohmann::ordered_json checks(const QWidget& window) {
  nlohmann::ordered_json json = nlohmann::ordered_json::object();
  for (const CheckRow* const row : window.findChildren<CheckRow*>()) {
    if (row->isVisible()) json[shownText(*row, "checkTitle")] = "Failed";
  }
  for (const auto& [name, outcome] :
       {std::pair("passedChecks", "Passed"), std::pair("uncheckedChecks", "Not checked")}) {
    const auto* const fold = window.findChild<CheckFold*>(QString::fromLatin1(name));
    if (fold == nullptr || !fold->isVisible()) continue;
    for (const DoctorCheck& check : fold->checks()) json[check.title] = outcome;
  }
  return json;
}

// The object names of the buttons that are visible and enabled.
nlohmann::ordered_json buttons(const QWidget& window) {
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
    if (button->isVisible() && button->isEnabled()) json.push_back(text(button->objectName()));
  }
  return json;
}

void show(const QWidget& window) {
  const auto* const spinner = window.findChild<QWidget*>(QStringLiteral("busySpinner"));
  const nlohmann::ordered_json json{{"status", shownText(window, "statusLine")},
                                    {"busy", spinner->isVisible()},
                                    {"message", shownText(window, "tuningMessage")},
                                    {"count", shownText(window, "unsavedCount")},
                                    {"buttons", buttons(window)},
                                    {"rows", rows(window)},
                                    {"question", shownText(window, "dialogMessage")},
                                    {"bases", bases(window)},
                                    {"checks", checks(window)}};
  std::printf("%s\n", json.dump().c_str());
  std::fflush(stdout);
}

void click(const QWidget& window, const std::string& name) {
  auto* const button = window.findChild<QAbstractButton*>(text(std::string_view(name)));
  if (button == nullptr || !button->isVisible() || !button->isEnabled()) {
    std::fprintf(stderr, "cannot click: %s\n", name.c_str());
    return;
  }
  button->click();
}

void carryOut(const QWidget& window, const std::string& line) {
  if (line == "show") {
    show(window);
  } else if (line == "quit") {
    QCoreApplication::quit();
  } else if (line.starts_with("click ")) {
    click(window, line.substr(line.find(' ') + 1));
  } else {
    std::fprintf(stderr, "no action: %s\n", line.c_str());
  }
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  prepareStandardStreams();
  const QApplication application(argc, argv);
  QApplication::setStyle(new Style);
  NoPanels panels;
  AppModel model({{}, panels}, argc > 1 ? argv[1] : "");
  MainWindow window(model);
  window.show();
  const LineInput input([&](const std::string& line) { carryOut(window, line); });
  return QApplication::exec();
}
