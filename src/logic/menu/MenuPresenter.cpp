#include "menu/MenuPresenter.h"

#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/StoredWithCalibration.h"
#include "link/Link.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"

namespace kelvo {
namespace {

/// Screens that work with the pH calibration, whichever branch leads to them.
bool NeedsPhCalibration(const Navigation& navigation, const RouteRow& row) {
    return row.target == ScreenCode::fmISEcli ||
           (navigation.MenuBranch == PhBranch && row.target != ScreenCode::frminfo);
}

}  // namespace

const RouteBranch& MenuPresenter::Branch() const {
    return MenuBranch(state_.Get<Navigation>().MenuBranch);
}

void MenuPresenter::Choose(std::size_t i) {
    const RouteRow& row = Branch().rows.at(i);
    const std::string refusal = RouteRefusal(state_, row);
    if (!refusal.empty()) {
        prompts_.Message(refusal);
        return;
    }
    if (row.need == RouteNeed::IseChannelAndSlope && state_.Get<IseCalibration>().LastSlope == 0 &&
        prompts_.Ask(text::NoCalibrationForIon)) {
        state_.Get<Navigation>().HelpTopic = 0;
        screens_.Show(ScreenCode::frmsetup);
        screens_.Hide(ScreenCode::frmenu);
        return;
    }
    Go(row);
}

void MenuPresenter::SetMarks(const RouteRow& row) {
    Navigation& navigation = state_;
    if (row.helpTopic >= 0) navigation.HelpTopic = static_cast<std::int16_t>(row.helpTopic);
    // A mark that an earlier screen has left would open the wrong layout of the setup.
    ClearPaths(navigation);
    if (row.path >= 0) {
        const auto path = static_cast<std::size_t>(row.path);
        if (navigation.MenuBranch == PhBranch) navigation.PhPath.at(path) = 1;
        if (navigation.MenuBranch == IseBranch) navigation.IsePath.at(path) = 1;
    }
    if (navigation.MenuBranch == IseBranch && row.target == ScreenCode::frmPHSe) navigation.pHMode = 0;
    if (row.target != ScreenCode::fmISEcli) return;
    state_.Get<IseCalibration>().CaliDirty = 0;
    navigation.MessageAtFont18 = true;
}

void MenuPresenter::Go(const RouteRow& row) {
    SetMarks(row);
    const PhCalibration& ph = state_;
    if (NeedsPhCalibration(state_, row) && ph.BufferCount[1] == 0 && ph.BufferCount[2] == 0)
        LoadLastPhCalibration(state_, prompts_, files_);
    if (row.target == ScreenCode::frminfo) return help_();
    if (row.target == ScreenCode::frmDsply && link_ != nullptr && !link_->StartReady()) {
        ClearPaths(state_);
        prompts_.Message(text::InterfaceNotReady);
        return;
    }
    screens_.Show(row.target);
    screens_.Hide(ScreenCode::frmenu);
}

void MenuPresenter::Back() {
    screens_.Show(ScreenCode::frmtxt);
    screens_.Close(ScreenCode::frmenu);
}

void MenuPresenter::Exit() {
    if (prompts_.Ask(text::SureToExit, true)) screens_.EndProgram();
}

}  // namespace kelvo
