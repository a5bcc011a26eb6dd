#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "text/Number.h"

namespace kelvo {
namespace {

// Every text function stands beside the C library's way to the same shape, so that one run compares them.

constexpr std::size_t Last = 1023;  ///< a power of two less one, so that an index is kept in range by `&`

/// Potentials from -400 to 400 mV, with more digits than are shown.
const std::vector<double>& Potentials() {
    static const std::vector<double> values = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> mv(-400, 400);
        std::vector<double> all(Last + 1);
        for (double& value : all)
            value = mv(random);
        return all;
    }();
    return values;
}

/// Concentrations from 1e-7 to 1 mol/L.
const std::vector<double>& Concentrations() {
    static const std::vector<double> values = [] {
        std::mt19937 random(2);
        std::uniform_real_distribution<double> logC(-7, 0);
        std::vector<double> all(Last + 1);
        for (double& value : all)
            value = std::pow(10.0, logC(random));
        return all;
    }();
    return values;
}

void Format_Potential(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Format(Potentials()[i++ & Last], "#0.00"));
}
BENCHMARK(Format_Potential);

void Snprintf_Potential(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2f", Potentials()[i++ & Last]);
        benchmark::DoNotOptimize(std::string(text));
    }
}
BENCHMARK(Snprintf_Potential);

void Format_PotentialAsFloat(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Format(static_cast<float>(Potentials()[i++ & Last]), "#0.00"));
}
BENCHMARK(Format_PotentialAsFloat);

void Format_Concentration(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Format(Concentrations()[i++ & Last], "0.00E-00"));
}
BENCHMARK(Format_Concentration);

void Snprintf_Concentration(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2E", Concentrations()[i++ & Last]);
        benchmark::DoNotOptimize(std::string(text));
    }
}
BENCHMARK(Snprintf_Concentration);

void Str_Double(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Str(Concentrations()[i++ & Last]));
}
BENCHMARK(Str_Double);

void Snprintf_AllDigitsOfADouble(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
        char text[32];
        std::snprintf(text, sizeof text, "% .17g", Concentrations()[i++ & Last]);
        benchmark::DoNotOptimize(std::string(text));
    }
}
BENCHMARK(Snprintf_AllDigitsOfADouble);

void Str_Float(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Str(static_cast<float>(Potentials()[i++ & Last])));
}
BENCHMARK(Str_Float);

std::vector<std::string> TextsOf(const std::vector<double>& values) {
    std::vector<std::string> texts;
    for (const double value : values)
        texts.push_back(Str(value));
    return texts;
}

void Val_Text(benchmark::State& state) {
    const std::vector<std::string> texts = TextsOf(Potentials());
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Val(texts[i++ & Last]));
}
BENCHMARK(Val_Text);

void Strtod_Text(benchmark::State& state) {
    const std::vector<std::string> texts = TextsOf(Potentials());
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(std::strtod(texts[i++ & Last].c_str(), nullptr));
}
BENCHMARK(Strtod_Text);

}  // namespace
}  // namespace kelvo
