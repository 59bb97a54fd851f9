// The lower bound for the window's figures: the same number of standard Qt widgets in a window of
// the same size, without a model.

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int sections = 5;
constexpr int parameters = 18;
constexpr int sidebarWidth = 200;
constexpr int windowWidth = 1120;
constexpr int windowHeight = 740;

QWidget* sidebar() {
  auto* const list = new QListWidget;
  list->setFixedWidth(sidebarWidth);
  for (int i = 1; i <= sections; ++i) list->addItem(QStringLiteral("Section %1").arg(i));
  list->setCurrentRow(0);
  return list;
}

QLayout* row(int number) {
  auto* const slider = new QSlider(Qt::Horizontal);
  auto* const box = new QSpinBox;
  auto* const line = new QHBoxLayout;
  line->addWidget(new QLabel(QStringLiteral("Parameter %1").arg(number)));
  line->addWidget(slider, 1);
  line->addWidget(box);
  QObject::connect(slider, &QSlider::valueChanged, box, &QSpinBox::setValue);
  return line;
}

QWidget* rows() {
  auto* const content = new QWidget;
  auto* const column = new QVBoxLayout(content);
  for (int i = 1; i <= parameters; ++i) column->addLayout(row(i));
  auto* const area = new QScrollArea;
  area->setWidgetResizable(true);
  area->setWidget(content);
  return area;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  auto* const line = new QHBoxLayout(&window);
  line->addWidget(sidebar());
  line->addWidget(rows(), 1);
  window.resize(windowWidth, windowHeight);
  window.show();
  return QApplication::exec();
}
