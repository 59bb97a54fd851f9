# Sourced by program.sh: sway as a compositor without a screen, and `hand` as pointer and keyboard.
# Windows float without a frame, at the screen's corner unless a rule of the test says otherwise, so
# window coordinates are screen coordinates.

display_means=(sway swaymsg grim jq)
scales=(1 1.25 1.5 2)
screen_size="2400x1600"  # in device pixels: room for the window at scale 2

# sway refuses to run as root.
without_root() {  # without_root COMMAND...
  if [ "$(id -u)" -ne 0 ]; then
    exec "$@"
  fi
  exec setpriv --reuid=65534 --regid=65534 --clear-groups "$@"
}

compositor_answers() {
  # shellcheck disable=SC2144 # there is one
  [ -S "$compositor/wayland-1" ] && [ -S "$compositor"/sway-ipc.*.sock ]
}

begin_display() {
  compositor=$scratch/compositor
  chmod 711 "$scratch"
  mkdir -m 700 "$compositor"
  cat >"$scratch/sway.conf" <<END
xwayland disable
default_border none
default_floating_border none
focus_on_window_activation focus
output HEADLESS-1 resolution $screen_size
for_window [app_id=".*"] floating enable, move absolute position 0 0
END
  [ "$(id -u)" -ne 0 ] || chown 65534:65534 "$compositor"
  (
    export WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman
    export XDG_RUNTIME_DIR=$compositor
    without_root sway -c "$scratch/sway.conf"
  ) >"$scratch/display.log" 2>&1 &
  display_process=$!
  if ! until_true 30 compositor_answers; then
    cat "$scratch/display.log" >&2
    return 1
  fi
  export WAYLAND_DISPLAY=$compositor/wayland-1 QT_QPA_PLATFORM=wayland
  SWAYSOCK=$(echo "$compositor"/sway-ipc.*.sock)
  export SWAYSOCK
  coproc hand { "$here/hand"; }
  hand_process=$hand_PID
  exec {to_hand}>&"${hand[1]}" {from_hand}<&"${hand[0]}"
  hand_answers >/dev/null
  set_scale 1
}

end_display() {
  if [ -n "${hand_process-}" ]; then
    kill "$hand_process" 2>/dev/null || true
    wait "$hand_process" 2>/dev/null || true
  fi
  stop_display
}

hand_answers() {
  local answer
  if ! read -r -t 30 answer <&"$from_hand"; then
    echo "tests/window: the pointer and the keys are gone" >&2
    return 1
  fi
  echo "$answer"
}

ask_hand() {  # ask_hand COMMAND [ARGUMENT...]: prints its answer
  echo "$*" >&"$to_hand"
  hand_answers
}

tell_compositor() {  # tell_compositor WORD...
  swaymsg -q -- "$@"
}

set_scale() {  # set_scale SCALE
  local size
  tell_compositor output HEADLESS-1 scale "$1"
  size=$(swaymsg -t get_outputs | jq -r '.[0].rect | "\(.width) \(.height)"')
  # shellcheck disable=SC2086 # two words
  ask_hand size $size >/dev/null
}

# window_of PROCESS EXPRESSION: a jq expression on the compositor's description of the window.
window_of() {
  swaymsg -t get_tree | jq -r "[.. | objects | select(.pid? == $1)][0] | $2"
}

has_keys() {  # has_keys PROCESS
  [ "$(window_of "$1" .focused)" = true ]
}

focus_window() {  # focus_window: gives the window of $process the keys
  until_true 10 has_keys "$process"
}

pointer_to() { ask_hand move "$1" "$2" >/dev/null; }  # pointer_to X Y
button_down() { ask_hand down >/dev/null; }
button_up() { ask_hand up >/dev/null; }
press_key() { ask_hand key "$1" >/dev/null; }  # press_key KEY, such as ctrl+s
type_text() { ask_hand type "$1" >/dev/null; }  # type_text LETTERS-AND-DIGITS
take_picture() { grim "$1"; }  # take_picture FILE
