#pragma once

namespace quorvane {

// Every program's main() calls this first.
//
// Opens /dev/null, in the wrong direction, for each of the file descriptors 0, 1 and 2 that is
// closed: using them still fails, and no file or device opened later gets one of their numbers and
// with it the program's messages. Exits with status 1 on failure.
//
// Handles SIGPIPE, so that writing to a pipe without a reader fails with EPIPE instead of ending
// the program. Child processes get the default action of the signal.
void prepareStandardStreams();

}  // namespace quorvane
