#include <benchmark/benchmark.h>
#include <gsl/gsl_fit.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "app/AppState.h"
#include "calibration/CaliFile.h"
#include "calibration/Calibration.h"
#include "calibration/CurveFit.h"
#include "calibration/Potentiometry.h"
#include "core/Clock.h"
#include "text/Files.h"

namespace kelvo {
namespace {

/// Prompts for work that asks nothing.
class NoPrompts : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override { throw std::runtime_error(text); }
    bool Ask(const std::string& text, bool, const std::string&) override { throw std::runtime_error(text); }
    bool AskToSave(const std::string&, const std::string&) override { return true; }
    std::optional<std::string> Input(const std::string& title, const std::string&, const std::string&) override {
        throw std::runtime_error(title);
    }
};

constexpr int Points = 10;
constexpr float SampleMv = 30;

/// Ten standards of a fluoride electrode, with a scatter of some tenths of a millivolt.
AppState TenPoints() {
    AppState state;
    state.IonIndex = 10;
    state.MvScaleIndex = 2;
    state.LogCScaleIndex = 1;
    state.LinearFit = 1;
    state.CaliPoints = Points;
    for (int i = 0; i < Points; ++i) {
        const double ppm = 1000 * std::pow(10.0, -i / 3.0);
        const float molar = PpmToMolar(state.Ions, ppm, state.IonIndex);
        const double logC = Log10(molar);
        state.CaliPpm.push_back(static_cast<float>(ppm));
        state.CaliMolar.push_back(molar);
        state.CaliLogC.push_back(static_cast<float>(logC));
        state.CaliE.push_back(static_cast<float>(-128.182 - 58 * logC + 0.3 * std::sin(3.0 * i)));
    }
    return state;
}

void FitAndInverse(benchmark::State& run) {
    AppState state = TenPoints();
    NoPrompts prompts;
    state.LinearFit = 1;
    const Calibration calibration = CalibrationOf(state);
    for (auto _ : run) {
        benchmark::DoNotOptimize(state.CaliE.data());
        benchmark::ClobberMemory();
        FitLinear(state, prompts);
        benchmark::DoNotOptimize(SampleFromPotential(calibration, SampleMv));
    }
}
BENCHMARK(FitAndInverse);

/// The same answer from the reference library: its fit of the same points, then LogC, mol/L and ppm.
void FitAndInverseGsl(benchmark::State& run) {
    const AppState state = TenPoints();
    std::array<double, Points> x, y;
    for (std::size_t i = 0; i < Points; ++i) {
        x[i] = state.CaliLogC[i + 1];
        y[i] = state.CaliE[i + 1];
    }
    for (auto _ : run) {
        benchmark::DoNotOptimize(x.data());
        benchmark::ClobberMemory();
        double eo = 0, slope = 0, cov00 = 0, cov01 = 0, cov11 = 0, sumsq = 0;
        gsl_fit_linear(x.data(), 1, y.data(), 1, Points, &eo, &slope, &cov00, &cov01, &cov11, &sumsq);
        const double logC = (SampleMv - eo) / slope;
        const double molar = std::pow(10.0, logC);
        SampleValue value{logC, molar, molar * 1000 * state.Ions.weights[10]};
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(FitAndInverseGsl);

/// As the screen asks for it, with the texts of the three boxes.
void SampleWithTexts(benchmark::State& run) {
    AppState state = TenPoints();
    NoPrompts prompts;
    FitLinear(state, prompts);
    state.LinearFit = 1;
    const Calibration calibration = CalibrationOf(state);
    for (auto _ : run)
        benchmark::DoNotOptimize(PotentialToSample(calibration, prompts, SampleMv));
}
BENCHMARK(SampleWithTexts);

void OpenIseFromBytes(benchmark::State& run) {
    const std::string bytes = IseBytes(TenPoints(), {});
    AppState state;
    for (auto _ : run) {
        ReadIse(state, bytes);
        benchmark::DoNotOptimize(state.CaliE.data());
    }
}
BENCHMARK(OpenIseFromBytes);

class OneFile : public FileChooser {
 public:
    explicit OneFile(std::string name) : name_(std::move(name)) {}
    std::optional<std::string> Open(const FileRequest&) override { return name_; }
    std::optional<std::string> Save(const FileRequest&) override { return name_; }

 private:
    std::string name_;
};

void OpenIseFromDisk(benchmark::State& run) {
    const std::string name = "/tmp/KELVO-BENCH.ISE";
    AppState state = TenPoints();
    ReplaceWholeFile(name, IseBytes(state, {}));
    NoPrompts prompts;
    OneFile files(name);
    for (auto _ : run)
        benchmark::DoNotOptimize(OpenIseChecked(state, prompts, files));
    std::remove(name.c_str());
}
BENCHMARK(OpenIseFromDisk);

}  // namespace
}  // namespace kelvo
