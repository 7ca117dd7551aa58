# Every minute of the run must have exactly one line in the monthly log(s),
# save the minutes in which the station was silent: from `silent_after`
# seconds into each cut of the cable (cut_every, cut_for) to `notice`
# seconds after its end, the program logs nothing rather than repeat old
# readings; those minutes may have no line, never two. Counts the lines of
# each of the `minutes` minutes from `start` and prints the counts and the
# offending minutes; exits 1 when a minute has no line or more than one.
#
# Variables: start ("YYYY-MM-DD HH:MM:SS", on a whole minute), minutes,
# cut_every, cut_for, silent_after, notice.

BEGIN { start_seconds = seconds_of(start) }

# Whether the minute at `offset` seconds from the start lies in a silence.
function silent(offset, k) {
  if (cut_every <= 0) return 0
  k = int(offset / cut_every)
  return k >= 1 && offset >= k * cut_every + silent_after && offset <= k * cut_every + cut_for + notice
}

$1 ~ /^[0-9]+$/ && NF >= 5 {
  minute = (seconds_of_fields($3, $2, $1, $4, $5) - start_seconds) / 60
  if (minute >= 0 && minute < minutes) ++lines[minute]
  else ++outside
}

function note(text, item, count) { return count <= 20 ? text (text == "" ? "" : ", ") item : text }

function list(label, text, count) {
  if (count) printf "  %s (%d): %s%s\n", label, count, text, (count > 20 ? " ..." : "")
}

END {
  for (m = 0; m < minutes; ++m) {
    n = lines[m] + 0
    total += n
    where = minute_text(start_seconds + m * 60)
    if (n == 0 && silent(m * 60)) ++excused
    else if (n == 0) missing_text = note(missing_text, where, ++missing)
    if (n > 1) doubled_text = note(doubled_text, where " (" n " lines)", ++doubled)
  }
  printf "  %d minutes, %d lines in them, %d lines outside the run, %d silent minutes not logged\n", minutes, total, outside, excused
  list("without a line", missing_text, missing)
  list("with more than one line", doubled_text, doubled)
  exit (missing || doubled || outside) ? 1 : 0
}
