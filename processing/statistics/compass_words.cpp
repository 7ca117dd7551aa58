#include "processing/statistics/compass_words.h"

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

}  // namespace nimbrel
