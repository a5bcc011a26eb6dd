#include "core/frmtxt.h"

#include <QtWidgets>

#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "core/Routes.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

constexpr int HardwareRow = 3;

}  // namespace

frmtxt::frmtxt(AppContext& context) : Screen(context, ScreenCode::frmtxt, "frmtxt", Kind::Working) {
    setWindowTitle(QString::fromLatin1(text::ProgramTitle));
    AddHelpMenu(HelpItems::AboutOnly);
    auto* title = Named(new QLabel(windowTitle()), "lblTitle");
    title->setAlignment(Qt::AlignHCenter);
    auto* heading = Named(new QLabel(QStringLiteral("Welcome to Kelvo")), "lblHeading");
    heading->setProperty("heading", true);
    heading->setAlignment(Qt::AlignHCenter);
    auto* hint = Named(
        new QLabel(QStringLiteral("Use arrow keys and Enter, or click with mouse to make your selection")), "lblHint");
    hint->setAlignment(Qt::AlignHCenter);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(18);
    grid->setColumnStretch(1, 1);
    for (int i = 0; i < 4; ++i) {
        const StartRow& row = StartRows()[static_cast<std::size_t>(i)];
        auto* button = Named(new QPushButton(QString::fromUtf8(row.caption)), "cmdMain", i);
        button->setProperty("route", true);
        button->setMinimumWidth(240);
        button->setAutoDefault(true);
        button->setAccessibleDescription(QString::fromUtf8(row.beside));
        connect(button, &QPushButton::clicked, this, [this, i] { Choose(i); });
        auto* beside = Named(new QLabel(QString::fromUtf8(row.beside)), "lblMain", i);
        beside->setWordWrap(true);
        beside->setMaximumWidth(720);
        grid->addWidget(button, i, 0);
        grid->addWidget(beside, i, 1);
        cmdMain_[static_cast<std::size_t>(i)] = button;
    }

    auto* back = Named(new QPushButton(QStringLiteral("Back")), "cmdAdv3");
    auto* exit = Named(new QPushButton(QStringLiteral("Exit")), "cmdtxt");
    connect(back, &QPushButton::clicked, this, &frmtxt::GoBack);
    connect(exit, &QPushButton::clicked, this, &frmtxt::Exit);
    auto* foot = ButtonRow({back, exit});

    Body()->addWidget(title);
    Body()->addStretch(1);
    Body()->addWidget(heading);
    Body()->addSpacing(6);
    Body()->addWidget(hint);
    Body()->addStretch(1);
    Body()->addLayout(Centred(grid));
    Body()->addStretch(2);
    Body()->addLayout(foot);
}

void frmtxt::OnActivate() {
    cmdMain_[HardwareRow]->setEnabled(context_.screens.Knows(ScreenCode::frmHware));
    QWidget* held = focusWidget();
    if (held == nullptr || held == this) cmdMain_[state_.Get<Navigation>().pHMode == -1 ? 0 : 1]->setFocus();
}

void frmtxt::Choose(int i) {
    if (i == HardwareRow) {
        context_.screens.Show(ScreenCode::frmHware);
        context_.screens.Hide(Code());
        return;
    }
    if (i == 0) state_.Get<Navigation>().pHMode = -1;
    if (i == 1) state_.Get<Navigation>().pHMode = 0;
    state_.Get<Navigation>().MenuBranch = i;
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Hide(Code());
}

void frmtxt::GoBack() {
    state_.Get<Navigation>().NorvakCaption = "Start";
    state_.Get<Navigation>().AboutIsStart = true;
    context_.screens.Show(ScreenCode::frmNorvak);
    context_.screens.Hide(Code());
}

void frmtxt::Exit() {
    if (context_.prompts.Ask(text::SureToExit, true)) context_.screens.EndProgram();
}

}  // namespace kelvo
