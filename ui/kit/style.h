#pragma once

#include <QProxyStyle>
#include <optional>

namespace quorvane {

// The application's style: the theme's colours on Qt's Fusion style. The theme (light or dark)
// follows the desktop's palette and its changes, unless setPrefersDark() overrides it.
class Style final : public QProxyStyle {
  Q_OBJECT

 public:
  Style();

  // The desktop's explicit preference; none: decide by the palette.
  void setPrefersDark(std::optional<bool> prefersDark);

  void polish(QPalette& palette) override;
  using QProxyStyle::polish;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                       SubControl subControl, const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                     const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;

 private:
  std::optional<bool> prefersDark_;
};

}  // namespace quorvane
