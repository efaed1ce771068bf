#include "base/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo {

namespace {

/// Whether, in a process started without these streams, what is opened later stays out of their places.
bool laterFilesStayClear(const std::vector<int> &missing) {
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int stream : missing)
            ::close(stream);
        occupyStandardStreams();
        const int opened = ::open("/dev/null", O_RDWR);
        const bool outputIsRefused = missing.front() == STDIN_FILENO || ::write(missing.front(), "x", 1) < 0;
        ::_exit(opened > STDERR_FILENO && outputIsRefused ? 0 : 1);
    }
    int status = -1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

} // namespace

TEST(StandardStreams, AreNotTakenByWhatIsOpenedLater) {
    EXPECT_TRUE(laterFilesStayClear({STDIN_FILENO}));
    EXPECT_TRUE(laterFilesStayClear({STDOUT_FILENO}));
    EXPECT_TRUE(laterFilesStayClear({STDERR_FILENO, STDOUT_FILENO, STDIN_FILENO}));
}

} // namespace velmo
