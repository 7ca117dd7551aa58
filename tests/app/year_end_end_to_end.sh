#!/usr/bin/env bash
# The real program across a year end against its built-in Vantage console,
# in simulated time: from 30 December 23:00, killed with SIGKILL at whatever
# moment the machine gives, then started again in the same folder, where it
# goes on from the program time it had saved, up to 2 January 01:00. Checks
# that every minute of the span is in the monthly logs exactly once, the kill
# left every settings file whole, yesterday's values, the month's rain in the
# rain chart and started again, the rain season restarting in January, and
# the records written. Skipped under the sanitizers, which are too slow for it.
set -euo pipefail
nimbrel=$1
. "$(dirname "$0")/../../tools/sim_station.sh"
[ -n "${NIMBREL_SANITIZED:-}" ] && { echo "skipped under the sanitizers"; exit 77; }

dir=$(mktemp -d)
first=""
cleanup() {
  [ -n "$first" ] && { kill -9 "$first" 2>/dev/null || true; wait "$first" 2>/dev/null || true; }
  rm -rf "$dir"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }

start="2026-12-30 23:00:00"
end="2027-01-02 01:00:00"
settings="$dir/NIMBREL.INI"
# The demo's own station settings, with rain already stored for the year.
vantage_tcp_settings 22222 "Demo Station" "do the daily reset when qz starts=yes" > "$settings"
cat >> "$settings" <<INI
[New year rain reset time]
number=1
[new rain storage]
dailyrain new=1.5
monthlyrain new=40
yearlyrain new=300
INI

# Killed once the program has passed noon on the 31st, wherever it is then.
"$nimbrel" demo --dir "$dir" --speed max --start "$start" --seed 5 > "$dir/run1.out" 2>&1 &
first=$!
for _ in $(seq 6000); do
  [ -f "$dir/logfiles/122026lg.txt" ] && awk '$1 == 31 && $4 >= 12 { found = 1 } END { exit !found }' \
    "$dir/logfiles/122026lg.txt" && break
  sleep 0.01
done
kill -9 "$first"
wait "$first" 2>/dev/null || true
first=""

[ "$(ini_value "$settings" "Weather Station Type" Name)" = "DAVIS VANTAGE PRO" ] || fail "NIMBREL.INI is damaged after SIGKILL"
[ -n "$(ini_value "$settings" "Daily high temperature yest" number2)" ] || fail "no yesterday values after the first midnight"
month_rain=$(ini_value "$settings" "new rain storage" "monthlyrain new")
awk -v r="$month_rain" 'BEGIN { exit !(r >= 40) }' || fail "December's rain $month_rain lost what it started with"

# Again from the program time it saved, to 2 January 01:00.
resume=$(ini_value "$settings" "Demo" "program time")
[ -n "$resume" ] || fail "the demo saved no program time"
remaining=$(( $(date -d "$end" +%s) - $(date -d "$resume" +%s) ))
"$nimbrel" demo --dir "$dir" --speed max --seed 5 --run-for "$remaining" > "$dir/run2.out" 2>&1 \
  || fail "the second run failed"

# Every minute from the first logged one (23:00 on the 30th) to the end, once.
expected=$(( ($(date -d "$end" +%s) - $(date -d "$start" +%s)) / 60 + 1 ))
logged=$(cat "$dir/logfiles/122026lg.txt" "$dir/logfiles/12027lg.txt" | awk 'NF == 17 && $1 ~ /^[0-9]+$/ { print $3, $2, $1, $4, $5 }')
[ "$(wc -l <<<"$logged")" -eq "$expected" ] && [ "$(sort -u <<<"$logged" | wc -l)" -eq "$expected" ] \
  || fail "$(wc -l <<<"$logged") monthly-log lines for $(sort -u <<<"$logged" | wc -l) distinct minutes, not $expected (resumed at $resume)"

[ -n "$(ini_value "$settings" "Rain chart" "Dec ")" ] || fail "December's rain is not in the rain chart"
awk -v d="$(ini_value "$settings" "Rain chart" "Dec ")" 'BEGIN { exit !(d >= 40) }' || fail "the rain chart's December is too small"
month2=$(ini_value "$settings" "new rain storage" "monthlyrain new")
year2=$(ini_value "$settings" "new rain storage" "yearlyrain new")
awk -v m="$month2" -v y="$year2" 'BEGIN { exit !(m < 40 && y < 300 && m == y) }' \
  || fail "January's rain: month $month2, year $year2 (both should start again from 0)"
[ -n "$(ini_value "$settings" "Record high temperature" values)" ] || fail "the records were not written"
[ -f "$dir/nimbrelbackup.ini" ] && [ -f "$dir/nimbrelinibackup.ini" ] || fail "the settings backups are missing"
echo "ok: across the year end with a SIGKILL (resumed at $resume); $expected minutes logged once each; January rain $month2 mm"
