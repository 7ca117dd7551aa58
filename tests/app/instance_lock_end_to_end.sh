#!/usr/bin/env bash
# Two programs on one folder: while the first runs, a second start on the same
# folder and instance is refused at once, names the first one's process id and
# writes nothing; after the first is killed with SIGKILL its lock is gone and
# a new start runs. On a folder whose lock is held, the demo too is refused
# before it writes its settings.
set -euo pipefail
nimbrel=$1

work=$(mktemp -d)
folder="$work/station"
first=""
cleanup() {
  [ -n "$first" ] && kill -9 "$first" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAIL: $*"
  for f in "$work"/*.out "$folder/programerrorlog.txt"; do [ -f "$f" ] && { echo "--- $f"; cat "$f"; }; done
  exit 1
}

# A station name the program does not know: it opens no device, says so once
# in its error log and keeps running.
unknown_station='is not one this program knows'
mkdir "$folder"
printf '[Weather Station Type]\r\nName=NONE\r\n' > "$folder/NIMBREL.INI"

"$nimbrel" run --dir "$folder" > "$work/first.out" 2>&1 &
first=$!
# Up to 10 s for the first to hold the lock and to have written its start-up
# line, so that whatever the error log holds afterwards is not still on its way.
for _ in $(seq 100); do
  [ "$(cat "$folder/NIMBREL.INI.lock" 2>/dev/null)" = "$first" ] &&
    grep -q "$unknown_station" "$folder/programerrorlog.txt" 2>/dev/null && break
  sleep 0.1
done
[ "$(cat "$folder/NIMBREL.INI.lock" 2>/dev/null)" = "$first" ] || fail "the first program did not put its process id in NIMBREL.INI.lock"
grep -q "$unknown_station" "$folder/programerrorlog.txt" || fail "the first program did not start"

status=0
"$nimbrel" run --dir "$folder" --run-for 5 > "$work/second.out" 2>&1 || status=$?
[ "$status" -ne 0 ] || fail "a second program on the same folder ran"
grep -q "is in use by process $first;" "$work/second.out" || fail "the refusal does not name process $first"
[ "$(wc -l < "$work/second.out")" -eq 1 ] || fail "the refused program said more than one sentence"
[ "$(grep -c "$unknown_station" "$folder/programerrorlog.txt")" -eq 1 ] ||
  fail "the refused program wrote to the error log"

# A folder whose lock another process holds without having written its process
# id yet: the run and the demo are both refused and write nothing there, not
# even their settings.
held="$work/held"
mkdir "$held"
printf '[Weather Station Type]\r\nName=NONE\r\n' > "$held/NIMBREL.INI"
exec 9> "$held/NIMBREL.INI.lock"
flock -n 9 || fail "the test could not lock $held"
for command in run demo; do
  status=0
  "$nimbrel" "$command" --dir "$held" --run-for 5 > "$work/$command-held.out" 2>&1 9>&- || status=$?
  [ "$status" -ne 0 ] || fail "$command ran in a folder another process holds"
  grep -q "is in use by another process;" "$work/$command-held.out" || fail "the $command refusal does not say so"
  [ "$(ls -A "$held" | tr '\n' ' ')" = "NIMBREL.INI NIMBREL.INI.lock " ] ||
    fail "the refused $command wrote in the folder: $(ls -A "$held")"
done
exec 9>&-

kill -9 "$first"
wait "$first" 2>/dev/null || true
first=""
"$nimbrel" run --dir "$folder" --run-for 2 --speed 1 > "$work/third.out" 2>&1 ||
  fail "the lock of the killed program blocked the next start"
echo "ok: refused while process held the folder, ran after it was killed"
