#include "addition/frmknosp.h"

#include <QtWidgets>

#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/ScreenManager.h"

namespace kelvo {

frmknosp::frmknosp(AppContext& context)
    : Screen(context, ScreenCode::frmknosp, "frmknosp", Kind::Panel),
      form_(context.state, context.prompts),
      binder_(new FormBinder(form_, this)) {
    setWindowTitle(QStringLiteral(" Known  Electrode  Slope"));
    auto* heading = Named(new QLabel(QStringLiteral("Type in Electrode Slope :")), "lblHeading");
    const std::array<std::array<const char*, 3>, 3> rows = {
        {{"Slope", "mV/dec", "Slope in mV per decade"},
         {"at  Temperature", "°C", "Temperature in degrees Celsius"},
         {"", "°F", "Temperature in degrees Fahrenheit"}}};
    auto* grid = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        const auto at = static_cast<std::size_t>(i);
        txtkslp_[at] = Named(EntryBox::Number(), "txtkslp", i);
        txtkslp_[at]->setAccessibleName(QString::fromUtf8(rows[at][2]));
        binder_->Bind(i, txtkslp_[at]);
        txtkslp_[at]->setMaxLength(EntryBox::NumberLength);
        auto* label = Named(new QLabel(QString::fromUtf8(rows[at][0])), "Label1", i);
        label->setBuddy(txtkslp_[at]);
        grid->addWidget(label, i, 0);
        grid->addWidget(txtkslp_[at], i, 1);
        grid->addWidget(new QLabel(QString::fromUtf8(rows[at][1])), i, 2);
    }
    auto* ok = Named(new QPushButton(QStringLiteral(" OK")), "cmdok");
    cmdcencel_ = Named(new QPushButton(QStringLiteral(" Cancel")), "cmdcencel");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmknosp::Ok);
    connect(cmdcencel_, &QPushButton::clicked, this, &frmknosp::Cancel);
    auto* foot = ButtonRow({ok, cmdcencel_});
    Body()->setSpacing(10);
    Body()->addWidget(heading);
    Body()->addLayout(grid);
    Body()->addLayout(foot);
    setMinimumWidth(380);

    binder_->BindButton(KnownSlopeForm::OkButton - FormModel::FirstButton, ok);
    connect(binder_, &FormBinder::Shown, this, [this] { SetStatus(form_.StatusMessage()); });
    TabThrough({txtkslp_[0], txtkslp_[1], txtkslp_[2], ok, cmdcencel_});
}

void frmknosp::OnLoad() {
    form_.Begin();
    binder_->WriteBack();
}

void frmknosp::Ok() {
    const bool done = form_.Ok();
    binder_->WriteBack();
    if (done) context_.screens.Hide(Code());
}

void frmknosp::OnEscape() {
    cmdcencel_->setFocus(Qt::TabFocusReason);
    SetStatus("Cancel drops the calibration point. Press it to leave.");
}

void frmknosp::Cancel() {
    form_.Cancel();
    context_.screens.Hide(Code());
}

}  // namespace kelvo
