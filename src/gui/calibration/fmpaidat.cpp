#include "calibration/fmpaidat.h"

#include <QtWidgets>

#include "calibration/EntryState.h"
#include "core/HardwareSettings.h"
#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "link/LinkStatusLabel.h"
#include "link/ShowReadingState.h"

namespace kelvo {
namespace {

constexpr int TickMs = 500;

}  // namespace

fmpaidat::fmpaidat(AppContext& context)
    : Screen(context, ScreenCode::fmpaidat, "fmpaidat", Kind::Panel),
      form_(context.state, context.prompts),
      live_(context.state, context.clock, context.link),
      reading_(context.state, context.prompts, form_, live_),
      binder_(new FormBinder(form_, this)) {
    BuildMenu();
    lblPrompt_ = Named(new QLabel, "lblPrompt");
    lblPrompt_->setWordWrap(true);
    lblPrompt_->setAccessibleName(tr("What is asked for"));
    labelmsg_ = Named(new QLabel, "labelmsg");
    labelmsg_->setAccessibleName(tr("What to do"));
    labelmsg_->setWordWrap(true);
    lblCntDown_ = Named(new QLabel, "lblCntDown");
    lblCntDown_->setAccessibleName(tr("Countdown"));

    cmdok_ = Named(new QPushButton(QStringLiteral("OK")), "cmdok");
    cmdcancel_ = Named(new QPushButton(QStringLiteral("Cancel")), "cmdcancel");
    cmdok_->setDefault(true);
    for (auto* button : {cmdok_, cmdcancel_})
        button->setAutoDefault(true);
    connect(cmdok_, &QPushButton::clicked, this, &fmpaidat::Ok);
    connect(cmdcancel_, &QPushButton::clicked, this, &fmpaidat::Cancel);
    auto* foot = new QHBoxLayout;
    if (state_.Get<EntryState>().OnLine) foot->addWidget(new LinkStatusLabel(context.link));
    foot->setSpacing(8);
    foot->addWidget(lblCntDown_, 1);
    foot->addWidget(cmdok_);
    foot->addWidget(cmdcancel_);

    Body()->setSpacing(10);
    Body()->addWidget(lblPrompt_);
    Body()->addWidget(Boxes());
    Body()->addWidget(labelmsg_);
    Body()->addLayout(foot);
    setMinimumWidth(560);

    binder_->BindButton(PointForm::OkButton - FormModel::FirstButton, cmdok_);
    connect(binder_, &FormBinder::Shown, this, &fmpaidat::ShowForm);
    TabThrough({txtbox_[0], txtbox_[1], txtbox_[2], txtbox_[3], txtbox_[4], txtbox_[5], cmdok_, cmdcancel_});
}

void fmpaidat::BuildMenu() {
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    connect(AddItem(option, "mnuOption", 0, QStringLiteral("&Average Setting")), &QAction::triggered, this,
            [this] { reading_.AskAverage(); });
    editAsd_ = AddItem(option, "mnuOption", 1, QStringLiteral("&Edit ASD"));
    editAsd_->setEnabled(context_.screens.Knows(ScreenCode::frmAutoD));
    connect(editAsd_, &QAction::triggered, this, [this] {
        context_.screens.ShowModal(ScreenCode::frmAutoD);
        reading_.StabilitySet();
    });
    AddItem(option, "mnuOption", 2, QStringLiteral("ReadAvgData"))->setVisible(false);
    AddHelpMenu();
}

QWidget* fmpaidat::Boxes() {
    struct Row {
        const char* label;
        const char* unit;
        const char* labelName;
        const char* unitName;
        const char* spoken;
    };
    static constexpr std::array<Row, 6> rows = {
        {{"E", "mV", "Label1", "Label5", "Potential in mV"},
         {"C", "ppm", "Label3", "Label6", "Concentration in ppm"},
         {"C", "mol/L", "Label4", "Label7", "Concentration in mol/L"},
         {"LogC", "", "Label2", "Label11", "Logarithm of mol/L"},
         {"", "°C", "Label12", "Label9", "Temperature in degrees Celsius"},
         {"", "°F", "Label13", "Label10", "Temperature in degrees Fahrenheit"}}};
    auto* holder = new QWidget;
    auto* grid = new QGridLayout(holder);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnMinimumWidth(0, 60);
    grid->setColumnStretch(3, 1);
    std::array<QLabel*, 6> labels{}, units{};
    for (int i = 0; i < 6; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const Row& row = rows[at];
        txtbox_[at] = Named(EntryBox::Number(), "txtbox", i);
        txtbox_[at]->setAccessibleName(QString::fromUtf8(row.spoken));
        txtbox_[at]->setMinimumWidth(170);
        binder_->Bind(i, txtbox_[at]);
        txtbox_[at]->setMaxLength(EntryBox::NumberLength);
        labels[at] = Named(new QLabel(QString::fromUtf8(row.label)), row.labelName);
        units[at] = Named(new QLabel(QString::fromUtf8(row.unit)), row.unitName);
        labels[at]->setBuddy(txtbox_[at]);
        const int line = i + (i >= 1 ? 1 : 0) + (i >= 4 ? 1 : 0);
        grid->addWidget(labels[at], line, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(txtbox_[at], line, 1);
        grid->addWidget(units[at], line, 2);
    }
    // A little air between potential, concentration and temperature.
    grid->setRowMinimumHeight(1, 8);
    grid->setRowMinimumHeight(5, 8);
    Label1_ = labels[0];
    Label5_ = units[0];
    Label9_ = units[4];
    Label10_ = units[5];
    Label8_ = Named(new QLabel(QStringLiteral("Default value: change if you wish")), "Label8");
    grid->addWidget(Label8_, 6, 3);
    return holder;
}

void fmpaidat::OnLoad() {
    setWindowTitle(ToQt(state_.Get<EntryState>().PointTitle));
    lblPrompt_->setText(ToQt(state_.Get<EntryState>().PointPrompt));
    form_.Begin();
    if (state_.Get<EntryState>().OnLine) StartTicks();
    binder_->WriteBack();
}

void fmpaidat::StartTicks() {
    reading_.Open();
    // Large enough to be read from the bench.
    txtbox_[PointForm::Potential]->setStyleSheet(QStringLiteral("font-size: 24pt; font-weight: 600;"));
    Timer1_.setInterval(TickMs);
    connect(&Timer1_, &QTimer::timeout, this, &fmpaidat::Tick, Qt::UniqueConnection);
    Timer1_.start();
}

void fmpaidat::Tick() {
    binder_->Perform([this] { reading_.Tick(); });
    const ReadingState worth = live_.State();
    ShowReadingState(*this, {txtbox_[PointForm::Potential]}, worth);
    if (state_.Get<HardwareSettings>().Channel[2] == 1)
        GreyValues({txtbox_[PointForm::Celsius], txtbox_[PointForm::Fahrenheit]}, !worth.IsLive());
}

void fmpaidat::OnActivate() {
    if (focusWidget() == nullptr) txtbox_[state_.Get<EntryState>().OnLine ? 1 : 0]->setFocus(Qt::TabFocusReason);
}

void fmpaidat::ShowForm() {
    if (form_.TakeMeasurementStart()) {
        reading_.StartMeasurement();
        binder_->WriteBack();
        GrowToContent();
        return;
    }
    ShowReading();
    const bool potential = form_.At(PointForm::Potential).visible;
    Label1_->setVisible(potential);
    Label5_->setVisible(potential);
    const bool temperature = form_.TemperatureShown();
    Label9_->setVisible(temperature);
    Label10_->setVisible(temperature);
    Label8_->setVisible(form_.DefaultHintShown());
    SetStatus(form_.StatusMessage());
}

void fmpaidat::ShowReading() {
    cmdok_->setText(QString::fromLatin1(reading_.OkCaption()));
    lblCntDown_->setText(ToQt(reading_.CountDown()));
    labelmsg_->setText(ToQt(reading_.Hint()));
    labelmsg_->setStyleSheet(reading_.HintIsRed() ? HintStyle() : QString());
}

void fmpaidat::Ok() {
    if (form_.Ok()) {
        Timer1_.stop();
        context_.screens.Hide(Code());
        return;
    }
    binder_->WriteBack();
}

void fmpaidat::OnEscape() {
    if (!form_.HoldsEntries()) {
        Cancel();
        return;
    }
    cmdcancel_->setFocus(Qt::TabFocusReason);
    SetStatus("Cancel drops all points typed so far. Press it to leave.");
}

void fmpaidat::Cancel() {
    Timer1_.stop();
    form_.Cancel();
    context_.screens.Hide(Code());
}

}  // namespace kelvo
