# Sourced by program.sh: an X11 display with pointer and keyboard.

display_means=(Xvfb xdotool)

begin_display() {
  start_display "$scratch"
}

end_display() {
  stop_display
}

focus_window() {  # focus_window: gives the window of $process the keys
  xdotool windowfocus --sync "$(xdotool search --onlyvisible --pid "$process" | tail -n 1)"
}

# The scales that the display can have while programs run.
scales=(1)

set_scale() { :; }
take_picture() { :; }  # scripts/screenshots makes these

pointer_to() { xdotool mousemove "$1" "$2"; }  # pointer_to X Y
button_down() { xdotool mousedown 1; }
button_up() { xdotool mouseup 1; }
press_key() { xdotool key "$1"; }  # press_key KEY, such as ctrl+s
type_text() { xdotool type "$1"; }  # type_text LETTERS-AND-DIGITS
