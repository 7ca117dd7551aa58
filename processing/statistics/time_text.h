#pragma once
// The time of day as the screen, the settings and the data files show the
// times of extremes: "hh:nn" on the 24-hour clock, or "h:nn am"/"h:nn pm"
// when the owner's date order is the US one.

#include <string>

#include "core/clock.h"

namespace nimbrel {

// "07:05", "23:59"; with `usaTimes` "7:05 am", "12:30 pm", "12:00 am" (midnight).
std::string timeconvert(const LocalTime& time, bool usaTimes);

}  // namespace nimbrel
