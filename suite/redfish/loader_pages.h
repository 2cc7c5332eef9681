#pragma once

namespace redfish {

/// Gives back the memory of program and library pages that are as they are on
/// disk; those that are needed again come back from the system's cache.
/// Loading libcurl walks through the symbol tables and constructors of some 35
/// libraries, which leaves 6 MB of pages that a run never touches again: a
/// third of what it would take at its peak.
///
/// Does nothing in debug builds, because a debugger's breakpoints are changes
/// to such pages that would be lost, and on systems without ELF.
void releaseLoaderPages() noexcept;

}  // namespace redfish
