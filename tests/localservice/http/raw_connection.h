#pragma once

#include "base/interface.h"

#include <QByteArray>
#include <chrono>

namespace velmo::localservice::testing {

/// A connection to a port of this machine that sends and reads just the bytes it is told to.
class RawConnection : private Unmovable {
public:
    explicit RawConnection(int port);
    ~RawConnection();

    /// False when the other side has closed.
    bool send(const QByteArray &bytes);

    /// Waits for something to read (or for the other side to close), at most as long.
    bool waitForReply(std::chrono::milliseconds longest);

    /// Everything up to the other side's close.
    [[nodiscard]] QByteArray readAll();

private:
    int m_socket;
};

} // namespace velmo::localservice::testing
