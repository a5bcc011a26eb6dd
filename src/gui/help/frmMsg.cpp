#include "help/frmMsg.h"

#include <QtWidgets>

#include "core/Navigation.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "tables/TableNavigatorQt.h"
#include "tables/TablePresenter.h"

namespace kelvo {

frmMsg::frmMsg(AppContext& context) : Screen(context, ScreenCode::frmMsg, "frmMsg", Kind::Dialog) {
    auto* prompt = Named(new QLabel(QStringLiteral("To save the data, please type the sample number in the box below, "
                                                   "then click on \"Ok\". ")),
                         "Label1");
    prompt->setWordWrap(true);
    Text1_ = Named(EntryBox::Words(), "Text1");
    Text1_->setMaxLength(64);
    Text1_->setAccessibleName(prompt->text());
    prompt->setBuddy(Text1_);
    auto* ok = Named(new QPushButton(QStringLiteral("Ok")), "Command1", 0);
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "Command1", 1);
    ok->setDefault(true);
    for (auto* button : {ok, cancel})
        button->setAutoDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmMsg::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmMsg::Cancel);
    connect(Text1_, &EntryBox::Entered, this, &frmMsg::Ok);

    auto* foot = new QHBoxLayout;
    foot->setSpacing(8);
    foot->addStretch();
    foot->addWidget(ok);
    foot->addWidget(cancel);
    Body()->setSpacing(12);
    Body()->addWidget(prompt);
    Body()->addWidget(Text1_);
    Body()->addLayout(foot);
    setMinimumWidth(420);
}

void frmMsg::OnActivate() {
    // The sample of the list, as long as nothing else is typed.
    Text1_->SetText(context_.table.NumberInHand());
    Text1_->selectAll();
    Text1_->setFocus(Qt::TabFocusReason);
}

void frmMsg::Ok() {
    context_.table.NumberRow(Text1_->Text());
    GoAway();
}

void frmMsg::Cancel() {
    context_.table.DropRow();
    GoAway();
}

void frmMsg::GoAway() {
    context_.screens.Hide(ScreenCode::frmQSave);
    const auto host = state_.Get<Navigation>().ReturnTo();
    if (host == ScreenCode::frmDsply || host == ScreenCode::frmPtset) TableNavigatorQt::Resume(context_.screens, host);
    context_.screens.Close(Code());
}

}  // namespace kelvo
