#!/usr/bin/env bash
# A whole simulated day of the real program against the Vantage simulator
# over loopback TCP, at 2400 times real speed: the monthly log gets one line
# for each of the day's 1440 minutes, the CSV family is there with its
# headers, and a reader polling "clientraw.txt" during the run never sees a
# half-written file. Skipped under the sanitizers, which are too slow for it.
set -euo pipefail
nimbrel=$1
simulator=$2
. "$(dirname "$0")/../../tools/sim_station.sh"
[ -n "${NIMBREL_SANITIZED:-}" ] && { echo "skipped under the sanitizers"; exit 77; }

dir=$(mktemp -d)
pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
  rm -rf "$dir"
}
trap cleanup EXIT
fail() { echo "FAIL: $*"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }

speed=2400
start="2026-03-09 23:58:00"
"$simulator" --tcp 0 --speed "$speed" --start "$start" --seed 11 > "$dir/sim.out" 2>&1 &
pids+=($!)
port=$(sim_port "$dir/sim.out") || fail "the simulator did not start"
vantage_tcp_settings "$port" "My Station" > "$dir/NIMBREL.INI"

# 23:58 on the 9th to 00:01 on the 11th: all of the 10th.
"$nimbrel" --dir "$dir" --start "$start" --speed "$speed" --run-for $((86400 + 180)) > "$dir/run.out" 2>&1 &
program=$!
pids+=($program)

# Poll clientraw.txt while the program runs: every read is a whole line.
reads=0
while kill -0 "$program" 2>/dev/null; do
  if [ -f "$dir/webfiles/clientraw.txt" ]; then
    line=$(cat "$dir/webfiles/clientraw.txt")
    case "$line" in
      "12345 "*"!! ") reads=$((reads + 1)) ;;
      *) fail "a reader saw a half-written clientraw.txt: '${line:0:40}...${line: -20}'" ;;
    esac
  fi
  sleep 0.02
done
wait "$program" || fail "the program did not end cleanly"
[ "$reads" -gt 100 ] || fail "clientraw.txt was read only $reads times"
grep -q ' My_Station ' "$dir/webfiles/clientraw.txt" || fail "the station name is not in clientraw.txt"

log="$dir/logfiles/32026lg.txt"
[ -f "$log" ] || fail "no monthly log $log"
head -1 "$log" | grep -q '^day month year hour minute temperature' || fail "the monthly log has no header"
[ "$(grep -c '^day month year' "$log")" -eq 1 ] || fail "the header was written more than once"
minutes=$(awk '$1 == 10 && $2 == 3 { print $4 ":" $5 }' "$log" | sort -u | wc -l)
lines=$(awk '$1 == 10 && $2 == 3' "$log" | wc -l)
[ "$minutes" -eq 1440 ] && [ "$lines" -eq 1440 ] || fail "the 10th has $lines lines for $minutes minutes, not 1440"
grep -q $'\r$' <(head -2 "$log") || fail "the monthly log lines do not end in CR LF"
for f in 32026lgcsv.csv 32026lgcsv10.csv 32026lgcsv30.csv 32026lgcsv60.csv dailylogcsv.csv indoorlogcsv.csv; do
  [ -s "$dir/logfiles/$f" ] || fail "missing CSV log $f"
done
[ "$(awk -F, '$1 == 10 && $2 == 3' "$dir/logfiles/32026lgcsv60.csv" | wc -l)" -eq 24 ] \
  || fail "the hourly CSV does not have 24 lines for the 10th"
echo "ok: 1440 lines on the 10th, $reads clientraw reads, all whole"
