#!/usr/bin/env bash
# The performance figures quoted in the README, measured on this machine:
#   tools/perf/day_figures.sh NIMBREL max [SECONDS] [FOLDER]
#   tools/perf/day_figures.sh NIMBREL SIMULATOR [SPEED] [SECONDS] [FOLDER]
# Runs the program for SECONDS of program time (default: a day) of one-second
# ticks against a simulated Vantage console sending a LOOP packet every two
# seconds, under /usr/bin/time -v, and prints CPU seconds per simulated day
# (scaled from SECONDS), peak resident memory, the bytes written to disk and
# the start-up time.
#
# "max" runs `nimbrel demo --speed max`: simulated time, the console in the
# program's own event loop, the clock jumping from one due event to the
# next, so the figures are those of the program's own work with no waiting.
# With SIMULATOR, the program reads that separate simulator process over
# loopback TCP at SPEED times real time (default 2400; the simulator is not
# counted); at speed 1, SECONDS=600 gives the real-time figure in ten
# minutes.
#
# FOLDER (default: a new temporary folder) is where the program writes; put
# it on the disk the station will use. The bytes written are /usr/bin/time's
# "File system outputs": 512-byte blocks of the page-cache pages the
# program's writes dirtied on a disk file system, counted when dirtied and in
# whole 4 KiB pages, so a small file rewritten counts a page each time, and
# one replaced before it reached the disk counts too (none on tmpfs). Beside
# it, the size of the folder at the end.
set -euo pipefail
usage() {
  echo "usage: $0 NIMBREL max [SECONDS] [FOLDER]  or  $0 NIMBREL SIMULATOR [SPEED] [SECONDS] [FOLDER]" >&2
  exit 2
}
[ $# -ge 2 ] || usage
[ -x /usr/bin/time ] || { echo "needs /usr/bin/time (Debian package \"time\")" >&2; exit 2; }
nimbrel=$(realpath "$1")
start="2026-03-10 00:00:00"
monthly_log=logfiles/32026lg.txt
sim_pid=
trap '[ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null; true' EXIT

# program_command RUN SECONDS: the command line of the start-up or the day run, into the array `command`.
if [ "$2" = max ]; then
  [ $# -le 4 ] || usage
  seconds=${3:-86400}
  dir=${4:-}
  mode="simulated time (nimbrel demo --speed max)"
  # Both runs on fresh folders: a demo folder with settings goes on from where it stopped.
  for run in startup day; do
    [ -z "$dir" ] || [ ! -e "$dir/$run" ] || { echo "$dir/$run exists already; give a fresh FOLDER" >&2; exit 2; }
  done
  program_command() {
    command=("$nimbrel" demo --dir "$dir/$1" --speed max --start "$start" --run-for "$2" --seed 11)
  }
  day_run=day
else
  [ $# -le 5 ] || usage
  simulator=$(realpath "$2")
  . "$(dirname "$0")/../sim_station.sh"
  speed=${3:-2400}
  seconds=${4:-86400}
  dir=${5:-}
  mode="the simulator over loopback TCP at $speed x real time"
  program_command() {  # both runs in FOLDER itself; the start-up run at 1000x, so that it is over at once
    command=("$nimbrel" --dir "$dir" --start "$start" --speed "$([ "$2" -le 1 ] && echo 1000 || echo "$speed")"
             --run-for "$2")
  }
  day_run=.
fi
[[ "$seconds" =~ ^[0-9]+$ ]] && [ "$seconds" -ge 60 ] || { echo "SECONDS must be a whole number, at least 60" >&2; exit 2; }
if [ -n "$dir" ]; then mkdir -p "$dir"; else dir=$(mktemp -d); fi
day_dir="$dir/$day_run"  # the day run's program folder
if [ -n "${simulator:-}" ]; then
  "$simulator" --tcp 0 --speed "$speed" --start "$start" --seed 11 > "$dir/sim.out" 2>&1 &
  sim_pid=$!
  port=$(sim_port "$dir/sim.out")
  vantage_tcp_settings "$port" "Figures" > "$dir/NIMBREL.INI"
fi

field() { awk -F': ' -v label="$1" 'index($1, label) { print $2 }' "$2"; }
measure() {  # measure RUN SECONDS: the run under /usr/bin/time -v, its figures in $dir/RUN.txt, its output in RUN.out
  program_command "$1" "$2"
  /usr/bin/time -v -o "$dir/$1.txt" "${command[@]}" > "$dir/$1.out" 2>&1
}

# Start-up: a run of a single program second is start-up and stop.
measure startup 1
measure day "$seconds"

user=$(field "User time" "$dir/day.txt")
system=$(field "System time" "$dir/day.txt")
blocks=$(field "File system outputs" "$dir/day.txt")
lines=$(awk '$1 ~ /^[0-9]+$/' "$day_dir/$monthly_log" | wc -l)
per_day() {  # per_day AMOUNT FORMAT [UNIT]: AMOUNT in the run, in UNITs per simulated day
  awk -v x="$1" -v t="$seconds" -v format="$2" -v unit="${3:-1}" 'BEGIN { printf format, x / unit * 86400 / t }'
}
echo "run:                         $mode"
echo "program time:                $seconds s, $lines minute lines in the monthly log"
echo "CPU per simulated day:       $(per_day "$(awk -v u="$user" -v s="$system" 'BEGIN { print u + s }')" %.2f) s" \
     "(in the run: user $user s, system $system s)"
echo "peak resident memory:        $(field "Maximum resident" "$dir/day.txt") KiB"
echo "written to disk per day:     $(per_day "$blocks" %.1f 2048) MiB ($blocks blocks of 512 bytes in the run);" \
     "the folder holds $(du -sk "$day_dir" | cut -f1) KiB at the end"
echo "start-up and stop:           $(field "Elapsed" "$dir/startup.txt") (m:ss), peak $(field "Maximum resident" "$dir/startup.txt") KiB"
echo "files in:                    $dir"
