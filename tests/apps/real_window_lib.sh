# What the tests of the viewer's window share: a virtual display, the model, the viewer on it and a hand. Sourced
# with the viewer and the screen probe as arguments. Nothing here counts on how long anything takes: the log of
# the viewer tells when it has seen an event and is at rest.
zovview=$1
probe=$2
work=$(mktemp -d)
server=
viewer=
cleanup() {
  [ -z "$viewer" ] || kill "$viewer" 2>/dev/null || true
  [ -z "$server" ] || kill "$server" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAILED: $*" >&2
  cat "$work/error" >&2 2>/dev/null || true
  exit 1
}

cat >"$work/house.obj" <<'MODEL'
v 0 0 0
v 3 0 0
v 3 0 2
v 0 0 2
v 0 2 0
v 3 2 0
v 3 2 2
v 0 2 2
v 0 3 1
v 3 3 1
f 1 2 3 4
f 1 5 6 2
f 3 7 8 4
f 4 8 9 5 1
f 2 6 10 7 3
f 5 9 10 6
f 8 7 10 9
MODEL

mkdir "$work/screen"
mkfifo "$work/number"
exec 3<>"$work/number"
Xvfb -displayfd 3 -screen 0 1000x700x24 -fbdir "$work/screen" -nolisten tcp -noreset >"$work/xvfb.log" 2>&1 &
server=$!
read -r -t 30 number <&3 || fail "the virtual display does not start: $(cat "$work/xvfb.log")"
export DISPLAY=:$number
unset WAYLAND_DISPLAY SDL_VIDEODRIVER XAUTHORITY

snapshot() { cp "$work/screen/Xvfb_screen0" "$work/$1"; }
differing_bytes() { { cmp -l "$work/$1" "$work/$2" || true; } | wc -l; }

# wait_for WHAT COMMAND...: until the command succeeds, which a busy machine may take long for
wait_for() {
  local what=$1 end=$((SECONDS + 120))
  shift
  until "$@"; do
    kill -0 "$viewer" 2>/dev/null || fail "the viewer has ended: $what"
    [ "$SECONDS" -lt "$end" ] || fail "$what"
    sleep 0.02
  done
}

# Until the viewer has seen all that was done so far, and has come to rest after it: a key that means nothing
# stands behind the rest.
keys_seen() { grep -c ' key-up Pause$' "$work/error"; }
rests_after() { awk -v keys="$1" '/ key-up Pause$/ { ++seen; rest = 0 } / at rest$/ { rest = 1 } END { exit !(seen > keys && rest) }' "$work/error"; }
settle() {
  local seen
  seen=$(keys_seen) || true
  xdotool key --window "$window" Pause
  wait_for "the viewer does not come to rest" rests_after "$seen"
}

processor_time() { awk '{print $14 + $15}' "/proc/$1/stat"; }  # in hundredths of a second

# open_viewer ARGUMENT...: in the background
open_viewer() {
  "$zovview" --size 800x600 "$@" >"$work/out" 2>"$work/error" &
  viewer=$!
}

find_window() { window=$(xdotool search --name '^house.obj - zovview$' 2>/dev/null | head -n 1) && [ -n "$window" ]; }

# drag BUTTON FROM_X FROM_Y TO_X TO_Y, in pixels of the window
drag() {
  xdotool mousemove --window "$window" "$2" "$3" mousedown "$1"
  local i
  for i in 1 2 3 4 5; do
    xdotool mousemove --window "$window" $(($2 + ($4 - $2) * i / 5)) $(($3 + ($5 - $3) * i / 5))
  done
  xdotool mouseup "$1" mousemove --window "$window" 700 500
  settle
}

# must_change WHAT: the picture comes to differ from the one before by more than a moved pointer would make it
picture_differs() {
  snapshot after
  [ "$(differing_bytes before after)" -gt 20000 ]
}
must_change() {
  wait_for "$1 changes nothing" picture_differs
  echo "$1: $(differing_bytes before after) bytes of the screen differ"
  mv "$work/after" "$work/before"
}

