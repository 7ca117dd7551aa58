# Calendar arithmetic shared by the soak checks. Local times become plain
# seconds on one uniform scale, with no time zone or daylight saving: the
# soak's dates lie in July, far from any clock change, and only differences
# between times are ever used.

# Days from 1970-01-01 to the given date of the proleptic Gregorian calendar.
function civil_days(year, month, day,    era, year_of_era, day_of_year, day_of_era) {
  year -= (month <= 2)
  era = int((year >= 0 ? year : year - 399) / 400)
  year_of_era = year - era * 400
  day_of_year = int((153 * (month + (month > 2 ? -3 : 9)) + 2) / 5) + day - 1
  day_of_era = year_of_era * 365 + int(year_of_era / 4) - int(year_of_era / 100) + day_of_year
  return era * 146097 + day_of_era - 719468
}

# "YYYY-MM-DD HH:MM:SS" or "YYYY-MM-DD HH:MM:SS.mmm" as seconds.
function seconds_of(text) {
  return civil_days(substr(text, 1, 4) + 0, substr(text, 6, 2) + 0, substr(text, 9, 2) + 0) * 86400 \
         + substr(text, 12, 2) * 3600 + substr(text, 15, 2) * 60 + substr(text, 18)
}

# The same for the date and time fields of a log line.
function seconds_of_fields(year, month, day, hour, minute) {
  return civil_days(year, month, day) * 86400 + hour * 3600 + minute * 60
}

# Seconds back to "YYYY-MM-DD HH:MM" (the inverse of seconds_of, to the minute).
function minute_text(seconds,    days, era, day_of_era, year_of_era, day_of_year, mp, day, month, year, rest) {
  days = int(seconds / 86400) + 719468
  rest = seconds - (days - 719468) * 86400
  era = int((days >= 0 ? days : days - 146096) / 146097)
  day_of_era = days - era * 146097
  year_of_era = int((day_of_era - int(day_of_era / 1460) + int(day_of_era / 36524) - int(day_of_era / 146096)) / 365)
  day_of_year = day_of_era - (365 * year_of_era + int(year_of_era / 4) - int(year_of_era / 100))
  mp = int((5 * day_of_year + 2) / 153)
  day = day_of_year - int((153 * mp + 2) / 5) + 1
  month = mp < 10 ? mp + 3 : mp - 9
  year = year_of_era + era * 400 + (month <= 2)
  return sprintf("%04d-%02d-%02d %02d:%02d", year, month, day, int(rest / 3600), int(rest % 3600 / 60))
}
