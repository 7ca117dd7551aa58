#!/usr/bin/env bash
# The real program across a year end against the simulator at 2400 times
# real speed: 30 December 23:00 to 2 January 01:00, killed with SIGKILL on
# the 31st and started again. Checks yesterday's values, the month's rain
# entered in the rain chart and started again, the rain season restarting in
# January, the records written, and that the kill left every settings file
# whole. Skipped under the sanitizers, which are too slow for it.
set -euo pipefail
nimbrel=$1
simulator=$2
. "$(dirname "$0")/../../tools/sim_station.sh"
[ -n "${NIMBREL_SANITIZED:-}" ] && { echo "skipped under the sanitizers"; exit 77; }

dir=$(mktemp -d)
pids=()
cleanup() {
  for p in "${pids[@]}"; do kill -9 "$p" 2>/dev/null || true; wait "$p" 2>/dev/null || true; done
  rm -rf "$dir"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }

speed=2400
"$simulator" --tcp 0 --speed "$speed" --start "2026-12-30 23:00:00" --seed 5 > "$dir/sim.out" 2>&1 &
pids+=($!)
sim_started=$(date +%s.%N)
port=$(sim_port "$dir/sim.out") || fail "the simulator did not start"

vantage_tcp_settings "$port" "My Station" "do the daily reset when qz starts=yes" > "$dir/NIMBREL.INI"
cat >> "$dir/NIMBREL.INI" <<INI
[New year rain reset time]
number=1
[new rain storage]
dailyrain new=1.5
monthlyrain new=40
yearlyrain new=300
INI

"$nimbrel" --dir "$dir" --start "2026-12-30 23:00:00" --speed "$speed" > "$dir/run1.out" 2>&1 &
first=$!
pids+=($first)
sleep 30   # 20 hours of program time: the 31st in the afternoon
kill -9 "$first"
wait "$first" 2>/dev/null || true

settings="$dir/NIMBREL.INI"
[ "$(ini_value "$settings" "Weather Station Type" Name)" = "DAVIS VANTAGE PRO" ] || fail "NIMBREL.INI is damaged after SIGKILL"
[ -n "$(ini_value "$settings" "Daily high temperature yest" number2)" ] || fail "no yesterday values after the first midnight"
month_rain=$(ini_value "$settings" "new rain storage" "monthlyrain new")
awk -v r="$month_rain" 'BEGIN { exit !(r >= 40) }' || fail "December's rain $month_rain lost what it started with"

# Start again where the simulator's clock is now, and run to 2 January 01:00.
now=$(awk -v s="$sim_started" -v t="$(date +%s.%N)" -v v="$speed" 'BEGIN { printf "%d", (t - s) * v }')
restart=$(date -d "2026-12-30 23:00:00 $now seconds" '+%Y-%m-%d %H:%M:%S')
remaining=$(( $(date -d "2027-01-02 01:00:00" +%s) - $(date -d "$restart" +%s) ))
"$nimbrel" --dir "$dir" --start "$restart" --speed "$speed" --run-for "$remaining" > "$dir/run2.out" 2>&1 \
  || fail "the second run failed"

[ -n "$(ini_value "$settings" "Rain chart" "Dec ")" ] || fail "December's rain is not in the rain chart"
awk -v d="$(ini_value "$settings" "Rain chart" "Dec ")" 'BEGIN { exit !(d >= 40) }' || fail "the rain chart's December is too small"
month2=$(ini_value "$settings" "new rain storage" "monthlyrain new")
year2=$(ini_value "$settings" "new rain storage" "yearlyrain new")
awk -v m="$month2" -v y="$year2" 'BEGIN { exit !(m < 40 && y < 300 && m == y) }' \
  || fail "January's rain: month $month2, year $year2 (both should start again from 0)"
[ -n "$(ini_value "$settings" "Record high temperature" values)" ] || fail "the records were not written"
[ -f "$dir/nimbrelbackup.ini" ] && [ -f "$dir/nimbrelinibackup.ini" ] || fail "the settings backups are missing"
[ -s "$dir/logfiles/12027lg.txt" ] && [ -s "$dir/logfiles/122026lg.txt" ] || fail "the monthly logs of both months are missing"
echo "ok: across the year end with a SIGKILL; January rain $month2 mm"
