#include "cli/udev_rule_script.h"

namespace quorvane {

// The temporary file lacks the suffix that udev and the keep list tools look for, so none of them
// reads a half-written file. Failures of trigger are ignored: devices may be unplugged any time.
const char* const installRuleScript = R"script(
PATH=/usr/sbin:/usr/bin:/sbin:/bin:/run/current-system/sw/bin
umask 022
udevadm=$1 vendor=$2 rule=$3 text=$4 list=$5 kept=$6
shift 6
put() {
  folder=${1%/*}
  mkdir -p "$folder" || { [ -w "${folder%/*}" ] && return 41 || return 45; }
  [ -w "$folder" ] || return 45
  new=$(mktemp "$folder/.quorvane.XXXXXX") || return 41
  printf %s "$2" >"$new" && chmod 644 "$new" && sync "$new" && mv -fT "$new" "$1" && return
  rm -f "$new"
  return 41
}
status=0
[ -z "$rule" ] || put "$rule" "$text" || exit
[ -z "$list" ] || put "$list" "$kept" || status=42
"$udevadm" control --reload || exit 43
[ $# = 0 ] || "$udevadm" trigger --action=change "$@"
"$udevadm" trigger --action=change --subsystem-match=usb --attr-match=idVendor="$vendor"
"$udevadm" settle --timeout=10
exit $status
)script";

const char* const removeRuleScript = R"script(
PATH=/usr/sbin:/usr/bin:/sbin:/bin:/run/current-system/sw/bin
udevadm=$1
shift
for file; do
  [ -w "${file%/*}" ] || [ ! -d "${file%/*}" ] || exit 45
  rm -f "$file" || exit 41
done
"$udevadm" control --reload || exit 43
)script";

}  // namespace quorvane
