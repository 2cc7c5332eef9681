#pragma once

namespace golden {

/// Gives the process and those that it starts a network of their own, which
/// has nothing but the loopback interface: every port is free and may be
/// opened, no other address can be reached, no name server answers. False when
/// the system does not allow it. Calling it again changes nothing.
bool enterOwnNetwork();

}  // namespace golden
