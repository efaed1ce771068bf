#include <QCoreApplication>
#include <clocale>
#include <csignal>
#include <gtest/gtest.h>

// The environment every test starts from: a fixed locale and time zone, no reader can end the process by
// leaving.
int main(int argc, char **argv) {
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
