#include "app/Program.h"

#include <QtWidgets>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <span>

#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/CrashRecovery.h"
#include "app/FirstFrame.h"
#include "app/OpenFile.h"
#include "app/Screens.h"
#include "app/SessionEnd.h"
#include "core/Dialogs.h"
#include "core/Startup.h"
#include "devices/LinkQt.h"
#include "devices/PageWriterQt.h"
#include "devices/ProgramFolder.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "link/Link.h"
#include "link/PortNames.h"
#include "ph/RecordingJournal.h"
#include "tables/TableNavigatorQt.h"
#include "tables/TablePresenter.h"
#include "text/Number.h"
#include "text/ProgramLocale.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Last net under every event: a failure that no step has caught is reported once and the program ends in order,
/// since its state can no longer be trusted.
class Application : public QApplication {
 public:
    using QApplication::QApplication;

    CrashRecovery* recovery = nullptr;

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
        if (recovery != nullptr)
            recovery->EndByFailure(text);
        else
            QtPrompts().Message(text, "Kelvo", Icon::Exclamation);
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
    const std::span<const char* const> words(argv, argv + argc);
    const CommandLine commandLine = ReadCommandLine(words.subspan(words.empty() ? 0 : 1), KELVO_VERSION);
    if (commandLine.exitCode) {
        std::cout << commandLine.out << std::flush;
        std::cerr << commandLine.err;
        return std::cout ? *commandLine.exitCode : 1;
    }
    Application app(argc, argv);
    SetProgramLocale();
    QApplication::setApplicationName(QStringLiteral("kelvo"));
    // Every window's title ends with it. ./run sets the variable when it has put the software interface in place.
    const bool simulated = qEnvironmentVariableIsSet("KELVO_SIMULATED");
    QApplication::setApplicationDisplayName(simulated ? QStringLiteral("simulated interface") : QString());
    QApplication::setApplicationVersion(QStringLiteral(KELVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.example.kelvo"));
    // Windows come and go between screens; only the screen manager ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    ApplyStyle(app);
    FirstFrame firstFrame(app, [&app] { ApplySheet(app); });

    AppState state;
    LoadState(state, TwipsOfDisplay(), ProgramFolder(QCoreApplication::applicationDirPath().toStdString()));
    state.JournalPath = UserDataFolder();
    QtPrompts prompts;
    QtFileChooser files;
    QtClock clock;
    const std::string portSettings = PortConfigFolder();
    LinkQt link(state, prompts, clock, PortNames(portSettings + "ports/"), portSettings + "CommPort.ini");
    ScreenManager screens(state);
    DataTable dataTable;
    TablePresenter table(state, dataTable, prompts, files, clock);
    TableNavigatorQt tableNavigator(screens);
    table.Attach(&tableNavigator);
    PrintingQt printing(state, prompts, files);
    AppContext context{state, prompts, files, clock, screens, table, &printing, &link.GetLink()};
    RegisterScreens(context);
    CrashRecovery recovery(context, KeepFolders(state.AppPath));
    app.recovery = &recovery;
    const SessionEnd sessionEnd({
        .end =
            [&] {
                recovery.Keep(CrashRecovery::End::Session);
                context.link->StopLink();
                // No box, dialog or step that may be on the way is unwound: nothing is to run on the way out.
                std::_Exit(0);
            },
        .keep = [&] { recovery.KeepInSilence(CrashRecovery::End::Session); },
    });
    // Queued, so that the step that ended the program returns before its loop does.
    QObject::connect(
        &screens, &ScreenManager::ProgramEnded, &app, [](int code) { QCoreApplication::exit(code); },
        Qt::QueuedConnection);
    recovery.Report();
    OfferKeptRecordings(
        state, state.JournalPath, prompts, files, [&screens] { return screens.Ended(); }, KeepFolders(state.AppPath));
    // In the running loop, for the way to open a file may ask.
    QTimer::singleShot(0, &screens, [&] {
        if (screens.Ended()) return;
        const auto answerNext = [&files](std::optional<std::string> name) { files.AnswerNext(std::move(name)); };
        if (!commandLine.file.empty()) firstFrame.Finish();
        const bool opened = !commandLine.file.empty() && OpenFileInScreen(context, commandLine.file, answerNext);
        if (!opened) screens.Show(ScreenCode::frmNorvak);
    });
    const int code = QApplication::exec();
    app.recovery = nullptr;
    return code;
}

}  // namespace kelvo
