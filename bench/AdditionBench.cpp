#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <cmath>

#include "addition/AdditionForm.h"
#include "addition/frmStanad01.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "tables/TablePresenter.h"

// Standard addition: the sum beside the bare formula, "Calculate" on the form, and Enter to the painted result.

namespace kelvo {
namespace {

const Addition Worked = {50, 2, 1000, -58, 25, 25, 80, 51};

void BM_BareAdditionFormula(benchmark::State& state) {
    Addition a = Worked;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        const double slope = a.slope * (a.sampleCelsius + 273.15) / (a.calibrationCelsius + 273.15);
        const double q = std::pow(10.0, (a.after - a.before) / slope);
        benchmark::DoNotOptimize(a.standardPpm * a.standardMl / ((a.sampleMl + a.standardMl) * q - a.sampleMl));
    }
}
BENCHMARK(BM_BareAdditionFormula);

void BM_AdditionWithUncertainty(benchmark::State& state) {
    Addition a = Worked;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(WorkOut(a, StandardAdditionTerms, 0.3));
    }
}
BENCHMARK(BM_AdditionWithUncertainty);

/// Nothing is said in these rounds; the question about the row is answered with No.
class Quiet : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override { throw std::runtime_error(text); }
    bool Ask(const std::string& text, bool, const std::string&) override { throw std::runtime_error(text); }
    bool AskToSave(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string& title, const std::string&, const std::string&) override {
        throw std::runtime_error(title);
    }
};

struct NoScreen : AdditionClient {
    void CalibrateFirst() override {}
    void ShowNow() override {}
    void SaveRow() override {}
};

void Calibrated(AppState& state) {
    state.IonIndex = 10;
    state.CaliSlope = -58;
    state.FileTemp = "25";
}

constexpr std::pair<int, const char*> Entries[] = {{0, "50"},  {3, "20"},  {9, "1000"},
                                                   {14, "80"}, {15, "51"}, {1, "25"}};

void BM_AdditionCalculate(benchmark::State& state) {
    AppState app;
    Calibrated(app);
    Quiet prompts;
    QtClock clock;
    NoScreen screen;
    AdditionForm form(app, prompts, clock, StandardAddition, screen);
    form.Load();
    for (const auto& [box, text] : Entries) {
        form.Edited(box, text);
        form.Enter(box);
    }
    for (auto _ : state)
        form.Press(AdditionForm::CalculateButton);
    if (form.Text(AdditionForm::ResultPpm) != "17.48") state.SkipWithError("not the worked case");
}
BENCHMARK(BM_AdditionCalculate);

void Press(QWidget* widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
}

void Paint(QWidget& window) {
    QEvent paint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &paint);
}

/// A round that paints nothing would measure half the promise.
class PaintCounter : public QObject {
 public:
    int paints = 0;

 protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
};

void BM_AdditionEnterToPaintedResult(benchmark::State& state) {
    ApplyTheme(*qApp);
    AppState app;
    Calibrated(app);
    Quiet prompts;
    QtFileChooser files;
    QtClock clock;
    ScreenManager screens{app};
    DataTable dataTable;
    TablePresenter table{app, dataTable, prompts, files, clock};
    AppContext context{app, prompts, files, clock, screens, table};
    frmStanad01 screen(context);
    screen.OnLoad();
    screen.Present();
    screen.resize(1050, 656);
    QCoreApplication::processEvents();
    const auto box = [&](int i) { return screen.findChild<EntryBox*>(QStringLiteral("txtbox(%1)").arg(i)); };
    for (const auto& [i, text] : Entries) {
        box(i)->setText(QString::fromLatin1(text));
        Press(box(i), Qt::Key_Return);
    }
    auto* calculate = screen.findChild<QPushButton*>(QStringLiteral("cmdstrslt(0)"));
    int digit = 0;
    Paint(screen);
    PaintCounter counter;
    box(AdditionForm::ResultPpm)->installEventFilter(&counter);
    calculate->setFocus();
    for (auto _ : state) {
        state.PauseTiming();
        digit = (digit + 1) % 10;
        box(AdditionForm::After)->setText(QStringLiteral("51.%1").arg(digit));
        Paint(screen);
        state.ResumeTiming();
        Press(calculate, Qt::Key_Return);
        Paint(screen);
    }
    if (counter.paints < static_cast<int>(state.iterations())) state.SkipWithError("the result was not painted");
}
BENCHMARK(BM_AdditionEnterToPaintedResult)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvo
