#include "ph/frmPHSe.h"

#include <QtWidgets>

#include "core/AverageSetup.h"
#include "core/Dialogs.h"
#include "core/Routes.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "link/PortDialogControl.h"
#include "ph/PhCalibrationRun.h"
#include "ph/PutAsideMenu.h"
#include "ph/RecordingChoices.h"

namespace kelvo {

frmPHSe::frmPHSe(AppContext& context)
    : Screen(context, ScreenCode::frmPHSe, "frmPHSe", Kind::Working),
      setup_(context.state, context.prompts, context.files, context.link) {
    BuildMenus();
    settings_ = SettingsPage();
    choice_ = ChoicePage();
    calibration_ = CalibrationPage();
    // The panels of the choice lie over the settings and hide them.
    auto* stack = new QGridLayout;
    for (QWidget* page : {settings_, choice_, calibration_})
        stack->addWidget(page, 0, 0);
    choice_->raise();
    cmdOK_ = Named(new QPushButton(QStringLiteral("OK")), "cmdOK");
    cmdCancel_ = Named(new QPushButton(QStringLiteral("Cancel")), "cmdCancel");
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &frmPHSe::Ok);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmPHSe::Cancel);
    Body()->addLayout(stack, 1);
    Body()->addLayout(ButtonRow({cmdOK_, cmdCancel_}));
}

void frmPHSe::BuildMenus() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    connect(AddItem(file, "mnuFile", 0, QStringLiteral("&Close")), &QAction::triggered, this, &frmPHSe::GoToMenu);
    connect(AddItem(file, "mnuFile", 1, QStringLiteral("E&xit")), &QAction::triggered, this, &frmPHSe::Exit);
    AddPutAsideMenu(file, context_, this);
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    mnuO_ = option->menuAction();
    connect(AddItem(option, "mnuOption", 0, QStringLiteral("&Change Calibration")), &QAction::triggered, this, [this] {
        setup_.ChangeCalibration();
        SetStatus(setup_.status);
    });
    connect(AddItem(option, "mnuOption", 1, QStringLiteral("&Average Setting")), &QAction::triggered, this,
            [this] { AskAverage(state_, context_.prompts); });
    mnuH_ = AddHelpMenu()->menuAction();
}

QWidget* frmPHSe::SettingsPage() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(18);
    CmbTime_ = Named(new QComboBox, "CmbTime");
    cmbX_ = Named(new QComboBox, "cmbX");
    cmbY_ = Named(new QComboBox, "cmbY");
    const std::array<std::pair<const char*, QComboBox*>, 3> rows = {
        {{"Measuring Intervals", CmbTime_}, {" Monitoring Period", cmbX_}, {" pH Range", cmbY_}}};
    for (int i = 0; i < 3; ++i) {
        const auto& [caption, list] = rows[static_cast<std::size_t>(i)];
        auto* label = lbltxt_[static_cast<std::size_t>(i)] = Named(new QLabel(QString::fromUtf8(caption)), "lbltxt", i);
        label->setBuddy(list);
        list->setAccessibleName(label->text().trimmed());
        list->setMinimumWidth(240);
        list->setPlaceholderText(tr("please choose"));
        grid->addWidget(label, i, 0);
        grid->addWidget(list, i, 1);
    }
    lbltxt_[3] = Named(new QLabel(QStringLiteral("Electrode(s) and Auto Temperature Compensation (ATC)")), "lbltxt", 3);
    grid->addWidget(lbltxt_[3], 3, 0, 1, 2);
    grid->addWidget(ChannelFrame(0), 4, 0);
    grid->addWidget(ChannelFrame(1), 4, 1);
    auto* box = new QVBoxLayout(page);
    box->addStretch(1);
    box->addLayout(Centred(grid));
    box->addStretch(2);

    // Choosing the interval that stands already is a choice too.
    for (const auto turned : {&QComboBox::activated, &QComboBox::currentIndexChanged})
        connect(CmbTime_, turned, this, [this](int row) {
            setup_.SelectInterval(row);
            ShowPeriods();
        });
    connect(cmbX_, &QComboBox::currentIndexChanged, this, [this](int row) { setup_.SelectPeriod(row); });
    connect(cmbY_, &QComboBox::currentIndexChanged, this, [this](int row) { setup_.SelectRange(row); });
    return page;
}

QWidget* frmPHSe::ChannelFrame(int e) {
    const auto at = static_cast<std::size_t>(e);
    auto* frame = frm3DChl_[at] = Named(new QFrame, "frm3DChl", e);
    auto* row = new QHBoxLayout(frame);
    const std::array<const char*, 4> captions = {"Electrode 1", "ATC 1", "Electrode 2", "ATC 2"};
    for (int i = 0; i < 2; ++i) {
        auto* tick = chk_[at][static_cast<std::size_t>(i)] =
            Named(new QCheckBox(QString::fromUtf8(captions[static_cast<std::size_t>(2 * e + i)])),
                  e == 0 ? "chk1" : "chk2", i);
        connect(tick, &QCheckBox::toggled, this, [this, e, i](bool on) {
            setup_.Tick(e, i, on);
            ShowChannels();
        });
        row->addWidget(tick);
    }
    row->addStretch();
    return frame;
}

QWidget* frmPHSe::ChoicePage() {
    auto* page = new QWidget;
    page->setAutoFillBackground(true);
    auto* box = new QVBoxLayout(page);
    auto* panel = new QGroupBox(QStringLiteral("Please select one of the following options:"));
    Panelopt_[0] = Named(panel, "Panelopt", 0);
    auto* inner = new QVBoxLayout(panel);
    inner->setSpacing(14);
    const std::array<const char*, 2> captions = {
        "           Start the continuous recording",
        "Open an exsiting file to view graphics and          data table (using Option menu)"};
    for (int i = 0; i < 2; ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* holder = Panelopt_[at + 1] = Named(new QWidget, "Panelopt", i + 1);
        auto* row = new QVBoxLayout(holder);
        Opt_[at] = Named(new QRadioButton(QString::fromUtf8(captions[at])), "Opt", i);
        // Radio buttons in holders of their own know nothing of each other.
        Opt_[at]->setAutoExclusive(false);
        connect(Opt_[at], &QRadioButton::clicked, this, [this, i] {
            setup_.opt = i;
            ShowStage();
        });
        row->addWidget(Opt_[at]);
        inner->addWidget(holder);
    }
    box->addStretch(1);
    box->addWidget(panel);
    box->addWidget(IsePage());
    box->addStretch(2);
    return page;
}

QWidget* frmPHSe::IsePage() {
    frameISE_ = Named(new QGroupBox(tr("Calibration")), "frameISE");
    auto* box = new QVBoxLayout(frameISE_);
    box->setSpacing(14);
    const std::array<const char*, 2> captions = {"Use the latest calibration",
                                                 "Use an exsiting calibration from a file or start a new calibration"};
    for (int i = 0; i < 2; ++i) {
        const auto at = static_cast<std::size_t>(i);
        optise_[at] = Named(new QRadioButton(QString::fromUtf8(captions[at])), "optise", i);
        connect(optise_[at], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on) setup_.optise = i;
        });
        box->addWidget(optise_[at]);
    }
    return frameISE_;
}

QWidget* frmPHSe::CalibrationPage() {
    auto* page = new QWidget;
    auto* box = new QVBoxLayout(page);
    lbltxt_[4] = Named(new QLabel(QStringLiteral("Calibration")), "lbltxt", 4);
    lbltxt_[4]->setProperty("heading", true);
    lbltxt_[4]->setAlignment(Qt::AlignHCenter);
    auto* row = new QHBoxLayout;
    row->setSpacing(20);
    for (int e = 0; e < 2; ++e)
        row->addWidget(CalibrationFrame(e), 1);
    box->addStretch(1);
    box->addWidget(lbltxt_[4]);
    box->addSpacing(12);
    box->addLayout(Centred(row));
    box->addStretch(2);
    return page;
}

QGroupBox* frmPHSe::CalibrationFrame(int e) {
    const auto at = static_cast<std::size_t>(e);
    auto* frame = FrmChannel_[at] =
        Named(new QGroupBox(e == 0 ? QStringLiteral("Electrode 1") : QStringLiteral("Electrode 2")),
              e == 0 ? "FrmChannel1" : "FrmChannel2");
    auto* grid = new QGridLayout(frame);
    grid->setVerticalSpacing(12);
    grid->setColumnStretch(2, 1);
    for (int i = 0; i < 2; ++i) {
        auto* option = OptCali_[at][static_cast<std::size_t>(i)] =
            Named(new QRadioButton(i == 0 ? QStringLiteral("Yes") : QStringLiteral("No")),
                  e == 0 ? "OptCali1" : "OptCali2", i);
        option->setAccessibleName(tr("Calibrate electrode %1: %2").arg(e + 1).arg(option->text()));
        connect(option, &QRadioButton::toggled, this, [this, e, i](bool on) {
            if (!on) return;
            setup_.WantCalibration(e, i == 0);
            ShowCalibration();
        });
        grid->addWidget(option, 0, i);
    }
    lblbf_[at] = Named(new QLabel(QStringLiteral("Number of buffers")), "lblbf", e);
    grid->addWidget(lblbf_[at], 1, 0);
    grid->addWidget(BufferSpin(e), 1, 1, 1, 2, Qt::AlignLeft);
    lblbf_[at]->setBuddy(txtbf_[at]);
    // The frame keeps its height when the number goes out of sight.
    grid->setRowMinimumHeight(1, txtbf_[at]->sizeHint().height() + 8);
    return frame;
}

QWidget* frmPHSe::BufferSpin(int e) {
    const auto at = static_cast<std::size_t>(e);
    auto* holder = new QWidget;
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    auto* box = txtbf_[at] = Named(EntryBox::Number(), "txtbf", e);
    box->setMaxLength(2);
    box->setMaximumWidth(90);
    box->SetFilter([](char32_t key) { return key >= U'0' && key <= U'9'; });
    box->setAccessibleName(tr("Number of buffers of electrode %1").arg(e + 1));
    connect(box, &QLineEdit::textChanged, this, [this, e](const QString& text) {
        setup_.SetBuffers(e, FromQt(text));
        ShowCalibration();
    });
    connect(box, &EntryBox::Entered, this, [this, e, box] {
        setup_.SetBuffers(e, box->Text());
        ShowCalibration();
        cmdOK_->setFocus(Qt::TabFocusReason);
    });
    auto* spin = Spinbf_[at] = Named(new QWidget, "Spinbf", e);
    auto* arrows = new QHBoxLayout(spin);
    arrows->setContentsMargins(0, 0, 0, 0);
    for (const int by : {-1, 1}) {
        auto* arrow = new QToolButton;
        arrow->setArrowType(by < 0 ? Qt::DownArrow : Qt::UpArrow);
        arrow->setObjectName(by < 0 ? QStringLiteral("SpinDown") : QStringLiteral("SpinUp"));
        arrow->setAccessibleName(by < 0 ? tr("One buffer fewer") : tr("One buffer more"));
        arrow->setFocusPolicy(Qt::TabFocus);
        connect(arrow, &QToolButton::clicked, this, [this, e, by] {
            setup_.StepBuffers(e, by);
            ShowCalibration();
        });
        arrows->addWidget(arrow);
    }
    row->addWidget(box);
    row->addWidget(spin);
    return holder;
}

// --- what is shown -----------------------------------------------------------------------------------------------

void frmPHSe::OnLoad() {
    afterLoad_ = setup_.Load();
    ShowStage();
}

void frmPHSe::OnActivate() {
    if (const Next next = std::exchange(afterLoad_, Next::Stay); next != Next::Stay) {
        // Once the window stands; a screen cannot be closed while it is being shown.
        QTimer::singleShot(0, this, [this, next] { Go(next); });
        return;
    }
    FocusStage();
}

void frmPHSe::ShowStage() {
    setWindowTitle(ToQt(setup_.caption));
    mnuO_->setEnabled(setup_.menusEnabled);
    mnuH_->setEnabled(setup_.menusEnabled);
    const bool choosing = setup_.optionsShown || setup_.frameIseShown;
    choice_->setVisible(choosing);
    for (QWidget* panel : Panelopt_)
        panel->setVisible(setup_.optionsShown);
    for (int i = 0; i < 2; ++i)
        Opt_[static_cast<std::size_t>(i)]->setChecked(setup_.opt == i);
    frameISE_->setVisible(setup_.frameIseShown);
    optise_[0]->setVisible(setup_.latestOffered);
    for (int i = 0; i < 2; ++i)
        if (setup_.optise == i) optise_[static_cast<std::size_t>(i)]->setChecked(true);
    calibration_->setVisible(setup_.calibrationShown);
    settings_->setVisible(!setup_.calibrationShown);
    // What lies under the panels is out of reach.
    settings_->setEnabled(!choosing);
    lbltxt_[2]->setText(ToQt(setup_.rangeLabel));
    cmbY_->setAccessibleName(lbltxt_[2]->text().trimmed());
    lbltxt_[3]->setVisible(setup_.channelsShown);
    for (QWidget* frame : frm3DChl_)
        frame->setVisible(setup_.channelsShown);
    ShowLists();
    ShowChannels();
    ShowCalibration();
    SetStatus(setup_.status);
}

void frmPHSe::ShowLists() {
    // What fills a list is no choice.
    const QSignalBlocker intervals(CmbTime_), ranges(cmbY_);
    CmbTime_->clear();
    cmbY_->clear();
    if (setup_.listsFilled) {
        for (const IntervalEntry& entry : IntervalEntries)
            CmbTime_->addItem(QString::fromUtf8(entry.text));
        for (const char* range : RangeEntries(setup_.PhPath()))
            cmbY_->addItem(QString::fromUtf8(range));
    }
    CmbTime_->setCurrentIndex(state_.Get<RecordingChoices>().CmbTime);
    cmbY_->setCurrentIndex(state_.Get<RecordingChoices>().cmbY);
    ShowPeriods();
}

void frmPHSe::ShowPeriods() {
    const QSignalBlocker periods(cmbX_);
    cmbX_->clear();
    if (setup_.listsFilled)
        for (const char* period : setup_.Periods())
            cmbX_->addItem(QString::fromUtf8(period));
    cmbX_->setCurrentIndex(state_.Get<RecordingChoices>().cmbX);
}

void frmPHSe::ShowChannels() {
    for (std::size_t i = 0; i < 2; ++i) {
        chk_[0][i]->setChecked(state_.Get<RecordingChoices>().chk1[i]);
        chk_[1][i]->setChecked(state_.Get<RecordingChoices>().chk2[i]);
    }
}

void frmPHSe::ShowCalibration() {
    for (std::size_t e = 0; e < 2; ++e) {
        const auto& electrode = setup_.electrodes[e];
        OptCali_[e][electrode.wanted ? 0 : 1]->setChecked(true);
        for (QWidget* widget : std::initializer_list<QWidget*>{lblbf_[e], txtbf_[e], Spinbf_[e]})
            widget->setVisible(electrode.wanted);
        if (txtbf_[e]->Text() != electrode.txtbf) {
            txtbf_[e]->SetText(electrode.txtbf);
            txtbf_[e]->selectAll();
        }
    }
}

void frmPHSe::FocusStage() {
    if (setup_.calibrationShown)
        (setup_.electrodes[0].wanted   ? txtbf_[0]
         : setup_.electrodes[1].wanted ? txtbf_[1]
                                       : static_cast<QWidget*>(cmdOK_))
            ->setFocus(Qt::TabFocusReason);
    else if (setup_.optionsShown)
        Opt_[setup_.opt == 1 ? 1 : 0]->setFocus(Qt::TabFocusReason);
    else if (setup_.frameIseShown)
        optise_[setup_.optise == 0 ? 0 : 1]->setFocus(Qt::TabFocusReason);
    else
        CmbTime_->setFocus(Qt::TabFocusReason);
}

// --- what the analyst does ---------------------------------------------------------------------------------------

void frmPHSe::Ok() {
    const Next next = setup_.Ok();
    if (context_.screens.Ended()) return;
    ShowStage();
    if (next == Next::Stay)
        FocusStage();
    else
        Go(next);
}

void frmPHSe::Go(Next next) {
    switch (next) {
        case Next::Stay: return;
        case Next::Calibrate: Calibrate(); return;
        case Next::Hardware: context_.screens.Show(ScreenCode::frmHware); break;
        case Next::IseCalibration:
            context_.screens.Close(ScreenCode::fmISEcli);
            context_.screens.Show(ScreenCode::fmISEcli);
            break;
        case Next::Record:
            hide();
            context_.screens.Show(ScreenCode::frmPHMe);
            break;
    }
    context_.screens.Close(Code());
}

void frmPHSe::Calibrate() {
    PhCalibrationRun run(state_, context_.prompts, context_.files, context_.clock, context_.link);
    const auto unsaved = context_.unsaved.Add([&run] { return run.Unsaved(); });
    run.Begin(setup_.electrodes[0].buffers, setup_.electrodes[1].buffers);
    while (!context_.screens.Ended() && run.NextBuffer()) {
        const bool portFails =
            context_.link != nullptr && context_.link->Port().Dialog.window == PortDialog::Window::Normal;
        if (portFails) ShowPortDialogModal(context_);
        context_.screens.ShowModal(ScreenCode::frmPset);
        if (context_.screens.Ended()) return;
        run.Take();
        context_.screens.Close(ScreenCode::frmPset);
    }
    if (context_.screens.Ended()) return;
    SetStatus(run.Quality());
    run.Finish();
    if (!context_.screens.Ended()) GoToMenu();
}

void frmPHSe::Cancel() {
    setup_.Cancel();
    GoToMenu();
}

void frmPHSe::GoToMenu() {
    ClearPaths(state_);
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void frmPHSe::Exit() {
    if (context_.prompts.Ask(text::SureToExit, true)) context_.screens.EndProgram();
}

}  // namespace kelvo
