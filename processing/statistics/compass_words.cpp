#include "processing/statistics/compass_words.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace nimbrel {
namespace {

constexpr std::array<std::string_view, 17> kEnglish{" N ", "NNE", " NE", "ENE", "  E", "ESE", " SE", "SSE", "  S",
                                                    "SSW", " SW", "WSW", " W",  "WNW", " NW", "NNW", "  N"};
constexpr std::array<std::string_view, 17> kGerman{" N ", "NNO", " NO", "ONO", " O",  "OSO", " SO", "SSO", "  S",
                                                   "SSW", " SW", "WSW", " W",  "WNW", " NW", "NNW", "  N"};

}  // namespace

int compassSector(double degrees) { return static_cast<int>(std::lround(degrees / 22.5)); }

std::string_view compassWord(int sector, bool german) {
  if (sector < 0 || sector >= static_cast<int>(kEnglish.size())) return kNoCompassWord;
  const auto index = static_cast<std::size_t>(sector);
  return german ? kGerman[index] : kEnglish[index];
}

std::string_view compassLetters(int sector, bool german) {
  std::string_view word = compassWord(sector, german);
  word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
  word.remove_suffix(word.size() - std::min(word.find_last_not_of(' ') + 1, word.size()));
  return word;
}

}  // namespace nimbrel
