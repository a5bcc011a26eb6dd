#include "link/frmAutoD.h"

#include <QtWidgets>

#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

constexpr std::array<const char*, 4> Captions = {
    "Reading average  (range between 1 to 30) ", "The waiting time (range between 5 to 60 seconds) ",
    "Threshold (pH: 0.001 to 0.05,   mV: 0.02 to 0.9)",
    "          Please type in time delay setting             (caculate in second, ie, 120 seconds)"};
constexpr std::array<const char*, 2> Options = {"   To wait for the stable reading ",
                                                "   To measure after pre-set time"};
constexpr std::array<const char*, 3> Buttons = {"Ok", "Cancel", "Reset"};

}  // namespace

frmAutoD::frmAutoD(AppContext& context)
    : Screen(context, ScreenCode::frmAutoD, "frmAutoD", Kind::Dialog), presenter_(context.state, context.prompts) {
    setWindowTitle(tr("Edit ASD"));
    for (std::size_t i = 0; i < OptAuto_.size(); ++i) {
        OptAuto_[i] = Named(new QRadioButton(QString::fromUtf8(Options[i])), "OptAuto", static_cast<int>(i));
        // Both may be off, which a group of its own never is; the form keeps them apart.
        OptAuto_[i]->setAutoExclusive(false);
        connect(OptAuto_[i], &QRadioButton::clicked, this, [this, i](bool on) {
            ReadWidgets();
            presenter_.Click(static_cast<int>(i), on);
            ShowForm();
        });
    }
    auto* stable = new QGroupBox;
    auto* stableRows = new QVBoxLayout(stable);
    stableRows->addWidget(OptAuto_[0]);
    for (const int box : {StabilityPresenter::Average, StabilityPresenter::Waiting, StabilityPresenter::Threshold})
        stableRows->addWidget(Row(box, Captions[static_cast<std::size_t>(box)]));
    auto* timed = new QGroupBox;
    auto* timedRows = new QVBoxLayout(timed);
    timedRows->addWidget(OptAuto_[1]);
    timedRows->addWidget(Row(StabilityPresenter::PresetTime, Captions[StabilityPresenter::PresetTime]));
    stable->setAccessibleName(OptAuto_[0]->text().trimmed());
    timed->setAccessibleName(OptAuto_[1]->text().trimmed());

    auto* foot = new QHBoxLayout;
    foot->addStretch();
    for (std::size_t i = 0; i < cmdAutoD_.size(); ++i) {
        cmdAutoD_[i] = Named(new QPushButton(QString::fromUtf8(Buttons[i])), "cmdAutoD", static_cast<int>(i));
        cmdAutoD_[i]->setAutoDefault(true);
        foot->addWidget(cmdAutoD_[i]);
    }
    cmdAutoD_[0]->setDefault(true);
    connect(cmdAutoD_[0], &QPushButton::clicked, this, &frmAutoD::Ok);
    connect(cmdAutoD_[1], &QPushButton::clicked, this, &frmAutoD::OnEscape);
    connect(cmdAutoD_[2], &QPushButton::clicked, this, [this] {
        ReadWidgets();
        presenter_.Reset();
        ShowForm();
    });
    Body()->setSpacing(12);
    Body()->addWidget(stable);
    Body()->addWidget(timed);
    Body()->addStretch();
    Body()->addLayout(foot);
}

QWidget* frmAutoD::Row(int index, const char* caption) {
    const auto i = static_cast<std::size_t>(index);
    auto* holder = new QWidget;
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(24, 0, 0, 0);
    lblAuto_[i] = Named(new QLabel(QString::fromUtf8(caption)), "lblAuto", index);
    lblAuto_[i]->setWordWrap(true);
    lblAuto_[i]->setMinimumWidth(380);
    // Switched off, and still to be read.
    QPalette palette = lblAuto_[i]->palette();
    QColor quiet = palette.color(QPalette::Active, QPalette::WindowText);
    quiet.setAlphaF(0.65f);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, quiet);
    lblAuto_[i]->setPalette(palette);
    txtAuto_[i] = Named(EntryBox::Number(), "txtAuto", index);
    txtAuto_[i]->setAccessibleName(QString::fromUtf8(caption).simplified());
    txtAuto_[i]->setMaximumWidth(110);
    lblAuto_[i]->setBuddy(txtAuto_[i]);
    row->addWidget(lblAuto_[i], 1);
    row->addWidget(txtAuto_[i]);
    connect(txtAuto_[i], &EntryBox::Entered, this, [this, index] { FocusBox(presenter_.Next(index)); });
    return holder;
}

void frmAutoD::OnLoad() {
    presenter_.Load();
    ShowForm();
}

void frmAutoD::OnActivate() {
    if (txtAuto_[static_cast<std::size_t>(presenter_.focus)]->isEnabled())
        FocusBox(presenter_.focus);
    else
        OptAuto_[0]->setFocus(Qt::TabFocusReason);
}

void frmAutoD::FocusBox(int index) {
    QWidget* target = cmdAutoD_[0];
    if (index != StabilityPresenter::OkButton) target = txtAuto_[static_cast<std::size_t>(index)];
    target->setFocus(Qt::TabFocusReason);
}

void frmAutoD::ReadWidgets() {
    for (std::size_t i = 0; i < txtAuto_.size(); ++i)
        presenter_.text[i] = txtAuto_[i]->Text();
}

void frmAutoD::ShowForm() {
    for (std::size_t i = 0; i < OptAuto_.size(); ++i)
        OptAuto_[i]->setChecked(presenter_.option[i]);
    for (std::size_t i = 0; i < txtAuto_.size(); ++i) {
        if (txtAuto_[i]->Text() != presenter_.text[i]) txtAuto_[i]->SetText(presenter_.text[i]);
        txtAuto_[i]->setEnabled(presenter_.enabled[i]);
        lblAuto_[i]->setEnabled(presenter_.enabled[i]);
    }
}

void frmAutoD::Ok() {
    ReadWidgets();
    if (presenter_.Ok()) {
        context_.screens.Close(Code());
        return;
    }
    FocusBox(presenter_.focus);
}

void frmAutoD::OnEscape() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
