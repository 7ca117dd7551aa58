# The outages (outages.awk's output) as readable lines, with their program
# times. Variable: start ("YYYY-MM-DD HH:MM:SS"), the program's start.

BEGIN { start_seconds = seconds_of(start) }

{
  printf "  no packets from %s to %s (%.1f min)\n", minute_text(start_seconds + $1),
         minute_text(start_seconds + $2), ($2 - $1) / 60
}
