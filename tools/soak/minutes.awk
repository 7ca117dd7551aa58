# Every minute of the soak must have exactly one line in the monthly log(s),
# except minutes an outage really lost. Reads the outages (outages.awk's
# output, file `outages_file`) and then the monthly logs; counts the lines of
# each of the `minutes` minutes from `first` seconds after `start`. A minute
# without a line is excused when it overlaps an outage widened by `slack`
# seconds on each side (the simulator's and the program's clocks are matched
# only to a few seconds). Prints the counts and the offending minutes; exits
# 1 when a minute is missing without excuse or has more than one line.
#
# Variables: outages_file, start ("YYYY-MM-DD HH:MM:SS"), first, minutes, slack.

BEGIN {
  start_seconds = seconds_of(start)
  outages = 0
}

FILENAME == outages_file {
  outage_from[outages] = $1 - slack
  outage_to[outages] = $2 + slack
  ++outages
  next
}

$1 ~ /^[0-9]+$/ && NF >= 5 {
  offset = seconds_of_fields($3, $2, $1, $4, $5) - start_seconds - first
  if (offset < 0 || offset >= minutes * 60) next
  ++lines[int(offset / 60)]
}

function in_outage(minute,    from, i) {
  from = first + minute * 60
  for (i = 0; i < outages; ++i)
    if (from < outage_to[i] && from + 60 > outage_from[i]) return 1
  return 0
}

function list(label, text, count) {
  if (count) printf "  %s (%d): %s%s\n", label, count, text, (count > 20 ? " ..." : "")
}

function note(text, item, count) { return count <= 20 ? text (text == "" ? "" : ", ") item : text }

END {
  for (m = 0; m < minutes; ++m) {
    n = lines[m] + 0
    total += n
    where = minute_text(start_seconds + first + m * 60)
    if (in_outage(m)) {
      ++outage_minutes
      if (n == 0) ++excused
    }
    if (n == 0 && !in_outage(m)) unexcused_text = note(unexcused_text, where, ++unexcused)
    if (n > 1) duplicated_text = note(duplicated_text, where " (" n " lines)", ++duplicated)
  }
  printf "  %d minutes, %d lines; %d minutes inside outages, of which %d had no line (excused)\n",
         minutes, total, outage_minutes, excused
  list("missing without an outage", unexcused_text, unexcused)
  list("more than one line", duplicated_text, duplicated)
  exit (unexcused || duplicated) ? 1 : 0
}
