#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "kit/Theme.h"
#include "text/ProgramLocale.h"

namespace {

QtMessageHandler passOn;

/// The offscreen platform tells of every window hint it has no use for; to a reader that looks like a fault.
void WithoutPlatformTalk(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    for (const char* talk : {"This plugin does not support", "QStandardPaths: XDG_RUNTIME_DIR"})
        if (text.startsWith(QLatin1String(talk))) return;
    passOn(type, context, text);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    passOn = qInstallMessageHandler(WithoutPlatformTalk);
    QApplication app(argc, argv);
    kelvo::SetProgramLocale();
    QApplication::setQuitOnLastWindowClosed(false);
    if (qEnvironmentVariableIsSet("KELVO_TOUR_DARK")) {
        QPalette dark(QColor(45, 45, 48), QColor(37, 37, 38));
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            dark.setColor(role, Qt::white);
        QApplication::setPalette(dark);
    }
    kelvo::ApplyTheme(app);
    return RUN_ALL_TESTS();
}
