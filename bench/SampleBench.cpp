#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <cmath>

#include "app/AppState.h"
#include "app/Screens.h"
#include "calibration/CaliSession.h"
#include "core/Dialogs.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "kit/EntryBox.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "tables/TableNavigatorQt.h"
#include "tables/TablePresenter.h"

// From Enter on a typed potential to the painted calibration screen: result, mark on the graph, row of the table, and
// the interval below the boxes.

namespace kelvo {
namespace {

/// Every question is declined: the samples are kept in no file.
class Declining : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override { throw std::runtime_error(text); }
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

void BM_SampleEnterToPainted(benchmark::State& run) {
    ApplyTheme(*qApp);
    AppState state;
    Declining prompts;
    QtFileChooser files;
    QtClock clock;
    ScreenManager screens{state};
    DataTable dataTable;
    TablePresenter table{state, dataTable, prompts, files, clock};
    TableNavigatorQt navigator{screens};
    table.Attach(&navigator);
    AppContext context{state, prompts, files, clock, screens, table};
    RegisterScreens(context);

    constexpr int Fluoride = 10;
    state.IonIndex = Fluoride;
    state.CaliTemp = state.PointTemp = state.FileTemp = "25";
    state.MvScaleIndex = 2;
    state.LogCScaleIndex = 3;
    screens.Show(ScreenCode::fmISEcli);
    CaliSession session(state, prompts);
    session.StartPoints(4);
    const float mv[] = {-11.7f, 45.7f, 103.7f, 162.3f};
    for (int i = 0; i < 4; ++i)
        session.StorePoint(i + 1, mv[i], 18998.4 * std::pow(10.0, -2 - i), std::pow(10.0, -2 - i), -2 - i);
    session.DrawOpened();
    session.ShowLinear();
    Screen& screen = *screens.Find(ScreenCode::fmISEcli);
    screen.resize(1050, 656);
    screen.findChild<QAction*>(QStringLiteral("mnuPotentiometry(0)"))->trigger();
    auto* box = screen.findChild<EntryBox*>(QStringLiteral("txtT(0)"));
    auto* refresh = screen.findChild<QAction*>(QStringLiteral("mnuRefresh"));
    const auto paint = [&] {
        QCoreApplication::processEvents();
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&screen, &request);
    };
    int round = 0;
    for (auto _ : run) {
        run.PauseTiming();
        if (round % 50 == 0) {
            refresh->trigger();
            table.Unload();
            state.TableOpen = 1;
        }
        box->setText(QString::number(20 + round++ % 60));
        paint();
        run.ResumeTiming();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(box, &press);
        paint();
    }
    if (state.SampleCount == 0) run.SkipWithError("no sample was taken");
}
BENCHMARK(BM_SampleEnterToPainted)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvo
