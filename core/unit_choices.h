#pragma once
// The user's unit choices and the words that store them in the settings
// ("kts", "celsius", "mb", "metric", "9am", ...). Words match exactly: "KTS"
// or "9AM" is no known word.

#include <array>
#include <optional>
#include <string_view>

namespace nimbrel {

enum class WindUnit { knots, mph, kmh, metresPerSecond, beaufort };
enum class TemperatureUnit { celsius, fahrenheit };
enum class RainUnit { mm, inches };
enum class PressureUnit { mb, hpa, kpa, inches };
// Units of the log files, and the date order: metric is day/month, usa month/day.
enum class UnitSystem { metric, usa };
// When the day's extremes end.
enum class DayResetTime { midnight, nineAm };

template <class Choice>
struct ChoiceWord {
  Choice choice;
  std::string_view word;
};

// The word table of each choice, found by the type of its argument.
constexpr auto choiceWords(WindUnit) {
  return std::array<ChoiceWord<WindUnit>, 5>{{{WindUnit::knots, "kts"},
                                              {WindUnit::mph, "mph"},
                                              {WindUnit::kmh, "kmh"},
                                              {WindUnit::metresPerSecond, "ms"},
                                              {WindUnit::beaufort, "bft"}}};
}
constexpr auto choiceWords(TemperatureUnit) {
  return std::array<ChoiceWord<TemperatureUnit>, 2>{
      {{TemperatureUnit::celsius, "celsius"}, {TemperatureUnit::fahrenheit, "faren"}}};
}
constexpr auto choiceWords(RainUnit) {
  return std::array<ChoiceWord<RainUnit>, 2>{{{RainUnit::mm, "mm"}, {RainUnit::inches, "inches"}}};
}
constexpr auto choiceWords(PressureUnit) {
  return std::array<ChoiceWord<PressureUnit>, 4>{{{PressureUnit::mb, "mb"},
                                                  {PressureUnit::hpa, "hpa"},
                                                  {PressureUnit::kpa, "kpa"},
                                                  {PressureUnit::inches, "inches"}}};
}
constexpr auto choiceWords(UnitSystem) {
  return std::array<ChoiceWord<UnitSystem>, 2>{{{UnitSystem::metric, "metric"}, {UnitSystem::usa, "usa"}}};
}
constexpr auto choiceWords(DayResetTime) {
  return std::array<ChoiceWord<DayResetTime>, 2>{{{DayResetTime::midnight, "midnight"}, {DayResetTime::nineAm, "9am"}}};
}

template <class Choice>
constexpr std::string_view choiceWord(Choice choice) {
  for (const auto& entry : choiceWords(choice))
    if (entry.choice == choice) return entry.word;
  return {};
}

template <class Choice>
constexpr std::optional<Choice> choiceFromWord(std::string_view word) {
  for (const auto& entry : choiceWords(Choice{}))
    if (entry.word == word) return entry.choice;
  return std::nullopt;
}

}  // namespace nimbrel
