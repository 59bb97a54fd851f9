#pragma once

namespace quorvane {

// What main does before anything else, in every program.
//
// Closed descriptors among 0, 1 and 2 are taken by /dev/null, opened for the other direction: using
// them fails as before, and no file or device opened later gets their numbers, under which it would
// receive the program's messages. Ends the program with status 1 when that cannot be done.
//
// From then on writing to a pipe that nobody reads is an error like any other instead of a signal
// that ends the program; programs started from this one meet the signal as usual.
void prepareStandardStreams();

}  // namespace quorvane
