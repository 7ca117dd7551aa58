# The memory must stay flat. Reads samples "DAY VMRSS_KB ..." taken every few
# tens of milliseconds of real time during the run, DAY being the day of
# the month of the newest monthly-log line then, and compares the largest
# VmRSS of the last checked day with that of the first (`first_day`, of
# `days`). A day with fewer than `min_samples` samples makes the comparison
# meaningless: the check then fails and says so. Exits 0 when the growth is
# at most `margin_kb`, 1 when it is more or samples are missing, 2 when a
# single day gives nothing to compare.
#
# Variables: first_day, days, min_samples, margin_kb.

$1 ~ /^[0-9]+$/ && $2 ~ /^[0-9]+$/ {
  day = $1 - first_day + 1
  if (day < 1 || day > days) next
  ++samples[day]
  if ($2 > peak[day]) peak[day] = $2
}

END {
  for (day = 1; day <= days; ++day) {
    printf "  day %d: %d samples, VmRSS up to %d kB\n", day, samples[day], peak[day]
    if (samples[day] < min_samples) ++short
  }
  if (short) {
    printf "  %d day(s) with fewer than %d samples: too few to tell\n", short, min_samples
    exit 1
  }
  if (days < 2) exit 2
  growth = peak[days] - peak[1]
  printf "  growth from day 1 to day %d: %d kB (allowed %d)\n", days, growth, margin_kb
  exit growth > margin_kb ? 1 : 0
}
