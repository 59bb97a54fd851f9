# The udev rule that grants access to a base to the user at the seat.

our_rule=/etc/udev/rules.d/70-quorvane.rules

# give_seat UID: moves the seat to this user, by the file that udev reads. The end of a case gives
# it back to user 1000.
give_seat() {
    mkdir -p /run/systemd/seats
    echo "ACTIVE_UID=$1" >/run/systemd/seats/seat0
}

# set_rule_aside; put_rule_back: remove and restore our rule. The end of a case restores it too.
set_rule_aside() {
    mv "$our_rule" "$work/rule"
    udevadm control --reload
}

put_rule_back() {
    [[ -e $work/rule ]] || return 0
    rm -f /etc/udev/rules.d/*-quorvane.rules /etc/udev/rules.d/72-lock.rules
    mv "$work/rule" "$our_rule"
    udevadm control --reload
}
