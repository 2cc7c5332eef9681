#pragma once

namespace platform {

/// Makes the standard streams safe to work with: descriptors 0 to 2 that were
/// closed are taken by /dev/null, so that no file of ours gets their numbers,
/// and a reader of our output that goes away ends in an error, not in a signal
/// that would leave sessions open.
void prepareStandardStreams();

/// Whether all that was written to standard output went out.
bool outputIsWhole();

/// Whether standard output is a pipe. Its reader may be a pager that draws on
/// the same terminal.
bool outputIsPipe();

/// Whether standard output is a pipe that nobody reads any more.
bool outputIsAbandoned();

}  // namespace platform
