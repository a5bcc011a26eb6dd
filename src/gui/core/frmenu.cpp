#include "core/frmenu.h"

#include <QtWidgets>

#include "kit/ScreenManager.h"

namespace kelvo {

frmenu::frmenu(AppContext& context)
    : Screen(context, ScreenCode::frmenu, "frmenu", Kind::Working),
      menu_(context.state, context.prompts, context.files, context.screens, context.link, [this] { ShowHelp(); }) {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    auto* print = AddItem(file, "mnuFile", 0, QStringLiteral("&Print"));
    print->setEnabled(false);
    connect(AddItem(file, "mnuFile", 1, QStringLiteral("&Close")), &QAction::triggered, this, [this] { menu_.Back(); });
    connect(AddItem(file, "mnuFile", 2, QStringLiteral("E&xit")), &QAction::triggered, this, [this] { menu_.Exit(); });
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
        connect(button, &QPushButton::clicked, this, [this, i] { menu_.Choose(static_cast<std::size_t>(i)); });
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
    connect(back, &QPushButton::clicked, this, [this] { menu_.Back(); });
    connect(exit, &QPushButton::clicked, this, [this] { menu_.Exit(); });
    auto* foot = ButtonRow({back, exit});

    Body()->addStretch(1);
    Body()->addWidget(labmnu_);
    Body()->addStretch(1);
    Body()->addLayout(Centred(grid));
    Body()->addStretch(2);
    Body()->addLayout(foot);
}

void frmenu::OnActivate() {
    const RouteBranch& branch = menu_.Branch();
    setWindowTitle(QString::fromUtf8(branch.screenCaption));
    labmnu_->setText(QString::fromUtf8(branch.heading));
    QPushButton* first = nullptr;
    for (std::size_t i = 0; i < cmdSub_.size(); ++i) {
        const bool used = i < branch.rows.size();
        cmdSub_[i]->setVisible(used);
        tips_[i]->setVisible(used);
        if (!used) continue;
        const RouteRow& row = branch.rows[i];
        const bool open = menu_.Open(i);
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

}  // namespace kelvo
