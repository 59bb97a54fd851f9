#include "ui/model/menu_text.h"

#include <algorithm>
#include <string>

#include "protocol/menu_text.h"
#include "ui/kit/text.h"

namespace quorvane {

QString shortSetName(const TuningSnapshot& menu) {
  const std::string name = menu.setName();  // "C (Custom)", "3"
  return QStringLiteral("set %1").arg(text(name.substr(0, name.find(' '))));
}

std::optional<double> placeInRange(TuningParameter parameter, std::int64_t value,
                                   const std::optional<FanatecProduct>& product) {
  if (!MenuText::word(parameter, value, product).empty()) return std::nullopt;
  const ClosedRange range = parameter.amounts(product);
  const std::int64_t kept = std::clamp(value, range.lower, range.upper);
  return static_cast<double>(kept - range.lower) / static_cast<double>(range.upper - range.lower);
}

}  // namespace quorvane
