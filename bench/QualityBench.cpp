#include <benchmark/benchmark.h>
#include <gsl/gsl_blas.h>
#include <gsl/gsl_multifit_nlinear.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "app/AppState.h"
#include "calibration/DriftCheck.h"
#include "calibration/Quality.h"
#include "calibration/QualityPage.h"
#include "calibration/QualityVerdict.h"
#include "calibration/Sample.h"
#include "statistics/Budget.h"
#include "statistics/CurvePrediction.h"
#include "statistics/InversePrediction.h"
#include "statistics/JoinedLines.h"
#include "statistics/OffsetLine.h"
#include "statistics/Parabola.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr int Points = 10;
constexpr double Eo = -128.182, Slope = -58, BesideStandards = 2e-6;

/// Ten fluoride standards over three decades, with a scatter of some tenths of a millivolt.
Standards TenStandards(double besideStandards) {
    Standards standards;
    for (int i = 0; i < Points; ++i) {
        const double logC = -1.3 - i / 2.0;
        standards.logC.push_back(logC);
        standards.mv.push_back(Eo + Slope * std::log10(std::pow(10.0, logC) + besideStandards) +
                               0.3 * std::sin(3.0 * i));
    }
    return standards;
}

AppState TenPoints() {
    AppState state;
    state.IonIndex = 10;
    state.LinearFit = 1;
    state.CaliPoints = Points;
    state.FileTemp = "25.0";
    const Standards standards = TenStandards(0);
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        state.CaliLogC.push_back(static_cast<float>(standards.logC[i]));
        state.CaliE.push_back(static_cast<float>(standards.mv[i]));
    }
    return state;
}

/// Every figure and the verdict: what a calibration takes when it is made.
void CalibrationOfTenPoints(benchmark::State& run) {
    const AppState state = TenPoints();
    const QualityLimits limits;
    for (auto _ : run)
        benchmark::DoNotOptimize(CalibrationOf(state, limits));
}
BENCHMARK(CalibrationOfTenPoints);

/// The window's whole content: the same with all texts, the fit for low concentrations and the picture.
void QualityPageOfTenPoints(benchmark::State& run) {
    const AppState state = TenPoints();
    for (auto _ : run)
        benchmark::DoNotOptimize(MakeQualityPage(CalibrationOf(state), true));
}
BENCHMARK(QualityPageOfTenPoints);

/// What Enter on a sample costs more than before: the interval and its line.
void SampleIntervalOfTenPoints(benchmark::State& run) {
    const AppState state = TenPoints();
    CalibrationInUse inUse(state);
    for (auto _ : run)
        benchmark::DoNotOptimize(MeasureSample(inUse.Get(), 30, "25.0")->LiveLine());
}
BENCHMARK(SampleIntervalOfTenPoints);

void LowConcentrationFit(benchmark::State& run) {
    const Standards standards = TenStandards(BesideStandards);
    double c = 0;
    for (auto _ : run) {
        const auto fit = FitLowEnd(standards);
        benchmark::DoNotOptimize(fit);
        c = fit->c;
    }
    run.counters["c"] = c;
}
BENCHMARK(LowConcentrationFit);

int Residuals(const gsl_vector* parameters, void* data, gsl_vector* residuals) {
    const auto& standards = *static_cast<const Standards*>(data);
    const double eo = gsl_vector_get(parameters, 0), slope = gsl_vector_get(parameters, 1);
    const double c = std::pow(10.0, gsl_vector_get(parameters, 2));
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        const double fitted = eo + slope * std::log10(std::pow(10.0, standards.logC[i]) + c);
        gsl_vector_set(residuals, i, fitted - standards.mv[i]);
    }
    return GSL_SUCCESS;
}

/// The same curve by the reference library's nonlinear least squares, from the start that a line gives it.
void LowConcentrationFitGsl(benchmark::State& run) {
    Standards standards = TenStandards(BesideStandards);
    gsl_multifit_nlinear_parameters settings = gsl_multifit_nlinear_default_parameters();
    double c = 0;
    for (auto _ : run) {
        gsl_multifit_nlinear_workspace* work =
            gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &settings, Points, 3);
        gsl_multifit_nlinear_fdf problem{};
        problem.f = Residuals;
        problem.n = Points;
        problem.p = 3;
        problem.params = &standards;
        double start[] = {-128, -55, -5};
        const gsl_vector_view from = gsl_vector_view_array(start, 3);
        gsl_multifit_nlinear_init(&from.vector, &problem, work);
        int info = 0;
        gsl_multifit_nlinear_driver(100, 1e-9, 1e-9, 0, nullptr, nullptr, &info, work);
        c = std::pow(10.0, gsl_vector_get(gsl_multifit_nlinear_position(work), 2));
        gsl_multifit_nlinear_free(work);
    }
    run.counters["c"] = c;
}
BENCHMARK(LowConcentrationFitGsl);

/// A calibration with normal noise of known size over four decades.
struct Noisy {
    static constexpr double NoiseMv = 0.5, Low = -5, High = -1;
    std::mt19937_64 random{20261125};
    std::normal_distribution<double> noise{0, NoiseMv};

    Standards Calibration(int count) {
        Standards standards;
        for (int k = 0; k < count; ++k) {
            const double logC = Low + (High - Low) * k / (count - 1);
            standards.logC.push_back(logC);
            standards.mv.push_back(Eo + Slope * logC + noise(random));
        }
        return standards;
    }
};

constexpr int Calibrations = 20'000;

/// The share of 95 % intervals that hold the true concentration of a sample anywhere in the range. Arguments:
/// standards, readings of the sample, scatter of the readings in that of the standards.
void IntervalCoverage(benchmark::State& run) {
    const auto count = static_cast<int>(run.range(0));
    double held = 0, told = 0;
    for (auto _ : run) {
        Noisy noisy;
        std::uniform_real_distribution<double> place(Noisy::Low, Noisy::High);
        held = told = 0;
        for (int i = 0; i < Calibrations; ++i) {
            const Standards standards = noisy.Calibration(count);
            const auto prediction = InversePrediction::Of(*FitStraightLine(standards.logC, standards.mv));
            const double truth = place(noisy.random);
            std::vector<double> readings;
            for (int k = 0; k < run.range(1); ++k)
                readings.push_back(Eo + Slope * truth + static_cast<double>(run.range(2)) * noisy.noise(noisy.random));
            if (!prediction) continue;
            const InverseEstimate estimate = prediction->Of(readings);
            told += 1;
            held += std::abs(estimate.x - truth) <= estimate.halfWidth ? 1 : 0;
        }
    }
    run.counters["percent"] = 100 * held / told;
}
BENCHMARK(IntervalCoverage)
    ->ArgsProduct({{3, 4, 5, 10}, {1, 2, 3, 4, 5}, {1}})
    ->ArgsProduct({{4, 10}, {3, 5}, {3, 10}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

enum { ParabolaCurve, LowEndCurve, JoinedCurve };

/// The same off a curve. Arguments: the curve (a parabola that bends by 2 mV per square decade; a line that levels off
/// below 1E-5; lines that join standards measured twice), standards, readings. `told` is the share of samples that an
/// interval is told of.
void CurveCoverage(benchmark::State& run) {
    const auto kind = run.range(0);
    const auto count = static_cast<int>(run.range(1));
    constexpr double Bend = 2, Offset = 1e-5, Middle = -3, Reach = 2;
    const auto potential = [&](double x) {
        if (kind == LowEndCurve) return Eo + Slope * std::log10(std::pow(10.0, x) + Offset);
        return Eo + Slope * x - (kind == ParabolaCurve ? Bend * (x - Middle) * (x - Middle) : 0);
    };
    double held = 0, told = 0;
    for (auto _ : run) {
        Noisy noisy;
        std::uniform_real_distribution<double> place(Noisy::Low, Noisy::High);
        held = told = 0;
        for (int i = 0; i < Calibrations; ++i) {
            std::vector<double> x, y, readings;
            for (int k = 0; k < (kind == JoinedCurve ? 2 : 1) * count; ++k) {
                x.push_back(Noisy::Low + (Noisy::High - Noisy::Low) * (k % count) / (count - 1));
                y.push_back(potential(x.back()) + noisy.noise(noisy.random));
            }
            const double truth = place(noisy.random);
            for (int k = 0; k < run.range(2); ++k)
                readings.push_back(potential(truth) + noisy.noise(noisy.random));
            std::optional<CurveEstimate> out;
            const Span within{Noisy::Low, Noisy::High};
            if (kind == ParabolaCurve) {
                out = PredictFromCurve(*Parabola::Of(x, y), within, readings, Reach);
            } else if (kind == JoinedCurve) {
                const auto lines = JoinedLines::Of(x, y);
                if (lines) out = lines->Predict(readings);
            } else if (const auto fit = OffsetLine::Of(x, y)) {
                out = PredictFromCurve(*fit, within, readings, Reach);
            }
            told += out ? 1 : 0;
            held += out && out->low <= truth && truth <= out->high ? 1 : 0;
        }
    }
    run.counters["percent"] = 100 * held / told;
    run.counters["told"] = 100 * told / Calibrations;
}
BENCHMARK(CurveCoverage)
    ->ArgsProduct({{ParabolaCurve, LowEndCurve}, {4, 5, 10}, {1, 2, 3, 4, 5}})
    ->ArgsProduct({{JoinedCurve}, {3, 4, 5, 10}, {1, 2, 3, 4, 5}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

enum { WithoutChecks, WithChecks, WithBracketing };

/// What drift does to the intervals: five standards, then 20 samples while the electrode moves evenly, with a standard
/// measured again after every fifth sample; scatter 0.2 mV, limit 1 mV. Arguments: what is done about it; tenths of a
/// millivolt from one check to the next. `percent` is the share of the intervals that hold the true concentration,
/// `told` the share of samples that a good check covers.
void DriftCoverage(benchmark::State& run) {
    constexpr int Runs = 2000, Samples = 20, Between = 5, StandardCount = 5;
    constexpr double Scatter = 0.2;
    const auto mode = run.range(0);
    const double step = 0.1 * static_cast<double>(run.range(1)) / Between;
    DriftSettings settings;
    settings.bracket = mode == WithBracketing;
    double held = 0, told = 0;
    for (auto _ : run) {
        std::mt19937_64 random(20261127);
        std::normal_distribution<double> noise(0, Scatter);
        std::uniform_real_distribution<double> place(Noisy::Low, Noisy::High);
        held = told = 0;
        for (int i = 0; i < Runs; ++i) {
            AppState state = TenPoints();
            state.CaliPoints = StandardCount;
            state.CaliLogC.assign(1, 0);
            state.CaliE.assign(1, 0);
            for (int k = 0; k < StandardCount; ++k) {
                state.CaliLogC.push_back(static_cast<float>(Noisy::Low + k));
                state.CaliE.push_back(static_cast<float>(Eo + Slope * (Noisy::Low + k) + noise(random)));
            }
            const auto calibration = std::make_shared<const Calibration>(CalibrationOf(state));
            const CheckStandard standard = *CheckStandardOf(*calibration, 0);
            DriftWatch watch;
            watch.Follow(calibration);
            std::vector<double> truth(1), mv(1);
            std::vector<bool> covered(1);
            std::vector<double> moved(1);
            for (int k = 1; k <= Samples; ++k) {
                truth.push_back(place(random));
                mv.push_back(Eo + Slope * truth.back() + step * (k - 1) + noise(random));
                covered.push_back(watch.FactsNow().Empty());
                moved.push_back(0);
                watch.Add(k, mv.back(), k - 1);
                if (mode == WithoutChecks || k % Between != 0) continue;
                const double again = Eo + Slope * standard.logC + step * (k - 0.5) + noise(random);
                for (const auto& [row, facts] : watch.Check(standard, settings, again, k - 0.5, {}).rows) {
                    const auto at = static_cast<std::size_t>(row);
                    if (!facts.Get(fact::Uncovered).empty()) covered[at] = false;
                    moved[at] = Val(facts.Get(fact::DriftU));
                    if (const std::string text = facts.Get(fact::Corrected); !text.empty()) mv[at] = Val(text);
                }
            }
            const auto prediction = InversePrediction::Of(*calibration->Line());
            for (std::size_t k = 1; k < mv.size(); ++k) {
                if (!covered[k]) continue;
                const InverseEstimate estimate = prediction->At(mv[k]);
                told += 1;
                Budget budget;
                budget.Add({"calibration and reading", {}, estimate.deviation, StandardCount - 2, 1});
                const int freedom = mode == WithBracketing ? StandardCount - 2 : 0;
                budget.Add({"drift", {}, moved[k] / std::abs(Slope), freedom, freedom > 0 ? 1 : 0});
                held += std::abs(estimate.x - truth[k]) <= budget.HalfWidth() ? 1 : 0;
            }
        }
    }
    run.counters["percent"] = told == 0 ? 0 : 100 * held / told;
    run.counters["told"] = 100 * told / Runs / Samples;
}
BENCHMARK(DriftCoverage)
    ->ArgsProduct({{WithoutChecks, WithChecks, WithBracketing}, {0, 2, 5, 8}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// How often the wrong standard is found: one of the standards, any of them, is off by so many mV. `largest` is the
/// share in which it has the largest residual, `named` the share in which a standard is named, `right` the share of
/// these in which it is that one.
void NamingTheWrongStandard(benchmark::State& run) {
    const auto count = static_cast<std::size_t>(run.range(0));
    double largest = 0, named = 0, right = 0;
    for (auto _ : run) {
        Noisy noisy;
        std::uniform_int_distribution<std::size_t> which(0, count - 1);
        largest = named = right = 0;
        for (int i = 0; i < Calibrations; ++i) {
            QualityInput input;
            input.ion = ResponseOf(10);
            input.standards = noisy.Calibration(static_cast<int>(count));
            const std::size_t wrong = which(noisy.random);
            input.standards.mv[wrong] += static_cast<double>(i % 2 == 0 ? run.range(1) : -run.range(1));
            const CalibrationQuality quality = JudgeQuality(input, {});
            std::size_t worst = 0;
            for (std::size_t k = 1; k < count; ++k)
                if (std::abs(quality.points[k].residual) > std::abs(quality.points[worst].residual)) worst = k;
            largest += worst == wrong ? 1 : 0;
            named += quality.wrong.Named() ? 1 : 0;
            right += quality.wrong.kind == WrongStandard::Kind::Standard && quality.wrong.first == wrong ? 1 : 0;
        }
    }
    run.counters["largest"] = 100 * largest / Calibrations;
    run.counters["named"] = 100 * named / Calibrations;
    run.counters["right"] = named == 0 ? 0 : 100 * right / named;
}
BENCHMARK(NamingTheWrongStandard)
    ->ArgsProduct({{3, 4, 5, 10}, {5, 10, 20}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvo
