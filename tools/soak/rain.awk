# The rain the program kept must be what the console rained during the run.
# Reads the program's totals (file `totals_file`, lines of "MM<TAB>what it
# is") and then the console's packets (record.awk's output). The program
# counts the rise of the console's rain counter from the first packet it
# decodes to the last, so rain that falls while the cable is cut is counted
# from the first packet after it: nothing is lost. Its first decoded packet
# is one of those in the first `edge` seconds of the run, its last one of
# those in the last `edge` seconds; when the counter holds still in both
# (as it does in the soak's runs) the expected total is exact. Should a
# bucket tip there, a total may be any whole number of clicks the counter
# showed, and the check says so. Exits 1 when a total is off.
#
# Variables: totals_file, run_for, edge, click_mm.

BEGIN { totals = 0 }

FILENAME == totals_file {
  split($0, parts, "\t")
  total_mm[totals] = parts[1] + 0
  total_what[totals++] = parts[2]
  next
}

$1 > run_for { next }
{
  if (++packets == 1) first = $2
  if ($1 <= edge) start_edge = $2
  if ($1 <= run_for - edge) end_edge = $2
  last = $2
}

function round(x) { return int(x + (x < 0 ? -0.5 : 0.5)) }

END {
  if (packets < 2) {
    print "  the console sent fewer than two packets in the run"
    exit 1
  }
  wide = last - first
  narrow = end_edge - start_edge
  if (narrow == wide)
    printf "  the console: %d clicks = %.3f mm\n", wide, wide * click_mm
  else
    printf "  the console: %d to %d clicks (%.3f to %.3f mm): a bucket tipped within %d s of the run's start or end\n",
           narrow, wide, narrow * click_mm, wide * click_mm, edge
  for (i = 0; i < totals; ++i) {
    clicks = total_mm[i] / click_mm
    whole = round(clicks)
    good = (clicks - whole) ^ 2 < 0.0004 && whole >= narrow && whole <= wide
    printf "  %s: %.3f mm = %.2f clicks %s\n", total_what[i], total_mm[i], clicks, good ? "ok" : "WRONG"
    if (!good) ++wrong
  }
  exit wrong ? 1 : 0
}
