#include "publish/template/raw_header.h"

#include <fmt/format.h>

namespace nimbrel {
namespace {

std::string headerTime(const LocalTime& t, HeaderTimeStyle style) {
  const int twelve = t.hour % 12 == 0 ? 12 : t.hour % 12;
  const char* half = t.hour < 12 ? "am" : "pm";
  switch (style) {
    case HeaderTimeStyle::PaddedTwelveHour: return fmt::format("{:02}:{:02} {}", twelve, t.minute, half);
    case HeaderTimeStyle::TwelveHour: return fmt::format("{}:{:02} {}", twelve, t.minute, half);
    case HeaderTimeStyle::PaddedDay: return fmt::format("{:02}:{:02}", t.hour, t.minute);
    case HeaderTimeStyle::PlainDay: break;
  }
  return fmt::format("{}:{:02}", t.hour, t.minute);
}

}  // namespace

std::string rawHeaderLine(const RawHeaderValues& v) {
  const LocalTime& t = v.time;
  return fmt::format(
      "<META RAW MET DATA {}, {:02}/{:02}/{:02},tmp {:.1f},hum {:.0f},dew {:.1f},wav {:.1f},wgt {:.1f},"
      "dir {:.0f},bar {:.1f},rdy {:.2f},rmt {:.2f},ryr {:.2f},rhr {:.2f}>",
      headerTime(t, v.timeStyle), t.day, t.month, t.year % 100, v.temperature, v.humidity, v.dewPoint,
      v.averageWind, v.gust, v.direction, v.pressure, v.rainToday, v.rainMonth, v.rainYear, v.rainRate);
}

}  // namespace nimbrel
