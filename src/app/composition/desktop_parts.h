#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <memory>

namespace velmo {

class AppDelegate;
class ApplicationCommands;
class CoreParts;
class RecordingManager;
class TextInserter;

/// The parts list of the desktop application: what it has beyond the parts of every `velmo`, which are the
/// composition's: keys, microphone, sounds and the cursor of other applications. Main thread.
class DesktopParts : private Unmovable {
public:
    /// Takes hold of the display; the failure is a sentence. The composition outlives what is made.
    [[nodiscard]] static Result<std::unique_ptr<DesktopParts>, QString> open(CoreParts &composition);
    ~DesktopParts();

    RecordingManager &recordingManager();
    TextInserter &textInserter();
    AppDelegate &appDelegate();
    ApplicationCommands &commands();

private:
    struct Parts;
    explicit DesktopParts(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace velmo
