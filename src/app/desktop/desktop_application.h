#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <functional>
#include <memory>

namespace velmo {

class AppDelegate;
class ApplicationBus;
class ApplicationCommands;
class TextInserter;

/// The desktop application as long as it has hold of a display. Main thread.
class DesktopSession : public Interface {
public:
    virtual AppDelegate &appDelegate() = 0;
    virtual ApplicationCommands &commands() = 0;
    virtual TextInserter &textInserter() = 0;
};

/// Takes hold of the display; the failure is a sentence.
using OpenDesktop = std::function<Result<std::unique_ptr<DesktopSession>, QString>()>;

/// Runs the desktop application until it is asked to end, and answers the exit status. Where one runs in this session
/// already, that one shows itself instead and nothing is opened. Log lines go to standard output.
/// @param bus where the desktop application is found.
int runDesktopApplication(ApplicationBus &bus, const OpenDesktop &openDesktop);

} // namespace velmo
