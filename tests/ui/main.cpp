#include <gtest/gtest.h>

#include <QApplication>
#include <QByteArray>

#include "ui/kit/style.h"

// The window's tests need no display.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setStyle(new quorvane::Style);
  return RUN_ALL_TESTS();
}
