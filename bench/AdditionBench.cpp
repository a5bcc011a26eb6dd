#include <benchmark/benchmark.h>
#include <gsl/gsl_multifit_nlinear.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <cmath>
#include <random>
#include <vector>

#include "addition/AdditionForm.h"
#include "addition/AdditionSeries.h"
#include "addition/frmStanad01.h"
#include "app/AppState.h"
#include "core/Dialogs.h"
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

/// A series of 20 ppm in 50 mL, the additions as planned, each potential ± `scatter` mV, both volumes ± 1 %.
AdditionSeries Series(std::mt19937_64& random, int additions, bool fitSlope, double scatter) {
    constexpr double Truth = 20, Slope = -58;
    std::normal_distribution<double> normal;
    AdditionSeries series;
    series.startMl = 50;
    series.slope = Slope;
    series.fitSlope = fitSlope;
    const AdditionPlan plan = PlanAdditions(series, Truth, additions);
    series.standardPpm = plan.standardPpm;
    series.addedMl = plan.addedMl;
    const double start = series.startMl * (1 + VolumeDeviation * normal(random)),
                 poured = 1 + VolumeDeviation * normal(random);
    double ml = 0;
    for (std::size_t i = 0; i <= series.addedMl.size(); ++i) {
        if (i > 0) ml += poured * series.addedMl[i - 1];
        const double seen = (Truth * start + series.standardPpm * ml) / (start + ml);
        series.mv.push_back(100 + Slope * std::log10(seen) + scatter * normal(random));
    }
    return series;
}

/// How often the interval of several additions holds the truth (`held`), and how often none is told (`none`):
/// additions, whether the slope is fitted, scatter in mV times 10.
void BM_SeriesCoverage(benchmark::State& state) {
    std::mt19937_64 random(20261126);
    double rounds = 0, told = 0, held = 0;
    for (auto _ : state) {
        const auto result = WorkOutSeries(Series(random, static_cast<int>(state.range(0)), state.range(1) != 0,
                                                 static_cast<double>(state.range(2)) / 10));
        ++rounds;
        if (!result || !result->interval) continue;
        ++told;
        held += result->interval->low <= 20 && 20 <= result->interval->high ? 1 : 0;
    }
    state.counters["held"] = held / told;
    state.counters["none"] = 1 - told / rounds;
}
BENCHMARK(BM_SeriesCoverage)->ArgsProduct({{3, 4, 5, 10}, {0}, {2, 5, 10}})->Iterations(20000);
BENCHMARK(BM_SeriesCoverage)->ArgsProduct({{4, 5, 10}, {1}, {2, 5, 10}})->Iterations(20000);

/// The whole of it: concentration, slope, residuals, budget and interval.
void BM_SeriesWorkedOut(benchmark::State& state) {
    std::mt19937_64 random(1);
    const AdditionSeries series = Series(random, 5, true, 0.5);
    for (auto _ : state)
        benchmark::DoNotOptimize(WorkOutSeries(series));
}
BENCHMARK(BM_SeriesWorkedOut);

int SeriesResiduals(const gsl_vector* parameters, void* data, gsl_vector* residuals) {
    const auto& series = *static_cast<const AdditionSeries*>(data);
    const double eo = gsl_vector_get(parameters, 0), slope = gsl_vector_get(parameters, 1);
    const double c = std::pow(10.0, gsl_vector_get(parameters, 2));
    double ml = 0;
    for (std::size_t i = 0; i < series.mv.size(); ++i) {
        if (i > 0) ml += series.addedMl[i - 1];
        const double seen = (c * series.startMl + series.standardPpm * ml) / (series.startMl + ml);
        gsl_vector_set(residuals, i, eo + slope * std::log10(seen) - series.mv[i]);
    }
    return GSL_SUCCESS;
}

/// The same least squares alone by GSL, from a start nearby, without an interval.
void BM_SeriesByGsl(benchmark::State& state) {
    std::mt19937_64 random(1);
    AdditionSeries series = Series(random, 5, true, 0.5);
    const double start[] = {100, -55, 1.2};
    for (auto _ : state) {
        gsl_multifit_nlinear_parameters settings = gsl_multifit_nlinear_default_parameters();
        gsl_multifit_nlinear_workspace* work =
            gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &settings, series.mv.size(), 3);
        gsl_multifit_nlinear_fdf problem{};
        problem.f = SeriesResiduals;
        problem.n = series.mv.size();
        problem.p = 3;
        problem.params = &series;
        const gsl_vector_const_view from = gsl_vector_const_view_array(start, 3);
        gsl_multifit_nlinear_init(&from.vector, &problem, work);
        int info = 0;
        gsl_multifit_nlinear_driver(100, 1e-10, 1e-10, 0, nullptr, nullptr, &info, work);
        benchmark::DoNotOptimize(gsl_vector_get(gsl_multifit_nlinear_position(work), 2));
        gsl_multifit_nlinear_free(work);
    }
}
BENCHMARK(BM_SeriesByGsl);

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
