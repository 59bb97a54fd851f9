#include "protocol/tuning_parameter.h"

#include <algorithm>
#include <utility>

#include "protocol/error.h"
#include "protocol/setting.h"
#include "support/invariant.h"
#include "support/text.h"

namespace quorvane {
namespace {

// The display value that this product's menu reports for the special value, if it has one.
std::optional<std::int64_t> shownSpecial(const SpecialValue& special,
                                         const std::optional<FanatecProduct>& product) {
  if (special.shownAs == nullptr) return special.value;
  const std::int64_t shown = product ? (*product).*special.shownAs : 0;
  return shown > 0 ? std::optional(shown) : std::nullopt;
}

bool extendedAngle(const std::optional<FanatecProduct>& product) {
  return !product || product->usesExtendedSensitivity();
}

// 138...255 mean 90...1260 degrees, 0...137 mean 1270...2640 degrees.
std::int64_t decodeExtendedAngle(std::uint8_t raw) {
  return raw < 138 ? 10 * std::int64_t{raw} + 1270 : 10 * std::int64_t{raw} - 1290;
}

std::uint8_t encodeExtendedAngle(std::int64_t degrees) {
  return static_cast<std::uint8_t>(degrees / 10 - 127);
}

template <std::size_t... Indices>
constexpr std::array<TuningParameter, sizeof...(Indices)> casesOf(
    std::index_sequence<Indices...> /*indices*/) {
  return {TuningParameter(static_cast<TuningParameter::Case>(Indices))...};
}

template <typename Match>
std::optional<TuningParameter> firstCase(Match match) {
  const auto& all = TuningParameter::allCases();
  const auto* const found = std::find_if(all.begin(), all.end(), match);
  if (found == all.end()) return std::nullopt;
  return *found;
}

}  // namespace

const std::array<TuningParameter, TuningParameter::count>& TuningParameter::allCases() {
  static constexpr auto cases = casesOf(std::make_index_sequence<count>());
  return cases;
}

std::optional<TuningParameter> TuningParameter::fromRawValue(std::string_view code) {
  return firstCase([code](TuningParameter p) { return p.code() == code; });
}

std::optional<TuningParameter> TuningParameter::named(std::string_view text) {
  return firstCase([text](TuningParameter p) { return equalIgnoringCase(p.code(), text); });
}

std::vector<TuningParameter> TuningParameter::available(
    const std::optional<FanatecProduct>& product) {
  std::vector<TuningParameter> result;
  for (const TuningParameter parameter : allCases()) {
    if (parameter.isAvailable(product)) result.push_back(parameter);
  }
  return result;
}

std::vector<TuningParameter> TuningParameter::adjustable(
    const std::optional<FanatecProduct>& product) {
  std::vector<TuningParameter> result = available(product);
  std::erase(result, TuningParameter(slot));
  return result;
}

std::string_view TuningParameter::code() const { return settingOf(*this).code; }
std::string_view TuningParameter::title() const { return settingOf(*this).title; }
std::string_view TuningParameter::unit() const { return settingOf(*this).unit; }
std::int64_t TuningParameter::step() const { return settingOf(*this).step; }
std::size_t TuningParameter::offset() const { return settingOf(*this).offset; }

ClosedRange TuningParameter::allowedRange(const std::optional<FanatecProduct>& product) const {
  const SettingInfo& setting = settingOf(*this);
  if (setting.highest == nullptr || !product) return setting.range;
  const ClosedRange range{setting.range.lower, (*product).*setting.highest};
  invariant(range.upper >= range.lower, "a steering range was asked of a device without");
  return range;
}

ClosedRange TuningParameter::amounts(const std::optional<FanatecProduct>& product) const {
  ClosedRange range = allowedRange(product);
  if (isSpecial(range.upper, product)) range.upper -= step();
  return range;
}

std::optional<std::string_view> TuningParameter::label(
    std::int64_t value, const std::optional<FanatecProduct>& product) const {
  const SettingInfo& setting = settingOf(*this);
  if (setting.special && value == shownSpecial(*setting.special, product)) {
    return setting.special->word;
  }
  const auto& [labels, isLastForOthers] = setting.valueLabels;
  if (labels.empty()) return std::nullopt;
  if (setting.range.contains(value)) {
    return labels[static_cast<std::size_t>(value - setting.range.lower)].text;
  }
  return isLastForOthers ? std::optional(labels.back().text) : std::nullopt;
}

bool TuningParameter::isSpecial(std::int64_t value,
                                const std::optional<FanatecProduct>& product) const {
  const auto& special = settingOf(*this).special;
  return special && (value == special->value || value == shownSpecial(*special, product));
}

bool TuningParameter::hasSpecial(const std::optional<FanatecProduct>& product) const {
  const auto& special = settingOf(*this).special;
  return special && (!product || shownSpecial(*special, product));
}

std::int64_t TuningParameter::written(std::int64_t value,
                                      const std::optional<FanatecProduct>& product) const {
  return isSpecial(value, product) ? settingOf(*this).special->value : value;
}

std::int64_t TuningParameter::decode(std::uint8_t raw,
                                     const std::optional<FanatecProduct>& product) const {
  switch (settingOf(*this).coding) {
    case Coding::plain:
    case Coding::flooredToTen:
      return raw;
    case Coding::tenths:
      return 10 * std::int64_t{raw};
    case Coding::signedByte:
      return static_cast<std::int8_t>(raw);
    case Coding::steeringAngle:
      return extendedAngle(product) ? decodeExtendedAngle(raw) : 10 * std::int64_t{raw};
  }
  invariantFailed("a tuning parameter has no coding");
}

std::uint8_t TuningParameter::encode(std::int64_t value,
                                     const std::optional<FanatecProduct>& product) const {
  if (product && !isAvailable(product)) {
    throw FanatecError::notAvailable(*this, std::string(product->name));
  }
  const ClosedRange allowed = allowedRange(product);
  const auto& special = settingOf(*this).special;
  if (special && special->shownAs != nullptr && isSpecial(value, product)) {
    const auto shown = shownSpecial(*special, product);
    if (shown) return encodeInRange(*shown, product);
    if (!product) return encodeInRange(allowed.upper, product);
  }
  if (!allowed.contains(value)) throw FanatecError::outOfRange(*this, value, allowed);
  return encodeInRange(value, product);
}

bool TuningParameter::isAvailable(const std::optional<FanatecProduct>& product) const {
  return !product || (settingOf(*this).menus & menusOf(*product)) != 0;
}

std::uint8_t TuningParameter::encodeInRange(std::int64_t value,
                                            const std::optional<FanatecProduct>& product) const {
  constexpr std::string_view fits = "a tuning value does not fit its byte";
  switch (settingOf(*this).coding) {
    case Coding::plain:
      return checkedByte(value, fits);
    case Coding::flooredToTen:
      return checkedByte(value / 10 * 10, fits);
    case Coding::tenths:
      return checkedByte(value / 10, fits);
    case Coding::signedByte:
      return static_cast<std::uint8_t>(value);
    case Coding::steeringAngle:
      return extendedAngle(product) ? encodeExtendedAngle(value) : checkedByte(value / 10, fits);
  }
  invariantFailed("a tuning parameter has no coding");
}

}  // namespace quorvane
