#include "link/frmPtset.h"

#include <QtWidgets>

#include "core/AverageSetup.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "link/LinkStatusLabel.h"
#include "link/ShowReadingState.h"

namespace kelvo {
namespace {

/// The working screen in hand, as the one that lends its boxes.
ReadingClient* HostOf(AppContext& context) {
    for (const ScreenCode code : {ScreenCode::frmStandards, ScreenCode::frmAdditions, ScreenCode::frmStanad01,
                                  ScreenCode::frmSampa, ScreenCode::fmISEcli})
        if (context.screens.IsShown(code))
            if (auto* host = dynamic_cast<ReadingClient*>(context.screens.Find(code))) return host;
    return nullptr;
}

}  // namespace

frmPtset::frmPtset(AppContext& context)
    : Screen(context, ScreenCode::frmPtset, "frmPtset", Kind::Panel),
      reading_(context.state, context.prompts, context.clock, context.link, HostOf(context)) {
    setWindowTitle(QStringLiteral("Data Reading..."));
    BuildMenu();
    Text1_ = Named(EntryBox::Number(), "Text1");
    Text1_->SetComputed(true);
    Text1_->setStyleSheet(QStringLiteral("font-size: 34pt; font-weight: 600;"));
    Text1_->setAccessibleName(tr("Potential of the electrode, mV"));
    auto* unit = Named(new QLabel(QStringLiteral("mV")), "Label2");
    unit->setStyleSheet(QStringLiteral("font-size: 20pt;"));
    Label1_ = Named(new QLabel, "Label1");
    Label1_->setWordWrap(true);
    Label1_->setMinimumWidth(430);
    Label1_->setAccessibleName(tr("What to do"));
    lblCntDown_ = Named(new QLabel, "lblCntDown");
    lblCntDown_->setAccessibleName(tr("Countdown"));
    ok_ = Named(new QPushButton(QStringLiteral("Ok")), "cmdset", 0);
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdset", 1);
    ok_->setDefault(true);
    for (auto* button : {ok_, cancel})
        button->setAutoDefault(true);

    auto* value = new QHBoxLayout;
    value->addWidget(Text1_, 1);
    value->addWidget(unit);
    auto* foot = new QHBoxLayout;
    foot->addWidget(new LinkStatusLabel(context.link));
    foot->addStretch();
    foot->addWidget(ok_);
    foot->addWidget(cancel);
    Body()->setSpacing(10);
    Body()->addLayout(value);
    Body()->addWidget(Label1_);
    Body()->addWidget(lblCntDown_);
    Body()->addStretch();
    Body()->addLayout(foot);

    connect(ok_, &QPushButton::clicked, this, &frmPtset::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmPtset::Cancel);
    Timer1_.setInterval(1000);
    connect(&Timer1_, &QTimer::timeout, this, &frmPtset::Tick);
}

void frmPtset::BuildMenu() {
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    connect(AddItem(option, "mnuOption", 0, QStringLiteral("&Average Setting")), &QAction::triggered, this, [this] {
        if (AskAverage(state_, context_.prompts)) reading_.AverageSet();
    });
    for (const auto& [index, text] : {std::pair{1, "Edit ASD"}, std::pair{2, "ReadAvgData"}}) {
        auto* item = AddItem(option, "mnuOption", index, QString::fromLatin1(text));
        item->setEnabled(false);
        item->setVisible(false);
    }
    auto* atc = AddItem(option, "mnuOption", 3, QStringLiteral("A&TC for pH"));
    atc->setCheckable(true);
    connect(atc, &QAction::toggled, this, [this](bool on) { reading_.correctPh = on; });
    AddHelpMenu();
}

void frmPtset::OnLoad() {
    reading_.Load();
    ShowReading();
    Timer1_.start();
}

void frmPtset::OnActivate() {
    reading_.Resume();
    ShowReading();
    ok_->setFocus(Qt::TabFocusReason);
}

void frmPtset::Tick() {
    reading_.Tick();
    ShowReading();
}

void frmPtset::ShowReading() {
    if (Text1_->Text() != reading_.Text1) Text1_->SetText(reading_.Text1);
    Label1_->setText(ToQt(reading_.Label1));
    Label1_->setStyleSheet(reading_.hintIsRed ? HintStyle() : QString());
    lblCntDown_->setText(ToQt(reading_.lblCntDown));
    ShowReadingState(*this, {Text1_}, reading_.State());
    ok_->setText(reading_.AtNow() ? QStringLiteral("Now") : QStringLiteral("Ok"));
}

void frmPtset::Ok() {
    const auto press = reading_.Ok();
    if (context_.screens.Ended()) return;
    ShowReading();
    if (press != SampleReadingPresenter::Press::Taken) return;
    if (reading_.Client() == nullptr || !reading_.Client()->TakesManySamples()) {
        // The client takes it down when it has all its readings.
        context_.screens.Hide(Code());
        return;
    }
    // The next sample is taken in front of all others. The window is shown anew rather than waited for here, so that
    // a long series of samples does not nest one event loop in the other.
    hide();
    setWindowModality(Qt::ApplicationModal);
    context_.screens.Show(Code());
}

void frmPtset::Cancel() {
    Timer1_.stop();
    reading_.Cancel();
    context_.screens.Close(Code());
}

}  // namespace kelvo
