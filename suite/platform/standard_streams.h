#pragma once

namespace platform {

/// Makes the standard streams safe to use: opens /dev/null for descriptors 0 to
/// 2 that are closed, so that no other file gets their numbers, and lets a
/// write to a closed pipe, or to a file at its limit of size, fail instead of
/// ending the process by a signal, which would leave sessions open.
void prepareStandardStreams();

/// Whether everything written to standard output was accepted.
bool outputIsWhole();

/// Whether standard output is a pipe. Its reader may be a pager that draws on
/// the same terminal.
bool outputIsPipe();

/// Whether standard output is a pipe that nobody reads any more.
bool outputIsAbandoned();

}  // namespace platform
