#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <cmath>
#include <random>
#include <vector>

#include "addition/AdditionForm.h"
#include "addition/frmStanad01.h"
#include "app/AppState.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "statistics/StraightLine.h"
#include "tables/TablePresenter.h"

// Standard addition: the sum beside the bare formula, how often its uncertainty holds, "Calculate" on the form, and
// Enter to the painted result.

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
        benchmark::DoNotOptimize(WorkOut(a, StandardAdditionTerms, {0.3, 0.3, 3}));
    }
}
BENCHMARK(BM_AdditionWithUncertainty);

/// How often "± u" and the 95 % interval hold the truth: calibrations of 3, 5 or 8 standards and an addition after
/// each, every potential with the scatter given (mV times 10), every volume with 1 %. `held` is the share within one
/// standard deviation, `held95` within the margin, `fixed` the share within the deviation that takes 0.1 mV for
/// granted.
void BM_AdditionCoverage(benchmark::State& state) {
    constexpr double slope = -58, truth = 20, sample = 50, standard = 2, standardPpm = 1000;
    const double sigma = static_cast<double>(state.range(0)) / 10;
    const auto points = static_cast<std::size_t>(state.range(1));
    std::mt19937_64 random(20261125);
    std::normal_distribution<double> normal;
    const auto noisy = [&](double mV) { return mV + sigma * normal(random); };
    const auto poured = [&](double mL) { return mL * (1 + VolumeDeviation * normal(random)); };
    double rounds = 0, held = 0, held95 = 0, fixed = 0;
    for (auto _ : state) {
        std::vector<double> x, y;
        for (std::size_t i = 0; i < points; ++i) {
            x.push_back(-5 + 3.0 * static_cast<double>(i) / static_cast<double>(points - 1));
            y.push_back(noisy(slope * x.back()));
        }
        const StraightLine line = FitStraightLine(x, y).value();
        const double potential = std::max(line.residualDeviation, PotentialDeviation);
        const Scatter known = {potential, potential / std::sqrt(line.sxx), line.Freedom()};
        const double vs = poured(sample), va = poured(standard);
        const double after = (truth * vs + standardPpm * va) / (vs + va);
        const Addition seen = {sample, standard, standardPpm, line.slope,
                               25,     25,       noisy(0),    noisy(slope * std::log10(after / truth))};
        const AdditionResult result = WorkOut(seen, StandardAdditionTerms, known);
        const double off = std::abs(result.ppm - truth);
        ++rounds;
        held += off <= result.uncertainty ? 1 : 0;
        held95 += off <= result.margin ? 1 : 0;
        fixed += off <= WorkOut(seen, StandardAdditionTerms).uncertainty ? 1 : 0;
    }
    state.counters["held"] = held / rounds;
    state.counters["held95"] = held95 / rounds;
    state.counters["fixed"] = fixed / rounds;
}
BENCHMARK(BM_AdditionCoverage)->ArgsProduct({{1, 5, 10}, {3, 5, 8}})->Iterations(100000);

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
