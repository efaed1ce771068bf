#pragma once

namespace velmo {

class CoreParts;

/// Runs the desktop application until it is asked to end, and answers the exit status. Log lines go to standard
/// output.
int runDesktopApplication(CoreParts &composition);

} // namespace velmo
