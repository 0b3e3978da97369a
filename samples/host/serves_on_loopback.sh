#!/usr/bin/env bash
# What `make run` does on a machine without a display: the sample host serves the editor through
# Qt's VNC platform with loopback_only.so loaded. The editor must answer as a VNC server, and only
# on the loopback address. Usage: serves_on_loopback.sh <sample host> <loopback_only.so> <samples>
set -euo pipefail
host=$1 shim=$2 samples=$3
work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null; wait "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
cp -r "$samples"/. "$work"
port=$((20000 + $$ % 20000))

# Under the sanitizers the preload comes before their runtime, which they accept when told.
env -u DISPLAY -u WAYLAND_DISPLAY ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}verify_asan_link_order=0" LD_PRELOAD="$shim" QT_QPA_PLATFORM="vnc:size=800x600:port=$port" \
  "$host" "$work" psets >"$work/out.log" 2>&1 &
pid=$!

# Listening sockets of the port, as "address:port" in /proc's hexadecimal (state 0A = LISTEN).
listeners() {
  awk -v port="$(printf ':%04X' "$port")" '$4 == "0A" && substr($2, length($2) - 4) == port { print $2 }' \
    /proc/net/tcp /proc/net/tcp6
}
for _ in $(seq 100); do
  [[ -n $(listeners) ]] && break
  kill -0 "$pid" 2>/dev/null || { cat "$work/out.log"; echo "the sample host ended before serving"; exit 1; }
  sleep 0.1
done
found=$(listeners)
[[ -n $found ]] || { cat "$work/out.log"; echo "nothing listens on port $port"; exit 1; }
# 127.0.0.1 as IPv4 (0100007F) or as IPv4-mapped IPv6 (0000000000000000FFFF00000100007F).
while read -r address; do
  case ${address%:*} in
    0100007F | 0000000000000000FFFF00000100007F) ;;
    *) echo "the editor listens on $address, not on the loopback address"; exit 1 ;;
  esac
done <<<"$found"
# It is a VNC server: the protocol starts with the server's version.
exec 3<>"/dev/tcp/127.0.0.1/$port"
read -r -t 10 greeting <&3
[[ $greeting == RFB* ]] || { echo "no VNC greeting: '$greeting'"; exit 1; }
echo "serves VNC on 127.0.0.1:$port only"
