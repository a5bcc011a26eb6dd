#include <QtWidgets>

#include "calibration/Potentiometry.h"
#include "calibration/fmISEcli.h"
#include "calibration/fmISEcliSample.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "ph/PhValue.h"
#include "text/Number.h"

// Samples on line: the reading dialog stands beside the calibration screen and borrows its boxes.

namespace kelvo {
namespace {

constexpr int White = 15;
constexpr int CelsiusBox = 5, PhBox = 4;

/// Place of the reading dialog on the screen, of 12000 by 9000: clear of the list and of most of the graph.
constexpr int DialogLeft = 4750, DialogTop = 960, FullWidth = 12000, FullHeight = 9000;

}  // namespace

void fmISEcli::StartReading() {
    if (context_.link != nullptr) context_.link->StartLink();
    state_.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmPtset);
    context_.screens.Close(ScreenCode::frmPtset);
    context_.screens.Show(ScreenCode::frmPtset);
    Screen* dialog = context_.screens.Find(ScreenCode::frmPtset);
    if (dialog == nullptr) return;
    dialog->move(mapToGlobal(QPoint(width() * DialogLeft / FullWidth, height() * DialogTop / FullHeight)));
}

void fmISEcli::StopReading() {
    if (context_.screens.IsLoaded(ScreenCode::frmPtset)) {
        context_.screens.Close(ScreenCode::frmPtset);
        if (context_.link != nullptr && context_.link->PortOpen()) context_.link->StopLink();
    }
    ReadingCancelled();
}

void fmISEcli::ReadingCancelled() {
    if (state_.ReturnScreen == static_cast<int>(ScreenCode::frmPtset)) state_.ReturnScreen = 0;
    ColourTemperature(White);
}

void fmISEcli::ShowTemperature(const std::string& celsius, const std::string&) {
    samples_->SetText(CelsiusBox, celsius);
}

void fmISEcli::ColourTemperature(int colour) {
    samples_->Box(CelsiusBox)->SetBackground(colour == White ? -1 : colour);
}

void fmISEcli::ShowSecondElectrode(float millivolts, bool correctTemperature) {
    auto ph = PhFromMv(state_.Buffers2, state_.BufferCount[2], millivolts);
    if (!ph) {
        // No pH calibration, or one that has no line: there is nothing to show.
        ShowNoSecondElectrode();
        return;
    }
    const auto sample = static_cast<float>(Val(samples_->Texts()[CelsiusBox]));
    if (correctTemperature) ph = PhTempCorrect(*ph, state_.PhCaliTemp[2], sample);
    samples_->SetText(PhBox, Format(*ph, "#0.00"));
}

void fmISEcli::ShowNoSecondElectrode() {
    samples_->SetText(PhBox, "N/A");
}

bool fmISEcli::TakeSample(const std::string& millivolts) {
    samples_->SetText(0, millivolts);
    const auto e = static_cast<float>(Val(millivolts));
    const std::string remark = SampleRemark(state_, e);
    auto result = PotentialToSample(state_, context_.prompts, e);
    if (!result) return false;
    // Read on line, ppm off a curve other than the line has four places.
    const SampleOutcome outcome = SampleFromPotential(state_, e);
    if (state_.LinearFit != 1 && outcome.value) result->PpmText = Format(outcome.value->ppm, "#0.0000");
    samples_->SetResult(*result);
    if (!MarkSample(e, result->LogC)) return false;
    Tell(remark);
    return true;
}

}  // namespace kelvo
