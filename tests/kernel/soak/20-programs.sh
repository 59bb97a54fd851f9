# Soak tests of several programs with one base.

case_two_that_save_200_times_each_do_not_undo_each_other() {
    two_write_at_once 200
}
