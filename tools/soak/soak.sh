#!/usr/bin/env bash
# The soak: the real program against its built-in simulated Vantage console
# in simulated time ("nimbrel demo --speed max") for a simulated week (or
# DAYS days), the console spoiling a few percent of the packets (bad CRCs,
# packets split in two, bursts of garbage) and its cable cut every two
# simulated days for ten minutes. The program's clock jumps from one due
# event to the next, so the run is the same every time, on an idle machine
# or a busy one, and takes seconds per simulated day. Run it by hand, not in
# CI:
#
#   tools/soak/soak.sh NIMBREL [DAYS]      (or ./dev soak [DAYS])
#
# At the end it checks that (1) the program ended cleanly and logged no
# error but the cable's cuts, (2) every minute has exactly one monthly-log
# line, (3) the rain totals equal what the console rained, and the daily
# resets the midnights, and (4) the memory stayed flat, and prints the CPU
# time per simulated day, the peak memory and the wall time. Exits 0 only
# when all pass; the working folder is kept when one fails (or when
# SOAK_KEEP is set).
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
. "$here/../sim_station.sh"
usage() { echo "usage: $0 NIMBREL [DAYS (1-29, default 7)]" >&2; exit 2; }
[ $# -ge 1 ] && [ $# -le 2 ] || usage
nimbrel=$1
days=${2:-7}
[[ "$days" =~ ^[0-9]+$ ]] && [ "$days" -ge 1 ] && [ "$days" -le 29 ] || usage
[ -x "$nimbrel" ] || { echo "not an executable: $nimbrel" >&2; exit 2; }
[ -x /usr/bin/time ] || { echo "needs /usr/bin/time (Debian package \"time\")" >&2; exit 2; }

# The run: from 23:50 on 1 July to 00:02 after the last day, so that the
# checked days are whole, their midnights and the one after them are all in
# the run, and everything lies in July (no month-end rain reset, no clock
# change). Every minute of the run is checked, the edges too.
start="2026-07-01 23:50:00"
first_day=2                               # the day of the month of the first checked day
run_for=$((600 + days * 86400 + 120))
seed=2026
cut_every=172800 cut_for=600              # program seconds, counted from the start
fault_rate=0.03
notice=90                                 # seconds in which a cut, the silence and their ends must reach the error log
silent_after=150                          # seconds without data after which the program stops logging minutes
rain_edge=20                              # seconds at the run's ends in which a bucket tip may count or not
click_mm=0.254                            # "vp rain clicks per inch" left at 100
memory_margin_kb=256
sample_every=0.05                         # real seconds between memory samples
min_samples=5                             # per checked day, for the memory check to mean anything

dir=$(mktemp -d "${TMPDIR:-/tmp}/nimbrel-soak.XXXXXX")
station="$dir/station"
monthly_log="$station/logfiles/72026lg.txt"
time_pid="" program_pid=""
finish() {
  local status=$?
  if [ -n "$time_pid" ]; then
    [ -n "$program_pid" ] && kill "$program_pid" 2>/dev/null
    kill "$time_pid" 2>/dev/null
  fi
  if [ "$status" -eq 0 ] && [ -z "${SOAK_KEEP:-}" ]; then rm -rf "$dir"; else echo "the soak's folder is kept: $dir"; fi
}
trap finish EXIT
trap 'exit 130' INT TERM

# or_empty FILE: FILE, or /dev/null when the program did not write it, so that
# the checks fail on what is missing rather than stop.
or_empty() { if [ -f "$1" ]; then echo "$1"; else echo /dev/null; fi; }

count_lines() {  # count_lines REGEX FILE
  if [ -f "$2" ]; then grep -c -E -e "$1" "$2" || true; else echo 0; fi
}

# The program runs under /usr/bin/time through a shell that writes its own
# process id and then becomes the program, so that its memory can be read.
start_program() {
  /usr/bin/time -v -o "$dir/time.txt" sh -c 'echo $$ > "$0" && exec "$@"' "$dir/program.pid" \
    "$nimbrel" demo --dir "$station" --speed max --start "$start" --run-for "$run_for" --seed "$seed" \
    --faults "$fault_rate" --cut-every "$cut_every" --cut-for "$cut_for" --record "$dir/record.jsonl" \
    > "$dir/run.out" 2>&1 &
  time_pid=$!
  program_pid=""
  for _ in $(seq 500); do
    [ -s "$dir/program.pid" ] && { program_pid=$(cat "$dir/program.pid"); break; }
    sleep 0.01
  done
}

# memory_kb PID: its VmRSS and VmHWM in kB; fails once the process has
# ended. The file is read whole: read line by line, it may change between
# reads and a line be missed.
memory_kb() {
  local status
  { status=$(< "/proc/$1/status"); } 2>/dev/null || return 1
  [[ $status =~ VmHWM:[[:space:]]+([0-9]+).*VmRSS:[[:space:]]+([0-9]+) ]] || return 1
  echo "${BASH_REMATCH[2]} ${BASH_REMATCH[1]}"
}

# Until the program ends, every $sample_every s of real time: the day of the
# month of the newest monthly-log line, the program's VmRSS and its VmHWM.
sample_memory() {
  [ -n "$program_pid" ] || return 0
  local kb day rest
  while kb=$(memory_kb "$program_pid"); do
    day=0
    [ -f "$monthly_log" ] && { read -r day rest < <(tail -n 1 "$monthly_log") || true; }
    echo "$day $kb"
    sleep "$sample_every"
  done > "$dir/memory.txt"
}

verdict() {  # verdict NAME OK(0/1)
  if [ "$2" -eq 0 ]; then echo "PASS $1"; else echo "FAIL $1"; failures=$((failures + 1)); fi
}

soak_awk() { awk -f "$here/times.awk" "$@"; }

digest() { if [ -f "$1" ]; then md5sum < "$1" | cut -c1-12; else echo "(no file)"; fi; }

report_run() {
  soak_awk -f "$here/record.awk" -v start="$start" -v cut_every="$cut_every" -v cut_for="$cut_for" \
    -v summary="$dir/record-summary.txt" "$(or_empty "$dir/record.jsonl")" > "$dir/packets.txt"
  cat "$dir/record-summary.txt"
  # The same in every run of as many days, on any machine: a run can be compared with another.
  echo "  md5 of the console's record $(digest "$dir/record.jsonl"), of the monthly log $(digest "$monthly_log")"
  echo "  the station log: $(count_lines 'waking it again' "$station/logfiles/stationlog.txt") wake-ups" \
       "after 6 s without data"
}

check_clean_end() {
  local ok=0 details errors
  errors=$(or_empty "$station/programerrorlog.txt")  # made at the first error
  [ "$program_status" -eq 0 ] || ok=1
  details=$(soak_awk -f "$here/errorlog.awk" -v start="$start" -v run_for="$run_for" -v cut_every="$cut_every" \
    -v cut_for="$cut_for" -v silent_after="$silent_after" -v notice="$notice" "$errors") || ok=1
  verdict "1 clean end: exit status $program_status, the error log holds the cable's cuts and nothing else" $ok
  echo "$details"
  grep -E 'Command terminated by signal|Command exited' "$dir/time.txt" | sed 's/^\s*/  /' || true
}

check_minutes() {
  local ok=0 details minutes=$((run_for / 60 + 1))
  details=$(soak_awk -f "$here/minutes.awk" -v start="$start" -v minutes="$minutes" -v cut_every="$cut_every" \
    -v cut_for="$cut_for" -v silent_after="$silent_after" -v notice="$notice" "$(or_empty "$monthly_log")") || ok=1
  verdict "2 one monthly-log line a minute: $minutes minutes, 23:50 on 1 July to the end, none while the station is silent" $ok
  echo "$details"
}

check_rain() {
  local ini station_log ok=0 details resets daily_sum
  ini=$(or_empty "$station/NIMBREL.INI")
  station_log=$(or_empty "$station/logfiles/stationlog.txt")
  resets=$(count_lines 'Normal daily resetting rain daily value' "$station_log")
  daily_sum=$(awk -v today="$(ini_value "$ini" "new rain storage" "dailyrain new")" '
    /Normal daily resetting rain daily value/ && match($0, /rain today [0-9.eE+-]+ mm/) {
      sum += substr($0, RSTART + 11, RLENGTH - 14)
    }
    END { printf "%.6f", sum + today }' "$station_log")
  {
    printf '%s\tmonth (NIMBREL.INI "new rain storage" "monthlyrain new")\n' \
      "$(ini_value "$ini" "new rain storage" "monthlyrain new")"
    printf '%s\tyear ("yearlyrain new")\n' "$(ini_value "$ini" "new rain storage" "yearlyrain new")"
    printf '%s\tthe %s days filed at the daily resets plus today ("dailyrain new")\n' "$daily_sum" "$resets"
  } > "$dir/rain-totals.txt"
  details=$(awk -v totals_file="$dir/rain-totals.txt" -v run_for="$run_for" -v edge="$rain_edge" \
    -v click_mm="$click_mm" -f "$here/rain.awk" "$dir/rain-totals.txt" "$dir/packets.txt") || ok=1
  [ "$resets" -eq $((days + 1)) ] || ok=1
  verdict "3 rain totals equal the console's rain; $resets daily rain resets for $((days + 1)) midnights" $ok
  echo "$details"
  grep 'rain counter jump refused' "$station_log" | sed 's/^/  /' || true
}

check_memory() {
  local status=0 details
  details=$(awk -v first_day="$first_day" -v days="$days" -v min_samples="$min_samples" \
    -v margin_kb="$memory_margin_kb" -f "$here/memory.awk" "$(or_empty "$dir/memory.txt")") || status=$?
  if [ "$status" -eq 2 ]; then
    echo "SKIP 4 memory flat: one day gives nothing to compare"
  else
    verdict "4 memory flat: VmRSS sampled every $sample_every s of real time, the last day's against the first's" \
      "$([ "$status" -eq 0 ] && echo 0 || echo 1)"
  fi
  echo "$details"
}

print_figures() {
  awk -v days_run="$(awk -v r="$run_for" 'BEGIN { print r / 86400 }')" -F': ' \
    -v hwm="$(tail -n 1 "$(or_empty "$dir/memory.txt")" | cut -d' ' -f3)" '
    /User time/ { user = $2 } /System time/ { sys = $2 }
    /Maximum resident set size/ { peak = $2 } /Elapsed \(wall clock\)/ { wall = $2 }
    END {
      printf "wall time %s for %.3f simulated days\n", wall, days_run
      printf "CPU %.2f s user + %.2f s system = %.2f s per simulated day\n", user, sys, (user + sys) / days_run
      printf "peak RSS %d kB (/usr/bin/time), VmHWM %d kB at the last memory sample\n", peak, hwm
    }' "$dir/time.txt"
}

echo "soak: $days simulated days in simulated time; folder $dir"
start_program
sample_memory
program_status=0
wait "$time_pid" || program_status=$?
time_pid=""  # ended: its id, and the program's, may be handed out again

failures=0
report_run
check_clean_end
check_minutes
check_rain
check_memory
print_figures
[ "$failures" -eq 0 ] || { echo "$failures check(s) failed"; exit 1; }
echo "all checks passed"
