#!/usr/bin/env bash
# The real program against the Vantage simulator on a pseudo-terminal, at 60
# times real speed: run some minutes, stop with SIGTERM, start again, and
# check that the day's extremes, the rain totals and their settings keys
# survived the restart.
set -euo pipefail
nimbrel=$1
simulator=$2
. "$(dirname "$0")/../../tools/sim_station.sh"

dir=$(mktemp -d)
sim_pid=""
cleanup() {
  [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
  rm -rf "$dir"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; echo "--- error log"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }


"$simulator" --pty --speed 60 --start "2026-03-10 10:00:00" --seed 3 > "$dir/sim.out" 2>&1 &
sim_pid=$!
for _ in $(seq 50); do grep -q 'listening on pty' "$dir/sim.out" && break; sleep 0.1; done
device=$(grep -o '/dev/pts/[0-9]*' "$dir/sim.out") || fail "the simulator did not start"

cat > "$dir/NIMBREL.INI" <<INI
[Weather Station Type]
Name=DAVIS VANTAGE PRO
[Comport]
device=$device
[new rain storage]
dailyrain new=12.5
monthlyrain new=40
yearlyrain new=300
INI

"$nimbrel" --dir "$dir" --start "2026-03-10 10:00:00" --speed 60 > "$dir/run1.out" 2>&1 &
pid=$!
sleep 6   # six minutes of program time
kill -TERM "$pid"
wait "$pid" || fail "the first run did not end cleanly after SIGTERM"

settings="$dir/NIMBREL.INI"
high=$(ini_value "$settings" "Daily high temperature" number2)
high_time=$(ini_value "$settings" "Daily high temperature" number2time)
low=$(ini_value "$settings" "Daily low temperature" number2)
rain=$(ini_value "$settings" "new rain storage" "dailyrain new")
[ -n "$high" ] && [ -n "$high_time" ] && [ -n "$low" ] || fail "no daily temperature extremes were written"
awk -v r="$rain" 'BEGIN { exit !(r >= 12.5) }' || fail "the stored daily rain $rain lost the 12.5 mm it started with"
[ "$(ini_value "$dir/nimbrelftp.ini" "latest wmr100 data" "exit realtime")" = yes ] || fail "the companions were not told to exit"
[ -s "$dir/NIMBREL.INI.tmp" ] && fail "a temporary settings file was left behind"

"$nimbrel" --dir "$dir" --start "2026-03-10 10:07:00" --speed 60 --run-for 180 > "$dir/run2.out" 2>&1 \
  || fail "the second run failed"

high2=$(ini_value "$settings" "Daily high temperature" number2)
high_time2=$(ini_value "$settings" "Daily high temperature" number2time)
low2=$(ini_value "$settings" "Daily low temperature" number2)
rain2=$(ini_value "$settings" "new rain storage" "dailyrain new")
awk -v a="$high" -v b="$high2" 'BEGIN { exit !(b >= a) }' || fail "the day's high went from $high to $high2"
awk -v a="$low" -v b="$low2" 'BEGIN { exit !(b <= a) }' || fail "the day's low went from $low to $low2"
if [ "$high2" = "$high" ] && [ "$high_time2" != "$high_time" ]; then fail "the high kept its value but not its time"; fi
awk -v a="$rain" -v b="$rain2" 'BEGIN { exit !(b >= a) }' || fail "the day's rain went from $rain to $rain2"
echo "ok: high $high -> $high2 ($high_time2), low $low -> $low2, rain $rain -> $rain2"
