#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include "app/AppState.h"
#include "calibration/CaliGraph.h"
#include "calibration/CaliSession.h"
#include "core/Dialogs.h"
#include "kit/PictureView.h"

namespace kelvo {
namespace {

class NoPrompts : public Prompts {
    void Message(const std::string&, const std::string&, Icon) override {}
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return true; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

/// A calibration with its best-fit curve, and as many samples as the graph holds.
void FillGraph(AppState& state) {
    NoPrompts prompts;
    CaliSession session(state, prompts);
    state.IonIndex = 10;
    state.MvScaleIndex = 2;
    state.LogCScaleIndex = 1;
    session.StartPoints(5);
    for (int i = 1; i <= 5; ++i)
        session.StorePoint(i, -120 + 58.0 * i, 1000, 0.05, -static_cast<double>(i));
    session.AfterLastPoint();
    session.DrawOpened();
    session.ShowBestCurve();
    for (int i = 0; i < 101; ++i)
        session.MarkSample(-100.0f + 2.0f * static_cast<float>(i), -1.5f - 0.03f * static_cast<float>(i));
}

/// One repaint of the whole graph at 1920 × 1080; a frame of a 60 Hz display is 16 ms.
void BM_PaintGraph101Samples(benchmark::State& bench) {
    AppState state;
    FillGraph(state);
    QImage surface(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : bench) {
        QPainter painter(&surface);
        painter.fillRect(surface.rect(), Qt::white);
        PaintPicture(painter, QRectF(surface.rect()), state.Graph);
        painter.end();
        benchmark::DoNotOptimize(surface.constBits());
    }
}
BENCHMARK(BM_PaintGraph101Samples)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvo
