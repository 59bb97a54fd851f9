#include "ui/kit/style.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cstdint>

#include "ui/kit/device_pixels.h"
#include "ui/kit/mark.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int comboPadding = 10;
constexpr int chevronRoom = 26;
constexpr int stepSign = 7;
constexpr int holdBeforeRepeat = 400;  // milliseconds
constexpr int scrollBarWidth = 12;
constexpr int handleInset = 3;
constexpr int leastHandle = 32;

// The control's property "mark": how it marks its value.
Mark markOf(const QWidget* widget) {
  return widget == nullptr ? Mark::none : static_cast<Mark>(widget->property("mark").toInt());
}

void drawComboBox(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) {
  const Theme& t = theme();
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  const bool hovered = enabled && option.state.testFlag(QStyle::State_MouseOver);
  const QColor border = markColour(markOf(widget), enabled ? t.edge : t.line);
  drawBox(painter, option.rect, Metrics::controlRadius,
          !enabled  ? t.window
          : hovered ? t.hover
                    : t.surface,
          border);
  const bool isMirrored = option.direction == Qt::RightToLeft;
  const qreal inside = chevronRoom / 2.0 - 2;
  const QPointF centre(isMirrored ? option.rect.left() + inside : option.rect.right() - inside,
                       option.rect.center().y() + 1);
  drawChevron(painter, centre, Qt::DownArrow, enabled ? t.ink2 : t.inkDisabled);
}

void drawStep(QPainter& painter, const QRect& rect, bool plus, bool enabled, bool hovered) {
  const Theme& t = theme();
  const DevicePixels pixels(painter);
  const QRectF ground = pixels.snapped(rect);
  const qreal border = pixels.one();
  if (hovered && enabled) {
    painter.fillRect(ground.adjusted(border, border, -border, -border), t.hover);
  }
  const QColor ink = enabled ? t.ink2 : t.inkDisabled;
  const QRectF across = pixels.centred(ground, stepSign, 1);
  painter.fillRect(across, ink);
  if (plus) painter.fillRect(pixels.centred(across, 1, stepSign), ink);
}

void drawSpinBox(const QStyle& style, const QStyleOptionSpinBox& option, QPainter& painter,
                 const QWidget* widget) {
  const Theme& t = theme();
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  drawBox(painter, option.rect, Metrics::controlRadius, t.surface,
          markColour(markOf(widget), t.edge));
  const QRect minus =
      style.subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxDown, widget);
  const QRect plus =
      style.subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, widget);
  const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
  drawStep(painter, minus, false,
           enabled && option.stepEnabled.testFlag(QAbstractSpinBox::StepDownEnabled),
           hovered && option.activeSubControls == QStyle::SC_SpinBoxDown);
  drawStep(painter, plus, true,
           enabled && option.stepEnabled.testFlag(QAbstractSpinBox::StepUpEnabled),
           hovered && option.activeSubControls == QStyle::SC_SpinBoxUp);
  const bool isMirrored = option.direction == Qt::RightToLeft;
  drawEdge(painter, minus.adjusted(0, 1, 0, -1), isMirrored ? Qt::LeftEdge : Qt::RightEdge,
           t.divider);
  drawEdge(painter, plus.adjusted(0, 1, 0, -1), isMirrored ? Qt::RightEdge : Qt::LeftEdge,
           t.divider);
}

QRect spinBoxRect(const QRect& all, QStyle::SubControl part) {
  const int step = Metrics::stepButton();
  switch (part) {
    case QStyle::SC_SpinBoxDown:
      return {all.left(), all.top(), step, all.height()};
    case QStyle::SC_SpinBoxUp:
      return {all.right() + 1 - step, all.top(), step, all.height()};
    case QStyle::SC_SpinBoxEditField:
      return all.adjusted(step + 1, 1, -step - 1, -1);
    default:
      return all;
  }
}

QRect comboBoxRect(const QRect& all, QStyle::SubControl part) {
  switch (part) {
    case QStyle::SC_ComboBoxEditField:
      return all.adjusted(comboPadding, 0, -chevronRoom, 0);
    case QStyle::SC_ComboBoxArrow:
      return {all.right() + 1 - chevronRoom, all.top(), chevronRoom, all.height()};
    default:
      return all;
  }
}

// A scroll bar with a slim handle and without arrows.
QRect scrollBarRect(const QStyleOptionSlider& option, QStyle::SubControl part) {
  const QRect all = option.rect;
  const bool isHorizontal = option.orientation == Qt::Horizontal;
  const int length = isHorizontal ? all.width() : all.height();
  const int range = option.maximum - option.minimum;
  const int handle = range <= 0
                         ? length
                         : std::clamp(static_cast<int>(std::int64_t{length} * option.pageStep /
                                                       (std::int64_t{range} + option.pageStep)),
                                      std::min(leastHandle, length), length);
  const int start = QStyle::sliderPositionFromValue(
      option.minimum, option.maximum, option.sliderPosition, length - handle, option.upsideDown);
  const auto stretch = [&](int from, int to) {
    return isHorizontal ? QRect(all.left() + from, all.top(), to - from, all.height())
                        : QRect(all.left(), all.top() + from, all.width(), to - from);
  };
  switch (part) {
    case QStyle::SC_ScrollBarGroove:
      return all;
    case QStyle::SC_ScrollBarSlider:
      return stretch(start, start + handle);
    case QStyle::SC_ScrollBarSubPage:
      return stretch(0, start);
    case QStyle::SC_ScrollBarAddPage:
      return stretch(start + handle, length);
    default:
      return {};
  }
}

void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter) {
  if (option.maximum <= option.minimum) return;
  const Theme& t = theme();
  const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
  const QRect handle = scrollBarRect(option, QStyle::SC_ScrollBarSlider)
                           .adjusted(handleInset, handleInset, -handleInset, -handleInset);
  drawBox(painter, handle, std::min(handle.width(), handle.height()) / 2.0,
          hovered ? t.bar : t.graduation, QColor());
}

// Makes a menu's highlighted entry grey, since the brand colour marks unsaved values.
template <typename Option>
Option quietly(const Option& option) {
  Option quiet = option;
  quiet.palette.setColor(QPalette::Highlight, theme().selection);
  quiet.palette.setColor(QPalette::HighlightedText, theme().ink);
  return quiet;
}

// The icon of a menu bar that has no room for all its menus.
class OverflowIcon final : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
             QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(mode == QIcon::Disabled ? theme().inkDisabled : theme().ink2, 1.5,
                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF centre = QRectF(rect).center();
    for (const qreal left : {-4.0, 1.0}) {
      painter->drawPolyline(QPolygonF(
          {centre + QPointF(left, -3), centre + QPointF(left + 3, 0), centre + QPointF(left, 3)}));
    }
    painter->restore();
  }

  QIconEngine* clone() const override { return new OverflowIcon(*this); }
};

}  // namespace

Style::Style() : QProxyStyle(QStringLiteral("fusion")) {}

void Style::setPrefersDark(std::optional<bool> prefersDark) {
  if (prefersDark_ == prefersDark) return;
  prefersDark_ = prefersDark;
  QApplication::setPalette(QPalette());  // reloads the desktop's palette
}

void Style::polish(QPalette& palette) {
  const Theme& fitting = !prefersDark_   ? Theme::fitting(palette)
                         : *prefersDark_ ? Theme::dark()
                                         : Theme::light();
  setTheme(fitting);
  palette = fitting.palette();
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  const Theme& t = theme();
  switch (element) {
    case PE_FrameFocusRect:
      return;  // FocusRing shows the focus
    case PE_PanelLineEdit: {
      const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame == nullptr || frame->lineWidth == 0) return;
      const bool enabled = option->state.testFlag(State_Enabled);
      drawBox(*painter, option->rect, Metrics::controlRadius, enabled ? t.surface : t.window,
              enabled ? t.edge : t.line);
      return;
    }
    case PE_PanelTipLabel:
      drawBox(*painter, option->rect, 0, t.surface, t.edge);
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  if (const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
    const QStyleOptionMenuItem quiet = quietly(*item);
    QProxyStyle::drawControl(element, &quiet, painter, widget);
    return;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const {
  if (const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
      control == CC_ComboBox && combo != nullptr) {
    drawComboBox(*combo, *painter, widget);
  } else if (const auto* const spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
             control == CC_SpinBox && spin != nullptr) {
    drawSpinBox(*this, *spin, *painter, widget);
  } else if (const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
             control == CC_ScrollBar && bar != nullptr) {
    drawScrollBar(*bar, *painter);
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                            SubControl subControl, const QWidget* widget) const {
  if (control == CC_SpinBox) {
    return visualRect(option->direction, option->rect, spinBoxRect(option->rect, subControl));
  }
  if (const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
      control == CC_ScrollBar && bar != nullptr) {
    return scrollBarRect(*bar, subControl);
  }
  if (control == CC_ComboBox && subControl != SC_ComboBoxListBoxPopup) {
    return visualRect(option->direction, option->rect, comboBoxRect(option->rect, subControl));
  }
  return QProxyStyle::subControlRect(control, option, subControl, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                       const QWidget* widget) const {
  switch (metric) {
    case PM_MenuButtonIndicator:
      return 0;
    case PM_ScrollBarExtent:
      return scrollBarWidth;
    case PM_MenuBarVMargin:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
  const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type != CT_MenuBarItem) return usual;
  return {usual.width(), Metrics::atLeast(Metrics::menuBarHeight, widget->font())};
}

// Every menu bar requests this icon, even if it is not shown. Qt would read it from a file, and
// load all image plugins for that.
QIcon Style::standardIcon(StandardPixmap which, const QStyleOption* option,
                          const QWidget* widget) const {
  if (which == SP_ToolBarHorizontalExtensionButton) return QIcon(new OverflowIcon);
  return QProxyStyle::standardIcon(which, option, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_SpinBox_ClickAutoRepeatThreshold:
      return holdBeforeRepeat;
    case SH_ComboBox_Popup:
    case SH_UnderlineShortcut:
    case SH_ScrollBar_Transient:
      return 0;
    case SH_Menu_SubMenuPopupDelay:
      return 100;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace quorvane
