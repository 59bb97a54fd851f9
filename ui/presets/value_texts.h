#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QString>

namespace quorvane {

// The values that strips show, laid out once for all strips: many presets have the same ones. Valid
// for the system font at the time of construction.
class ValueTexts {
 public:
  struct Value {
    QStaticText text;
    int width = 0;
  };

  ValueTexts();

  // The font of values: those that differ from the base are strong.
  const QFont& font(bool isStrong) const { return isStrong ? strong_.font : usual_.font; }
  int height() const { return height_; }

  // The reference is valid until the next call.
  const Value& of(const QString& value, bool isStrong);

 private:
  struct Texts {
    QFont font;
    QHash<QString, Value> values;
  };

  Texts usual_;
  Texts strong_;
  int height_;
};

}  // namespace quorvane
