#pragma once

namespace velmo {

/// Sets up how every window of ours is drawn: typeface, emoji in colour, scene graph in software. Once, after the
/// application object and before the first window. Main thread.
void prepareInterface();

} // namespace velmo
