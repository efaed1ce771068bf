#include "base/standard_streams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace velmo {

void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0)
            continue;
        // The lowest free number is taken, which is this one, as those below it are in use.
        const int opposite = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        [[maybe_unused]] const int taken = ::open("/dev/null", opposite);
    }
}

} // namespace velmo
