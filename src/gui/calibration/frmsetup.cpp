#include "calibration/frmsetup.h"

#include <QtWidgets>
#include <map>

#include "calibration/CaliGraph.h"
#include "core/AverageSetup.h"
#include "core/CustomIon.h"
#include "core/IonSettings.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "link/PortDialogControl.h"
#include "tables/TablePresenter.h"

namespace kelvo {

frmsetup::frmsetup(AppContext& context)
    : Screen(context, ScreenCode::frmsetup, "frmsetup", Kind::Working),
      setup_(context.state, context.prompts),
      entry_({{context.state},
              context.prompts,
              context.files,
              context.clock,
              context.screens,
              context.table,
              context.link},
             setup_, [&context] { StartLinkForEntry(context); }) {
    setWindowTitle(QStringLiteral("Kelvo : Calibration Setup"));
    BuildMenus();
    auto* ok = Named(new QPushButton(QStringLiteral("Ok")), "cmdspok");
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdspcel");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmsetup::Ok);
    connect(cancel, &QPushButton::clicked, this, [this] { entry_.Cancel(); });
    auto* foot = ButtonRow({ok, cancel});

    auto* right = new QVBoxLayout;
    right->addWidget(ModeFrame());
    right->addWidget(StabilityFrame());
    auto* columns = new QHBoxLayout;
    columns->setSpacing(18);
    columns->addWidget(GraphFrame(), 3);
    columns->addLayout(right, 2);
    picPreview_ = Named(new PictureView(preview_), "picPreview");
    picPreview_->setAccessibleName(tr("The empty graph of these choices"));
    // It takes what the choices leave; lower than this the figures of its scales stand in one another and in the axis.
    constexpr int LeastHeight = 280;
    picPreview_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    auto* preview = new QHBoxLayout;
    preview->addWidget(picPreview_);
    preview->addStrut(LeastHeight);
    Body()->addLayout(columns);
    Body()->addLayout(preview, 1);
    Body()->addLayout(foot);
}

void frmsetup::BuildMenus() {
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    connect(AddItem(option, "mnuOption", 0, QStringLiteral("&Average Setting")), &QAction::triggered, this,
            [this] { AskAverage(state_, context_.prompts); });
    editAsd_ = AddItem(option, "mnuOption", 1, QStringLiteral("&Edit ASD"));
    connect(editAsd_, &QAction::triggered, this, [this] {
        context_.screens.ShowModal(ScreenCode::frmAutoD);
        SetStatus(setup_.StatusMessage());
    });
    AddHelpMenu();
}

QGroupBox* frmsetup::GraphFrame() {
    auto* frame = Named(new QGroupBox(tr("Calibration")), "FramGraph");
    auto* grid = new QGridLayout(frame);
    grid->setVerticalSpacing(12);
    cmbspE_ = Named(new QComboBox, "cmbspE");
    cmbspE_->setPlaceholderText(QStringLiteral("  E(mV) Scale"));
    CmbspC_ = Named(new QComboBox, "CmbspC");
    CmbspC_->setPlaceholderText(QStringLiteral(" LogC (ppm) Scale"));
    cmbspion_ = Named(new QComboBox, "cmbspion");
    cmbspion_->setPlaceholderText(QStringLiteral("  Detected Ion"));
    const std::array<std::pair<const char*, QWidget*>, 4> rows = {{{"mV Scale", cmbspE_},
                                                                   {"LogC (ppm) Scale", CmbspC_},
                                                                   {"Detected Ion", cmbspion_},
                                                                   {"Number of Calibration Points", Spin()}}};
    for (int i = 0; i < 4; ++i) {
        const auto& [caption, widget] = rows[static_cast<std::size_t>(i)];
        auto* label = Named(new QLabel(QString::fromUtf8(caption)), "lblsp", i);
        label->setBuddy(i == 3 ? txtspin_ : widget);
        (i == 3 ? txtspin_ : widget)->setAccessibleName(label->text());
        grid->addWidget(label, i, 0);
        grid->addWidget(widget, i, 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(4, 1);
    connect(cmbspion_, &QComboBox::activated, this, &frmsetup::IonChosen);
    for (QComboBox* list : {cmbspE_, CmbspC_, cmbspion_})
        connect(list, &QComboBox::currentIndexChanged, this, &frmsetup::ShowPreview);
    return frame;
}

QWidget* frmsetup::Spin() {
    auto* holder = new QWidget;
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    txtspin_ = Named(EntryBox::Number(), "txtspin");
    txtspin_->setMaxLength(4);
    txtspin_->SetFilter(CaliSetup::SpinKeyAllowed);
    txtspin_->setMaximumWidth(90);
    auto* down = Named(new QToolButton, "Spin2", 0);
    auto* up = Named(new QToolButton, "Spin2", 1);
    down->setArrowType(Qt::DownArrow);
    up->setArrowType(Qt::UpArrow);
    down->setAccessibleName(tr("One point fewer"));
    up->setAccessibleName(tr("One point more"));
    for (auto* button : {down, up}) {
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::TabFocus);
    }
    row->addWidget(txtspin_);
    row->addWidget(down);
    row->addWidget(up);
    row->addStretch();
    const auto step = [this](void (CaliSetup::*change)()) {
        setup_.txtspin = txtspin_->Text();
        (setup_.*change)();
        ShowSpin();
        // A click moves on to the data input mode; held by the keyboard the control stays in hand.
        if (!qobject_cast<QToolButton*>(focusWidget())) chkdat_[setup_.ticked[1] ? 1 : 0]->setFocus();
    };
    connect(down, &QToolButton::clicked, this, [step] { step(&CaliSetup::SpinDown); });
    connect(up, &QToolButton::clicked, this, [step] { step(&CaliSetup::SpinUp); });
    connect(txtspin_, &QLineEdit::textEdited, this, [this](const QString& text) {
        setup_.txtspin = FromQt(text);
        SetStatus(setup_.StatusMessage());
    });
    connect(txtspin_, &EntryBox::Refused, this, [this] {
        setup_.SpinKeyRefused();
        txtspin_->setFocus(Qt::TabFocusReason);
    });
    connect(txtspin_, &EntryBox::Entered, this, [this] {
        setup_.txtspin = txtspin_->Text();
        setup_.SpinEnter();
        ShowSpin();
        chkdat_[setup_.ticked[1] ? 1 : 0]->setFocus(Qt::TabFocusReason);
    });
    return holder;
}

QGroupBox* frmsetup::ModeFrame() {
    auto* frame = Named(new QGroupBox(tr("Data Input")), "FramMode");
    auto* box = new QVBoxLayout(frame);
    chkdat_[0] = Named(new QCheckBox(QStringLiteral("Keyboard Input   ")), "chkdat", 0);
    chkdat_[1] = Named(new QCheckBox(QStringLiteral("On Line Reading ")), "chkdat", 1);
    box->addWidget(chkdat_[0]);
    box->addWidget(chkdat_[1]);
    return frame;
}

QGroupBox* frmsetup::StabilityFrame() {
    auto* frame = Named(new QGroupBox(QStringLiteral("Automatic Stability Detection")), "FramASD");
    auto* box = new QVBoxLayout(frame);
    chkdat_[2] = Named(new QCheckBox(QStringLiteral("Use Auto Stability Detection")), "chkdat", 2);
    auto* hint = Named(new QLabel(QStringLiteral("Please tick the box above to activate this function. To see and edit "
                                                 "the settings of this function, select 'Option' / 'Edit  ASD' under "
                                                 "the menu bar.")),
                       "lblHint");
    hint->setWordWrap(true);
    box->addWidget(chkdat_[2]);
    box->addWidget(hint);
    box->addStretch();
    for (int i = 0; i < 3; ++i)
        connect(chkdat_[static_cast<std::size_t>(i)], &QCheckBox::clicked, this, [this, i](bool on) {
            setup_.Tick(i, on);
            ShowTicks();
        });
    return frame;
}

void frmsetup::OnLoad() {
    const bool onLine = context_.screens.Knows(ScreenCode::frmPtset);
    setup_.Load(onLine);
    chkdat_[1]->setEnabled(onLine);
    chkdat_[2]->setEnabled(onLine);
    for (const auto& name : state_.Get<IonSettings>().Ions.names)
        cmbspion_->addItem(ToQt(name));
    cmbspion_->setCurrentIndex(setup_.ionIndex);
    for (const auto& row : setup_.MvList())
        cmbspE_->addItem(ToQt(row));
    cmbspE_->setCurrentIndex(setup_.mvIndex);
    FillLogC();
    ShowSpin();
    ShowTicks();
}

void frmsetup::OnActivate() {
    cmbspE_->setFocus(Qt::TabFocusReason);
}

void frmsetup::FillLogC() {
    const int held = CmbspC_->count() == 0 ? setup_.logCIndex : CmbspC_->currentIndex();
    CmbspC_->clear();
    for (const auto& row : setup_.LogCList())
        CmbspC_->addItem(ToQt(row));
    CmbspC_->setCurrentIndex(held);
}

void frmsetup::ShowPreview() {
    preview_.Clear();
    DrawFrame(preview_);
    if (cmbspE_->currentIndex() >= 0 && CmbspC_->currentIndex() >= 0)
        DrawAxes(state_, preview_, cmbspE_->currentIndex(), CmbspC_->currentIndex(), cmbspion_->currentIndex());
    picPreview_->update();
}

void frmsetup::ShowSpin() {
    txtspin_->SetText(setup_.txtspin);
    SetStatus(setup_.StatusMessage());
}

void frmsetup::ShowTicks() {
    for (std::size_t i = 0; i < chkdat_.size(); ++i)
        chkdat_[i]->setChecked(setup_.ticked[i]);
    editAsd_->setEnabled(setup_.ticked[2] && context_.screens.Knows(ScreenCode::frmAutoD));
    SetStatus(setup_.StatusMessage());
}

void frmsetup::IonChosen(int index) {
    setup_.ionIndex = index;
    if (index == CustomIonRow) {
        context_.screens.ShowModal(ScreenCode::frmInput);
        if (context_.screens.Ended()) return;
        StoreCustomIon(state_);
        cmbspion_->setItemText(CustomIonRow, ToQt(state_.Get<IonSettings>().Ions.names[CustomIonRow]));
        ShowPreview();
    }
    SetStatus(setup_.StatusMessage());
}

void frmsetup::Ok() {
    setup_.mvIndex = cmbspE_->currentIndex();
    setup_.logCIndex = CmbspC_->currentIndex();
    setup_.ionIndex = cmbspion_->currentIndex();
    setup_.txtspin = txtspin_->Text();
    if (!entry_.Ok()) {
        using Missing = CaliSetup::Missing;
        const std::map<Missing, QWidget*> boxes = {{Missing::MvScale, cmbspE_},
                                                   {Missing::LogCScale, CmbspC_},
                                                   {Missing::Ion, cmbspion_},
                                                   {Missing::Mode, chkdat_[CaliSetup::Keyboard]},
                                                   {Missing::Points, txtspin_}};
        boxes.at(setup_.missing)->setFocus(Qt::TabFocusReason);
        return;
    }
}

}  // namespace kelvo
