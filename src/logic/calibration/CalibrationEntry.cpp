#include "calibration/CalibrationEntry.h"

#include "calibration/CaliSession.h"

namespace kelvo {

bool CalibrationEntry::Ok() {
    if (!setup_.Accept()) return false;
    CalibrationState& state = context_.state;
    ScreenNavigator& screens = context_.screens;
    // The calibration screen stands behind the point dialog with its empty graph.
    screens.Close(ScreenCode::fmISEcli);
    setup_.BeginEntry();
    screens.Present(ScreenCode::fmISEcli);
    screens.Hide(ScreenCode::frmsetup);
    if (state.OnLine) startLink_();
    EnterPoints();
    if (context_.link != nullptr && context_.link->PortOpen()) context_.link->StopLink();
    state.SensorWarned = false;
    if (screens.Ended()) return true;
    if (state.ReadingActive) {
        Finish();
        return true;
    }
    setup_.Abandon();
    screens.Close(ScreenCode::fmISEcli);
    screens.Show(ScreenCode::frmsetup);
    return true;
}

void CalibrationEntry::EnterPoints() {
    CalibrationState& state = context_.state;
    ScreenNavigator& screens = context_.screens;
    for (int i = 1; i <= state.CaliPoints && state.ReadingActive; ++i) {
        setup_.BeginPoint(i);
        screens.ShowModal(ScreenCode::fmpaidat);
        screens.Close(ScreenCode::fmpaidat);
    }
    if (!state.ReadingActive || screens.Ended()) return;
    CaliSession session(state, context_.prompts);
    session.AfterLastPoint();
    if (state.CaliPoints != 1) return;
    screens.ShowModal(ScreenCode::frmknosp);
    screens.Close(ScreenCode::frmknosp);
    if (state.ReadingActive && !screens.Ended()) session.ShowKnownSlopeLine();
}

void CalibrationEntry::CloseReturnScreen() {
    if (context_.state.CaliDirty == 1 && context_.navigation.ReturnScreen != 0)
        context_.screens.CloseSubScreen(context_.navigation.ReturnScreen);
}

void CalibrationEntry::Finish() {
    setup_.Complete(context_.clock);
    CloseReturnScreen();
    context_.screens.Close(ScreenCode::frmsetup);
    context_.screens.Show(ScreenCode::fmISEcli);
}

void CalibrationEntry::Cancel() {
    setup_.Cancel();
    CloseReturnScreen();
    context_.screens.Close(ScreenCode::frmsetup);
    context_.screens.Show(ScreenCode::frmenu);
}

}  // namespace kelvo
