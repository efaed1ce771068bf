#pragma once

#include "base/interface.h"

#include <QString>
#include <functional>

namespace velmo {

/// Opens addresses in the program the desktop has for them: web pages, settings. Main thread.
class UrlOpener : public Interface {
public:
    /// Whether the address could be opened.
    using Answer = std::function<void(bool opened)>;

    /// Returns at once; the answer comes later, for some programs not before they end.
    virtual void open(const QString &address, Answer answer) = 0;
};

} // namespace velmo
