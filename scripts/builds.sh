# Sourced: the location of build folders.

# builds_of TREE: prints the folder for the build folders of a source tree: QUORVANE_BUILDS if set,
# else build/ in the tree. For a read-only tree it is below the user's cache folder, and a line on
# stderr says so.
builds_of() {
  local tree cache
  tree=$(realpath "$1")
  if [ -n "${QUORVANE_BUILDS-}" ]; then
    realpath -m "$QUORVANE_BUILDS"
  elif mkdir -p "$tree/build" 2>/dev/null && [ -w "$tree/build" ]; then
    echo "$tree/build"
  else
    cache=${XDG_CACHE_HOME:-$HOME/.cache}/quorvane/$(basename "$tree")-$(cksum <<<"$tree" | cut -d' ' -f1)
    echo "The source tree is read-only: building in $cache" >&2
    echo "$cache"
  fi
}
