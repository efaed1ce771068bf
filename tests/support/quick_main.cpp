#include "ui/controls/interface_setup.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

// The environment of every test with windows: no display, the interface as the application sets it up, a fixed locale
// and time zone.
int main(int argc, char **argv) {
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    velmo::prepareInterface();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
