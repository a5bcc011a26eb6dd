#include "ph/frmDsply.h"

#include <QtWidgets>

#include "calibration/IseCalibration.h"
#include "core/AverageSetup.h"
#include "devices/ScreenPrint.h"
#include "devices/TablePrint.h"
#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/ScreenManager.h"
#include "link/LinkStatusLabel.h"
#include "link/ShowReadingState.h"
#include "tables/TablePresenter.h"

namespace kelvo {
namespace {

constexpr int TickMs = 1000;
constexpr int ReStartButton = 0, StopButton = 1, BackButton = 2;
constexpr int White = 15;

// Places of the captions in `lbltxt`.
constexpr int PhCaption = 0, MvCaption = 1, TemperatureCaption = 2, CalibratedCaption = 7, BuffersCaption = 11,
              SerialCaption = 13;
constexpr std::array<int, 2> Heading = {3, 5}, Serial = {4, 6}, Date = {8, 10}, Buffers = {9, 12};

}  // namespace

frmDsply::frmDsply(AppContext& context)
    : Screen(context, ScreenCode::frmDsply, "frmDsply", Kind::Working),
      display_(context.state, context.prompts, context.files, context.clock, context.link, context.table),
      binder_(new FormBinder(display_, this)) {
    setWindowTitle(QStringLiteral("pH Measurement"));
    BuildMenus();
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    for (int e = 0; e < 2; ++e)
        row->addWidget(groups_[static_cast<std::size_t>(e)] = BuildElectrode(e), 1);

    const std::array<const char*, 3> captions = {"Re-start", "Stop", "Back"};
    for (int i = 0; i < 3; ++i)
        cmdDsply_[static_cast<std::size_t>(i)] =
            Named(new QPushButton(QString::fromUtf8(captions[static_cast<std::size_t>(i)])), "cmdDsply", i);
    auto* foot = ButtonRow({cmdDsply_[0], cmdDsply_[1], cmdDsply_[2]});
    foot->insertWidget(0, new LinkStatusLabel(context.link));
    Body()->addLayout(row, 1);
    Body()->addLayout(foot);

    connect(cmdDsply_[ReStartButton], &QPushButton::clicked, this, [this] {
        display_.Restart();
        ShowDisplay();
        cmdDsply_[StopButton]->setFocus(Qt::TabFocusReason);
    });
    connect(cmdDsply_[StopButton], &QPushButton::clicked, this, &frmDsply::Stop);
    connect(cmdDsply_[BackButton], &QPushButton::clicked, this, &frmDsply::Back);
    connect(binder_, &FormBinder::Shown, this, &frmDsply::ShowDisplay);
    Timer1_.setInterval(TickMs);
    connect(&Timer1_, &QTimer::timeout, this, &frmDsply::Tick);
}

void frmDsply::BuildMenus() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    auto* open = file->addMenu(QStringLiteral("&Open"));
    Named(open->menuAction(), "mnuFile", 0);
    connect(AddItem(open, "mnuOpen", 0, QStringLiteral("&Data Table")), &QAction::triggered, this,
            &frmDsply::OpenTable);
    auto* print = file->addMenu(QStringLiteral("&Print"));
    Named(print->menuAction(), "mnuFile", 1);
    connect(AddItem(print, "mnuPrint", 0, QStringLiteral("&Screen")), &QAction::triggered, this,
            [this] { PrintScreen(context_, *this); });
    auto* printTable = AddItem(print, "mnuPrint", 1, QStringLiteral("&Data Table"));
    printTable->setEnabled(context_.printing != nullptr);
    connect(printTable, &QAction::triggered, this, &frmDsply::PrintTable);
    connect(AddItem(file, "mnuFile", 2, QStringLiteral("&Close")), &QAction::triggered, this, &frmDsply::Back);
    connect(AddItem(file, "mnuFile", 3, QStringLiteral("E&xit")), &QAction::triggered, this, &frmDsply::Exit);

    auto* options = AddMenu("mnuSet", QStringLiteral("&Options"));
    const std::array<const char*, 5> captions = {"&Change Calibration", "&Average Setting", "ATC for Electrode &1",
                                                 "ATC for Electrode &2", "&View Data Table"};
    for (int i = 0; i < 5; ++i)
        mnuSetting_[static_cast<std::size_t>(i)] =
            AddItem(options, "mnuSetting", i, QString::fromUtf8(captions[static_cast<std::size_t>(i)]));
    connect(mnuSetting_[0], &QAction::triggered, this, [this] {
        display_.ChangeCalibration();
        ShowDisplay();
    });
    connect(mnuSetting_[1], &QAction::triggered, this, [this] {
        if (AskAverage(state_, context_.prompts)) display_.AverageSet();
    });
    for (int e = 0; e < 2; ++e) {
        QAction* atc = mnuSetting_[static_cast<std::size_t>(2 + e)];
        atc->setCheckable(true);
        connect(atc, &QAction::toggled, this, [this, e](bool on) { display_.SetAtc(e, on); });
    }
    connect(mnuSetting_[4], &QAction::triggered, this, &frmDsply::ShowTable);

    connect(Named(Menus()->addAction(QStringLiteral("&Save Data")), "mnuQsave"), &QAction::triggered, this,
            &frmDsply::SaveData);
    AddHelpMenu();
}

QLabel* frmDsply::Caption(int index, const char* text) {
    QLabel*& label = lbltxt_[static_cast<std::size_t>(index)];
    // The captions that stand once for both electrodes are repeated without a name.
    if (label != nullptr) return new QLabel(QString::fromUtf8(text));
    return label = Named(new QLabel(QString::fromUtf8(text)), "lbltxt", index);
}

QGroupBox* frmDsply::BuildElectrode(int e) {
    const auto at = static_cast<std::size_t>(e);
    auto* group = new QGroupBox;
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(1, 1);
    auto* heading = Caption(Heading[at], e == 0 ? "Electrode 1:" : "Electrode 2:");
    heading->setProperty("heading", true);
    grid->addWidget(heading, 0, 0, 1, 4);

    const auto value = [&](int index, int line, int stretch) {
        auto* label = lbldata_[static_cast<std::size_t>(index)] = Named(new QLabel, "lbldata", index);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
        label->setAccessibleName(tr(index % 2 == 0 ? "pH of electrode %1" : "mV of electrode %1").arg(e + 1));
        grid->addWidget(label, line, 1, 1, 3);
        grid->setRowStretch(line, stretch);
    };
    grid->addWidget(Caption(PhCaption, "pH"), 1, 0);
    value(2 * e, 1, 5);
    grid->addWidget(Caption(MvCaption, "E (mV)"), 2, 0);
    value(2 * e + 1, 2, 3);
    lblWorth_[at] = Named(new QLabel, "lblWorth", e);
    lblWorth_[at]->setAccessibleName(tr("What the value of electrode %1 is worth").arg(e + 1));
    lblDoubt_[at] = Named(new QLabel, "lblDoubt", e);
    lblDoubt_[at]->setWordWrap(true);
    lblDoubt_[at]->setAccessibleName(tr("What else to know of the value of electrode %1").arg(e + 1));
    int line = 3;
    for (QLabel* label : {lblWorth_[at], lblDoubt_[at]}) {
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(label, line++, 0, 1, 4);
    }

    grid->addWidget(Caption(TemperatureCaption, "Temperature"), line, 0);
    auto* boxes = new QHBoxLayout;
    for (const int i : {2 * e, 2 * e + 1}) {
        auto* box = txtTempt_[static_cast<std::size_t>(i)] = Named(EntryBox::Number(), "txtTempt", i);
        box->setAccessibleName(tr(i % 2 == 0 ? "Temperature of channel %1 in degrees Celsius"
                                             : "Temperature of channel %1 in degrees Fahrenheit")
                                   .arg(e + 1));
        auto* unit = lbldata_[static_cast<std::size_t>(4 + i)] =
            Named(new QLabel(i % 2 == 0 ? QStringLiteral("°C") : QStringLiteral("°F")), "lbldata", 4 + i);
        binder_->Bind(i, box);
        // The binder has handed the key on; the message must not hold up the ticks that wait behind the step.
        connect(box, &EntryBox::Entered, this, [this] { display_.Tell(); });
        boxes->addWidget(box, 1);
        boxes->addWidget(unit);
    }
    grid->addLayout(boxes, line++, 1, 1, 3);

    const std::array<std::tuple<int, const char*, int>, 3> facts = {
        {{SerialCaption, "Serial No. ", Serial[at]},
         {CalibratedCaption, "Latest Calibration was on:", Date[at]},
         {BuffersCaption, "Calibration buffers (pH)", Buffers[at]}}};
    for (const auto& [caption, text, fact] : facts) {
        grid->addWidget(Caption(caption, text), line, 0, 1, 2);
        auto* label = Caption(fact, "");
        label->setAccessibleName(tr("%1, electrode %2").arg(QString::fromUtf8(text).trimmed()).arg(e + 1));
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(label, line++, 2, 1, 2);
    }
    return group;
}

void frmDsply::OnLoad() {
    display_.Load();
    for (int e = 0; e < 2; ++e) {
        const bool used = display_.Shown(e).inUse;
        groups_[static_cast<std::size_t>(e)]->setVisible(used);
        mnuSetting_[static_cast<std::size_t>(2 + e)]->setEnabled(used);
    }
    binder_->WriteBack();
    Timer1_.start();
}

void frmDsply::Tick() {
    binder_->Perform([this] { display_.Tick(); });
    display_.Tell();
}

void frmDsply::RowDone() {
    display_.RowDone();
    Timer1_.start();
    ShowDisplay();
}

void frmDsply::ShowDisplay() {
    for (int e = 0; e < 2; ++e)
        ShowElectrode(e);
    // Greying a value takes its letters back to the usual size.
    FitLetters();
    cmdDsply_[ReStartButton]->setEnabled(!display_.Running());
    cmdDsply_[StopButton]->setEnabled(display_.Running());
    SetStatus(display_.Status());
}

void frmDsply::ShowElectrode(int e) {
    const auto at = static_cast<std::size_t>(e);
    const LiveDisplay::Electrode& shown = display_.Shown(e);
    const auto set = [](QLabel* label, const std::string& text) {
        if (const QString wanted = ToQt(text); label->text() != wanted) label->setText(wanted);
    };
    set(lbldata_[2 * at], shown.ph);
    set(lbldata_[2 * at + 1], shown.mv);
    set(lblWorth_[at], shown.worth);
    set(lblDoubt_[at], shown.doubt);
    lblDoubt_[at]->setVisible(!shown.doubt.empty());
    set(lbltxt_[static_cast<std::size_t>(Serial[at])], shown.serial);
    set(lbltxt_[static_cast<std::size_t>(Date[at])], shown.date);
    set(lbltxt_[static_cast<std::size_t>(Buffers[at])], shown.buffers);
    GreyValues({lbldata_[2 * at], lbldata_[2 * at + 1]}, !shown.live);
    const int colour = display_.Background(e);
    for (const std::size_t box : {2 * at, 2 * at + 1})
        txtTempt_[box]->SetBackground(colour == White ? -1 : colour);
}

void frmDsply::FitLetters() {
    for (int i = 0; i < 4; ++i) {
        QLabel* label = lbldata_[static_cast<std::size_t>(i)];
        // Room for "Error" and "-999.9" in the width, and for the letters in the height.
        const int byWidth = label->width() / 4, byHeight = label->height() * 3 / 4;
        QFont font = label->font();
        const int pixels = std::max(24, std::min(byWidth, byHeight));
        if (font.pixelSize() == pixels) continue;
        font.setPixelSize(pixels);
        font.setWeight(QFont::DemiBold);
        label->setFont(font);
    }
}

void frmDsply::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    // The layout settles first.
    QTimer::singleShot(0, this, &frmDsply::FitLetters);
}

void frmDsply::Stop() {
    display_.Stop();
    ShowDisplay();
    cmdDsply_[ReStartButton]->setFocus(Qt::TabFocusReason);
}

void frmDsply::OpenAsked(OpensAsked) {
    if (display_.Running()) Stop();
    OpenTable();
}

void frmDsply::OpenTable() {
    if (context_.table.LookAtFile()) context_.screens.Show(ScreenCode::frmQSave);
}

void frmDsply::PrintTable() {
    PrintTableOf(context_, *this);
}

void frmDsply::ShowTable() {
    context_.screens.Show(ScreenCode::frmQSave);
}

void frmDsply::SaveData() {
    if (!display_.SaveRow()) {
        ShowDisplay();
        return;
    }
    Timer1_.stop();
    ShowDisplay();
    context_.screens.Show(ScreenCode::frmQSave);
    // The dialog marks the table, so that closing it leads back here; the mark is that of an unsaved ISE calibration,
    // and this screen is in front anyway.
    const std::int16_t unsaved = state_.Get<IseCalibration>().CaliDirty;
    context_.screens.ShowModal(ScreenCode::frmMsg);
    state_.Get<IseCalibration>().CaliDirty = unsaved;
}

void frmDsply::Back() {
    Timer1_.stop();
    display_.Leave();
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void frmDsply::Exit() {
    if (!display_.Exit()) return;
    context_.screens.EndProgram();
}

}  // namespace kelvo
