# Sourced by install and uninstall: where the user's files are, and the desktop's caches of them.
# shellcheck shell=sh disable=SC2034

[ -n "${HOME-}" ] || {
  echo "HOME is not set" >&2
  exit 1
}
case ${XDG_DATA_HOME-} in
  /*) data=$XDG_DATA_HOME ;;
  *) data=$HOME/.local/share ;;
esac
bin=$HOME/.local/bin
# What was put in place: lines of "file", "folder" or "cache", and a full path.
record=$data/quorvane-bundle.files

renew_caches() {
  if [ -d "$data/applications" ] && command -v update-desktop-database >/dev/null; then
    update-desktop-database -q "$data/applications" || true
  fi
  if [ -d "$data/mime/packages" ] && command -v update-mime-database >/dev/null; then
    update-mime-database "$data/mime" >/dev/null 2>&1 || true
  fi
  if [ -f "$data/icons/hicolor/icon-theme.cache" ] && command -v gtk-update-icon-cache >/dev/null; then
    gtk-update-icon-cache -q -f --ignore-theme-index "$data/icons/hicolor" || true
  fi
  # The session's bus watches only the folders of services that were there when it began.
  if [ -n "${DBUS_SESSION_BUS_ADDRESS-}" ] && command -v dbus-send >/dev/null; then
    dbus-send --session --type=method_call --dest=org.freedesktop.DBus / \
      org.freedesktop.DBus.ReloadConfig 2>/dev/null || true
  fi
}
