#include "core/frmenu.h"

#include <QtWidgets>

#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"

namespace kelvo {

frmenu::frmenu(AppContext& context) : Screen(context, ScreenCode::frmenu, "frmenu", Kind::Working) {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    auto* print = AddItem(file, "mnuFile", 0, QStringLiteral("&Print"));
    print->setEnabled(false);
    connect(AddItem(file, "mnuFile", 1, QStringLiteral("&Close")), &QAction::triggered, this, &frmenu::GoBack);
    connect(AddItem(file, "mnuFile", 2, QStringLiteral("E&xit")), &QAction::triggered, this, &frmenu::Exit);
    AddHelpMenu(HelpItems::AboutOnly);

    labmnu_ = Named(new QLabel, "labmnu");
    labmnu_->setProperty("heading", true);
    labmnu_->setAlignment(Qt::AlignHCenter);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(12);
    grid->setColumnStretch(1, 1);
    for (int i = 0; i < 6; ++i) {
        auto* button = Named(new QPushButton, "cmdSub", i);
        button->setProperty("route", true);
        button->setMinimumWidth(280);
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, i] { Choose(i); });
        auto* tip = Named(new QLabel, "LABTITAL", i);
        tip->setWordWrap(true);
        tip->setMaximumWidth(680);
        grid->addWidget(button, i, 0);
        grid->addWidget(tip, i, 1);
        cmdSub_[static_cast<std::size_t>(i)] = button;
        tips_[static_cast<std::size_t>(i)] = tip;
    }

    auto* back = Named(new QPushButton(QStringLiteral("Back")), "cmdback");
    auto* exit = Named(new QPushButton(QStringLiteral("Exit")), "cmdexit");
    connect(back, &QPushButton::clicked, this, &frmenu::GoBack);
    connect(exit, &QPushButton::clicked, this, &frmenu::Exit);
    auto* foot = ButtonRow({back, exit});

    Body()->addStretch(1);
    Body()->addWidget(labmnu_);
    Body()->addStretch(1);
    Body()->addLayout(Centred(grid));
    Body()->addStretch(2);
    Body()->addLayout(foot);
}

void frmenu::OnActivate() {
    const RouteBranch& branch = MenuBranch(state_.Get<Navigation>().MenuBranch);
    setWindowTitle(QString::fromUtf8(branch.screenCaption));
    labmnu_->setText(QString::fromUtf8(branch.heading));
    QPushButton* first = nullptr;
    for (std::size_t i = 0; i < cmdSub_.size(); ++i) {
        const bool used = i < branch.rows.size();
        cmdSub_[i]->setVisible(used);
        tips_[i]->setVisible(used);
        if (!used) continue;
        const RouteRow& row = branch.rows[i];
        const bool open = context_.screens.Knows(row.target);
        cmdSub_[i]->setText(QString::fromUtf8(row.caption));
        cmdSub_[i]->setEnabled(open);
        tips_[i]->setText(QString::fromUtf8(row.tip));
        tips_[i]->setEnabled(open);
        cmdSub_[i]->setAccessibleDescription(QString::fromUtf8(row.tip));
        if (first == nullptr && open) first = cmdSub_[i];
    }
    auto* held = qobject_cast<QPushButton*>(focusWidget());
    const bool keep = held != nullptr && held->isEnabled() && held->isVisible();
    if (!keep && first != nullptr) first->setFocus();
}

void frmenu::Choose(int i) {
    const RouteBranch& branch = MenuBranch(state_.Get<Navigation>().MenuBranch);
    const RouteRow& row = branch.rows.at(static_cast<std::size_t>(i));
    const std::string refusal = RouteRefusal(state_, row);
    if (!refusal.empty()) {
        context_.prompts.Message(refusal);
        return;
    }
    if (row.need == RouteNeed::IseChannelAndSlope && state_.Get<IseCalibration>().LastSlope == 0 &&
        context_.prompts.Ask(text::NoCalibrationForIon)) {
        state_.Get<Navigation>().HelpTopic = 0;
        context_.screens.Show(ScreenCode::frmsetup);
        context_.screens.Hide(Code());
        return;
    }
    Open(row);
}

void frmenu::Open(const RouteRow& row) {
    if (row.helpTopic >= 0) state_.Get<Navigation>().HelpTopic = static_cast<std::int16_t>(row.helpTopic);
    // A mark that an earlier screen has left would open the wrong layout of the setup.
    ClearPaths(state_);
    if (row.path >= 0) {
        const auto path = static_cast<std::size_t>(row.path);
        if (state_.Get<Navigation>().MenuBranch == 0) state_.Get<Navigation>().PhPath.at(path) = 1;
        if (state_.Get<Navigation>().MenuBranch == 1) state_.Get<Navigation>().IsePath.at(path) = 1;
    }
    if (state_.Get<Navigation>().MenuBranch == 1 && row.target == ScreenCode::frmPHSe)
        state_.Get<Navigation>().pHMode = 0;
    if (row.target == ScreenCode::fmISEcli) {
        state_.Get<IseCalibration>().CaliDirty = 0;
        state_.Get<Navigation>().MessageAtFont18 = true;
        LoadPhCalibrationIfNone();
    }
    if (state_.Get<Navigation>().MenuBranch == 0 && row.target != ScreenCode::frminfo) LoadPhCalibrationIfNone();
    if (row.target == ScreenCode::frminfo) return ShowHelp();
    const bool needsInterface = row.target == ScreenCode::frmDsply && context_.link != nullptr;
    if (needsInterface && !context_.link->StartReady()) {
        ClearPaths(state_);
        context_.prompts.Message(text::InterfaceNotReady);
        return;
    }
    context_.screens.Show(row.target);
    context_.screens.Hide(Code());
}

void frmenu::LoadPhCalibrationIfNone() {
    if (state_.Get<PhCalibration>().BufferCount[1] != 0 || state_.Get<PhCalibration>().BufferCount[2] != 0) return;
    LoadLastPhCalibration(state_, context_.prompts, context_.files);
}

void frmenu::GoBack() {
    context_.screens.Show(ScreenCode::frmtxt);
    context_.screens.Close(Code());
}

void frmenu::Exit() {
    if (context_.prompts.Ask(text::SureToExit, true)) context_.screens.EndProgram();
}

}  // namespace kelvo
