#include "help/frmInput.h"

#include <QtWidgets>

#include "core/CustomIon.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {

frmInput::frmInput(AppContext& context) : Screen(context, ScreenCode::frmInput, "frmInput", Kind::Dialog) {
    auto* prompt =
        Named(new QLabel(QStringLiteral("Please type in the Detected Ion name and its molecular weight in the "
                                        "boxes below, then click on 'Ok'.")),
              "lbltxt", 0);
    prompt->setWordWrap(true);
    txtInput_ = {Named(EntryBox::Words(), "txtInput", 0), Named(EntryBox::Number(), "txtInput", 1)};
    txtInput_[0]->setMaxLength(64);
    txtInput_[0]->SetText(QStringLiteral("Custom Ion"));
    txtInput_[1]->SetText(QStringLiteral("100"));
    auto* form = new QGridLayout;
    const std::array<QString, 2> labels = {QStringLiteral("Detected Ion:"), QStringLiteral("Molecular Weight:")};
    for (int i = 0; i < 2; ++i) {
        auto* box = txtInput_[static_cast<std::size_t>(i)];
        auto* label = Named(new QLabel(labels[static_cast<std::size_t>(i)]), "lbltxt", i + 1);
        label->setBuddy(box);
        box->setAccessibleName(label->text());
        form->addWidget(label, i, 0);
        form->addWidget(box, i, 1);
    }
    ok_ = Named(new QPushButton(QStringLiteral("Ok")), "cmdInput", 0);
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdInput", 1);
    ok_->setDefault(true);
    connect(ok_, &QPushButton::clicked, this, &frmInput::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmInput::Cancel);
    connect(txtInput_[0], &EntryBox::Entered, this, [this] { txtInput_[1]->setFocus(Qt::TabFocusReason); });
    connect(txtInput_[1], &EntryBox::Entered, this, [this] { ok_->setFocus(); });

    auto* foot = ButtonRow({ok_, cancel});
    Body()->setSpacing(12);
    Body()->addWidget(prompt);
    Body()->addLayout(form);
    Body()->addLayout(foot);
    setMinimumWidth(420);
}

void frmInput::OnActivate() {
    txtInput_[0]->setFocus(Qt::TabFocusReason);
}

void frmInput::Ok() {
    const bool taken = TakeCustomIon(state_, context_.prompts, txtInput_[0]->Text(), txtInput_[1]->Text());
    if (taken) {
        context_.screens.Close(Code());
        return;
    }
    txtInput_[txtInput_[0]->Text().empty() ? 0 : 1]->setFocus(Qt::TabFocusReason);
}

void frmInput::Cancel() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
