#include <QtWidgets>

#include "calibration/fmpaidat.h"
#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "link/SampleReadingPresenter.h"

// The point dialog on line: the potential comes from the interface, tick by tick.

namespace kelvo {
namespace {

constexpr int TickMs = 500;
constexpr int HintColour = 12;

const char* const HintPlain = "Immerse the electrode in the solution, when the reading is stable, click on 'OK'.";
const char* const HintWait =
    "Please wait for the stable reading, or click on 'Now' to take the current displayed data.";
const char* const HintPreset =
    "Please wait for the pre-set time, or click on 'Now' to take the current displayed data.";
const char* const HintStable = "The reading is stable now, please click on 'Ok' to continue.";

}  // namespace

void fmpaidat::StartReading() {
    live_.Open();
    state_.PointRunning = 0;
    // Large enough to be read from the bench.
    txtbox_[PointForm::Potential]->setStyleSheet(QStringLiteral("font-size: 24pt; font-weight: 600;"));
    Timer1_.setInterval(TickMs);
    connect(&Timer1_, &QTimer::timeout, this, &fmpaidat::Tick, Qt::UniqueConnection);
    Timer1_.start();
}

void fmpaidat::StartMeasurement() {
    form_.BeginMeasurement();
    if (state_.ASD < 1) {
        ShowHint(HintPlain, false);
    } else {
        live_.StartWait();
        state_.PointRunning = 1;
        cmdok_->setText(QStringLiteral("Now"));
        ShowHint(state_.ASD == 2 ? HintPreset : HintWait, true);
    }
    binder_->WriteBack();
    GrowToContent();
}

void fmpaidat::Tick() {
    binder_->Do([this] { TakeReading(); });
}

void fmpaidat::TakeReading() {
    lblCntDown_->clear();
    if (!live_.Take()) return;
    form_.Measured(live_.MvText());
    FollowStability();
    if (state_.Channel[2] == 1) TakeTemperature();
    live_.Count();
}

void fmpaidat::TakeTemperature() {
    const float celsius = live_.Celsius();
    if (celsius >= 0) {
        form_.MeasuredTemperature(celsius);
        return;
    }
    if (state_.SensorWarned) return;
    state_.SensorWarned = true;
    context_.prompts.Message(text::SensorNotWorking);
}

void fmpaidat::FollowStability() {
    const auto verdict = live_.Judge(form_.Text(PointForm::Potential));
    lblCntDown_->setText(ToQt(live_.CountDown()));
    if (verdict != LiveReading::Verdict::Stable || state_.PointRunning == 0) return;
    state_.PointRunning = 0;
    cmdok_->setText(QStringLiteral("OK"));
    ShowHint(HintStable, false);
}

void fmpaidat::ShowHint(const char* text, bool red) {
    labelmsg_->setText(QString::fromUtf8(text));
    labelmsg_->setStyleSheet(red ? QStringLiteral("color: %1; font-weight: 600;").arg(ColourOf(HintColour).name())
                                 : QString());
}

void fmpaidat::EditAsd() {
    context_.screens.ShowModal(ScreenCode::frmAutoD);
    live_.SettingsAccepted();
}

}  // namespace kelvo
