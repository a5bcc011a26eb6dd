#include "ph/frmPHMe.h"

#include <QtWidgets>

#include "calibration/CurveFit.h"
#include "calibration/IseCalibration.h"
#include "core/Clock.h"
#include "core/Navigation.h"
#include "core/StatusMessages.h"
#include "devices/TablePrint.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "link/ShowReadingState.h"
#include "ph/RecordingChoices.h"
#include "ph/RecordingExport.h"
#include "ph/RecordingSchedule.h"
#include "tables/RowFactsFile.h"
#include "tables/TablePresenter.h"
#include "text/Files.h"

namespace kelvo {
namespace {

RecordingPlan PlanOf(const RecordingChoices& choices) {
    RecordingPlan plan;
    plan.interval = choices.CmbTime;
    plan.period = choices.cmbX;
    plan.scale = choices.cmbY;
    plan.electrode = {choices.chk1[0], choices.chk2[0]};
    plan.atc = {choices.chk1[1], choices.chk2[1]};
    return plan;
}

}  // namespace

RecordingInputs frmPHMe::InputsOf(AppContext& context) {
    const WholeState& state = context.state;
    const Link* link = context.link;
    return {[&state](float mv) { return ConcFromPotential(state, state.Get<IseCalibration>().CaliPoints, mv); },
            [link]() -> std::optional<double> {
                if (link == nullptr) return std::nullopt;
                const FrameMark frame = link->LatestFrame();
                return frame.number == 0 ? std::nullopt : std::optional<double>(frame.age);
            },
            SleptSeconds,
            {FactsHeading, FactsLine,
             [](const std::string& table, const std::string& backup) { WriteFactsBeside({}, table, 0, backup); }}};
}

void frmPHMe::OnLoad() {
    recording_->Load(PlanOf(state_));
    ShowFace();
    TellTroubles();
}

void frmPHMe::OnActivate() {
    // What the question at the start has let pass is taken up at once.
    ShowFace();
}

void frmPHMe::Tick() {
    if (recording_->Tick()) {
        ShowFace();
        TellTroubles();
        return;
    }
    Arm();
    ShowLive();
}

void frmPHMe::ShowLive() {
    recording_->ShowLive();
    const QString text = ToQt(recording_->Face().live);
    if (lblLive_->text() != text) lblLive_->setText(text);
}

void frmPHMe::TellTroubles() {
    if (!recording_->Trouble()) return;
    // From outside the step: a box that stands holds no sample.
    QTimer::singleShot(0, this, [this] { recording_->TellTroubles(); });
}

void frmPHMe::Arm() {
    if (!recording_->Ticking()) {
        Timer1_.stop();
        return;
    }
    const double wait = std::max(0.0, recording_->NextTick() - context_.clock.SteadySeconds());
    Timer1_.start(static_cast<int>(std::ceil(wait * 1000)));
}

void frmPHMe::ShowFace() {
    Arm();
    const RecordingFace& face = recording_->Face();
    setWindowTitle(ToQt(face.caption));
    for (std::size_t i = 0; i < txtTT_.size(); ++i) {
        const QString text = ToQt(face.txtTT[i]);
        if (txtTT_[i]->text() != text) txtTT_[i]->SetText(text);
        const bool shown = i < 2 || (i == 2 ? face.secondBox : face.times);
        txtTT_[i]->setVisible(shown);
        labtitle_[i]->setVisible(shown);
        labtitle_[i]->setText(ToQt(face.labtitle[i]));
        txtTT_[i]->setAccessibleName(ToQt(face.labtitle[i]));
    }
    for (std::size_t k = 0; k < face.doubtful.size(); ++k)
        GreyValues({txtTT_[k + 1]}, face.doubtful[k]);
    lblScale_->setText(ToQt(face.lblScale));
    Label3_->setText(ToQt(face.Label3));
    Label3_->setVisible(face.hint);
    Label4_->setVisible(face.hint);
    mnuF_->setEnabled(face.mnuF);
    for (std::size_t i = 0; i < mnuFile_.size(); ++i)
        mnuFile_[i]->setEnabled(face.mnuF && i != 2 && (i != 4 || context_.printing != nullptr));
    mnuStart_->setEnabled(face.mnuStart);
    mnuStop_->setEnabled(face.mnuStop);
    mnuWhole_->setVisible(face.wholeFile);
    for (std::size_t i = 0; i < mnupH_.size(); ++i) {
        mnupH_[i]->setVisible(face.mnupH[i] != nullptr);
        mnupH_[i]->setText(QString::fromUtf8(face.mnupH[i] != nullptr ? face.mnupH[i] : ""));
        mnupH_[i]->setChecked(static_cast<int>(i) == face.scaleIndex);
    }
    ShowLive();
    setCursor(face.busy ? Qt::BusyCursor : Qt::ArrowCursor);
    // In front of what an export has said, which the next point must not take away.
    SetLastingStatus(face.status);
    picPH_->update();
}

void frmPHMe::Print(int index) {
    if (context_.printing == nullptr) return;
    if (index == 0) {
        PrintRecordingGraph(context_, *recording_);
        if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
        return;
    }
    recording_->FillTable();
    PrintTableOf(context_, *this);
}

// --- the ways out ----------------------------------------------------------------------------------------------------

void frmPHMe::ShowSetup() {
    context_.screens.Show(ScreenCode::frmPHSe);
    context_.screens.Close(Code());
}

void frmPHMe::ShowMenu() {
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void frmPHMe::ShowTable() {
    context_.screens.Show(ScreenCode::frmQSave);
}

void frmPHMe::EndProgram() {
    context_.screens.EndProgram();
}

void frmPHMe::StopLink() {
    if (context_.link != nullptr && context_.link->PortOpen()) context_.link->StopLink();
}

LookedAtFile frmPHMe::FileLookedAt() const {
    const DataTable& table = context_.table.Shown();
    const bool ph = state_.Get<Navigation>().pHMode != 0;
    return {LastPart(table.FileName), table.txtData[ph ? 6 : 5], table.txtData[4]};
}

bool frmPHMe::Ending() const {
    return context_.screens.Ended();
}

void frmPHMe::OnFrameClose() {
    recording_->Back();
    ShowFace();
}

void frmPHMe::OnEscape() {
    recording_->ToggleHint();
    ShowFace();
}

void frmPHMe::mousePressEvent(QMouseEvent* event) {
    Screen::mousePressEvent(event);
    recording_->ToggleHint();
    ShowFace();
}

}  // namespace kelvo
