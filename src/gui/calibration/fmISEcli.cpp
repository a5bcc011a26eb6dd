#include "calibration/fmISEcli.h"

#include <QtWidgets>
#include <cmath>

#include "calibration/CalibrationFollower.h"
#include "calibration/FloatingMessage.h"
#include "calibration/IseCalibration.h"
#include "calibration/SampleBoxes.h"
#include "core/HardwareSettings.h"
#include "core/StatusMessages.h"
#include "core/TemperatureText.h"
#include "devices/QtProgress.h"
#include "devices/TablePrint.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "link/ShowReadingState.h"
#include "ph/PhCalibration.h"
#include "ph/PhValue.h"
#include "tables/Reports.h"
#include "tables/TablePresenter.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// Place of the reading dialog on the screen, of 12000 by 9000: clear of the list and of most of the graph.
constexpr int DialogLeft = 4750, DialogTop = 960, FullWidth = 12000, FullHeight = 9000;

}  // namespace

void fmISEcli::OnActivate() {
    if (!presenter_.Activate()) return;
    // Once the curve is on the screen; the question must not stand before an unpainted window.
    QTimer::singleShot(0, this, [this] { presenter_.AskToSave(); });
}

void fmISEcli::OnUnload() {
    context_.screens.Close(ScreenCode::frmQuality);
}

// --- what is shown -------------------------------------------------------------------------------------------

void fmISEcli::ShowAll() {
    setWindowTitle(ToQt(presenter_.Title()));
    ShowMenus();
    ShowList();
    ShowSlope();
    ShowSamples();
    ShowMessage();
    graph_->update();
    if (auto* follower = dynamic_cast<CalibrationFollower*>(context_.screens.Find(ScreenCode::frmQuality)))
        follower->CalibrationChanged();
}

void fmISEcli::ShowSamples() {
    samples_->ShowForm();
}

void fmISEcli::ShowStatusLines(const std::string& lasting, const std::string& message) {
    SetLastingStatus(lasting);
    SetStatus(message);
}

void fmISEcli::ShowMenus() {
    const bool calibrated = presenter_.HasList();
    for (QAction* action : {mnuFile_[2], mnuFile_[4], mnuS_, mnuOption_, mnuRefresh_, mnupoten_})
        action->setVisible(calibrated);
    mnuRecording_->setEnabled(presenter_.RecordingOffered());
    mnuQsave_->setEnabled(presenter_.Measuring());
    mnuSave_[1]->setEnabled(presenter_.Measuring());
    for (int i = 0; i < 6; ++i)
        mnumV_[static_cast<std::size_t>(i)]->setChecked(i == state_.Get<IseCalibration>().MvScaleIndex);
    for (int i = 0; i < 4; ++i)
        mnuLogC_[static_cast<std::size_t>(i)]->setChecked(i == state_.Get<IseCalibration>().LogCScaleIndex);
    mnuLinear_->setChecked(state_.Get<IseCalibration>().LinearFit == 1);
    mnuNonLinear_->setChecked(state_.Get<IseCalibration>().PartlyLinearFit == 1);
    mnuRgrsCli_->setChecked(state_.Get<IseCalibration>().BestFitCurve == 1);
    mnuLowEnd_->setChecked(state_.Get<IseCalibration>().LowEndCurve == 1);
    mnuLowEnd_->setVisible(presenter_.LowEndOffered());
    mnuStandards_->setEnabled(presenter_.HasList());
    mnuDriftNow_->setEnabled(presenter_.Samples().Shown());
    mnuDriftNow_->setChecked(presenter_.Samples().ChecksDrift());
}

void fmISEcli::ShowList() {
    QStringList rows;
    for (const std::string& row : presenter_.List())
        rows.append(ToQt(row));
    QStringList shown;
    for (int i = 0; i < lstCli_->count(); ++i)
        shown.append(lstCli_->item(i)->text());
    if (rows != shown) {
        lstCli_->clear();
        lstCli_->addItems(rows);
    }
    lstCli_->setVisible(presenter_.HasList());
    panel_->setVisible(presenter_.HasList());
}

void fmISEcli::ShowSlope() {
    const bool shown = presenter_.SlopeShown();
    Labslo1_[0]->setVisible(shown);
    txtslope_[0]->setVisible(shown);
    Labslo2_->setVisible(shown);
    txtslope_[0]->SetText(presenter_.SlopeBox());
}

void fmISEcli::ShowMessage() {
    const auto& message = presenter_.Message();
    if (messageSet_ != message.set) {
        messageSet_ = message.set;
        lblmsg_->setText(ToQt(message.text));
        if (message.opening) lblmsg_->TakeOwnPlace();
        PlaceMessage();
    }
    lblmsg_->setVisible(message.visible);
}

void fmISEcli::PlaceReadingDialog() {
    Screen* dialog = context_.screens.Find(ScreenCode::frmPtset);
    if (dialog == nullptr) return;
    dialog->move(mapToGlobal(QPoint(width() * DialogLeft / FullWidth, height() * DialogTop / FullHeight)));
}

// --- what the analyst does -----------------------------------------------------------------------------------

void fmISEcli::mousePressEvent(QMouseEvent* event) {
    Screen::mousePressEvent(event);
    presenter_.ToggleMessage();
}

void fmISEcli::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    // The layout settles first.
    QTimer::singleShot(0, this, &fmISEcli::PlaceMessage);
}

void fmISEcli::Print(int index) {
    if (index == 2) return PrintTableOf(context_, *this);
    context_.table.Load();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    {
        QtProgress progress(this, tr("Printing the report."));
        PrintGraph(state_, *presenter_.InUse(), context_.table.Working(),
                   {*context_.printing, context_.prompts, context_.clock, progress}, index == 1);
    }
    QGuiApplication::restoreOverrideCursor();
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
}

// --- what the reading dialog tells ---------------------------------------------------------------------------

void fmISEcli::ShowTemperature(const std::string& celsius, const std::string&) {
    presenter_.Samples().ShowTemperature(celsius);
}

void fmISEcli::ShowSecondElectrode(float millivolts, bool correctTemperature) {
    auto ph = PhFromMv(state_.Get<PhCalibration>().Buffers2, state_.Get<PhCalibration>().BufferCount[2], millivolts);
    const auto sample = CelsiusOf(presenter_.Samples().Text(SampleForm::Celsius));
    if (!ph || (correctTemperature && !sample)) {
        // No pH calibration, one that has no line, or no temperature to correct to: there is nothing to show.
        ShowNoSecondElectrode();
        return;
    }
    if (correctTemperature) ph = PhTempCorrect(*ph, state_.Get<PhCalibration>().PhCaliTemp[2], *sample);
    presenter_.Samples().ShowPh(std::isfinite(*ph) ? Format(*ph, "#0.00") : "N/A");
}

void fmISEcli::ShowNoSecondElectrode() {
    presenter_.Samples().ShowPh("N/A");
}

void fmISEcli::ShowReadingState(const ReadingState& state) {
    const bool sensor = state_.Get<HardwareSettings>().Channel[2] == 1;
    GreyValues({samples_->Box(SampleForm::Celsius)}, sensor && !state.IsLive());
    GreyValues({samples_->Box(SampleForm::Ph)}, !state.IsLive());
}

void fmISEcli::ReadingCancelled() {
    presenter_.Samples().ReadingCancelled();
    GreyValues({samples_->Box(SampleForm::Celsius), samples_->Box(SampleForm::Ph)}, false);
}

}  // namespace kelvo
