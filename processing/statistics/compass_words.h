#pragma once
// The 16-point compass words of the wind displays. Sector n covers the
// directions around n x 22.5 degrees; sectors 0 and 16 are both north and
// are written differently (" N " and "  N"). The German words use O for E.
// The words keep their leading blanks, which line them up on the screen.

#include <string_view>

namespace nimbrel {

inline constexpr std::string_view kNoCompassWord = "---";

// Sector 0-16 of a direction in degrees: the direction divided by 22.5 and
// rounded (whole degrees never fall on a half).
int compassSector(double degrees);

// The word of a sector; kNoCompassWord outside 0-16.
std::string_view compassWord(int sector, bool german);
// The same without the blanks that line it up ("N", "SW"), for text.
std::string_view compassLetters(int sector, bool german);

}  // namespace nimbrel
