#include "ui/kit/mark.h"

#include "ui/kit/theme.h"

namespace quorvane {
namespace {

const QColor& ofMark(Mark mark, const QColor& unmarked, const QColor& changed,
                     const QColor& refused) {
  switch (mark) {
    case Mark::none:
      return unmarked;
    case Mark::changed:
      return changed;
    case Mark::refused:
      return refused;
  }
  return unmarked;
}

}  // namespace

QColor markColour(Mark mark, const QColor& unmarked) {
  return ofMark(mark, unmarked, theme().signal, theme().error);
}

QColor markText(Mark mark, const QColor& unmarked) {
  return ofMark(mark, unmarked, theme().brandText, theme().error);
}

QColor markGround(Mark mark, const QColor& unmarked) {
  return ofMark(mark, unmarked, theme().tint, theme().errorGround);
}

QColor markPlate(Mark mark, const QColor& unmarked) {
  return ofMark(mark, unmarked, theme().pill, theme().errorPlate);
}

QColor onMark(Mark mark) { return mark == Mark::refused ? theme().surface : theme().onBrand; }

}  // namespace quorvane
