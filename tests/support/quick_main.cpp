#include "ui/controls/interface_setup.h"

#include <QGuiApplication>
#include <QTemporaryFile>
#include <gtest/gtest.h>

/// The usual screen of a session without a display, and another at its right.
constexpr char kScreens[] = R"({"screens": [
    {"name": "first", "x": 0, "y": 0, "width": 800, "height": 800},
    {"name": "second", "x": 800, "y": 0, "width": 640, "height": 480}
]})";

// The environment of every test with windows: no display, the interface as the application sets it up, a fixed locale
// and time zone.
int main(int argc, char **argv) {
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    QTemporaryFile screens;
    if (!screens.open() || screens.write(kScreens) < 0 || !screens.flush())
        return 1;
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    QGuiApplication application(argc, argv);
    velmo::prepareInterface();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
