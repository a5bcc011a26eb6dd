#include <gtest/gtest.h>

#include <QApplication>

#include "kit/Theme.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    kelvo::ApplyTheme(app);
    return RUN_ALL_TESTS();
}
