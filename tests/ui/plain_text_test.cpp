#include "ui/kit/plain_text.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QTextDocument>
#include <QToolTip>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using std::filesystem::path;

// Texts that must be shown unchanged. Their references must not be followed.
const std::vector<std::string> markups{"<img src='/dev/null'>",
                                       "<h1>Update required</h1>",
                                       "<b>bold</b> &lt;i&gt;",
                                       "&File && more",
                                       "[*]",
                                       "<table><tr><td>x",
                                       "a < b & c > d"};

// The text that a tooltip shows.
QString shownTip(const QString& tip) {
  if (!Qt::mightBeRichText(tip)) return tip;
  QTextDocument document;
  document.setHtml(tip);
  return document.toPlainText();
}

TEST(PlainTextTest, TooltipsShowEveryCharacter) {
  std::vector<std::string> texts = markups;
  texts.insert(texts.end(), {"", "Wet", "<b>two\nlines</b>", "<i>  blanks  between</i>"});
  for (const std::string& words : texts) {
    QWidget widget;
    PlainText::setToolTip(widget, text(words));
    EXPECT_EQ(shownTip(widget.toolTip()).toStdString(), words);
    QAction action;
    PlainText::setToolTip(action, text(words));
    EXPECT_EQ(shownTip(action.toolTip()).toStdString(), words.empty() ? "" : words);
  }
}

TEST(PlainTextTest, OrdinaryTooltipsStayAsTheyAre) {
  for (const char* const words : {"Delete this preset", "3 < 4", "two\nlines"}) {
    EXPECT_EQ(PlainText::toolTip(QString::fromUtf8(words)).toStdString(), words);
  }
}

TEST(PlainTextTest, LabelsGuessNothing) {
  EXPECT_EQ(std::unique_ptr<QLabel>(PlainText::label())->textFormat(), Qt::PlainText);
}

TEST(PlainTextTest, TitlesHaveNoPlaceholder) {
  QWidget window;
  PlainText::setWindowTitle(window, QStringLiteral("a[*]b"));
  EXPECT_EQ(window.windowTitle(), QStringLiteral("a[*][*]b"));
}

TEST(PlainTextTest, EntriesHaveNoMnemonicOfTheirOwn) {
  EXPECT_EQ(PlainText::withoutMnemonic(QStringLiteral("&File & more")),
            QStringLiteral("&&File && more"));
}

class PlainTextEverywhere : public WindowTest {
 protected:
  static Lines offendersIn(const QWidget& window) {
    Lines offenders;
    const auto offends = [&](const QWidget& widget, const char* what) {
      offenders.push_back(std::string(widget.metaObject()->className()) + " \"" +
                          widget.objectName().toStdString() + "\": " + what);
    };
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (widget->inherits("QTipLabel")) continue;
      if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
        if (label->textFormat() != Qt::PlainText) offends(*widget, "guesses its text's format");
        if (isForeign(label->text()) && spoken(*widget) != spokenAs(*label)) {
          offends(*widget, "is spoken as another text");
        }
      }
      const auto* const button = qobject_cast<const QAbstractButton*>(widget);
      if (button != nullptr && isForeign(button->text())) offends(*widget, "has a mnemonic");
      if (isForeign(widget->toolTip()) && !isForeign(shownTip(widget->toolTip()))) {
        offends(*widget, "has a tooltip with markup");
      }
    }
    return offenders;
  }

  static QString spoken(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
  }

  static QString spokenAs(const QLabel& label) {
    return label.accessibleName().isEmpty() ? label.text() : label.accessibleName();
  }

  static bool isForeign(const QString& words) {
    for (const std::string& markup : markups) {
      if (words.contains(quorvane::text(markup))) return true;
    }
    return false;
  }

  // Deletes tooltips, because hiding them takes a while.
  static void closeTips() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      if (widget->inherits("QTipLabel")) delete widget;
    }
  }

  // The tooltip that the widget shows when the pointer rests on it.
  static QString tipOf(QWidget& widget) {
    closeTips();
    const QPoint at(2, widget.height() / 2);
    QHelpEvent help(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QApplication::sendEvent(&widget, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }

  // Puts the markup into all texts of presets and bases, and into a file's name.
  void fill(const std::string& markup) {
    base().setProperty(HIDPropertyKey::product, markup);
    base().setProperty(HIDPropertyKey::serialNumber, markup);
    useRealTime();
    attach(0x0006).setProperty(HIDPropertyKey::product, markup);
    device(1).setProperty(HIDPropertyKey::serialNumber, markup);
    open();
    std::string longText = markup;
    while (longText.size() < 300) longText += " " + markup;
    TuningPreset preset = presetOf(longText, {{P::forceFeedback, 80}});
    preset.game = preset.source = preset.notes = longText;
    const path file = directory_ / "wet.json";
    putFile(file, encodePresets({preset, presetOf(markup, {{P::forceFeedback, 80}})}));
    model().importSettings(file);
    model().importSettings(directory_ / markup / "missing.json");
    model().saveCurrentAsPreset(markup);
    settle();
  }
};

TEST_F(PlainTextEverywhere, EveryPageTooltipAndDialog) {
  for (const std::string& markup : markups) {
    fill(markup);
    for (const Section section : allSections) {
      visit(section);
      EXPECT_EQ(offendersIn(window()), Lines{}) << markup << " in " << rawValue(section);
      for (ElidedLabel* const label : window().findChildren<ElidedLabel*>()) {
        if (!label->isVisible()) continue;
        const QString tip = tipOf(*label);
        EXPECT_TRUE(tip.isEmpty() || shownTip(tip) == label->text()) << tip.toStdString();
      }
    }
    visit(Section::presets);
    for (QAbstractButton* const apply :
         find("minePresets").findChildren<QAbstractButton*>(QStringLiteral("applyButton"))) {
      apply->click();
      settle();
      ASSERT_NE(dialog(), nullptr);
      EXPECT_EQ(offendersIn(*dialog()), Lines{}) << markup;
      EXPECT_TRUE(textOf(find("dialogTitle", *dialog())).find(markup) != std::string::npos);
      click("cancelButton");
    }
    closeTips();
    closeWindow();
    end();
    std::filesystem::remove(directory_ / "presets.json");
    device(1).unplug();
    device(0).unplug();
    backend_.waitUntilQuiet();
  }
}

TEST_F(PlainTextEverywhere, LongNamesAreShownInFullByTheirTooltip) {
  fill(markups[0]);
  visit(Section::presets);
  QString longest;
  for (ElidedLabel* const label :
       find("minePresets").findChildren<ElidedLabel*>(QStringLiteral("presetName"))) {
    const QString tip = shownTip(tipOf(*label));
    if (tip.size() > longest.size()) longest = tip;
  }
  EXPECT_GE(longest.size(), 300);
  EXPECT_TRUE(longest.startsWith(quorvane::text(markups[0]))) << longest.toStdString();
  closeTips();
}

TEST_F(PlainTextEverywhere, TheMenusShowPresetsWithoutMnemonics) {
  open();
  for (const QAction* const action : find<QMenu>("loadDefaultsMenu").actions()) {
    EXPECT_FALSE(QString(action->text()).remove(QLatin1String("&&")).contains(QLatin1Char('&')));
  }
}

}  // namespace
}  // namespace quorvane
