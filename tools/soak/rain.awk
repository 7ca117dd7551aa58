# The rain the program kept must be what the simulator rained while the
# program listened. Reads the program's totals (file `totals_file`, lines of
# "MM<TAB>what it is") and then the delivered packets (delivered.awk's
# output). The simulator's rain is its counter from the first to the last
# packet of the run; the program takes its baseline from the second packet
# (the first only brings the frame into line) and decodes a packet when the
# next one arrives, and the clocks are matched only to `slack` seconds, so a
# bucket tip in those edge packets may or may not count: each total must be a
# whole number of clicks between the narrow and the wide count, and equal to
# it when they agree. Exits 1 when a total is off.
#
# Variables: totals_file, run_for, slack, click_mm.

BEGIN { totals = 0 }

FILENAME == totals_file {
  split($0, parts, "\t")
  total_mm[totals] = parts[1] + 0
  total_what[totals] = parts[2]
  ++totals
  next
}

$1 > run_for + slack { next }
{
  ++packets
  if (packets == 1) first_clicks = $2
  if (packets == 2) second_clicks = $2
  last_clicks = $2
  if ($1 <= run_for - slack) {
    narrow_end = previous_inside
    previous_inside = $2
  }
}

function round(x) { return int(x + (x < 0 ? -0.5 : 0.5)) }

END {
  if (packets < 3) {
    print "  the program could not have decoded any packet"
    exit 1
  }
  wide = last_clicks - first_clicks
  narrow = narrow_end - second_clicks
  if (narrow > wide) narrow = wide
  if (narrow == wide)
    printf "  simulator: %d clicks = %.3f mm while the program listened\n", wide, wide * click_mm
  else
    printf "  simulator: %d to %d clicks (%.3f to %.3f mm): a bucket tipped at an edge of the run\n",
           narrow, wide, narrow * click_mm, wide * click_mm
  for (i = 0; i < totals; ++i) {
    clicks = total_mm[i] / click_mm
    whole = round(clicks)
    good = (clicks - whole) ^ 2 < 0.0004 && whole >= narrow && whole <= wide
    printf "  %s: %.3f mm = %.2f clicks %s\n", total_what[i], total_mm[i], clicks, good ? "ok" : "WRONG"
    if (!good) ++wrong
  }
  exit wrong ? 1 : 0
}
