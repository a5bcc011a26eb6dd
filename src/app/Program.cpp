#include "app/Program.h"

#include <QtWidgets>
#include <exception>

#include "app/KeptWork.h"
#include "app/Screens.h"
#include "core/Startup.h"
#include "link/Link.h"
#include "link/PortNames.h"
#include "platform/Desk.h"
#include "platform/LinkQt.h"
#include "platform/PageWriterQt.h"
#include "platform/ProgramFolder.h"
#include "platform/QtDoors.h"
#include "platform/Screen.h"
#include "platform/TableDeskQt.h"
#include "platform/Theme.h"
#include "tables/TableScreenLogic.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Last net under every event: a failure that no step has caught is reported once and the program ends in order,
/// since its state can no longer be trusted.
class Application : public QApplication {
 public:
    using QApplication::QApplication;

    House* house = nullptr;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const RuntimeError& error) {
            Report("Run-time error '" + TrimStr(error.Code()) + "':\n\n" + error.what());
        } catch (const std::exception& error) {
            Report(std::string("Unexpected failure:\n\n") + error.what());
        }
        return false;
    }

 private:
    void Report(const std::string& text) {
        if (reported_) return;
        reported_ = true;
        if (house != nullptr) {
            house->link->StopLink();
            KeepUnsavedWork(*house);
        }
        QtPrompts().Message(text, "Kelvo", Icon::Exclamation);
        if (house != nullptr) house->desk.EndProgram(1);
        exit(1);
    }
    bool reported_ = false;
};

DisplaySize TwipsOfDisplay() {
    constexpr int TwipsAPixel = 15;
    const QSize pixels = QGuiApplication::primaryScreen()->size();
    return {pixels.width() * TwipsAPixel, pixels.height() * TwipsAPixel};
}

}  // namespace

int RunProgram(int argc, char** argv) {
    Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kelvo"));
    // Every window's title ends with it. ./run sets the variable when it has put the software interface in place.
    const bool simulated = qEnvironmentVariableIsSet("KELVO_SIMULATED");
    QApplication::setApplicationDisplayName(simulated ? QStringLiteral("simulated interface") : QString());
    QApplication::setApplicationVersion(QStringLiteral(KELVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kelvo"));
    // Windows come and go between screens; only the desk ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    ApplyTheme(app);

    AppState state;
    LoadState(state, TwipsOfDisplay(), ProgramFolder(QCoreApplication::applicationDirPath().toStdString()));
    QtPrompts prompts;
    QtFileChooser files;
    QtClock clock;
    const std::string portSettings = PortConfigFolder();
    LinkQt link(state, prompts, clock, PortNames(portSettings + "ports/"), portSettings + "CommPort.ini");
    Desk desk(state);
    DataTable dataTable;
    TableScreenLogic table(state, dataTable, prompts, files, clock);
    TableDeskQt tableDesk(desk);
    table.Attach(&tableDesk);
    PrintingQt printing(state, prompts, files);
    House house{state, prompts, files, clock, desk, table, &printing, &link.GetLink()};
    RegisterScreens(house);
    app.house = &house;
    // Queued, so that the step that ended the program returns before its loop does.
    QObject::connect(
        &desk, &Desk::ProgramEnded, &app, [](int code) { QCoreApplication::exit(code); }, Qt::QueuedConnection);
    TellKeptWork(house);
    desk.Show(ScreenCode::frmNorvak);
    const int code = QApplication::exec();
    app.house = nullptr;
    return code;
}

}  // namespace kelvo
