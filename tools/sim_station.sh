# Shell pieces for scripts that run the program against the Vantage
# simulator over loopback TCP (the end-to-end tests, the real-time figures)
# or read its settings (the soak).
# Source it: . tools/sim_station.sh

# sim_port OUTPUT: waits up to 5 s for a simulator started with "--tcp 0"
# (its output going to the file OUTPUT) to listen, and prints its port.
sim_port() {
  for _ in $(seq 500); do grep -q 'listening on tcp port' "$1" && break; sleep 0.01; done
  grep -o 'tcp port [0-9]*' "$1" | grep -o '[0-9]*$'
}

# vantage_tcp_settings PORT STATION_NAME [LINE...]: a NIMBREL.INI for a
# Vantage read from 127.0.0.1:PORT; the LINEs go into its station section.
vantage_tcp_settings() {
  local port=$1 name=$2
  shift 2
  printf '[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n'
  [ $# -gt 0 ] && printf '%s\r\n' "$@"
  printf '[Comport]\r\nuse tcpip vp=yes\r\nuse tcpip vp ip=127.0.0.1\r\nuse tcpip vp port=%s\r\n' "$port"
  printf '[Connections]\r\nStationName=%s\r\n' "$name"
}

# ini_value FILE SECTION KEY: the value of KEY in SECTION, as written.
ini_value() {
  awk -v section="[$2]" -v key="$3" '
    { sub(/\r$/, "") }
    /^\[/ { inside = ($0 == section); next }
    inside && index($0, key "=") == 1 { print substr($0, length(key) + 2); exit }' "$1"
}
