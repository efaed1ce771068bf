#pragma once

class QQmlEngine;

namespace velmo {

/// Sets up how every window of ours is drawn: typeface, emoji in colour, scene graph in software. Once, after the
/// application object and before the first window. Main thread.
void prepareInterface();

/// Whether the windows of the engine do without transitions, from now on; `prepareInterface` comes first.
void setReducedMotion(QQmlEngine &engine, bool isReduced);

} // namespace velmo
