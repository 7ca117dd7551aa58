#!/usr/bin/env bash
# A whole simulated day of the real program against its built-in Vantage
# console, in simulated time: the monthly log gets exactly one line for each
# of the day's 1440 minutes, the CSV family is there with its headers, a
# reader polling "clientraw.txt" during the run never sees a half-written
# file (that two runs write the same files is Demo.TwoSimulatedRunsWriteIdenticalFiles).
# Skipped under the sanitizers, which are too slow for it.
set -euo pipefail
nimbrel=$1
[ -n "${NIMBREL_SANITIZED:-}" ] && { echo "skipped under the sanitizers"; exit 77; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dir=$work/demo
fail() { echo "FAIL: $*"; cat "$dir/programerrorlog.txt" 2>/dev/null || true; exit 1; }

# 23:58 on the 9th to 00:01 on the 11th: all of the 10th.
"$nimbrel" demo --dir "$dir" --speed max --start "2026-03-09 23:58:00" --seed 11 --run-for $((86400 + 180)) \
  > "$work/run.out" 2>&1 &
program=$!
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
  sleep 0.01
done
wait "$program" || fail "the program did not end cleanly: $(cat "$work/run.out")"
grep -q ' Demo_Station ' "$dir/webfiles/clientraw.txt" || fail "the station name is not in clientraw.txt"

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
[ ! -s "$dir/programerrorlog.txt" ] || fail "the error log is not empty"

echo "ok: 1440 lines on the 10th, $reads clientraw reads during the run, all whole"
